#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "FuzzTarget.h"
#include "platform/Profile.h"
#include "platform/Text.h"

namespace dravik::fuzz {
namespace {

constexpr std::size_t kPlenty = 1 << 20;
constexpr std::size_t kMostEntries = 8;

using Name = std::pair<std::string, std::string>;  // section and key, folded

Name NameOf(std::string_view section, std::string_view key) {
    Name name(Trimmed(section), Trimmed(key));
    for (std::string* text : {&name.first, &name.second}) {
        for (char& c : *text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return name;
}

std::map<Name, std::string> ValuesOf(const std::string& file) {
    std::map<Name, std::string> values;
    for (const std::string& section : ProfileSections(file)) {
        for (const std::string& key : ProfileKeys(file, section)) {
            const std::string value = ReadProfileString(file, section, key, "\n", kPlenty);
            Require(value != "\n", "a key that is listed is found", key);
            ReadProfileInt(file, section, key, 0);
            values.emplace(NameOf(section, key), value);
        }
    }
    return values;
}

/// What is to be written: section, key and value as parts of the input, "-" for a key that is to
/// go; without any, some changes to what there is.
std::vector<ProfileEntry> EntriesOf(std::string_view input,
                                    const std::map<Name, std::string>& values) {
    std::vector<ProfileEntry> entries;
    while (!input.empty() && entries.size() < kMostEntries) {
        // Names of the program's own are UTF-8, whatever the file is written in.
        const std::string section = ToUtf8(TakePart(input)), key = ToUtf8(TakePart(input));
        const std::string value(TakePart(input));
        entries.push_back({section, key, value == "-" ? std::nullopt : std::optional(value)});
    }
    if (entries.empty()) {
        entries.push_back({"Options", "Skin", "night"});
        if (!values.empty()) {
            const auto& [first, value] = *values.begin();
            entries.push_back({first.first, first.second, value + '"'});
            const Name& last = values.rbegin()->first;
            entries.push_back({last.first, last.second, std::nullopt});
        }
    }
    // A key that is set and dropped in one go may leave a line end behind, each time anew.
    std::set<Name> named;
    std::erase_if(entries, [&named](const ProfileEntry& entry) {
        return !named.insert(NameOf(entry.Section, entry.Key)).second;
    });
    return entries;
}

/// A file in UTF-16 that is no text: half a letter or half a pair cannot be given back.
bool IsTornUtf16(std::string_view bytes) {
    const bool little = bytes.starts_with("\xFF\xFE");
    if (!little && !bytes.starts_with("\xFE\xFF")) return false;
    if (bytes.size() % 2 != 0) return true;
    bool open = false;  // the first half of a pair stands before
    for (std::size_t i = 2; i < bytes.size(); i += 2) {
        const auto high = static_cast<unsigned char>(bytes[little ? i + 1 : i]);
        const bool second = high >= 0xDC && high <= 0xDF;
        if (open != second) return true;
        open = high >= 0xD8 && high <= 0xDB;
    }
    return open;
}

}  // namespace

void Run(std::string_view input) {
    const std::string_view content = TakePart(input);
    const std::string file = WriteFile("a.ini", content);
    const std::map<Name, std::string> before = ValuesOf(file);
    const std::vector<ProfileEntry> entries = EntriesOf(input, before);
    const std::string old = Folder().Read("a.ini");
    if (!WriteProfileEntries(file, entries)) {
        Require(Folder().Read("a.ini") == old, "a refused change leaves the file as it was");
        return;
    }
    Settle(file);
    if (IsTornUtf16(content)) return;
    std::map<Name, std::optional<std::string>> expected(before.begin(), before.end());
    for (const ProfileEntry& entry : entries) {
        std::optional<std::string> value = entry.Value;
        if (value) {
            for (const char lineEnd : {'\r', '\n', '\0'})
                std::replace(value->begin(), value->end(), lineEnd, ' ');
        }
        expected[NameOf(entry.Section, entry.Key)] = value;
    }
    for (const auto& [name, value] : expected) {
        const std::string read = ReadProfileString(file, name.first, name.second, "\n", kPlenty);
        // A file in UTF-16 keeps letters, not bytes.
        Require(ToUtf8(read) == ToUtf8(value.value_or("\n")),
                "what is written is read, the rest as before",
                name.first + "/" + name.second + "=" + read);
    }
    const std::string written = Folder().Read("a.ini");
    Require(WriteProfileEntries(file, entries), "what was written can be written again");
    Require(Folder().Read("a.ini") == written, "writing the same again changes nothing");
}

}  // namespace dravik::fuzz
