#include <gmock/gmock.h>
#include <signal.h>

#include <QProcess>
#include <QXmlStreamReader>
#include <filesystem>

#include "support/ConsoleProgram.h"
#include "support/TestSkin.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

/// A vehicle with codes of every kind in two units, which loses no time.
constexpr const char* kScenario = R"([vehicle]
protocol = can-11-500
units = 2
services = 01 02 03 04 06 07 09 0A
odometer = 84210
order = interleaved
[unit 1]
name = ECM-EngineControl
calibrations = DRAVIKECM0000001
verifications = 17 91 BC 82
[unit 2]
name = TCM-Transmission
[interface]
baud = 4000000
reset-time = 0.01
search-time = 0.01
bus-latency = 0.005
no-data-time = 0.001
command-latency = 0
)";
constexpr const char* kCodes = R"([code 1]
code = P0420
[code 2]
code = U0100
unit = 2
[code 3]
code = P0133
state = pending
[code 4]
code = P0301
state = permanent
[test 1]
monitor = 21
test = 80
scaling = 0A
value = 0B B0
high = 0C 00
)";

struct Ended {
    int Status = -1;
    std::string Output, Errors;
};

class ReportSession : public ::testing::Test {
 protected:
    Ended Run(const std::vector<std::string>& arguments) {
        QStringList list = {QStringLiteral("--folder"),
                            QString::fromStdString(program_.Folder.Path())};
        for (const std::string& argument : arguments) list.append(QString::fromStdString(argument));
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        environment.remove(QStringLiteral("DISPLAY"));  // it needs none
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(DRAVIK_PROGRAM), list);
        if (!process.waitForFinished(kLimit)) return {};
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    static constexpr int kLimit = 280'000;  // milliseconds
    ProgramFolderWithSkin program_;
    const std::string html_ = program_.Folder / "report.html";
    const std::string clean_ = program_.Folder.Write("clean.ini", kScenario);
    const std::string faulty_ =
        program_.Folder.Write("faulty.ini", std::string(kScenario) + kCodes);
};

TEST_F(ReportSession, TheCommandLineReportsAVehicleWithCodes) {
    const std::string settings = program_.Folder.Read("Dravik.ini");
    const Ended ended = Run({"--report", html_, "--demo", faulty_});
    EXPECT_EQ(ended.Status, 1) << ended.Errors;
    EXPECT_EQ(ended.Output, "");
    EXPECT_THAT(ended.Errors, AllOf(HasSubstr("Connecting\n"), HasSubstr("/18\n"),
                                    HasSubstr("Reading live values\n")));

    const std::string html = program_.Folder.Read("report.html");
    QXmlStreamReader reader(QByteArray::fromStdString(html));
    while (!reader.atEnd()) reader.readNext();
    EXPECT_EQ(reader.errorString().toStdString(), "");
    for (const char* part :
         {"<td data-head=\"Code\">P0420</td><td data-head=\"State\">Stored</td>",
          "<td data-head=\"Code\">P0133</td><td data-head=\"State\">Pending</td>",
          "<td data-head=\"Code\">P0301</td><td data-head=\"State\">Permanent</td>",
          "<h3>ECM-EngineControl</h3>", "<h3>TCM-Transmission</h3>", "U0100",
          "<h3>Freeze frame of P0420 (ECM-EngineControl)</h3>", "WDRAV1K00VEH1CLE0",
          "DRAVIKECM0000001", "1791BC82", "Malfunction lamp: On", "ISO 15765-4",
          "data-head=\"Result\">Passed"})
        EXPECT_THAT(html, HasSubstr(part));
    const std::size_t live = html.find("<h2>Live values</h2>");
    EXPECT_NE(html.find("<dd>", live), std::string::npos) << "the vehicle was asked for values";
    EXPECT_EQ(program_.Folder.Read("Dravik.ini"), settings);
    EXPECT_FALSE(fs::exists(program_.Folder / "reports"));
}

TEST_F(ReportSession, ACleanVehicleGivesStatus0AndReplacesTheNamedFile) {
    const std::string file = program_.Folder.Write("report.txt", "of yesterday");
    EXPECT_EQ(Run({"--report", file, "--demo", clean_}).Status, 0);
    EXPECT_THAT(program_.Folder.Read("report.txt"),
                AllOf(HasSubstr(" WDRAV1K00VEH1CLE0\n"), HasSubstr("* No trouble codes\n"),
                      Not(HasSubstr("of yesterday")), Not(HasSubstr("<"))));
}

TEST_F(ReportSession, WithoutAVehicleTheReasonIsToldAndNothingWritten) {
    const auto fails = [&](const std::vector<std::string>& arguments, const std::string& reason) {
        const Ended ended = Run(arguments);
        EXPECT_EQ(ended.Status, 2) << reason;
        EXPECT_THAT(ended.Errors, HasSubstr(reason));
        EXPECT_FALSE(fs::exists(html_));
    };
    fails({"--report", html_, "--port", "/dev/nowhere"}, "There is no port /dev/nowhere");
    fails({"--report", html_, "--demo", "ignition-off"}, "UNABLE TO CONNECT");
    fails({"--report", html_, "--demo", "silent"}, "No answer from the interface");
    fails({"--report", program_.Folder / "nowhere/report.html", "--demo", clean_},
          "no such folder");
}

TEST_F(ReportSession, AVehicleThatFallsSilentInBetweenIsNoCleanOne) {
    const std::string lost = program_.Folder.Write(
        "lost.ini", std::string(kScenario) +
                        "[refusal 1]\nrequest = 03\nthen = silence\nunit = 0\n"
                        "[refusal 2]\nrequest = 07\nthen = silence\nunit = 0\n"
                        "[code 1]\ncode = P0420\n");
    const Ended ended = Run({"--report", html_, "--demo", lost});
    EXPECT_EQ(ended.Status, 2);
    EXPECT_THAT(ended.Errors, HasSubstr("Stored codes: "));
    EXPECT_THAT(program_.Folder.Read("report.html"), Not(HasSubstr("No trouble codes")));
}

/// A driver presses "report" on a page, finds it in the list and opens it.
TEST_F(ReportSession, ThePanelWritesListsAndOpensReports) {
    const std::string opened = program_.Folder / "opened.txt";
    const std::string viewer = program_.Folder.Write(
        "bin/xdg-open", "#!/bin/sh\necho \"$1\" > '" + opened + ".new'\nmv '" + opened + ".new' '" +
                            opened + "'\n");
    fs::permissions(viewer, fs::perms::owner_all);
    program_.Folder.Write(
        "skins/test.ini",
        program_.Folder.Read("skins/test.ini") +
            "[reports]\nCommand=\nList0Function=diagnosis_reports\nList0X=10\nList0Y=10\n"
            "List0Width=180\nList0Height=100\nList0FontSize=12\n"
            "Chart0Function=sensor_rpm\nChart0X=10\nChart0Y=120\nChart0Time=10\n");
    const std::string path = std::string(std::getenv("PATH"));
    ConsoleProgram dravik({"--folder", program_.Folder.Path(), "--demo", faulty_}, DRAVIK_PROGRAM,
                          {{"PATH", program_.Folder / "bin" + ":" + path}});
    const auto idle = [&] { return dravik.Ask("image obd_connected"); };
    EXPECT_EQ(dravik.Until(idle, "on"), "on");
    EXPECT_EQ(dravik.Ask("do openmenu_reports"), "ok");
    EXPECT_EQ(dravik.AskLines("list").size(), 1U) << "no report yet";
    const auto drawn = [&] { return dravik.Ask("source obd_0C") == "0" ? "waiting" : "drawn"; };
    EXPECT_EQ(dravik.Until(drawn, "drawn"), "drawn");
    EXPECT_EQ(dravik.Ask("wait 1000"), "ok");
    EXPECT_EQ(dravik.Ask("do report"), "ok");
    const auto message = [&] {
        return dravik.Ask("message").starts_with("info\tThe report was saved:") ? "told" : "";
    };
    EXPECT_EQ(dravik.Until(message, "told"), "told");
    EXPECT_EQ(dravik.Ask("click ok"), "ok");
    const std::string name = dravik.Ask("text report_file");
    EXPECT_THAT(name, EndsWith(" WDRAV1K00VEH1CLE0.html"));
    const std::string html = program_.Folder.Read("reports/" + name);
    EXPECT_THAT(html, HasSubstr("P0420"));
    EXPECT_THAT(html, HasSubstr("src=\"data:image/png;base64,iVBOR"));
    EXPECT_EQ(dravik.State("PidWanted"), "0C") << "as before";

    const auto list = dravik.AskLines("list");
    ASSERT_EQ(list.size(), 2U);
    EXPECT_THAT(list[1], HasSubstr("  WDRAV1K00VEH1CLE0  P0420 U0100 P0133 P0301\tbad\t"));
    EXPECT_EQ(dravik.Ask("do report_open"), "ok");
    const auto shown = [&] { return fs::exists(opened) ? "shown" : "waiting"; };
    EXPECT_EQ(dravik.Until(shown, "shown"), "shown");
    EXPECT_EQ(program_.Folder.Read("opened.txt"), program_.Folder / "reports/" + name + "\n");
    EXPECT_EQ(dravik.Finish(), 0);
}

}  // namespace
}  // namespace dravik
