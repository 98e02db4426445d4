/// Writes the tables of the reference of skin authors into the document, between its markers:
///
///     dravik-skin-reference DOCUMENT           brings the tables up to date
///     dravik-skin-reference --check DOCUMENT   only tells, by exit status 1, that they are not

#include <cstdio>
#include <optional>
#include <string>

#include "platform/Paths.h"
#include "skin/SkinVocabulary.h"

namespace {

using namespace dravik;

std::string Code(std::string_view text) {
    return "`" + std::string(text) + "`";
}

const char* NameOf(Read how) {
    switch (how) {
        case Read::Integer:
            return "whole number";
        case Read::Lenient:
            return "number";
        case Read::Short:
            return "number, -32768 to 32767";
        case Read::Strict:
            return "number, required";
        case Read::Text:
            return "text";
        case Read::Picture:
            return "picture";
        case Read::Font:
            return "font";
    }
    return "";
}

/// What stands for an argument in the first column.
std::string Placeholder(const FunctionWord& row) {
    switch (row.Argument) {
        case Takes::Nothing:
            return "";
        case Takes::Ending:
            return "...";
        case Takes::Fixed:
            return std::string(row.Sample);
        case Takes::Sensor:
            return "SENSOR";
        case Takes::Page:
        case Takes::Box:
            return "PAGE";
        case Takes::Skin:
            return "NAME";
        case Takes::Chart:
        case Takes::Control:
        case Takes::Number:
            return std::string(row.Sample.substr(0, row.Sample.find_first_of("0123456789"))) + "N";
        case Takes::Step:
            return "STEP";
        case Takes::Pid:
            return "PID";
        case Takes::Source:
            return "SOURCE";
        case Takes::Message:
            return "TEXT";
        case Takes::Language:
            return "LANGUAGE";
        case Takes::WordName:
            return "TEXT";
        case Takes::Question:
            return "TEXT:COMMAND";
    }
    return "";
}

std::string FormOf(const FunctionWord& row) {
    const std::string argument = Placeholder(row);
    const bool joined = argument.empty() || row.Argument == Takes::Ending;
    return std::string(row.Word) + (joined ? "" : "_") + argument;
}

/// A table of function texts; the example is a line for that key.
template <typename Rows>
std::string FunctionTable(const Rows& rows, const std::string& key) {
    std::string text = "| Function | What it does | Example |\n|---|---|---|\n";
    for (const FunctionWord& row : rows)
        text += "| " + Code(FormOf(row)) + " | " + std::string(row.Meaning) + " | " +
                Code(key + "=" + ExampleOf(row)) + " |\n";
    return text;
}

/// A table of words that mean something to one kind of key only.
std::string WordTable(std::span<const FunctionWord> rows, const std::string& heading) {
    std::string text = "| Function | " + heading + " |\n|---|---|\n";
    for (const FunctionWord& row : rows)
        text += "| " + Code(FormOf(row)) + " | " + std::string(row.Meaning) + " |\n";
    return text;
}

std::string KeyRow(const std::string& name, const std::string& value, const std::string& meaning) {
    return "| " + Code(name) + " | " + value + " | " + meaning + " |\n";
}

constexpr const char* kKeyHead = "| Key | Value | Meaning |\n|---|---|---|\n";

std::string SectionKeys(std::span<const SectionKey> keys, const std::string& section) {
    std::string table = kKeyHead;
    std::string example = "\n```ini\n[" + section + "]\n";
    for (const SectionKey& key : keys) {
        std::string numbered = key.Name;
        std::string first = key.Name;
        if (const std::size_t place = numbered.find('#'); place != std::string::npos) {
            numbered = numbered.replace(place, 1, "0") + "` ... `" +
                       std::string(key.Name).replace(place, 1, std::to_string(key.Last));
            first.replace(place, 1, "0");
        }
        table += KeyRow(numbered, key.Role != nullptr ? key.Role->Meaning : NameOf(key.How),
                        key.Meaning);
        example += first + "=" + key.Sample + "\n";
    }
    return table + example + "```\n";
}

std::string DescribeKind(const SkinKind& kind) {
    const std::string word = kind.Word;
    std::string text = "#### " + word + "\n\n" + std::string(kind.Meaning);
    text[text.find("\n\n") + 2] = static_cast<char>(std::toupper(kind.Meaning[0]));
    text += ".";
    text += " A page holds at most " + std::to_string(kind.Limit) + " of them.";
    text += "\n\n";
    text += kKeyHead;
    text += KeyRow("Function", std::string(kind.Role->Meaning) + ", required", "see below");
    std::string example =
        "\n```ini\n" + word + "0Function=" + std::string(kind.FunctionSample) + "\n";
    for (const SkinKey& key : kind.Keys) {
        text += KeyRow(key.Name, key.Role != nullptr ? key.Role->Meaning : NameOf(key.How),
                       key.Meaning);
        example += word + "0" + key.Name + "=" + key.Sample + "\n";
    }
    return text + example + "```\n";
}

std::string Elements() {
    std::string text;
    for (const SkinKind* kind : SkinKinds())
        text += (text.empty() ? "" : "\n") + DescribeKind(*kind);
    return text;
}

/// One generated part of the document.
struct Part {
    const char* Name;
    std::string (*Text)();
};

constexpr Part kParts[] = {
    {"general", [] { return SectionKeys(GeneralKeys(), "General"); }},
    {"page", [] { return SectionKeys(PageKeys(), "dashboard"); }},
    {"message", [] { return SectionKeys(MessageKeys(), "query"); }},
    {"elements", Elements},
    {"commands", [] { return FunctionTable(CommandRows(), "Button0Function"); }},
    {"button words", [] { return WordTable(kCommandRole.Own, "On a button"); }},
    {"text functions", [] { return FunctionTable(TextFunctionRows(), "Label0Function"); }},
    {"number functions", [] { return FunctionTable(NumberFunctionRows(), "Label0Function"); }},
    {"caption words", [] { return WordTable(kCaptionRole.Own, "What the label shows"); }},
    {"image functions", [] { return FunctionTable(ImageFunctionRows(), "Image0Function"); }},
    {"picture words", [] { return WordTable(kPictureRole.Own, "When and where it is shown"); }},
    {"sources", [] { return FunctionTable(SourceRows(), "Gauge0Function"); }},
    {"lists", [] { return WordTable(kListRole.Own, "What the list shows"); }},
    {"text boxes", [] { return WordTable(kTextboxRole.Own, "What the box edits"); }},
};

/// The document with every part as it is now; nothing when a marker is missing.
std::optional<std::string> Renewed(std::string document) {
    for (const Part& part : kParts) {
        const std::string begin = "<!-- generated: " + std::string(part.Name) + " -->\n";
        const std::string end = "<!-- end -->";
        const std::size_t from = document.find(begin);
        const std::size_t to = from == std::string::npos ? from : document.find(end, from);
        if (to == std::string::npos) {
            std::fprintf(stderr, "the document has no part \"%s\"\n", part.Name);
            return std::nullopt;
        }
        const std::size_t start = from + begin.size();
        document.replace(start, to - start, "\n" + part.Text() + "\n");
    }
    return document;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int kBadArguments = 2;
    const bool check = argc == 3 && std::string_view(argv[1]) == "--check";
    if (argc != 2 && !check) {
        std::fputs("Usage: dravik-skin-reference [--check] DOCUMENT\n", stderr);
        return kBadArguments;
    }
    const std::string path = argv[argc - 1];
    const std::optional<std::string> document = ReadWholeFile(path);
    if (!document) {
        std::fprintf(stderr, "%s: cannot be read\n", path.c_str());
        return kBadArguments;
    }
    const std::optional<std::string> renewed = Renewed(*document);
    if (!renewed) return kBadArguments;
    if (*renewed == *document) return 0;
    if (!check) return ReplaceFile(path, *renewed) ? 0 : 1;
    std::fprintf(stderr, "%s: the tables are not current; build the target skin-reference\n",
                 path.c_str());
    return 1;
}
