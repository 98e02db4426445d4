#include "lists/media/MediaFixture.h"
#include "platform/ShellFolder.h"
#include "skinfunc/basValueProc.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Moving through folders: activation, the way up, and what the page's labels show meanwhile.
using MediaSteps = MediaTest;

TEST_F(MediaSteps, ActivationEntersFoldersPlaysFilesAndGoesUp) {
    folder_.Write("music/jazz/late/blue.mp3", "x");
    folder_.Write("music/jazz/blues.mp3", "x");
    folder_.Write("music/zz.txt", "x");
    ShowFolder(kMedia, "mp3,txt,", folder_ / "music");
    Activate("jazz");
    EXPECT_THAT(Texts(), ElementsAre("..", "late", "blues.mp3"));
    Activate("late");
    Activate("blue.mp3");
    EXPECT_THAT(played_, ElementsAre(folder_ / "music/jazz/late/blue.mp3"));
    EXPECT_EQ(SelectedText(), "blue.mp3") << "a played file stays selected";

    Activate("..");
    EXPECT_EQ(Media().Folder, folder_ / "music/jazz");
    EXPECT_EQ(SelectedText(), "late") << "the folder just left is selected";
    ExecuteCommand("GoFolder_Parent");
    EXPECT_EQ(Media().Folder, folder_ / "music");
    EXPECT_EQ(SelectedText(), "jazz");
    EXPECT_THAT(Texts(), ElementsAre("..", "jazz")) << "the slot's own filter counts again";
    for (const char* command : {"gofolder", "gofolder_", "gofolder_up", "gofolder_parent_x"})
        ExecuteCommand(command);
    EXPECT_EQ(Media().Folder, folder_ / "music");
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(MediaSteps, TheWayUpEndsAtTheTopAndPassesOverFoldersThatHaveGone) {
    fs::create_directories(folder_ / "home/stick/a/b");
    ShowFolder(kMedia, "mp3,", folder_ / "home/stick/a/b");
    fs::remove_all(folder_ / "home/stick");
    ExecuteCommand("gofolder_parent");
    EXPECT_EQ(Media().Folder, folder_ / "home");
    ExecuteCommand("gofolder_parent");
    EXPECT_EQ(Media().Folder, kTopFolder);
    EXPECT_EQ(SelectedText(), "home");
    ExecuteCommand("gofolder_parent");
    EXPECT_EQ(Media().Folder, kTopFolder);
    EXPECT_EQ(SelectedText(), "home") << "nothing above: the list is not even built again";
    EXPECT_THAT(messages_, IsEmpty());

    ShowFolder(kMedia, "mp3,", folder_ / "home");
    fs::create_directory(folder_ / "home/late");
    ShowFolder(kMedia, "mp3,", folder_ / "home");
    fs::remove(folder_ / "home/late");
    Activate("late");
    EXPECT_THAT(messages_, ElementsAre("Media Directory not found!"));
    EXPECT_THAT(Texts(), ElementsAre(".."));
    Activate("..");
    EXPECT_EQ(Media().Folder, folder_ / "home");
}

TEST_F(MediaSteps, AFileThatDoesNotOpenIsTold) {
    folder_.Write("music/blue.mp3", "x");
    ShowFolder(kMedia, "mp3,", folder_ / "music");
    playerStarts_ = false;
    Activate("blue.mp3");
    EXPECT_THAT(messages_, ElementsAre("Media file could not be opened!"));
    EXPECT_EQ(SelectedText(), "blue.mp3");
}

TEST_F(MediaSteps, ObjectSelectActivatesOnlyTheFocusedList) {
    fs::create_directories(folder_ / "music/jazz");
    ShowFolder(kMedia, "mp3,", folder_ / "music");
    Select("jazz");
    ExecuteCommand("object_select");
    EXPECT_EQ(Media().Folder, folder_ / "music") << "no list has the focus";
    basGlobal.FocusedList = kMedia;
    basGlobal.FocusedSlider = 0;
    ExecuteCommand("object_select");
    EXPECT_EQ(Media().Folder, folder_ / "music") << "a slider is selected";
    basGlobal.FocusedSlider = kNoFocus;
    ExecuteCommand("object_select");
    EXPECT_EQ(Media().Folder, folder_ / "music/jazz");
}

TEST_F(MediaSteps, OtherListsAreLeftAlone) {
    ShowTroubleCodes();
    basGlobal.CurrentList = kCodeListSlot;
    FillMediaList(kCodeListSlot);
    ActivateListEntry(kCodeListSlot);
    ExecuteCommand("gofolder_parent");
    EXPECT_THAT(Texts(kCodeListSlot), ElementsAre("No Errors"));
    basGlobal.CurrentList = -1;
    ExecuteCommand("gofolder_parent");
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(MediaSteps, ListsStartWhereTheSettingsSayElseBesideTheProgramElseAtHome) {
    struct Row {
        const char* Value;  ///< of the key media in section Folders
        std::string Folder;
    };
    const std::string own = folder_ / "program/Tunes";
    const Row rows[] = {{"", folder_ / "home"},
                        {"tunes", own},
                        {"..\\Program\\tunes\\", own},
                        {"desktop", kTopFolder}};
    fs::create_directories(own);
    for (const Row& row : rows) {
        folder_.Write("program/Dravik.ini",
                      std::string("[Folders]\r\nmedia=") + row.Value + "\r\n");
        ClearList(Media());
        FillMediaList(kMedia);
        EXPECT_EQ(Media().Folder, row.Folder) << row.Value;
    }
    folder_.Write("program/Dravik.ini", "[Folders]\nMedia=" + (folder_ / "music") + "\n");
    ClearList(Media());
    FillMediaList(kMedia);
    EXPECT_EQ(Media().Folder, folder_ / "music");

    fs::create_directories(folder_ / "program/gallery");
    folder_.Write("program/gallery/Car.JPG", "x");
    folder_.Write("program/gallery/song.mp3", "x");
    FillMediaList(kGallery);
    EXPECT_EQ(List(kGallery).Folder, folder_ / "program/gallery");
    EXPECT_THAT(Texts(kGallery), ElementsAre("..", "Car.JPG"));
    for (const int slot : {0, 4, 5, 7, 8}) {
        FillMediaList(slot);
        EXPECT_THAT(Texts(slot), IsEmpty()) << slot;
    }
    EXPECT_THAT(messages_, IsEmpty());
}

TEST_F(MediaSteps, AFilledListKeepsItsFolderUntilThatIsGone) {
    fs::create_directories(folder_ / "music/jazz");
    folder_.Write("home/start.mp3", "x");
    ShowFolder(kMedia, "mp3,", folder_ / "music");
    Select("jazz");
    FillMediaList(kMedia);
    EXPECT_EQ(SelectedText(), "jazz");
    fs::remove_all(folder_ / "music");
    FillMediaList(kMedia);
    EXPECT_THAT(Texts(), ElementsAre("..", "start.mp3"));
    EXPECT_THAT(messages_, IsEmpty());

    Media() = ListSlot{};
    AddListEntry(Media(), {"from elsewhere", "", ""});
    FillMediaList(kMedia);
    EXPECT_THAT(Texts(), ElementsAre("from elsewhere")) << "only folders are filled again";
}

}  // namespace
}  // namespace dravik
