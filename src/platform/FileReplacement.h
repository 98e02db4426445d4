#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The steps of replacing files, for those who must see their old content before or replace several
/// at once; ReplaceFile in Paths.h does all of it for one file. Of files that are links, those that
/// they lead to are meant.
namespace dravik {

/// Keeps other processes from replacing files in the folders of these files. The system ends it
/// with the process, however that ends. At most one at a time in a process.
class FolderLock {
 public:
    /// Waits for others at most 400 ms: a writer needs a few, and one that is stuck must not hold
    /// up the end of the program.
    explicit FolderLock(const std::vector<std::string>& files);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// False when another process has not let go in time. Where the system cannot lock, nobody can
    /// be waited for, and it is true.
    bool Held() const { return held_; }

 private:
    std::vector<std::intptr_t> handles_;
    bool held_ = true;
};

/// The new content of a file, written beside it and flushed to the disk. Needs the lock.
class FileReplacement {
 public:
    FileReplacement(std::string_view path, std::string_view content);
    /// Takes away what has not been put in place.
    ~FileReplacement();
    FileReplacement(FileReplacement&& other) noexcept;
    FileReplacement& operator=(FileReplacement&&) = delete;

    /// False when it could not be written, or when the file is protected or no plain file.
    bool Ready() const;

    /// Puts the new content in the place of the old in one step; false when that failed and the
    /// old file is still there.
    bool Commit();

 private:
    std::string target_;
    std::string temporary_;
    std::intptr_t file_;
};

/// Takes a file away; nothing happens when there is none.
void RemoveFile(std::string_view path);

}  // namespace dravik
