#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "app/CheckSkinCommand.h"
#include "app/CommandLine.h"
#include "app/ProgramFolder.h"
#include "app/SkinWatch.h"
#include "app/frMain.h"
#include "console/Console.h"
#include "platform/Display.h"
#include "platform/EndRequest.h"
#include "platform/Paths.h"
#include "platform/Terminal.h"
#include "vehicle/VehicleServer.h"

namespace {

using namespace dravik;

constexpr int kBadArguments = 2;

/// The built-in vehicle. Its terminal stands behind a link in a folder that only this user enters:
/// after an unplug it comes back under another number, and the old one may be another program's.
struct DemoVehicle {
    QTemporaryDir Folder{QDir::tempPath() + QStringLiteral("/dravik-XXXXXX")};
    vehicle::VehicleServer Server;  ///< goes first, and takes the link away
};

/// An empty text, or the reason why the vehicle does not start.
std::string Start(DemoVehicle& vehicle, const std::string& scenario) {
    if (std::string error = vehicle.Server.LoadScenario(scenario); !error.empty()) return error;
    if (!vehicle.Folder.isValid())
        return "no temporary folder: " + vehicle.Folder.errorString().toStdString();
    return vehicle.Server.ServeSerialLine(
        vehicle.Folder.filePath(QStringLiteral("interface")).toStdString());
}

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
        std::puts("dravik " DRAVIK_VERSION);
        return 0;
    }
    if (!line.Folder.empty() && !FolderExists(line.Folder))
        return Fail("no such folder: " + line.Folder);
    if (line.CheckSkin) return CheckSkinCommand(line);
    if (!ChooseDisplay(line.Console))
        return Fail("there is no display; set DISPLAY or WAYLAND_DISPLAY");

    frMain::Options options;
    options.Launch.Skin = line.Skin;
    options.Launch.Language = line.Language;
    options.Windowed = line.Windowed;
    options.WindowSize = line.WindowSize;
    options.ProgramFolder = FindProgramFolder(line.Folder, options.Launch);

    std::unique_ptr<DemoVehicle> vehicle;
    if (line.Demo) {
        vehicle = std::make_unique<DemoVehicle>();
        if (std::string error = Start(*vehicle, line.Scenario); !error.empty()) return Fail(error);
        options.Launch.DemoDevice = vehicle->Server.Device();
    }

    OutliveReaders();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    int result = 0;
    {
        frMain window;
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
