#include "app/ProgramFolder.h"

#include <QLocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <vector>

#include "app/OldCopies.h"
#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Profile.h"

namespace dravik {

namespace {

namespace fs = std::filesystem;

constexpr const char* kSettings = "Dravik.ini";
constexpr const char* kLanguages = "languages";
constexpr std::size_t kLongestSetting = 4096;  // bytes

/// The mark of a folder out of which the copies of earlier versions have gone. They go once: a copy
/// that the user makes later, to change it, stays.
const ProfileEntry kLayered = {"Program", "Layered", "1"};

fs::path PathOf(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

std::string TextOf(const fs::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

/// Where an installation keeps what the user's folder lies over; empty when there is none.
std::string InstalledData() {
    for (const char* place : {"../share/dravik", "data"}) {
        const fs::path data = PathOf(JoinPath(ExecutableFolder(), place)).lexically_normal();
        if (FileExists(JoinPath(TextOf(data), kSettings))) return TextOf(data);
    }
    return {};
}

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

/// A locale such as "de_DE" without its character set and variant.
std::string PlainLocale(const std::string& locale) {
    return locale.substr(0, locale.find_first_of(".@"));
}

/// The locale of texts that the environment names, else the system's own.
std::string SystemLocale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const std::string locale = Variable(name); !locale.empty()) return PlainLocale(locale);
    }
    return QLocale::system().name().toStdString();
}

/// The locales to look for, the best first. A list of languages counts only where texts are to be
/// translated at all.
std::vector<std::string> WantedLocales() {
    const std::string system = SystemLocale();
    std::vector<std::string> wanted;
    if (system != "C" && system != "POSIX") {
        std::stringstream list(Variable("LANGUAGE"));
        for (std::string locale; std::getline(list, locale, ':');)
            if (!locale.empty()) wanted.push_back(PlainLocale(locale));
    }
    wanted.push_back(system);
    return wanted;
}

/// Name of the language file that suits a locale best: one that names it whole comes before one
/// that names its language alone. Empty when no file names either.
std::string LanguageFor(const std::string& locale, const std::string& languages) {
    const std::string language = locale.substr(0, locale.find('_'));
    std::string best;
    for (const std::string& file : FilesMatching(languages, ".ini")) {
        std::stringstream locales(
            ReadProfileString(JoinPath(languages, file), "General", "Locales", "", 255));
        for (std::string named; std::getline(locales, named, ',');) {
            std::string name = file.substr(0, file.size() - 4);
            if (named == locale) return name;
            if (named == language) best = name;
        }
    }
    return best;
}

/// What a new user starts with: the texts of the system's language, where there is a file for it.
std::string FirstLanguage(const std::string& data) {
    for (const std::string& locale : WantedLocales()) {
        std::string language = LanguageFor(locale, JoinPath(data, kLanguages));
        if (!language.empty()) return language;
    }
    return ReadProfileString(JoinPath(data, kSettings), "Options", "Language", "", kLongestSetting);
}

bool HasSetting(const std::string& file, const ProfileEntry& setting) {
    // No value can hold a line break, so that one stands for a missing key.
    constexpr const char* kMissing = "\n";
    return ReadProfileString(file, setting.Section, setting.Key, kMissing, kLongestSetting) !=
           kMissing;
}

/// The settings that are installed and that the user's file does not have.
std::vector<ProfileEntry> MissingSettings(const std::string& installed, const std::string& own) {
    std::vector<ProfileEntry> missing;
    for (const std::string& section : ProfileSections(installed)) {
        for (const std::string& key : ProfileKeys(installed, section)) {
            const ProfileEntry setting = {
                section, key, ReadProfileString(installed, section, key, "", kLongestSetting)};
            if (!HasSetting(own, setting)) missing.push_back(setting);
        }
    }
    return missing;
}

/// Makes room for the installed files where an earlier version has put copies of them.
/// @return true when none of them is left
bool RemoveCopies(const std::string& folder, const std::string& data, bool cutShort) {
    const OldCopies copies = RemoveOldCopies(folder, data, cutShort);
    if (copies.Differing > 0)
        std::fprintf(stderr,
                     "dravik: files in %s that are not as installed, and are used in their place: "
                     "%d; delete those that you have not changed\n",
                     folder.c_str(), copies.Differing);
    return copies.AllGone;
}

/// Prepares the user's folder to lie over the installed data, and gives it its settings, or those
/// that it lacks: all of them when it is new, some when the program ran in it without having been
/// able to write them.
/// @return what could not be made without which nothing can be kept; or nothing
std::optional<std::string> PrepareFolder(const std::string& folder, const std::string& data) {
    const std::string own = JoinPath(folder, kSettings);
    const bool lacking = ProfileKeys(own, "Options").empty();
    if (!lacking && HasSetting(own, kLayered)) return std::nullopt;
    if (!PathOf(folder).is_absolute() || !MakeFolder(folder)) return folder;

    const std::string installed = JoinPath(data, kSettings);
    const ProfileEntry language = {"Options", "Language", FirstLanguage(data)};
    std::vector<ProfileEntry> entries;
    if (lacking && FileExists(own)) entries = MissingSettings(installed, own);
    if (lacking && !HasSetting(own, language)) entries.push_back(language);  // the last one stays
    if (RemoveCopies(folder, data, lacking)) entries.push_back(kLayered);
    const bool written = !WriteProfiles({{own, entries, installed}});
    if (lacking && !written) return own;
    return std::nullopt;
}

void LayOverInstalledData(const std::string& folder, LaunchOptions& launch) {
    launch.InstalledData = InstalledData();
    if (launch.InstalledData.empty()) return;
    if (const auto failed = PrepareFolder(folder, launch.InstalledData)) {
        std::fprintf(stderr,
                     "dravik: %s could not be made; Dravik runs from %s and keeps no settings\n",
                     failed->c_str(), launch.InstalledData.c_str());
        launch.KeepsNothing = true;
        if (launch.Language.empty()) launch.Language = FirstLanguage(launch.InstalledData);
    }
}

}  // namespace

std::string FindProgramFolder(const std::string& asked, LaunchOptions& launch) {
    std::string folder = asked;
    if (folder.empty()) {
        folder = ExecutableFolder();
        if (!FileExists(JoinPath(folder, kSettings))) {
            folder = UserFolder();
            LayOverInstalledData(folder, launch);
        }
    }
    while (folder.size() > 1 && (folder.ends_with('/') || folder.ends_with(kPathSeparator)))
        folder.pop_back();
    return folder;
}

}  // namespace dravik
