#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "support/TemporaryFolder.h"

/// What the fuzz programs share. Each runs in one process, in an application object without a
/// display, and puts the shared state back before every input.
namespace dravik::fuzz {

/// What a fuzz program defines: one run on one input.
void Run(std::string_view input);

/// Takes the part in front of the next line "===" off the input, so that a seed of several parts
/// can be read and written as text.
inline std::string_view TakePart(std::string_view& input) {
    constexpr std::string_view kMark = "\n===\n";
    const std::size_t end = input.find(kMark);
    const std::string_view part = input.substr(0, end);
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + kMark.size());
    return part;
}

/// The same for lines.
inline std::string_view TakeLine(std::string_view& input) {
    const std::size_t end = input.find('\n');
    const std::string_view line = input.substr(0, end);
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
    return line;
}

/// Ends the program when what always holds does not; the fuzzer then keeps the input.
inline void Require(bool holds, const char* what, const std::string& shown = {}) {
    if (holds) return;
    std::fprintf(stderr, "Does not hold: %s: \"%s\"\n", what, shown.c_str());
    std::abort();
}

/// A folder of this process.
inline const TemporaryFolder& Folder() {
    static const TemporaryFolder folder;
    return folder;
}

/// Makes the file's time stamp one of its own in the future: a file that was changed just now is
/// parsed anew for every key that is read from it.
inline void Settle(const std::string& path) {
    static std::chrono::nanoseconds ahead = std::chrono::hours(1);
    ahead += std::chrono::microseconds(1);
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() +
                  std::chrono::duration_cast<std::filesystem::file_time_type::duration>(ahead));
}

/// Writes a file of the folder and gives its path.
inline std::string WriteFile(std::string_view name, std::string_view text) {
    std::string path = Folder().Write(name, text);
    Settle(path);
    return path;
}

}  // namespace dravik::fuzz
