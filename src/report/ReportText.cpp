#include <algorithm>

#include "platform/Text.h"
#include "report/ReportDocument.h"

namespace dravik {

namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kGap = 2;  // blanks between two columns

bool IsFollowingByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Characters, not bytes.
std::size_t Width(const std::string& text) {
    return text.size() -
           static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsFollowingByte));
}

std::string Underlined(const std::string& title, char with) {
    return title + "\n" + std::string(Width(title), with) + "\n";
}

/// A table with its columns below each other; the last one is as long as it is.
std::string Columns(const ReportTable& table) {
    std::vector<std::vector<std::string>> rows;
    if (!table.Head.empty()) rows.push_back(table.Head);
    for (const ReportRow& row : table.Rows) rows.push_back(row.Cells);
    std::vector<std::size_t> widths;
    for (auto& row : rows) {
        if (widths.size() < row.size()) widths.resize(row.size());
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] = Harmless(row[i]);
            widths[i] = std::max(widths[i], Width(row[i]));
        }
    }
    std::string text;
    for (const auto& row : rows) {
        std::string line(kIndent, ' ');
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            if (i + 1 < row.size()) line.append(widths[i] - Width(row[i]) + kGap, ' ');
        }
        text += line + "\n";
    }
    return text;
}

std::string SectionText(const ReportSection& section) {
    std::string text = "\n" + Underlined(Harmless(section.Title), '-');
    for (const std::string& note : section.Notes)
        text += std::string(kIndent, ' ') + Harmless(note) + "\n";
    for (const ReportTable& table : section.Tables) {
        if (!table.Title.empty()) text += "\n" + Harmless(table.Title) + "\n";
        text += Columns(table);
    }
    return text;
}

}  // namespace

std::string Harmless(const std::string& text) {
    constexpr const char* kReplacement = "\uFFFD";
    const std::string utf8 = ToUtf8(text);
    std::string harmless;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const std::string_view rest = std::string_view(utf8).substr(i);
        // U+0080 to U+009F are controls, too; U+FFFE and U+FFFF are no characters.
        const bool longControl = byte == 0xC2 && rest.size() > 1 && (rest[1] & 0x60) == 0;
        const bool noCharacter =
            rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF");
        if (byte < ' ' || byte == 0x7F || longControl || noCharacter) {
            harmless += kReplacement;
            i += noCharacter ? 2 : longControl ? 1 : 0;
        } else {
            harmless += utf8[i];
        }
    }
    return harmless;
}

/// Without pictures, which a text cannot hold.
std::string PlainTextOf(const ReportDocument& report) {
    std::string text = report.Line + "\n\n" + Underlined(Harmless(report.Title), '=');
    for (const std::string& line : report.About) text += Harmless(line) + "\n";
    text += "\n";
    for (const ReportRow& verdict : report.Verdicts)
        text += "* " + Harmless(verdict.Cells.front()) + "\n";
    for (const ReportSection& section : report.Sections) {
        if (!section.Notes.empty() || !section.Tables.empty()) text += SectionText(section);
    }
    return text + "\n" + report.Foot + "\n";
}

}  // namespace dravik
