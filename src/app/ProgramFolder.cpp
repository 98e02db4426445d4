#include "app/ProgramFolder.h"

#include <QLocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <vector>

#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/ProfileEdit.h"

namespace dravik {

namespace {

namespace fs = std::filesystem;

constexpr const char* kSettings = "Dravik.ini";
constexpr const char* kSkins = "skins";
constexpr const char* kLanguages = "languages";
constexpr std::size_t kLongestSetting = 4096;  // bytes

fs::path PathOf(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

std::string TextOf(const fs::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

/// Where an installation keeps what the user's folder starts with; empty when there is none.
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

/// A folder lacks something when it is new, when its filling was cut short, and when the program
/// once ran in it without having been able to fill it.
bool IsFilled(const std::string& folder) {
    return !ProfileKeys(JoinPath(folder, kSettings), "Options").empty() &&
           FolderExists(JoinPath(folder, kSkins)) && FolderExists(JoinPath(folder, kLanguages));
}

/// Copies the content only, since installed files may be read-only and the user's own are not. Of
/// what is there already, an unfinished copy is finished and everything else belongs to the user.
bool CopyFile(const fs::path& from, const fs::path& to) {
    const std::optional<std::string> content = ReadWholeFile(TextOf(from));
    if (!content) return false;
    std::error_code error;
    if (fs::exists(to, error)) {
        const std::optional<std::string> present = ReadWholeFile(TextOf(to));
        if (!present || !content->starts_with(*present)) return true;
        fs::permissions(to, fs::perms::owner_write, fs::perm_options::add, error);
        if (present->size() == content->size()) return true;
    }
    std::ofstream file(to, std::ios::binary);
    file << *content;
    file.close();
    return !file.fail();
}

/// The first file or folder that could not be copied; nothing when all could.
std::optional<fs::path> CopyTree(const fs::path& from, const fs::path& to) {
    std::error_code error;
    if (!fs::is_directory(from, error)) {
        if (CopyFile(from, to)) return std::nullopt;
        return to;
    }
    fs::create_directory(to, error);
    if (!fs::is_directory(to, error)) return to;
    fs::permissions(to, fs::perms::owner_all, fs::perm_options::add, error);
    fs::directory_iterator entry(from, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        if (auto failed = CopyTree(entry->path(), to / entry->path().filename())) return failed;
    }
    if (error) return to;
    return std::nullopt;
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

/// Gives the folder its settings in one step, or adds those that it lacks.
bool FillSettings(const std::string& installed, const std::string& own,
                  const std::string& language) {
    const std::vector<ProfileEntry> first = {{"Options", "Language", language}};
    if (FileExists(own)) {
        std::vector<ProfileEntry> entries = MissingSettings(installed, own);
        if (!HasSetting(own, first[0])) entries.push_back(first[0]);  // the last of one name stays
        return WriteProfileEntries(own, entries);
    }
    const std::optional<std::string> text = ReadWholeFile(installed);
    if (!text) return false;
    const std::optional<std::string> settings = EditProfile(*text, first);
    return settings && ReplaceFile(own, *settings);
}

/// Fills the user's folder from the installed data; what could not be made, or nothing.
std::optional<fs::path> FillFolder(const std::string& folder, const std::string& data) {
    const fs::path root = PathOf(folder);
    if (!root.is_absolute()) return root;
    std::error_code error;
    fs::create_directories(root, error);
    if (!fs::is_directory(root, error)) return root;
    for (const char* name : {kSkins, kLanguages, "Dravik.jpg"}) {
        const std::string from = JoinPath(data, name);
        if (!fs::exists(PathOf(from), error)) continue;
        if (auto failed = CopyTree(PathOf(from), PathOf(ResolvePath(JoinPath(folder, name)))))
            return failed;
    }
    FlushFiles();  // a power cut must not leave settings that say "filled" beside empty files
    // The settings come last: a folder that has them counts as filled.
    const std::string settings = JoinPath(folder, kSettings);
    if (!FillSettings(JoinPath(data, kSettings), settings, FirstLanguage(data)))
        return PathOf(settings);
    return std::nullopt;
}

/// Without a folder of the user's own the program runs on what is installed.
void UseInstalledData(const std::string& data, LaunchOptions& launch) {
    launch.InstalledData = data;
    if (launch.Skin.empty())
        launch.Skin =
            ReadProfileString(JoinPath(data, kSettings), "Options", "Skin", "", kLongestSetting);
    if (launch.Language.empty()) launch.Language = FirstLanguage(data);
}

std::string FilledUserFolder(LaunchOptions& launch) {
    std::string folder = UserFolder();
    const std::string data = InstalledData();
    if (data.empty() || IsFilled(folder)) return folder;
    if (const auto failed = FillFolder(folder, data)) {
        std::fprintf(stderr,
                     "dravik: %s could not be made; Dravik runs from %s and keeps no settings\n",
                     TextOf(*failed).c_str(), data.c_str());
        UseInstalledData(data, launch);
    }
    return folder;
}

}  // namespace

std::string FindProgramFolder(const std::string& asked, LaunchOptions& launch) {
    std::string folder = asked;
    if (folder.empty()) {
        folder = ExecutableFolder();
        if (!FileExists(JoinPath(folder, kSettings))) folder = FilledUserFolder(launch);
    }
    while (folder.size() > 1 && (folder.ends_with('/') || folder.ends_with(kPathSeparator)))
        folder.pop_back();
    return folder;
}

}  // namespace dravik
