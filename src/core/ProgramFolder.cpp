#include "core/ProgramFolder.h"

#include <cstdio>
#include <filesystem>
#include <vector>

#include "platform/Paths.h"

namespace dravik {

namespace {

namespace fs = std::filesystem;

constexpr const char* kSettings = "Dravik.ini";

/// Where an installation keeps what the user's folder starts with.
std::vector<std::string> DataFolders() {
    const std::string program = ExecutableFolder();
    return {JoinPath(program, "../share/dravik"), JoinPath(program, "data"), program};
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
