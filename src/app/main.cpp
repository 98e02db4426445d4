#include <QApplication>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "app/CheckSkinCommand.h"
#include "app/CommandLine.h"
#include "app/Commit.h"
#include "app/DemoVehicle.h"
#include "app/ProgramFolder.h"
#include "app/ReportCommand.h"
#include "app/SkinWatch.h"
#include "app/frMain.h"
#include "console/Console.h"
#include "core/UpCalls.h"
#include "platform/Display.h"
#include "platform/EndRequest.h"
#include "platform/Paths.h"
#include "platform/Terminal.h"
#include "skin/ProgramTitle.h"

namespace {

using namespace dravik;

constexpr int kBadArguments = 2;

int Fail(const std::string& message) {
    std::fprintf(stderr, "dravik: %s\n", message.c_str());
    return kBadArguments;
}

}  // namespace

int main(int argc, char** argv) {
    JoinTerminal();
    const CommandLine line = ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (!line.Error.empty()) return Fail(line.Error + " (try --help)");
    if (line.Help) {
        std::fputs(UsageText(), stdout);
        return 0;
    }
    if (line.Version) {
        basGlobal.Launch.Commit = CommitOfBuild();
        std::printf("dravik " DRAVIK_VERSION "\n%s\n", ProgramBuild().c_str());
        return 0;
    }
    if (!line.Folder.empty() && !FolderExists(line.Folder))
        return Fail("no such folder: " + line.Folder);
    if (line.CheckSkin) return CheckSkinCommand(line);
    if (!line.Report.empty()) return ReportCommand(argc, argv, line);
    if (!ChooseDisplay(line.Console))
        return Fail("there is no display; set DISPLAY or WAYLAND_DISPLAY");

    frMain::Options options;
    options.Launch.Skin = line.Skin;
    options.Launch.Language = line.Language;
    options.Launch.Commit = CommitOfBuild();
    options.Windowed = line.Windowed;
    options.WindowSize = line.WindowSize;
    options.ProgramFolder = FindProgramFolder(line.Folder, options.Launch);

    DemoVehicle vehicle;
    if (line.Demo) {
        if (std::string error = vehicle.Start(line.Scenario); !error.empty()) return Fail(error);
        options.Launch.DemoDevice = vehicle.Device();
    }

    OutliveReaders();
    QApplication application(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("dravik"));  // by it the window finds its icon
    QApplication::setQuitOnLastWindowClosed(false);
    int result = 0;
    {
        frMain window;
        upCalls.StartDemo = [&vehicle] {
            std::string error = vehicle.Start({});
            basGlobal.Launch.DemoDevice = vehicle.Device();
            return error;
        };
        OnEndRequest([&window] { window.Unload(); });
        std::unique_ptr<Console> console;
        if (line.Console)
            console = std::make_unique<Console>([&window] { return window.Started(); });
        std::unique_ptr<SkinWatch> watch;
        if (line.Console || line.Windowed) watch = std::make_unique<SkinWatch>(window);
        window.Start(options);
        if (console) console->LookAgain();
        if (!basGlobal.Closing) result = QApplication::exec();
    }
    basGlobal = GlobalState{};  // ports and timers go before the application does
    return result;
}
