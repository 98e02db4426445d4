#include "skinfunc/FunctionWords.h"

#include <algorithm>

namespace dravik {

namespace {

FunctionText SplitAt(std::string_view text, std::size_t position) {
    if (position == std::string_view::npos) return {text, {}};
    return {text.substr(0, position), text.substr(position + 1)};
}

std::vector<std::string_view> WordsOf(const std::vector<FunctionWord>& rows) {
    std::vector<std::string_view> words;
    for (const FunctionWord& row : rows) {
        if (std::find(words.begin(), words.end(), row.Word) == words.end())
            words.push_back(row.Word);
    }
    return words;
}

}  // namespace

FunctionText SplitAtFirst(std::string_view text) {
    return SplitAt(text, text.find('_'));
}

FunctionText SplitAtLast(std::string_view text) {
    return SplitAt(text, text.rfind('_'));
}

bool Names(const FunctionWord& row, const FunctionText& text) {
    return row.Word == text.Word && (row.Argument != Takes::Fixed || row.Sample == text.Argument);
}

std::string ExampleOf(const FunctionWord& row) {
    std::string text(row.Word);
    if (row.Argument == Takes::Nothing) return text;
    if (row.Argument != Takes::Ending) text.append("_");
    text.append(row.Sample);
    return text;
}

std::vector<std::string_view> TextFunctionWords() {
    return WordsOf(TextFunctionRows());
}

std::vector<std::string_view> NumberFunctionWords() {
    return WordsOf(NumberFunctionRows());
}

std::vector<std::string_view> ImageFunctionWords() {
    return WordsOf(ImageFunctionRows());
}

}  // namespace dravik
