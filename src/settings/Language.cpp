#include <algorithm>
#include <cstdio>

#include "core/DataFiles.h"
#include "core/basGlobal.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "settings/Words.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kOptions = "Options";

/// The sensor file that the language names under a key; "0" when it names none.
std::string SensorFileUnder(std::string_view key) {
    return ReadIniString(basGlobal.LanguageFile, "Sensors", key);
}

/// The language's sensor file in those units; without one, and without units that were chosen, the
/// one that the language itself has.
std::string SensorFileFor(const std::string& units) {
    const std::string chosen = units == kMetric     ? SensorFileUnder("Metric")
                               : units == kImperial ? SensorFileUnder("Imperial")
                                                    : "0";
    return chosen != "0" ? chosen : SensorFileUnder("Filename");
}

void Load(const std::string& languageFile, const std::string& units) {
    GlobalState& g = basGlobal;
    g.LanguageFile = languageFile;
    g.Units = units;
    const std::string sensors = SensorFileFor(units);
    g.ImperialUnits = sensors != "0" && sensors == SensorFileUnder("Imperial");
    g.SensorFile = DataFile(g.LanguagePath + sensors);
    g.DescriptionFile = DataFile(g.LanguagePath + ReadIniString(languageFile, "DTC", "Filename"));
    LoadWords();
    LoadSensorConfig();
}

/// Keeps one option in the settings file and nothing else.
bool Keep(const std::string& key, const std::string& value) {
    const std::string& file = basGlobal.IniFile;
    const bool kept = KeepSettings({{kOptions, key, value}});
    if (!kept) std::fprintf(stderr, "%s: %s could not be written\n", file.c_str(), key.c_str());
    return kept;
}

}  // namespace

void LoadLanguage() {
    const GlobalState& g = basGlobal;
    const std::string language = g.Launch.Language.empty()
                                     ? ReadIniString(g.IniFile, kOptions, "Language")
                                     : g.Launch.Language;
    Load(LanguageFileOf(language), LowerCased(ReadIniString(g.IniFile, kOptions, "Units")));
}

std::vector<std::string> SensorFilesOf(const std::string& languageFile) {
    std::vector<std::string> files;
    for (const char* key : {"Filename", "Metric", "Imperial"}) {
        const std::string name = ReadIniString(languageFile, "Sensors", key);
        if (name != "0") files.push_back(DataFile(basGlobal.LanguagePath + name));
    }
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    return files;
}

bool ChooseLanguage(const std::string& name) {
    const std::string wanted = LowerCased(name);
    const auto names = LanguageNames();
    const auto found = std::find_if(names.begin(), names.end(), [&wanted](const auto& language) {
        return LowerCased(language) == wanted;
    });
    if (found == names.end()) return false;
    basGlobal.Launch.Language = Keep("Language", *found) ? std::string{} : *found;
    Load(LanguageFileOf(*found), basGlobal.Units);
    return true;
}

std::string CurrentLanguage() {
    const std::string& file = basGlobal.LanguageFile;
    const std::size_t start = file.find_last_of("/\\") + 1;
    return file.substr(start, file.rfind('.') - start);
}

void ChooseUnits(const std::string& units) {
    Keep("Units", units);
    Load(basGlobal.LanguageFile, units);
}

std::string CurrentUnits() {
    return basGlobal.ImperialUnits ? kImperial : kMetric;
}

}  // namespace dravik
