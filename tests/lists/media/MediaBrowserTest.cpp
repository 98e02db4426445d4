#include <unistd.h>

#include "lists/media/MediaEntry.h"
#include "lists/media/MediaFixture.h"
#include "platform/MountTable.h"
#include "platform/ShellFolder.h"
#include "support/ChildProcess.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using MediaBrowser = MediaTest;

constexpr const char* kNotFound = "Media Directory not found!";

TEST_F(MediaBrowser, ShowsTheWayUpThenFoldersThenTheFilesOfTheFilter) {
    for (const char* name : {"c.d.mp3", "dot.", "B.PLS", "song.wav", "no extension", "mp3",
                             "notes.txt", ".hidden.mp3", "Äpfel.MP3", "äpfel.mp3"})
        folder_.Write("music/" + std::string(name), "x");
    for (const char* name : {"old.zip", "older.RAR", "b side", "A side", "zip", ".git"})
        fs::create_directory(folder_ / ("music/" + std::string(name)));
    folder_.Write("program/skins/night/MP3.png", "x");
    folder_.Write("program/skins/night/wav.txt", "x");

    EXPECT_TRUE(ShowFolder(kMedia, "Mp3,pls,", folder_ / "music"));
    EXPECT_THAT(
        Lines(),
        ElementsAre("..|parent|~/music",  //
                    "A side|folder|folder~/music/A side", "b side|folder|folder~/music/b side",
                    "zip|folder|folder~/music/zip", "B.PLS|standard|PlList~/music/B.PLS",
                    "c.d.mp3|mp3|Medium~/music/c.d.mp3", "Äpfel.MP3|mp3|Medium~/music/Äpfel.MP3",
                    "äpfel.mp3|mp3|Medium~/music/äpfel.mp3"));
    EXPECT_EQ(Media().Folder, folder_ / "music");
    EXPECT_EQ(Media().Selected, 1);
    EXPECT_THAT(messages_, IsEmpty());

    EXPECT_TRUE(ShowFolder(kPlaylist, "*.pls,", folder_ / "music"));
    EXPECT_THAT(Texts(kPlaylist), ElementsAre("..", "A side", "b side", "zip", "B.PLS"));
    EXPECT_EQ(Texts().size(), 8U) << "every slot has entries of its own";
}

TEST_F(MediaBrowser, PicturesOfDrivesFollowTheGermanWordsExactly) {
    EXPECT_STREQ(FolderPicture("Lokaler Datentr\xC3\xA4ger"), "harddisk");
    EXPECT_STREQ(FolderPicture("CD-Laufwerk"), "cddrive");
    EXPECT_STREQ(FolderPicture("Wechseldatentr\xC3\xA4ger"), "removeable");
    for (const char* other : {"Lokaler Datentraeger", "CD-laufwerk", "Local Disk", "CD-Laufwerk ",
                              "Lokaler Datentr\xE4ger", "folder", ""})
        EXPECT_STREQ(FolderPicture(other), "folder") << other;
}

TEST_F(MediaBrowser, TheTopListsTheHomeFolderAndVolumesAndHasNothingAbove) {
    EXPECT_TRUE(ShowFolder(kMedia, "mp3,", kTopFolder));
    ASSERT_GE(Lines().size(), 2U);
    EXPECT_EQ(Lines()[0], "..|parent|rooootDesktop");
    EXPECT_EQ(Lines()[1], "home|folder|folder~/home");
    EXPECT_FALSE(HasParentFolder(kTopFolder));
    ActivateListEntry(kMedia);
    EXPECT_EQ(Media().Folder, kTopFolder);

    for (const std::string& below : {std::string("/"), folder_ / "home", folder_ / "home/"})
        EXPECT_EQ(ParentFolder(below), kTopFolder) << below;
    EXPECT_EQ(ParentFolder(folder_ / "home/music"), folder_ / "home");
    EXPECT_EQ(ParentFolder("/usr"), "/");
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(MediaBrowser, VolumesComeFromTheMountTable) {
    EXPECT_THAT(VolumesIn("overlay / overlay rw 0 0\nproc /proc proc rw 0 0\n"
                          "/dev/sdb1 /media/maria/MY\\040CAR\\134MUSIC vfat rw 0 0\n"
                          "/dev/sdb1 /media/maria/MY\\040CAR\\134MUSIC vfat rw 0 0\n"
                          "/dev/sda2 /boot ext4 rw 0 0\n\nbroken\n/dev/sdc /mnt/a\\09 ext4"),
                ElementsAre("/", "/media/maria/MY CAR\\MUSIC", "/mnt/a\\09"));
}

TEST_F(MediaBrowser, AFolderThatCannotBeReadLeavesTheWayUpAndTellsTheUser) {
    const std::string file = folder_.Write("music/song.mp3", "x");
    for (const std::string& folder : {folder_ / "gone", file}) {
        messages_.clear();
        EXPECT_FALSE(ShowFolder(kMedia, "mp3,", folder));
        EXPECT_THAT(messages_, ElementsAre(kNotFound)) << folder;
        EXPECT_EQ(dialog_.Kind(), 0);
        ASSERT_EQ(Media().Entries.size(), 1U);
        EXPECT_EQ(Media().Entries[0].Tag, folder);
        EXPECT_EQ(Media().Folder, folder);
    }

    fs::permissions(folder_ / "music", fs::perms::none);
    fs::permissions(folder_.Path(), fs::perms(0755));
    EXPECT_TRUE(HoldsInChild([this] {
        constexpr uid_t kNobody = 65534;
        if (::geteuid() == 0 && ::setuid(kNobody) != 0) return false;
        InitMessages(nullptr);  // the copy of the window cannot be used
        return !ShowFolder(kMedia, "mp3,", folder_ / "music") && Media().Entries.size() == 1;
    }));
    fs::permissions(folder_ / "music", fs::perms::owner_all);
}

TEST_F(MediaBrowser, OnlySlots0To8Exist) {
    EXPECT_TRUE(ShowFolder(8, "mp3,", folder_ / "music"));
    for (const int slot : {-1, 9}) {
        EXPECT_FALSE(ShowFolder(slot, "mp3,", folder_ / "music"));
        EXPECT_FALSE(ShowPlaylist(slot, folder_.Write("a.pls", "File1=a.mp3")));
        FillMediaList(slot);
        OpenParentFolder(slot);
        ActivateListEntry(slot);
    }
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(MediaBrowser, NamesOfAnyBytesAreShownOpenedAndPlayed) {
    const std::string names[] = {"caf\xE9", "\xFF\xFE",    "a\\b", "\\root",     "новая папка",
                                 "音楽",    "line\nbreak", "-rf",  "%20 \"'$(x)"};
    for (const std::string& name : names) folder_.Write("music/" + name + "/" + name + ".mp3", "x");
    for (const std::string& name : names) {
        ShowFolder(kMedia, "mp3,", folder_ / "music");
        Activate(name);
        EXPECT_EQ(Media().Folder, folder_ / ("music/" + name));
        played_.clear();
        Activate(name + ".mp3");
        EXPECT_THAT(played_, ElementsAre(folder_ / ("music/" + name + "/" + name + ".mp3")));
        ASSERT_TRUE(fs::exists(played_.at(0)));
    }
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(MediaBrowser, LinksAppearAsWhatTheyLeadTo) {
    folder_.Write("elsewhere/song.mp3", "x");
    fs::create_directory_symlink(folder_ / "elsewhere", folder_ / "music/folder link");
    fs::create_symlink(folder_ / "elsewhere/song.mp3", folder_ / "music/linked.mp3");
    fs::create_symlink(folder_ / "elsewhere", folder_ / "music/folder.mp3");
    fs::create_symlink(folder_ / "gone.mp3", folder_ / "music/dangling.mp3");
    fs::create_symlink(folder_ / "music/circle b.mp3", folder_ / "music/circle a.mp3");
    fs::create_symlink(folder_ / "music/circle a.mp3", folder_ / "music/circle b.mp3");
    EXPECT_TRUE(ShowFolder(kMedia, "mp3,", folder_ / "music"));
    EXPECT_THAT(Texts(), ElementsAre("..", "folder link", "folder.mp3", "linked.mp3"));
}

TEST_F(MediaBrowser, FollowingLinksInACircleDoesNotLengthenThePath) {
    fs::create_directories(folder_ / "music/a/b");
    fs::create_directory_symlink("../..", folder_ / "music/a/b/back");
    fs::create_directory_symlink("b", folder_ / "music/a/beside");
    ShowFolder(kMedia, "mp3,", folder_ / "music");
    for (int round = 0; round < 3; ++round) {
        Activate("a");
        Activate("beside");
        EXPECT_EQ(Media().Folder, folder_ / "music/a/beside");
        Activate("back");
        EXPECT_EQ(Media().Folder, folder_ / "music");
    }
    EXPECT_THAT(messages_, IsEmpty());
}

}  // namespace
}  // namespace dravik
