#include "lists/media/MediaFixture.h"
#include "skinfunc/basValueProc.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Playlist = MediaTest;

TEST_F(Playlist, ShowsItsTracksByNumberWithTheirTitles) {
    const std::string file = folder_.Write("music/Road.pls",
                                           "\xEF\xBB\xBF[Playlist]\r\n"
                                           "NumberOfEntries=4\r\n"
                                           "File10 = last.ogg\r\n"
                                           "file2=sub\\Two.MP3\r\n"
                                           "FILE1=sub/one.mp3\r\n"
                                           "Title1=  One = first  \r\n"
                                           "File2=not this.mp3\r\n"
                                           "Length1=-1\r\n"
                                           ";File3=comment.mp3\r\n"
                                           "Title4=no file\r\n"
                                           "File5=\r\n"
                                           "File=no number.mp3\r\n"
                                           "File7x=no number.mp3\r\n"
                                           "File6=/abs/six.wav\r\n"
                                           "File8=E:\\eight.wma\r\n"
                                           "[Other]\r\n"
                                           "File9=elsewhere.mp3");
    folder_.Write("program/skins/night/mp3.bmp", "x");
    ShowFolder(kMedia, "pls,", folder_ / "music");
    Activate("Road.pls");
    EXPECT_THAT(
        Lines(),
        ElementsAre("..|parent|plspar~/music/Road.pls", "One = first|mp3|Medium~/music/sub/one.mp3",
                    "Two.MP3|mp3|Medium~/music/sub\\Two.MP3", "six.wav|standard|Medium/abs/six.wav",
                    "eight.wma|standard|MediumE:\\eight.wma",
                    "last.ogg|standard|Medium~/music/last.ogg"));
    EXPECT_EQ(Media().Folder, folder_ / "music") << "the folder is still that of the playlists";
    std::string function = "currentfolder";
    EXPECT_EQ(LabelText(function), "Road.pls");
}

TEST_F(Playlist, LeadsToMediaFilesOnly) {
    folder_.Write("music/a.pls",
                  "File1=run.exe\nFile2=script.sh\nFile3=tool.desktop\nFile4=/bin/sh\n"
                  "File5=http://radio.example:8000/\nFile6=more.pls\nFile7=ok.flac\n");
    ShowPlaylist(kMedia, folder_ / "music/a.pls");
    EXPECT_THAT(Texts(), ElementsAre("..", "more.pls", "ok.flac"));
}

TEST_F(Playlist, TheWayUpListsThePlaylistsOfTheFolderAgain) {
    folder_.Write("music/b.pls", "File1=x.mp3\n");
    folder_.Write("music/inner/c.pls", "File1=../b.pls\n");
    folder_.Write("music/a.mp3", "x");
    ShowFolder(kMedia, "mp3,pls,", folder_ / "music");
    Activate("b.pls");
    EXPECT_THAT(Texts(), ElementsAre("..", "x.mp3"));
    ExecuteCommand("gofolder_parent");
    EXPECT_THAT(Texts(), ElementsAre("..", "inner", "b.pls"));
    EXPECT_EQ(SelectedText(), "b.pls");

    Activate("b.pls");
    Activate("..");
    EXPECT_THAT(Texts(), ElementsAre("..", "inner", "b.pls"))
        << "the entry does what the command does";

    Activate("inner");
    Activate("c.pls");
    Activate("b.pls");
    EXPECT_THAT(Texts(), ElementsAre("..", "x.mp3")) << "a playlist may lead to another";
    ExecuteCommand("gofolder_parent");
    EXPECT_EQ(Media().Folder, folder_ / "music/inner");
    EXPECT_THAT(Texts(), ElementsAre("..", "c.pls"));
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(Playlist, APlaylistThatCannotBeReadLeavesTheListAsItIs) {
    folder_.Write("music/a.pls", "File1=x.mp3\n");
    fs::create_directory(folder_ / "music/folder");
    ShowFolder(kMedia, "pls,", folder_ / "music");
    fs::remove(folder_ / "music/a.pls");
    Activate("a.pls");
    EXPECT_THAT(messages_, ElementsAre("Media file could not be opened!"));
    EXPECT_THAT(Texts(), ElementsAre("..", "folder", "a.pls"));
    EXPECT_FALSE(ShowPlaylist(kMedia, folder_ / "music/folder"));
}

}  // namespace
}  // namespace dravik
