#include "controls/FontFiles.h"

#include <QFontDatabase>
#include <cstdio>
#include <set>
#include <vector>

#include "controls/SkinText.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace dravik {

namespace {

constexpr const char* kExtensions[] = {".ttf", ".otf", ".ttc"};

std::vector<std::string> FontFilesOf(const std::string& folder) {
    std::set<std::string> files;
    for (const char* extension : kExtensions) {
        for (const std::string& name : FilesMatching(folder, extension))
            files.insert(ResolvePath(JoinPath(folder, name)));
    }
    return {files.begin(), files.end()};
}

/// One name for a file that Windows finds by any case of its letters.
std::string KeyOf(const std::string& file) {
    return kPathSeparator == '\\' ? LowerCased(file) : file;
}

/// By its name, not by its content: the file is then read where it is needed, and not kept whole.
bool LoadFontFile(const std::string& path) {
    return FileSize(path) && QFontDatabase::addApplicationFont(QString::fromUtf8(path)) >= 0;
}

}  // namespace

void LoadFontFiles(const std::string& folder) {
    static std::set<std::string> knownFolders, knownFiles;
    if (!knownFolders.insert(folder).second) return;
    for (const std::string& file : FontFilesOf(folder)) {
        // A folder may have two names, by the case of its letters.
        if (knownFiles.insert(KeyOf(file)).second && !LoadFontFile(file))
            std::fprintf(stderr, "dravik: %s holds no font that can be read\n", file.c_str());
    }
    ForgetSkinFonts();
}

}  // namespace dravik
