#include <gmock/gmock.h>

#include <filesystem>

#include "support/ConsoleProgram.h"
#include "support/TestSkin.h"

namespace dravik {
namespace {

using ::testing::AnyOf;

/// The running program on a skin that the test edits.
class SkinWatching : public ::testing::Test {
 protected:
    SkinWatching() : text_(program_.Folder.Read("skins/test.ini")) {}

    /// What label 0 of the page shows.
    static std::string FirstLabel(ConsoleProgram& dravik) {
        for (const std::string& line : dravik.AskLines("elements")) {
            if (line.starts_with("Label\t0\t")) return line.substr(line.rfind('\t') + 1);
        }
        return "(no label)";
    }

    static std::string UntilFirstLabel(ConsoleProgram& dravik, const std::string& wanted) {
        return dravik.Until([&dravik] { return FirstLabel(dravik); }, wanted);
    }

    /// The skin with another text in label 0 of the page of trouble codes.
    std::string WithLabel(const std::string& caption) const {
        std::string text = text_;
        const std::string old = "Label0Function=obd_troublecodescount\n";
        text.replace(text.find(old), old.size(),
                     "Label0Function=text\nLabel0Caption=" + caption + "\n");
        return text;
    }

    ProgramFolderWithSkin program_;
    std::string text_;
};

TEST_F(SkinWatching, ChangedFileIsShownOnTheSamePageOverTheSameLink) {
    text_.replace(text_.find("[codes]\n"), 8, "[codes]\nCommand=showinfo_Opened\n");
    program_.Folder.Write("skins/test.ini", text_);
    ConsoleProgram dravik({"--folder", program_.Folder.Path(), "--demo"});
    EXPECT_EQ(dravik.Until([&] { return dravik.Ask("image obd_connected"); }, "on"), "on");
    EXPECT_EQ(dravik.Ask("do openmenu_codes"), "ok");
    EXPECT_EQ(dravik.Ask("message"), "info\tOpened");
    EXPECT_EQ(dravik.Ask("click ok"), "ok");
    EXPECT_EQ(dravik.Ask("message"), "none");

    program_.Folder.Write("skins/test.ini", WithLabel("in place"));
    EXPECT_EQ(UntilFirstLabel(dravik, "in place"), "in place");
    program_.Folder.Write("skins/.test.ini.new", WithLabel("by rename"));
    std::filesystem::rename(program_.Folder / "skins/.test.ini.new",
                            program_.Folder / "skins/test.ini");
    EXPECT_EQ(UntilFirstLabel(dravik, "by rename"), "by rename");
    std::filesystem::remove(program_.Folder / "skins/test.ini");
    program_.Folder.Write("skins/test.ini", WithLabel("anew"));
    EXPECT_EQ(UntilFirstLabel(dravik, "anew"), "anew");

    EXPECT_EQ(dravik.State("CurrentMenu"), "codes");
    EXPECT_EQ(dravik.State("PreviousMenu"), "mainmenu");
    EXPECT_THAT(dravik.State("ConnState"), AnyOf("3", "9"));
    EXPECT_EQ(dravik.Ask("message"), "none");  // the command of the page has not run again
    EXPECT_EQ(dravik.Finish(), 0);
}

TEST_F(SkinWatching, ChangedPictureAndChangedFolderOfPicturesAreShown) {
    ConsoleProgram dravik({"--folder", program_.Folder.Path()});
    const auto buttonWidth = [&dravik] {
        const std::string line = dravik.AskLines("elements").front();
        const std::string fields = line.substr(line.find("\t10\t10\t") + 7);
        return fields.substr(0, fields.find('\t'));
    };
    EXPECT_EQ(buttonWidth(), "200");
    SavePicture(program_.Folder / "skins/test/up.png", 120, 60);
    EXPECT_EQ(dravik.Until(buttonWidth, "120"), "120");

    program_.Folder.Write("skins/other/folder", "");
    SavePicture(program_.Folder / "skins/other/up.png", 90, 60);
    text_.replace(text_.find("Imagefolder=test"), 16, "Imagefolder=other");
    program_.Folder.Write("skins/test.ini", text_);
    EXPECT_EQ(dravik.Until(buttonWidth, "90"), "90");
    SavePicture(program_.Folder / "skins/other/up.png", 70, 60);
    EXPECT_EQ(dravik.Until(buttonWidth, "70"), "70");
}

TEST_F(SkinWatching, OpenQuestionIsAnsweredFirst) {
    ConsoleProgram dravik({"--folder", program_.Folder.Path()});
    EXPECT_EQ(dravik.Ask("do openmenu_codes"), "ok");
    dravik.Send("do showquery_Sure\n");
    EXPECT_EQ(dravik.Ask("message"), "query\tSure");
    program_.Folder.Write("skins/test.ini", WithLabel("later"));
    EXPECT_EQ(dravik.Ask("wait 600"), "ok");
    EXPECT_NE(FirstLabel(dravik), "later");
    dravik.Send("click no\n");
    EXPECT_EQ(dravik.ReadLine(), "ok");
    EXPECT_EQ(dravik.ReadLine(), "ok");
    EXPECT_EQ(UntilFirstLabel(dravik, "later"), "later");
}

TEST_F(SkinWatching, BoxStaysOpenOverThePage) {
    ConsoleProgram dravik({"--folder", program_.Folder.Path()});
    EXPECT_EQ(dravik.Ask("do openmenu_codes"), "ok");
    EXPECT_EQ(dravik.Ask("do openbox_mainmenu"), "ok");
    EXPECT_EQ(dravik.State("CurrentBox"), "mainmenu");
    program_.Folder.Write("skins/test.ini", WithLabel("beneath"));
    EXPECT_EQ(UntilFirstLabel(dravik, "beneath"), "beneath");
    EXPECT_EQ(dravik.State("CurrentBox"), "mainmenu");
    EXPECT_EQ(dravik.State("CurrentMenu"), "codes");
}

}  // namespace
}  // namespace dravik
