#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "core/basGlobal.h"
#include "settings/Words.h"
#include "skin/SkinVocabulary.h"

namespace dravik {

/// A text that may stand at a place.
struct PossibleText {
    std::string Text;
    std::string Language;  ///< in which it does; empty: in every one
};

/// Knows the longest texts of the functions of labels and captions: sensors in every language of
/// the languages folder, and any of them where the user picks one.
class LongestTexts {
 public:
    /// The texts of which one is the widest that the place will show; of numbers every form that
    /// they take, with 8 for each digit. Empty where that cannot be told.
    std::vector<PossibleText> Of(const TextPlace& place);

 private:
    struct Language {
        std::string Name;
        std::vector<SensorRecord> Sensors;  ///< in all units
        WordList Words;
    };

    using Scale = std::tuple<float, float, float, float, std::optional<int>>;

    const std::vector<Language>& Languages();
    std::vector<PossibleText> OfSensors(std::string_view word, const std::string& name,
                                        const std::string& decimals);
    std::vector<PossibleText> OfWord(const TextPlace& place, const std::string& name);
    const std::vector<std::string>& ValuesOf(const SensorRecord& sensor,
                                             std::optional<int> decimals);

    std::optional<std::vector<Language>> languages_;
    std::map<Scale, std::vector<std::string>> values_;  ///< by all that they depend on
};

}  // namespace dravik
