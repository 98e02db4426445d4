#include "core/ProgramFolder.h"

#include <QLocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <vector>

#include "platform/Paths.h"
#include "platform/Profile.h"

namespace dravik {

namespace {

namespace fs = std::filesystem;

constexpr const char* kSettings = "Dravik.ini";

/// Where an installation keeps what the user's folder starts with.
std::vector<std::string> DataFolders() {
    const std::string program = ExecutableFolder();
    return {JoinPath(program, "../share/dravik"), JoinPath(program, "data"), program};
}

/// The system's locale as the environment names it, such as "de_DE"; empty when it names none.
std::string SystemLocale() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr || *value == 0) continue;
        const std::string locale = value;
        return locale.substr(0, locale.find_first_of(".@"));
    }
    return QLocale::system().name().toStdString();
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
            const std::string name = file.substr(0, file.size() - 4);
            if (named == locale) return name;
            if (named == language) best = name;
        }
    }
    return best;
}

/// A new user sees the texts of the system's language, where there is a file for it.
void ChooseLanguage(const std::string& folder) {
    const std::string language = LanguageFor(SystemLocale(), JoinPath(folder, "languages"));
    if (!language.empty())
        WriteProfileString(JoinPath(folder, kSettings), "Options", "Language", language);
}

void FillFolder(const std::string& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    for (const std::string& data : DataFolders()) {
        if (!FileExists(JoinPath(data, kSettings))) continue;
        // The settings come last: a folder that has them counts as filled.
        for (const char* name : {"skins", "languages", "Dravik.jpg", kSettings}) {
            if (!fs::exists(JoinPath(data, name))) continue;
            fs::copy(JoinPath(data, name), JoinPath(folder, name),
                     fs::copy_options::recursive | fs::copy_options::skip_existing, error);
            if (error) break;
        }
        // Installed files may be read-only; the user's own are not.
        std::error_code ignored;
        fs::permissions(JoinPath(folder, kSettings), fs::perms::owner_write, fs::perm_options::add,
                        ignored);
        ChooseLanguage(folder);
        break;
    }
    if (error)
        std::fprintf(stderr, "%s: could not be filled: %s\n", folder.c_str(),
                     error.message().c_str());
}

}  // namespace

std::string FindProgramFolder(const std::string& asked) {
    std::string folder = asked;
    if (folder.empty()) {
        folder = ExecutableFolder();
        if (!FileExists(JoinPath(folder, kSettings))) {
            folder = UserFolder();
            if (!FileExists(JoinPath(folder, kSettings))) FillFolder(folder);
        }
    }
    while (folder.size() > 1 && (folder.ends_with('/') || folder.ends_with(kPathSeparator)))
        folder.pop_back();
    return folder;
}

}  // namespace dravik
