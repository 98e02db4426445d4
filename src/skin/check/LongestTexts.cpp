#include "skin/check/LongestTexts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <utility>

#include "platform/Text.h"
#include "settings/basSettings.h"
#include "skin/ProgramTitle.h"
#include "skin/check/CheckSkinParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using std::string;
using std::string_view;
using Texts = std::vector<string>;

/// In most fonts all digits are of one width, and in the others this one is among the wide ones.
constexpr char kWideDigit = '8';

string WithWideDigits(string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }, kWideDigit);
    return text;
}

/// Every form that a sensor's value takes between its bounds.
Texts FormsOf(const SensorRecord& sensor, std::optional<int> decimals) {
    constexpr std::int64_t kMostValues = 4096;
    constexpr double kLargestRaw = 1e9;
    const double factor = sensor.Factor;
    const double offset = sensor.Offset;
    const double atMin = std::round((sensor.Min - offset) / factor);
    const double atMax = std::round((sensor.Max - offset) / factor);
    if (!(std::fabs(atMin) < kLargestRaw) || !(std::fabs(atMax) < kLargestRaw)) return {};
    std::set<string> forms;
    const auto add = [&](std::int64_t raw) {
        const auto value = static_cast<float>(factor * static_cast<double>(raw) + offset);
        forms.insert(
            WithWideDigits(decimals ? FixedNumber(value, *decimals) : GeneralNumber(value)));
    };
    const auto first = static_cast<std::int64_t>(std::min(atMin, atMax));
    const auto last = static_cast<std::int64_t>(std::max(atMin, atMax));
    // An odd step: one of a power of two would pass over most of the fractions.
    const std::int64_t step = (last - first) / kMostValues / 2 * 2 + 1;
    for (std::int64_t raw = first; raw < last; raw += step) add(raw);
    add(last);
    return {forms.begin(), forms.end()};
}

Texts StatusTexts() {
    return {basGlobal.StatusText.begin(), basGlobal.StatusText.end()};
}

Texts MostCodes() {
    return {std::to_string(kCodeLimit - 1)};
}

/// What the function gives now, which has the form of all that it gives.
template <const char* Function>
Texts LikeNow() {
    string function = Function;
    return {WithWideDigits(LabelTextFunction(function))};
}

constexpr char kTime[] = "time";
constexpr char kDate[] = "date";
constexpr char kTimeAndDate[] = "timedate";

struct KnownFunction {
    string_view Function;
    Texts (*Longest)();
};

constexpr KnownFunction kKnown[] = {
    {"obd_status", StatusTexts}, {"obd_troublecodescount", MostCodes},  {kTime, LikeNow<kTime>},
    {kDate, LikeNow<kDate>},     {kTimeAndDate, LikeNow<kTimeAndDate>},
};

constexpr string_view kSensorWords[] = {"sensorcaption", "sensorunit", "sensor",
                                        kLiveWord,       "lowest",     "highest"};

std::vector<PossibleText> InEveryLanguage(const Texts& texts) {
    std::vector<PossibleText> possible;
    for (const string& text : texts) possible.push_back({text, {}});
    return possible;
}

std::optional<int> Places(const string& decimals, const SensorRecord& sensor) {
    if (decimals.empty()) return std::nullopt;
    if (EqualsNoCase(decimals, kSensorPlaces)) return SensorDecimals(sensor);
    return static_cast<int>(std::clamp<double>(LeadingNumber(decimals), 0, kMostDecimals));
}

}  // namespace

const std::vector<LongestTexts::Language>& LongestTexts::Languages() {
    if (languages_) return *languages_;
    languages_.emplace();
    for (const string& name : LanguageNames()) {
        const string language = LanguageFileOf(name);
        Language& entry = languages_->emplace_back();
        entry.Name = name;
        entry.Words = WordList(language);
        for (const string& sensors : SensorFilesOf(language)) {
            for (SensorRecord& sensor : ReadSensors(sensors))
                entry.Sensors.push_back(std::move(sensor));
        }
    }
    return *languages_;
}

const Texts& LongestTexts::ValuesOf(const SensorRecord& sensor, std::optional<int> decimals) {
    const auto [known, added] =
        values_.try_emplace(Scale{sensor.Factor, sensor.Offset, sensor.Min, sensor.Max, decimals});
    if (added) known->second = FormsOf(sensor, decimals);
    return known->second;
}

std::vector<PossibleText> LongestTexts::OfSensors(string_view word, const string& name,
                                                  const string& decimals) {
    const bool any = SensorStoodFor(name) != nullptr;
    std::vector<PossibleText> possible;
    if (word == kLiveWord) possible = {{"Off", {}}};
    for (const Language& language : Languages()) {
        for (const SensorRecord& sensor : language.Sensors) {
            if (!any && sensor.Function != name) continue;
            const Texts texts = word == "sensorcaption" ? Texts{sensor.Caption}
                                : word == "sensorunit"  ? Texts{sensor.Unit}
                                                       : ValuesOf(sensor, Places(decimals, sensor));
            for (const string& text : texts) possible.push_back({text, language.Name});
        }
    }
    return possible;
}

/// A function behind "word_" has all of its texts looked up, each in the languages it comes in.
std::vector<PossibleText> LongestTexts::OfWord(const TextPlace& place, const string& name) {
    TextPlace behind = place;
    behind.Function = name;
    const std::vector<PossibleText> texts =
        NamesLabelFunction(name) ? Of(behind) : std::vector<PossibleText>{{name, {}}};
    std::vector<PossibleText> possible;
    for (const Language& language : Languages()) {
        for (const PossibleText& text : texts) {
            if (text.Language.empty() || text.Language == language.Name)
                possible.push_back(
                    {language.Words.Find(text.Text).value_or(text.Text), language.Name});
        }
    }
    return possible;
}

std::vector<PossibleText> LongestTexts::Of(const TextPlace& place) {
    const string function = LowerCased(ToUtf8(place.Function));
    const bool fixed = function == kTextWord;
    if (place.Function == kTitleWord || (fixed && place.Caption == kTitleWord)) {
        if (place.InPicture) return {};  // a label alone knows that word
        return {{ProgramTitle(), {}}};
    }
    if (fixed) return {{place.Caption, {}}};
    for (const KnownFunction& known : kKnown) {
        if (known.Function == function) return InEveryLanguage(known.Longest());
    }
    if (const FunctionText text = SplitAtFirst(place.Function);
        EqualsNoCase(text.Word, string_view("word")))
        return OfWord(place, string(text.Argument));
    const FunctionText text = SplitAtLast(function);
    for (const string_view word : kSensorWords) {
        if (text.Word == word) return OfSensors(word, string(text.Argument), place.Decimals);
    }
    return {};
}

}  // namespace dravik
