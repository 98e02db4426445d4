#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The vocabulary of function texts as data. The evaluators and the dispatcher test these rows in
/// order; the skin checker and the reference of skin authors are made from them.
namespace dravik {

/// What stands behind a word and its "_".
enum class Takes {
    Nothing,   ///< nothing; whatever stands there is passed over
    Ending,    ///< anything right behind the word, without "_"
    Fixed,     ///< exactly the sample of the row
    Sensor,    ///< the name of a sensor
    Page,      ///< the name of a page
    Box,       ///< the name of a page that is shown as a box
    Skin,      ///< the name of a skin
    Chart,     ///< "chart" and the number of one
    Control,   ///< "button" or "slider" and the index of one
    Number,    ///< a number
    Step,      ///< a step in a list: "up", "down", "pageup", "pagedown" or a number of entries
    Pid,       ///< the number of a PID, in hex
    Source,    ///< the rest of a source that the sensor file names
    Message,   ///< a text to show
    Language,  ///< the name of a language
    WordName,  ///< a name among the words of the language, or a text function
    Question,  ///< a text to show; may end in ":" and the command to run on yes
};

/// PIDs that a source can name: 4F has an entry in the tables but is never shown.
constexpr int kShownPids = 79;

/// One row: a word, what it takes and what it does.
struct FunctionWord {
    std::string_view Word;
    Takes Argument;
    std::string_view Sample;   ///< an argument for the example; the argument itself when Fixed
    std::string_view Meaning;  ///< half a sentence
};

/// A function text taken apart; without "_" the word is the whole text.
struct FunctionText {
    std::string_view Word;
    std::string_view Argument;
};
FunctionText SplitAtFirst(std::string_view text);
FunctionText SplitAtLast(std::string_view text);

/// True when the row answers for this word and argument.
bool Names(const FunctionWord& row, const FunctionText& text);

/// A whole function text as the row is used: word, "_" and sample.
std::string ExampleOf(const FunctionWord& row);

// The rows of each evaluator in the order in which they are tested.
std::vector<FunctionWord> CommandRows();
std::vector<FunctionWord> TextFunctionRows();
std::vector<FunctionWord> NumberFunctionRows();
std::vector<FunctionWord> ImageFunctionRows();
std::vector<FunctionWord> SourceRows();

// The words alone, each once.
std::vector<std::string_view> TextFunctionWords();
std::vector<std::string_view> NumberFunctionWords();
std::vector<std::string_view> ImageFunctionWords();

/// The operations of a step in a list, besides numbers.
std::vector<std::string_view> StepWords();

/// The Name of every row of an evaluator's own table.
template <typename Rows>
std::vector<FunctionWord> NamesOf(const Rows& rows) {
    std::vector<FunctionWord> names;
    for (const auto& row : rows) names.push_back(row.Name);
    return names;
}

}  // namespace dravik
