#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/FileReplacement.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

/// Gives up the rights of the superuser, to whom no file is protected.
bool BecomeOrdinaryUser() {
    return ::geteuid() != 0 || ::setuid(kNobody) == 0;
}

TEST(ReplaceFile, KeepsPermissionsAndMakesNewFiles) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a", "old and longer");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    folder.Write(".a.tmp", "left behind by a killed writer, longer than anything else here");
    EXPECT_TRUE(ReplaceFile(file, "new"));
    EXPECT_EQ(folder.Read("a"), "new");
    struct stat info;
    ASSERT_EQ(::stat(file.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640U);
    EXPECT_TRUE(ReplaceFile(folder / "b", ""));
    EXPECT_EQ(ReadWholeFile(folder / "b"), "");
    EXPECT_EQ(folder.FileCount(), 2);
}

TEST(ReplaceFile, LinksStayLinks) {
    const TemporaryFolder folder;
    folder.Write("real/file", "old");
    fs::create_symlink("real/file", folder / "near");
    fs::create_symlink(folder / "near", folder / "far");
    fs::create_symlink("real/not yet", folder / "dangling");
    EXPECT_TRUE(ReplaceFile(folder / "far", "new"));
    EXPECT_TRUE(ReplaceFile(folder / "dangling", "made"));
    EXPECT_EQ(folder.Read("real/file"), "new");
    EXPECT_EQ(folder.Read("real/not yet"), "made");
    for (const char* link : {"near", "far", "dangling"})
        EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
}

TEST(ReplaceFile, WhatIsNoPlainFileIsRefused) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "sub");
    fs::create_symlink("loop", folder / "loop");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const char* name : {"sub", "pipe", "missing/file", "loop"})
        EXPECT_FALSE(ReplaceFile(folder / name, "x")) << name;
    EXPECT_FALSE(ReplaceFile("", "x"));
    EXPECT_EQ(ReadWholeFile(folder / "pipe"), std::nullopt);
}

// A limit on the size of files stops the write half-way, as a full disk does.
TEST(ReplaceFile, AFullDiskLeavesTheOldFileWholeAndNoLitter) {
    const TemporaryFolder folder;
    const std::string old = "[s]\nk=1\n" + std::string(8000, ';');
    const std::string file = folder.Write("a.ini", old);
    EXPECT_TRUE(HoldsInChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4096, 4096};
        return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
               !ReplaceFile(file, std::string(9000, 'x')) &&
               !WriteProfileString(file, "s", "k", "2") && ReadProfileInt(file, "s", "k", 0) == 1;
    }));
    EXPECT_EQ(folder.Read("a.ini"), old);
    EXPECT_EQ(folder.FileCount(), 1);
}

TEST(ReplaceFile, ProtectedFilesAndFoldersStayAsTheyAre) {
    const TemporaryFolder folder;
    fs::permissions(folder.Path(), fs::perms(0777));
    const std::string file = folder.Write("file", "[s]\nk=1\n");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    const std::string secret = folder.Write("secret", "[s]\nk=1\n");
    ASSERT_EQ(::chmod(secret.c_str(), 0200), 0);
    const std::string inside = folder.Write("locked/file", "[s]\nk=1\n");
    ASSERT_EQ(::chmod(inside.c_str(), 0666), 0);
    ASSERT_EQ(::chmod((folder / "locked").c_str(), 0555), 0);
    EXPECT_TRUE(HoldsInChild([&] {
        return BecomeOrdinaryUser() && !WriteProfileString(file, "s", "k", "2") &&
               !WriteProfileString(secret, "s", "k", "2") &&
               !WriteProfileString(inside, "s", "k", "2") && ReplaceFile(folder / "free", "x");
    }));
    for (const char* name : {"file", "secret", "locked/file"}) {
        ASSERT_EQ(::chmod((folder / name).c_str(), 0600), 0);
        EXPECT_EQ(folder.Read(name), "[s]\nk=1\n") << name;
    }
    ASSERT_EQ(::chmod((folder / "locked").c_str(), 0700), 0);
    EXPECT_EQ(folder.FileCount(), 4);
}

// Whoever can write into the folder could have put it there to have another file overwritten.
TEST(ReplaceFile, AHardLinkInThePlaceOfTheTemporaryFileIsNotWrittenThrough) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a", "old");
    folder.Write("precious", "kept");
    fs::create_hard_link(folder / "precious", folder / ".a.tmp");
    EXPECT_TRUE(ReplaceFile(file, "new"));
    EXPECT_EQ(folder.Read("precious"), "kept");
    EXPECT_EQ(folder.Read("a"), "new");
}

TEST(ReplaceFile, WritersOfSeveralKeysNeverUndoEachOther) {
    constexpr int kWriters = 3;
    constexpr int kRounds = 40;
    const TemporaryFolder folder;
    const std::string file = folder.Write("Dravik.ini", "[s]\n");
    std::vector<pid_t> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
        writers.push_back(StartChild([&] {
            for (int i = 0; i < kRounds;) {
                const std::string key = "k" + std::to_string(writer) + "_" + std::to_string(i);
                if (WriteProfileString(file, "s", key, "1"))
                    ++i;  // one that never gets its turn is told so
            }
        }));
    }
    for (const pid_t writer : writers) {
        int status = -1;
        ASSERT_EQ(::waitpid(writer, &status, 0), writer);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(ProfileKeys(file, "s").size(), static_cast<std::size_t>(kWriters * kRounds));
    EXPECT_EQ(folder.FileCount(), 1);
}

TEST(ReplaceFile, ALockIsGivenUpForAndEndsWithAKilledOwner) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("Dravik.ini", "[s]\nk=1\n");
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t owner = StartChild([&] {
        const FolderLock lock({file});
        if (lock.Held() && ::write(ready[1], "r", 1) == 1) ::pause();
    });
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_FALSE(WriteProfileString(file, "s", "k", "2"));
    EXPECT_EQ(folder.Read("Dravik.ini"), "[s]\nk=1\n");
    ::kill(owner, SIGKILL);
    ::waitpid(owner, nullptr, 0);
    EXPECT_TRUE(WriteProfileString(file, "s", "k", "2"));
    for (const int end : ready) ::close(end);
}

TEST(ReplaceFile, SeveralProfilesAreWrittenAllOrNone) {
    const TemporaryFolder folder;
    const auto changes = [&](const char* value, const char* last) {
        return std::vector<ProfileChange>{{folder / "a.ini", {{"s", "k", value}}},
                                          {folder / "new.ini", {{"s", "k", value}}},
                                          {folder / "a.ini", {{"s", "x", value}}},
                                          {folder / last, {{"s", "k", value}}}};
    };
    folder.Write("a.ini", "[s]\nk=1\nx=1\n");
    fs::create_directory(folder / "folder");
    EXPECT_EQ(WriteProfiles(changes("2", "folder")), folder / "folder");
    // In such a folder, as the one for all users' temporary files is, only the owner of a file may
    // put another in its place: all is well up to the last step.
    folder.Write("shared/b.ini", "[s]\nk=1\n");
    fs::permissions(folder.Path(), fs::perms(0777));
    fs::permissions(folder / "shared", fs::perms(01777));
    for (const char* name : {"a.ini", "shared/b.ini"})
        fs::permissions(folder / name, fs::perms(0666));
    if (::geteuid() == 0) {
        EXPECT_TRUE(HoldsInChild([&] {
            return BecomeOrdinaryUser() &&
                   WriteProfiles(changes("2", "shared/b.ini")) == folder / "shared/b.ini";
        }));
    }
    EXPECT_EQ(folder.Read("a.ini"), "[s]\nk=1\nx=1\n");
    EXPECT_EQ(folder.Read("shared/b.ini"), "[s]\nk=1\n");
    EXPECT_EQ(folder.FileCount(), 3) << "nothing is left of the new ones";

    EXPECT_EQ(WriteProfiles(changes("2", "b.ini")), std::nullopt);
    EXPECT_EQ(folder.Read("a.ini"), "[s]\nk=2\nx=2\n") << "a file that is named twice";
    EXPECT_EQ(ReadProfileInt(folder / "new.ini", "s", "k", 0), 2);
}

TEST(ReplaceFile, WritersAtOnceNeverMix) {
    constexpr int kWriters = 3;
    constexpr int kRounds = 60;
    const auto contentOf = [](int writer) {
        return std::string(static_cast<std::size_t>(writer + 1) * 100'000,
                           static_cast<char>('a' + writer));
    };
    const TemporaryFolder folder;
    const std::string file = folder.Write("a", contentOf(0));
    std::vector<pid_t> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
        writers.push_back(StartChild([&] {
            const std::string content = contentOf(writer);
            for (int i = 0; i < kRounds;) {
                if (ReplaceFile(file, content)) ++i;  // as above
            }
        }));
    }
    int alive = kWriters;
    while (alive > 0) {
        const std::string content = folder.Read("a");
        ASSERT_FALSE(content.empty());
        ASSERT_TRUE(content == contentOf(content.front() - 'a'));
        int status = 0;
        while (alive > 0 && ::waitpid(-1, &status, WNOHANG) > 0) {
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
            --alive;
        }
    }
    EXPECT_EQ(folder.FileCount(), 1);
}

}  // namespace
}  // namespace dravik
