#include <unistd.h>

#include <memory>

#include "controls/SkinList.h"
#include "lists/media/MediaFixture.h"
#include "support/ConsoleProgram.h"
#include "support/SavePicture.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;

constexpr int kListPoints = 14;

constexpr const char* kSkin =
    "[General]\nImagefolder=test\n"
    "[mainmenu]\n"
    "Button0Function=gofolder_parent\nButton0X=420\nButton0Y=0\nButton0Up=up.png\n"
    "List0Function=Media\nList0FontSize=14\nList0Width=400\nList0Height=300\n"
    "Label0Function=listentry_0\nLabel0Color=0\n"
    "Label1Function=indexlabel\nLabel1Color=0\n"
    "Label2Function=currentfolder\nLabel2Color=0\n"
    "Image0Function=ListEntry\nImage0X=420\nImage0Y=100\nImage0Picture=none.png\n"
    "[other]\nLabel0Function=time\nLabel0Color=0\n";

/// The real program on a folder tree, asked through its console.
class MediaProgram : public ::testing::Test {
 protected:
    MediaProgram() {
        for (const char* name :
             {"Jazz/Late/blü.mp3", "Jazz/late.mp3", "Rock/a.mp3", "b.mp3", "list.pls"})
            folder_.Write("music/" + std::string(name), "x");
        folder_.Write("program/Dravik.ini",
                      "[Options]\nSkin=test\n[OBD]\nRefreshRate=10\n"
                      "[Folders]\nmedia=..\\Music\n");
        folder_.Write("program/skins/test.ini", kSkin);
        fs::create_directories(folder_ / "program/skins/test");
        for (const std::string picture : {"up", "parent", "folder", "mp3", "none"})
            SavePicture(folder_ / ("program/skins/test/" + picture + ".png"), 60, 50);
        folder_.Write("bin/xdg-open", "#!/bin/sh\nprintf %s \"$1\" > '" + (folder_ / "part") +
                                          "'\nmv '" + (folder_ / "part") + "' '" +
                                          (folder_ / "opened") + "'\n");
        fs::permissions(folder_ / "bin/xdg-open", fs::perms(0755));

        program_ = std::make_unique<ConsoleProgram>(
            std::vector<std::string>{"--folder", folder_ / "program"}, DRAVIK_PROGRAM,
            ConsoleProgram::Variables{
                {"PATH", (folder_ / "bin:") + qEnvironmentVariable("PATH").toStdString()}});

        SkinList list;
        TextLook look;
        look.Points = kListPoints;
        list.SetLook(look, 0);
        rowHeight_ = list.RowHeight();
    }
    ~MediaProgram() override { EXPECT_EQ(program_->Finish(), 0); }

    std::string ReadLine() { return program_->ReadLine(); }
    std::string Ask(const std::string& request) { return program_->Ask(request); }
    std::vector<std::string> AskLines(const std::string& request) {
        return program_->AskLines(request);
    }

    /// The texts of the current list.
    std::vector<std::string> Entries() {
        std::vector<std::string> texts = AskLines("list");
        texts.erase(texts.begin());
        for (std::string& line : texts) line.resize(line.find('\t'));
        return texts;
    }
    /// The text of the selected entry.
    std::string Selected() {
        const std::string first = AskLines("list").at(0);
        return Entries().at(std::stoul(first.substr(first.find('\t') + 1)) - 1);
    }
    /// What an element shows after a refresh, as the console tells it.
    std::string Shown(const std::string& kind, int index) {
        Ask("wait 100");
        for (const std::string& line : AskLines("elements")) {
            if (line.starts_with(kind + "\t" + std::to_string(index) + "\t"))
                return line.substr(line.rfind('\t') + 1);
        }
        return "(no element)";
    }

    /// The request that clicks on an entry of the list, which is not scrolled.
    std::string ClickOn(const std::string& text) {
        const std::vector<std::string> entries = Entries();
        const auto found = std::find(entries.begin(), entries.end(), text);
        EXPECT_NE(found, entries.end()) << text;
        const auto row = static_cast<int>(found - entries.begin());
        return "click 40 " + std::to_string(row * rowHeight_ + rowHeight_ / 2);
    }
    /// Two clicks in a row. On a machine that stalls between them they are two single ones, and
    /// nothing opens; then once more.
    void DoubleClickOn(const std::string& text) {
        const std::vector<std::string> before = Entries();
        const std::string click = ClickOn(text);
        for (int attempt = 0; attempt < 5 && Entries() == before; ++attempt) {
            ASSERT_EQ(Ask(click + "\n" + click), "ok");
            ASSERT_EQ(ReadLine(), "ok");
        }
    }

    /// The file that the system's opener was given; waits for it.
    std::string Opened() const {
        for (int look = 0; look < 2000 && folder_.Read("opened").empty(); ++look) ::usleep(10'000);
        std::string opened = folder_.Read("opened");
        fs::remove(folder_ / "opened");
        return opened;
    }

    const TemporaryFolder folder_;
    std::unique_ptr<ConsoleProgram> program_;
    int rowHeight_ = 0;
};

TEST_F(MediaProgram, WalksAFolderTreeByClicks) {
    EXPECT_THAT(Entries(), ElementsAre("..", "Jazz", "Rock", "b.mp3", "list.pls"));
    EXPECT_EQ(Shown("Image", 0), "parent.png");
    Ask(ClickOn("Jazz"));
    EXPECT_EQ(Shown("Label", 0), "Jazz");
    EXPECT_EQ(Shown("Label", 1), "1/4");
    EXPECT_EQ(Shown("Label", 2), "music");
    EXPECT_EQ(Shown("Image", 0), "folder.png");

    DoubleClickOn("Jazz");
    EXPECT_THAT(Entries(), ElementsAre("..", "Late", "late.mp3"));
    EXPECT_EQ(Shown("Label", 0), "..");
    EXPECT_EQ(Shown("Label", 2), "Jazz");
    DoubleClickOn("Late");
    EXPECT_THAT(Entries(), ElementsAre("..", "blü.mp3"));
    Ask(ClickOn("blü.mp3"));
    EXPECT_EQ(Shown("Image", 0), "mp3.png");
    Ask("key Return");
    EXPECT_EQ(Opened(), folder_ / "music/Jazz/Late/blü.mp3");

    Ask("click 430 10");  // the button "gofolder_parent"
    EXPECT_THAT(Entries(), ElementsAre("..", "Late", "late.mp3"));
    EXPECT_EQ(Selected(), "Late");
    DoubleClickOn("..");
    EXPECT_EQ(Selected(), "Jazz");

    Ask(ClickOn("list.pls"));
    // A file type that the skin has no picture for shows the image's own.
    EXPECT_EQ(Shown("Image", 0), "none.png");
}

TEST_F(MediaProgram, ArrowKeysStepAFocusedListAndLeaveItSideways) {
    Ask(ClickOn("Jazz"));
    Ask("key Down");
    EXPECT_EQ(Selected(), "Rock");
    for (int press = 0; press < 9; ++press) Ask("key Down");
    EXPECT_EQ(Selected(), "list.pls");
    Ask("key Right");
    EXPECT_THAT(AskLines("state"), Contains("FocusedButton 0"));
    Ask("key Down");
    EXPECT_EQ(Selected(), "list.pls") << "the list no longer has the focus";
}

}  // namespace
}  // namespace dravik
