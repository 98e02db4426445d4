#include "settings/Words.h"

#include <algorithm>

#include "core/DataFiles.h"
#include "core/basGlobal.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kSection = "Words";
constexpr std::string_view kExtension = ".ini";

/// The words that were read last, and where from.
struct LoadedWords {
    std::string File;
    WordList Words;
};
LoadedWords loaded;

std::string KeyOf(std::string_view name) {
    return LowerCased(ToUtf8(Trimmed(name)));
}

}  // namespace

WordList::WordList(const std::string& languageFile) {
    for (const std::string& key : ProfileKeys(languageFile, kSection))
        texts_.try_emplace(KeyOf(key), ReadIniString(languageFile, kSection, key));
}

std::optional<std::string> WordList::Find(std::string_view name) const {
    std::string key = KeyOf(name);
    if (const auto found = texts_.find(key); found != texts_.end()) return found->second;
    const std::size_t end = key.find_last_not_of('.') + 1;
    if (end == 0 || end == key.size()) return std::nullopt;
    const std::string stops = key.substr(end);
    key.resize(end);
    const auto found = texts_.find(key);
    if (found == texts_.end()) return std::nullopt;
    return found->second + stops;
}

std::string LanguageFileOf(std::string_view name) {
    return DataFile(basGlobal.LanguagePath + std::string(name) + std::string(kExtension));
}

void LoadWords() {
    loaded = {basGlobal.LanguageFile, WordList(basGlobal.LanguageFile)};
}

std::string Word(std::string_view name) {
    if (loaded.File != basGlobal.LanguageFile) LoadWords();
    return loaded.Words.Find(name).value_or(std::string(name));
}

std::string WordByPattern(std::string_view name, std::string_view pattern) {
    constexpr std::string_view kValue = "%1";
    const std::size_t at = std::min(pattern.find(kValue), pattern.size());
    const std::string_view before = pattern.substr(0, at);
    const std::string_view after = pattern.substr(std::min(at + kValue.size(), pattern.size()));
    if (name.size() <= before.size() + after.size() || !name.starts_with(before) ||
        !name.ends_with(after))
        return Word(name);
    const auto length = name.size() - before.size() - after.size();
    return Word(pattern, {std::string(name.substr(before.size(), length))});
}

std::string Word(std::string_view name, std::initializer_list<std::string> values) {
    std::string text = Word(name);
    int number = 0;
    for (const std::string& value : values)
        text = ReplaceAll(std::move(text), "%" + std::to_string(++number), value);
    return text;
}

}  // namespace dravik
