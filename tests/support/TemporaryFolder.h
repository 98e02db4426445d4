#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <QTemporaryDir>

namespace dravik {

/// A folder of its own for one test, removed with everything in it.
class TemporaryFolder {
 public:
    std::string Path() const { return folder_.path().toStdString(); }

    /// The path of a name in the folder.
    std::string operator/(std::string_view name) const { return Path() + '/' + std::string(name); }

    /// Writes a file, making the folders on its way, and gives its path.
    std::string Write(std::string_view name, std::string_view content) const {
        std::string path = *this / name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

    /// The content of a file; empty when there is none.
    std::string Read(std::string_view name) const {
        std::ifstream file(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// Number of files in the folder, hidden ones included.
    std::ptrdiff_t FileCount() const {
        return std::distance(std::filesystem::directory_iterator(Path()), {});
    }

 private:
    QTemporaryDir folder_;
};

}  // namespace dravik
