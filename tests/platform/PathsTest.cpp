#include "platform/Paths.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Paths, JoiningPutsOneSeparatorBetween) {
    const std::string separator(1, kPathSeparator);
    EXPECT_EQ(JoinPath("a", "b"), "a" + separator + "b");
    EXPECT_EQ(JoinPath("a/", "\\b"), "a/b");
    EXPECT_EQ(JoinPath("a\\", "b"), "a\\b");
    EXPECT_EQ(JoinPath("/", "b"), "/b");
    EXPECT_EQ(JoinPath("", "b"), "b");
}

TEST(Paths, FilesAndFoldersAreToldApart) {
    const TemporaryFolder folder;
    folder.Write("skins/a.ini", "x");
    EXPECT_TRUE(FileExists(folder / "skins\\a.ini"));
    EXPECT_FALSE(FolderExists(folder / "skins\\a.ini"));
    EXPECT_TRUE(FolderExists(folder / "skins"));
    EXPECT_TRUE(FolderExists(folder / "skins\\"));
    EXPECT_FALSE(FileExists(folder / "skins"));
    EXPECT_FALSE(FileExists(folder / "skins/b.ini"));
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(folder / std::string_view("skins/a.ini\0", 12)));
}

TEST(Paths, FilesOfAnExtensionAreSortedWithoutRegardToCase) {
    const TemporaryFolder folder;
    for (const char* name : {"beta.INI", "Alpha.ini", "gamma.ini.bak", "delta.Ini", "ini", "x.txt",
                             "sub.ini/inside.ini"})
        folder.Write(name, "");
    EXPECT_THAT(FilesMatching(folder.Path(), ".ini"),
                ElementsAre("Alpha.ini", "beta.INI", "delta.Ini"));
    EXPECT_THAT(FilesMatching(folder / "missing", ".ini"), IsEmpty());
}

TEST(Paths, ReadingGivesAllBytesOrNothing) {
    const TemporaryFolder folder;
    const std::string bytes("a\r\n\0\xFF z", 7);
    folder.Write("a", bytes);
    EXPECT_EQ(ReadWholeFile(folder / "a"), bytes);
    folder.Write("empty", "");
    EXPECT_EQ(ReadWholeFile(folder / "empty"), "");
    EXPECT_EQ(ReadWholeFile(folder / "missing"), std::nullopt);
    EXPECT_EQ(ReadWholeFile(folder.Path()), std::nullopt);
}

#ifndef _WIN32
TEST(Paths, ResolvingFindsNamesInAnyCaseComponentByComponent) {
    const TemporaryFolder folder;
    folder.Write("Skins/Default/Main.PNG", "x");
    folder.Write("Skins/Über.png", "x");
    folder.Write("b/a.txt", "exact");
    folder.Write("B/A.txt", "other");
    folder.Write("two/Name", "1");
    folder.Write("two/nAME", "2");
    const std::pair<const char*, const char*> rows[] = {
        {"Skins/Default/Main.PNG", "Skins/Default/Main.PNG"},
        {"skins\\default\\main.png", "Skins/Default/Main.PNG"},
        {"SKINS//DEFAULT/..\\.\\Default\\MAIN.png", "Skins/Default/.././Default/Main.PNG"},
        {"skins\\", "Skins/"},
        {"skins\\new.png", "Skins/new.png"},
        {"skins\\new\\Deep.png", "Skins/new/Deep.png"},
        {"skins\\default\\main.png\\below", "Skins/Default/Main.PNG/below"},
        {"skins\\üBER.PNG", "Skins/Über.png"},
        {"skins\\\374ber.png", "Skins/Über.png"},
        {"b\\a.txt", "b/a.txt"},
        {"two\\NAME", "two/Name"},
    };
    for (const auto& [path, resolved] : rows)
        EXPECT_EQ(ResolvePath(folder / path), folder / resolved) << path;
    folder.Write("a\\b", "a name with a backslash");
    folder.Write("a/b", "a folder");
    EXPECT_EQ(ReadWholeFile(folder / "a\\b"), "a name with a backslash");
}

TEST(Paths, RelativeNamesStayRelative) {
    const TemporaryFolder folder;
    folder.Write("Save/Picture.bmp", "x");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    EXPECT_EQ(ResolvePath("save\\picture.bmp"), "Save/Picture.bmp");
    EXPECT_EQ(ResolvePath("new.txt"), "new.txt");
    std::filesystem::current_path(before);
}

TEST(Paths, TheUsersFolderFollowsTheEnvironment) {
    const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
    ::setenv("HOME", "/home/driver", 1);
    ::setenv("XDG_CONFIG_HOME", "/etc/car", 1);
    EXPECT_EQ(UserFolder(), "/etc/car/dravik");
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(UserFolder(), "/home/driver/.config/dravik");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(UserFolder(), "/home/driver/.config/dravik");
    ::setenv("HOME", home.c_str(), 1);
}
#endif

}  // namespace
}  // namespace dravik
