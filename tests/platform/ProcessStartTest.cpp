#include "platform/ProcessStart.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/TemporaryFolder.h"
#include "support/Waiting.h"

namespace dravik {
namespace {

/// A program that writes down its arguments and where its output goes.
std::string WriteProgram(const TemporaryFolder& folder, const std::string& name) {
    std::string program =
        folder.Write(name, "#!/bin/sh\nfolder='" + folder.Path() +
                               "'\necho \"$#:$*:$(readlink /proc/$$/fd/1)\" > \"$folder/part\"\n"
                               "mv \"$folder/part\" \"$folder/told\"\n");
    std::filesystem::permissions(program, std::filesystem::perms(0755));
    return program;
}

/// What the program wrote down; empty when it never ran.
std::string Told(const TemporaryFolder& folder) {
    Until([&folder] { return !folder.Read("told").empty(); });
    std::string told = folder.Read("told");
    std::filesystem::remove(folder / "told");
    return told;
}

TEST(ProcessStart, StartsAFileOrACommandLineApartFromTheConsole) {
    const TemporaryFolder folder;
    const std::string plain = WriteProgram(folder, "keyboard");
    const std::string blanks = WriteProgram(folder, "on screen/key board");
    EXPECT_TRUE(StartMinimised(plain));
    EXPECT_EQ(Told(folder), "0::/dev/null\n");
    EXPECT_TRUE(StartMinimised(blanks));
    EXPECT_EQ(Told(folder), "0::/dev/null\n");
    EXPECT_TRUE(StartMinimised(folder / "On Screen\\Key Board"));
    EXPECT_EQ(Told(folder), "0::/dev/null\n");
    EXPECT_TRUE(StartMinimised(plain + " --size \"1 2\""));
    EXPECT_EQ(Told(folder), "2:--size 1 2:/dev/null\n");
    EXPECT_FALSE(StartMinimised(folder / "missing"));
    EXPECT_FALSE(StartMinimised(""));
}

TEST(ProcessStart, FilesGoToTheSystemsOpener) {
    const TemporaryFolder folder;
    WriteProgram(folder, "bin/xdg-open");
    const std::string song = folder.Write("My Song.mp3", "x");
    const std::string path = std::getenv("PATH");
    ::setenv("PATH", ((folder / "bin:") + path).c_str(), 1);
    EXPECT_TRUE(OpenWithSystem(folder / "my song.MP3"));
    EXPECT_EQ(Told(folder), "1:" + song + ":/dev/null\n");
    EXPECT_FALSE(OpenWithSystem(folder / "missing.mp3"));
    ::setenv("PATH", (folder / "nothing").c_str(), 1);
    EXPECT_FALSE(OpenWithSystem(song));
    ::setenv("PATH", path.c_str(), 1);
}

}  // namespace
}  // namespace dravik
