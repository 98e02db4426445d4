#include "platform/ProfileEdit.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/ProfileEncoding.h"
#include "platform/ProfileLine.h"
#include "platform/Text.h"

namespace dravik {
namespace {

#ifdef _WIN32
constexpr std::string_view kSystemLineEnd = "\r\n";
#else
constexpr std::string_view kSystemLineEnd = "\n";
#endif

bool IsSectionName(std::string_view name) {
    using namespace std::string_view_literals;
    return name.find_first_of("]\r\n\0"sv) == std::string_view::npos;
}

bool IsKeyName(std::string_view name) {
    using namespace std::string_view_literals;
    return !name.empty() && name.front() != '[' && name.front() != ';' &&
           name.find_first_of("=\r\n\0"sv) == std::string_view::npos;
}

/// The value as it stands in the file, so that it reads back the same; line breaks become blanks.
std::string EncodedValue(std::string value) {
    for (char& c : value) {
        if (c == '\r' || c == '\n' || c == '\0') c = ' ';
    }
    const std::string line = "x=" + value;
    return ParseProfileLine(line).Value == value ? value : '"' + value + '"';
}

class ProfileEditor {
 public:
    explicit ProfileEditor(std::string_view text) : mark_(ProfileByteOrderMark(text)) {
        text.remove_prefix(mark_.size());
        while (!text.empty()) {
            const std::string_view line = TakeProfileLine(text);
            if (lines_.empty()) lineEnd_ = ProfileLineEnd(line);
            lines_.push_back(MakeLine(std::string(line)));
        }
        if (lineEnd_.empty()) lineEnd_ = kSystemLineEnd;
    }

    void Write(std::string_view section, std::string_view key, const std::string& value) {
        std::size_t line = FirstLineOf(section);
        if (line == lines_.size()) {
            Insert(line, '[' + std::string(section) + ']');
            Insert(lines_.size(), std::string(key) + '=' + EncodedValue(value));
            return;
        }
        for (std::size_t i = line + 1; i < lines_.size() && !IsSection(i); ++i) {
            if (!IsKey(i, key)) continue;
            const std::string& text = lines_[i].Text;
            const std::string_view end = ProfileLineEnd(text);
            const std::string_view content =
                std::string_view(text).substr(0, text.size() - end.size());
            const ProfileLine parsed = ParseProfileLine(content);
            lines_[i].Text = std::string(parsed.Prefix) + EncodedValue(value) + std::string(end);
            return;
        }
        Insert(EndOfSection(line), std::string(key) + '=' + EncodedValue(value));
    }

    void Delete(std::string_view section, std::string_view key) {
        const std::size_t first = FirstLineOf(section);
        for (std::size_t i = first + 1; i < lines_.size() && !IsSection(i);) {
            if (IsKey(i, key))
                lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(i));
            else
                ++i;
        }
    }

    std::string Text() const {
        std::string text = mark_;
        for (const Line& line : lines_) text += line.Text;
        return text;
    }

 private:
    struct Line {
        ProfileLineKind Kind;
        std::string Name;
        std::string Text;  // its line end included
    };

    static Line MakeLine(std::string text) {
        const std::size_t length = text.size() - ProfileLineEnd(text).size();
        const ProfileLine parsed = ParseProfileLine(std::string_view(text).substr(0, length));
        std::string name(parsed.Name);
        return {parsed.Kind, std::move(name), std::move(text)};
    }

    bool IsSection(std::size_t i) const { return lines_[i].Kind == ProfileLineKind::Section; }

    bool IsKey(std::size_t i, std::string_view key) const {
        return lines_[i].Kind == ProfileLineKind::Entry && EqualsNoCase(lines_[i].Name, key);
    }

    /// The line of the section's name; the number of lines when there is no such section.
    std::size_t FirstLineOf(std::string_view section) const {
        std::size_t i = 0;
        while (i < lines_.size() && !(IsSection(i) && EqualsNoCase(lines_[i].Name, section))) ++i;
        return i;
    }

    // A new key goes behind the section's last key and the comments that directly follow that one,
    // so that the empty lines and comments in front of the next section stay with it.
    std::size_t EndOfSection(std::size_t first) const {
        std::size_t end = first;
        for (std::size_t i = first + 1; i < lines_.size() && !IsSection(i); ++i) {
            if (lines_[i].Kind == ProfileLineKind::Entry) end = i;
        }
        ++end;
        while (end < lines_.size() && lines_[end].Kind == ProfileLineKind::Other) ++end;
        return end;
    }

    void Insert(std::size_t at, const std::string& content) {
        // Behind a last line without a line end the new line takes over that lack.
        std::string end = lineEnd_;
        if (at == lines_.size() && at > 0 && ProfileLineEnd(lines_[at - 1].Text).empty()) {
            lines_[at - 1].Text += lineEnd_;
            end.clear();
        }
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), MakeLine(content + end));
    }

    std::string mark_;
    std::string lineEnd_;
    std::vector<Line> lines_;
};

std::optional<std::string> Edited(std::string_view text, const std::vector<ProfileEntry>& entries) {
    ProfileEditor editor(text);
    for (const ProfileEntry& entry : entries) {
        const std::string_view section = Trimmed(entry.Section);
        const std::string_view key = Trimmed(entry.Key);
        if (!IsSectionName(section) || !IsKeyName(key)) return std::nullopt;
        if (entry.Value)
            editor.Write(section, key, *entry.Value);
        else
            editor.Delete(section, key);
    }
    return editor.Text();
}

/// The entries as they are to stand in a file that can hold any character.
std::vector<ProfileEntry> InUtf8(std::vector<ProfileEntry> entries) {
    for (ProfileEntry& entry : entries) {
        entry.Section = ToUtf8(entry.Section);
        entry.Key = ToUtf8(entry.Key);
        if (entry.Value) entry.Value = ToUtf8(*entry.Value);
    }
    return entries;
}

}  // namespace

std::optional<std::string> EditProfile(std::string_view content,
                                       const std::vector<ProfileEntry>& entries) {
    const ProfileEncoding encoding = EncodingOf(content);
    if (encoding == ProfileEncoding::Bytes) return Edited(content, entries);
    std::optional<std::string> text = Edited(DecodeProfile(std::string(content)), InUtf8(entries));
    if (text) text = EncodeProfile(std::move(*text), encoding);
    return text;
}

}  // namespace dravik
