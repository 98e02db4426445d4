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
                  "File5=file:///bin/sh\nFile6=more.pls\nFile7=ok.flac\n");
    ShowPlaylist(kMedia, folder_ / "music/a.pls");
    EXPECT_THAT(Texts(), ElementsAre("..", "more.pls", "ok.flac"));
}

TEST_F(Playlist, AddressesGoToThePlayerUnchangedAndThoseOfFilesAreResolved) {
    folder_.Write("program/skins/night/mp3.bmp", "x");
    const std::string file = folder_.Write("music/a.pls",
                                           "\xEF\xBB\xBF"
                                           "File1=http://radio.example:8000/\r\n"
                                           "Title2=News\r\nFile2=HTTPS://h/a%20b.mp3?x=1\r\n"
                                           "File3=mms://h/run.exe\r\nFile4=file:///m/a%20b.mp3\r\n"
                                           "File5=FILE://localhost/m/%C3%BC.ogg\r\n"
                                           "File6=file://other/m/a.mp3\r\nFile7=a://b.mp3\r\n");
    ShowFolder(kMedia, "pls,", folder_ / "music");
    Activate("a.pls");
    EXPECT_THAT(Lines(),
                ElementsAre("..|parent|plspar~/music/a.pls",
                            "http://radio.example:8000/|standard|Mediumhttp://radio.example:8000/",
                            "News|standard|MediumHTTPS://h/a%20b.mp3?x=1",
                            "mms://h/run.exe|standard|Mediummms://h/run.exe",
                            "a b.mp3|mp3|Medium/m/a b.mp3", "ü.ogg|standard|Medium/m/ü.ogg",
                            "file://other/m/a.mp3|mp3|Mediumfile://other/m/a.mp3",
                            "b.mp3|mp3|Mediuma://b.mp3"));
    Activate("News");
    EXPECT_THAT(played_, ElementsAre("HTTPS://h/a%20b.mp3?x=1"));
}

TEST_F(Playlist, PlainListsAreReadLikeNumberedOnes) {
    const std::string text =
        "\xEF\xBB\xBF#EXTM3U\r\n#EXTINF:123,One, first\r\nsub\\one.mp3\r\n\r\n# a comment\r\n"
        "/abs/two.ogg\r\nrun.exe\r\n#EXTINF:-1\r\nhttp://h/live";
    for (const char* name : {"a.m3u", "b.M3U8"}) {
        folder_.Write(std::string("music/") + name, text);
        ShowFolder(kPlaylist, "*.pls,*.m3u,*.m3u8,", folder_ / "music");
        SelectListEntry(List(kPlaylist), 2);
        ActivateListEntry(kPlaylist);
        EXPECT_THAT(Lines(kPlaylist), ElementsAre("..|parent|plspar~/music/" + std::string(name),
                                                  "One, first|standard|Medium~/music/sub\\one.mp3",
                                                  "two.ogg|standard|Medium/abs/two.ogg",
                                                  "http://h/live|standard|Mediumhttp://h/live"));
        fs::remove(folder_ / (std::string("music/") + name));
    }
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
