#include <gmock/gmock.h>

#include <QImage>
#include <QProcess>
#include <filesystem>

#include "support/ConsoleProgram.h"
#include "support/TestSkin.h"

namespace dravik {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(Console, AnswersInOrderAndNamesWhatItDoesNotUnderstand) {
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    dravik.Send(
        "text obd_status\nwait 200\nimage obd_connected\nnumber obd_troublecodescount\n"
        "source obd_4F\ntext nothing\nnumber nothing\nmessage\n");
    for (const char* answer : {"Not Connected.", "ok", "off", "0", "0", "Off", "65535", "none"})
        EXPECT_EQ(dravik.ReadLine(), answer);
    for (const char* request :
         {"bogus", "", "click", "click 1", "click a b", "click 1 2 3", "wait", "wait x", "wait -1",
          "wheel", "wheel 99999999999", "key Nonsense", "grab", "grab /nowhere/x.png", "click yes"})
        EXPECT_THAT(dravik.Ask(request), StartsWith("error: ")) << request;
    EXPECT_EQ(dravik.Finish(), 0);
}

#ifndef _WIN32  // there the region is set in the system
// The first of the three variables that is set says what the region is.
TEST(Console, LabelsHaveTheDecimalSignOfTheRegion) {
    const struct {
        const char *All, *Numeric, *Language, *Text;
    } rows[] = {{"", "", "de_DE.UTF-8", "-0,5"},
                {"", "de_DE.UTF-8", "en_US.UTF-8", "-0,5"},
                {"C.UTF-8", "de_DE.UTF-8", "de_DE.UTF-8", "-0.5"}};
    for (const auto& row : rows) {
        const ProgramFolderWithSkin program;
        program.Folder.Write("languages/test.sensors",
                             "[SensorConfig]\nSensor0Function=t\nSensor0Offset=-0,5\n");
        ConsoleProgram dravik(
            {"--folder", program.Folder.Path()}, DRAVIK_PROGRAM,
            {{"LC_ALL", row.All}, {"LC_NUMERIC", row.Numeric}, {"LANG", row.Language}});
        EXPECT_EQ(dravik.Ask("text sensor_t"), row.Text);
        EXPECT_EQ(dravik.Ask("number sensor_t"), "-0.5");
    }
}
#endif

TEST(Console, EndOfInputAndQuitAreNormalEndsThatSaveTheResumeState) {
    for (const bool quit : {false, true}) {
        const ProgramFolderWithSkin program;
        program.Folder.Write("Dravik.ini",
                             "; kept\n[Options]\nSkin=test\nLanguage=test\nMisc=3\n"
                             "[Resume]\nMenu=mainmenu\n");
        ConsoleProgram dravik({"--folder", program.Folder.Path()});
        EXPECT_EQ(dravik.Ask("do openmenu_codes"), "ok");
        EXPECT_EQ(dravik.Ask("do sensoroff_speed"), "ok");
        if (quit) {
            EXPECT_EQ(dravik.Ask("quit"), "ok");
            EXPECT_EQ(dravik.WaitForEnd(), 0);
        } else {
            EXPECT_EQ(dravik.Finish(), 0);
        }
        EXPECT_EQ(program.Folder.Read("Dravik.ini"),
                  "; kept\n[Options]\nSkin=test\nLanguage=test\nMisc=3\n[Resume]\n"
                  "Menu=codes\nSensorActive=0" +
                      std::string(88, '1') + "0\nPreviousMenu=mainmenu\n");
    }
}

TEST(Console, QuestionLetsLaterRequestsIn) {
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    EXPECT_EQ(dravik.Ask("do openmenu_codes"), "ok");
    dravik.Send("do showquery_Sure:exit\nmessage\nclick ok\nclick yes\n");
    EXPECT_EQ(dravik.ReadLine(), "query\tSure");
    EXPECT_EQ(dravik.ReadLine(), "error: the message has no such button: ok");
    // The click ends the question, so both are done; which of the two returns first is open.
    EXPECT_EQ(dravik.ReadLine(), "ok");
    EXPECT_EQ(dravik.ReadLine(), "ok");
    EXPECT_EQ(dravik.Ask("message"), "none");
    EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu") << "the function behind the colon has run";
}

TEST(Console, AnswersWhileAFaultOfTheFirstPageIsShown) {
    const ProgramFolderWithSkin program;
    program.Folder.Write("skins/test.ini", "[mainmenu]\nLabel0Function=time\n");
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    // Asked before the page is loaded, and nothing more is sent until the answer is there.
    EXPECT_THAT(dravik.Ask("message"),
                StartsWith("warning\tSkin Config Error test.ini [mainmenu] Label0Color"));
    EXPECT_EQ(dravik.Ask("click ok"), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu");
}

TEST(Console, EndOfInputEndsAnOpenQuestion) {
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    dravik.Send("do showquery_Sure\n");
    EXPECT_EQ(dravik.Finish(), 0);
}

TEST(Console, AnswersEveryLineOfAFloodInOrder) {
    constexpr int kLines = 5000;
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    std::string flood;
    for (int i = 0; i < kLines; ++i) flood += "x" + std::to_string(i) + "\n";
    dravik.Send(flood + std::string(100'000, 'y') + "\nquit");
    int inOrder = 0;
    while (inOrder < kLines &&
           dravik.ReadLine() == "error: unknown request: x" + std::to_string(inOrder))
        ++inOrder;
    EXPECT_EQ(inOrder, kLines);
    EXPECT_EQ(dravik.ReadLine(), "error: the request is too long");
    EXPECT_EQ(dravik.Finish(), 0);
}

TEST(Console, EndsWhileADropDownListOfTheSettingsIsOpen) {
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"800x700", "--folder", program.Folder.Path()});
    const auto lineOf = [&](const std::string& kind) -> std::string {
        for (const std::string& line : dravik.AskLines("elements")) {
            if (line.starts_with(kind) && line.ends_with("\tcoSkin\ttest")) return line;
        }
        return "";
    };
    const auto there = [&] { return lineOf("Combo").empty() ? "no" : "yes"; };
    EXPECT_EQ(dravik.Ask("do config"), "ok");
    ASSERT_EQ(dravik.Until(there, "yes"), "yes");
    int x = 0, y = 0, width = 0, height = 0;
    std::sscanf(lineOf("Combo").c_str(), "%*s %*d %d %d %d %d", &x, &y, &width, &height);
    EXPECT_EQ(dravik.Ask("click " + std::to_string(x + width - 10) + " " + std::to_string(y + 10)),
              "ok");
    EXPECT_NE(lineOf("Row"), "") << "the list is open";
    EXPECT_EQ(dravik.Ask("quit"), "ok");
    EXPECT_EQ(dravik.WaitForEnd(), 0);
}

TEST(Console, ClicksPressTheRealButton) {
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    EXPECT_THAT(dravik.AskLines("elements"),
                Contains("Button\t0\t10\t10\t200\t60\t1\topenmenu_codes\tup"));
    EXPECT_EQ(dravik.Ask("wait 200"), "ok");
    EXPECT_EQ(dravik.Ask("move 110 40"), "ok");
    EXPECT_EQ(dravik.Ask("wait 200"), "ok");
    EXPECT_THAT(dravik.AskLines("elements"), Contains(HasSubstr("openmenu_codes\tover")))
        << "a pointer at rest stays where it was put";
    EXPECT_EQ(dravik.Ask("press 110 40"), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu") << "a press alone is no click";
    EXPECT_EQ(dravik.Ask("move 500 400"), "ok");
    EXPECT_EQ(dravik.Ask("release 500 400"), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu") << "released outside";
    EXPECT_EQ(dravik.Ask("press 60 40"), "ok");
    EXPECT_EQ(dravik.Ask("release 60 40"), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "codes");
    EXPECT_EQ(dravik.State("PreviousMenu"), "mainmenu");
    EXPECT_EQ(dravik.Ask("click 600 460"), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu") << "the bare background leads home";
    for (const char* far :
         {"press 2147483647 -2147483648", "move -2147483648 2147483647",
          "release 2147483647 2147483647", "wheel 2147483647", "wheel -2147483648"})
        EXPECT_EQ(dravik.Ask(far), "ok");
    EXPECT_EQ(dravik.Ask("key Down"), "ok");
    EXPECT_EQ(dravik.State("FocusedButton"), "0");
    EXPECT_EQ(dravik.Ask("key Return"), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "codes");
    // Two quick clicks are a double click; its release ends the repeat of a held "value_-".
    dravik.Send(program.ClickOn(2) + "\n" + program.ClickOn(2) + "\nwait 600\ntext function\n");
    for (int i = 0; i < 4; ++i) dravik.ReadLine();
    EXPECT_EQ(dravik.Ask("wait 300"), "ok");
    EXPECT_EQ(dravik.Ask("text function"), "");
}

TEST(Console, GrabsTheWindow) {
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"640x400", "--folder", program.Folder.Path()});
    const std::string file = program.Folder / "page.png";
    EXPECT_EQ(dravik.Ask("grab " + file), "ok");
    const QImage picture(QString::fromStdString(file));
    EXPECT_EQ(picture.size(), QSize(640, 400));
    EXPECT_EQ(picture.pixelColor(110, 40), QColor(Qt::darkCyan));
}

TEST(Program, WindowWithoutASizeIsAsLargeAsTheSkinWasDesigned) {
    const ProgramFolderWithSkin program;
    program.Folder.Write("skins/test.ini", "[General]\nWidth=400\nHeight=300\n[mainmenu]\n");
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    const std::string file = program.Folder / "window.png";
    EXPECT_EQ(dravik.Ask("grab " + file), "ok");
    EXPECT_EQ(QImage(QString::fromStdString(file)).size(), QSize(400, 300));
}

TEST(Snapshot, WritesOnePictureForEachChartAndNeverOverAnother) {
    const ProgramFolderWithSkin program;
    program.Folder.Write("skins/test.ini",
                         "[General]\nImagefolder=test\n[mainmenu]\n"
                         "Chart0Function=sensor_rpm\nChart0Color=255\nChart0Background=up.png\n"
                         "Chart1Function=sensor_speed\nChart1X=300\nChart1Background=up.png\n");
    ConsoleProgram dravik({"--folder", program.Folder.Path()});
    EXPECT_EQ(dravik.Ask("do snapshot_7"), "ok") << "there is no such chart, so nothing is said";
    EXPECT_FALSE(std::filesystem::exists(program.Folder / "save"));
    for (const char* which : {"all", "all", "1"}) {
        dravik.Send(std::string("do snapshot_") + which + "\nmessage\nclick ok\n");
        EXPECT_THAT(dravik.ReadLine(), AllOf(StartsWith("info\tChart "), HasSubstr(" saved.")));
        EXPECT_EQ(dravik.ReadLine(), "ok");
        EXPECT_EQ(dravik.ReadLine(), "ok");
    }
    int pictures = 0;
    for (const auto& entry : std::filesystem::directory_iterator(program.Folder / "save")) {
        EXPECT_EQ(entry.path().extension(), ".bmp");
        pictures += QImage(QString::fromStdString(entry.path().string())).size() == QSize(200, 60);
    }
    EXPECT_EQ(pictures, 5);

    std::filesystem::remove_all(program.Folder / "save");
    program.Folder.Write("save", "a file where the folder should be");
    dravik.Send("do snapshot_all\nmessage\nclick ok\n");
    EXPECT_THAT(dravik.ReadLine(), StartsWith("warning\tThe chart could not be saved in"));
}

TEST(Program, WithoutASkinSaysWhichFileItTried) {
    const TemporaryFolder empty;
    ConsoleProgram dravik({"--folder", empty.Path()});
    EXPECT_EQ(dravik.State("CurrentMenu"), "mainmenu");
    const std::string file = empty / "page.png";
    EXPECT_EQ(dravik.Ask("grab " + file), "ok");
    const QImage picture(QString::fromStdString(file));
    int lit = 0;
    for (int x = 0; x < picture.width(); ++x)
        for (int y = 0; y < picture.height(); ++y) lit += qGray(picture.pixel(x, y)) > 128;
    EXPECT_GT(lit, 500) << "the notice can be read";
    EXPECT_EQ(dravik.Ask("key Ctrl+Q"), "ok");
    EXPECT_EQ(dravik.WaitForEnd(), 0);
}

#ifndef _WIN32
void StartConsole(QProcess& dravik, const ProgramFolderWithSkin& program) {
    dravik.start(QStringLiteral(DRAVIK_PROGRAM),
                 {QStringLiteral("--console"), QStringLiteral("--windowed"),
                  QStringLiteral("--folder"), QString::fromStdString(program.Folder.Path())});
}

TEST(Console, LetsEndlessInputWaitAndEndsInTheMiddleOfIt) {
    const ProgramFolderWithSkin program;
    QProcess dravik;
    StartConsole(dravik, program);
    dravik.write("text obd_status\nwait 1000000000\n" + QByteArray("state\n").repeated(1'000'000));
    while (!dravik.canReadLine() && dravik.waitForReadyRead()) continue;
    while (dravik.waitForBytesWritten(500)) continue;
    EXPECT_GT(dravik.bytesToWrite(), 0) << "what is not answered yet is not read either";
    dravik.terminate();
    EXPECT_TRUE(dravik.waitForFinished());
    EXPECT_EQ(dravik.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(dravik.exitCode(), 0);
}

TEST(Console, EndsNormallyWhenNobodyReadsItsAnswersAnyMore) {
    const ProgramFolderWithSkin program;
    program.Folder.Write("Dravik.ini", "[Options]\nSkin=test\nLanguage=test\nMisc=3\n");
    QProcess dravik;
    QProcess reader;
    dravik.setStandardOutputProcess(&reader);
    reader.start(QStringLiteral("head"), {QStringLiteral("-n1")});
    StartConsole(dravik, program);
    dravik.write("do openmenu_codes\n");
    dravik.waitForBytesWritten();
    ASSERT_TRUE(reader.waitForFinished());
    dravik.write("message\n");
    EXPECT_TRUE(dravik.waitForFinished());
    EXPECT_EQ(dravik.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(dravik.exitCode(), 0);
    EXPECT_NE(program.Folder.Read("Dravik.ini").find("Menu=codes"), std::string::npos);
}

TEST(Program, FillsTheScreenWhereNoWindowManagerDoes) {
    const ProgramFolderWithSkin program;
    // A platform that leaves a window's size alone, with a screen of 240 x 320.
    ConsoleProgram dravik({"--folder", program.Folder.Path()}, DRAVIK_PROGRAM,
                          {{"QT_QPA_PLATFORM", "minimal"}}, ConsoleProgram::Display::FullScreen);
    const std::string file = program.Folder / "window.png";
    EXPECT_EQ(dravik.Ask("grab " + file), "ok");
    EXPECT_EQ(QImage(QString::fromStdString(file)).size(), QSize(240, 320));
}
#endif

}  // namespace
}  // namespace dravik
