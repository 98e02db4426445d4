#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

/// Fixed texts in the driver's language. A text goes by its English wording: that is its key in the
/// section Words of a language file, and what is shown where the file lacks it.
namespace dravik {

/// The words of one language file.
class WordList {
 public:
    WordList() = default;
    explicit WordList(const std::string& languageFile);

    /// The text of a name, which is matched without regard to case; nothing when the file lacks it.
    /// Full stops at the end that the file does not have are looked past and put back, since some
    /// texts only add them to show that time passes: "Connecting" answers for "Connecting..", too.
    std::optional<std::string> Find(std::string_view name) const;

    bool Empty() const { return texts_.empty(); }

 private:
    std::unordered_map<std::string, std::string> texts_;  ///< by the name in lower case
};

/// The language file of that name.
std::string LanguageFileOf(std::string_view name);

/// Reads the words of the current language file into memory, where they stay until the next time or
/// until another language file is the current one.
void LoadWords();

/// The text of a name in the current language; the name itself, as given, when there is none.
std::string Word(std::string_view name);

/// The same for a name that may be `pattern` with a value in place of its "%1": then the text of
/// the pattern with that value.
std::string WordByPattern(std::string_view name, std::string_view pattern);

/// The text of a name with "%1", "%2" ... replaced by the values.
std::string Word(std::string_view name, std::initializer_list<std::string> values);

}  // namespace dravik
