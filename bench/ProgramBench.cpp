#include <benchmark/benchmark.h>

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <filesystem>

#include "app/frMain.h"
#include "platform/Events.h"
#include "platform/serial/PseudoTerminal.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "support/ConsoleProgram.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace dravik;
using Clock = std::chrono::steady_clock;

constexpr double kStartBar = 0.150;  // seconds, as the design sets them
constexpr double kStartPause = 1.0;
constexpr double kGapBar = 2 * 0.1;  // twice the default RefreshRate

double Seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

/// A program folder with the skins and languages of the tree and an interface that says nothing.
class SilentFolder {
 public:
    SilentFolder() {
        for (const char* name : {"skins", "languages"})
            std::filesystem::create_directory_symlink(std::string(DRAVIK_SOURCE "/") + name,
                                                      folder_ / name);
        std::filesystem::create_directory_symlink(DRAVIK_FONTS, folder_ / "fonts");
        folder_.Write("Dravik.ini",
                      "[Options]\nSkin=night\nLanguage=English\n[OBD]\nComPort=1\n"
                      "[Ports]\nCOM1=" +
                          terminal_.Path() + "\n");
    }
    std::string Path() const { return folder_.Path(); }

 private:
    PseudoTerminal terminal_;
    TemporaryFolder folder_;
};

/// From the start of the process to the first page, painted and written as a picture, without the
/// start-up picture's second.
void StartToFirstPage(benchmark::State& state) {
    const SilentFolder folder;
    const TemporaryFolder pictures;
    double total = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        ConsoleProgram program({"--folder", folder.Path()});
        if (program.Ask("grab " + pictures / "first.png") != "ok") state.SkipWithError("no page");
        const double spent = Seconds(Clock::now() - start) - kStartPause;
        total += spent;
        state.SetIterationTime(spent);
    }
    state.counters["of_bar"] = total / static_cast<double>(state.iterations()) / kStartBar;
}
BENCHMARK(StartToFirstPage)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The longest time between two refreshes while a connect waits for an interface that is silent.
void LongestGapDuringHangingConnect(benchmark::State& state) {
    constexpr std::chrono::seconds kHang{10};
    const SilentFolder folder;
    for (auto _ : state) {
        basGlobal = GlobalState{};
        frMain window;
        basGlobal.tiStartup.SetInterval(1);
        window.Start({folder.Path(), {}, true, QSize(800, 480)});
        Clock::time_point last = Clock::now();
        Clock::duration longest{};
        int refreshes = 0;
        basGlobal.tiMain.OnTick([&] {
            RefreshScreen(window.Screen());
            const Clock::time_point now = Clock::now();
            longest = std::max(longest, now - last);
            last = now;
            ++refreshes;
        });
        basGlobal.ConnState = 4;
        bool over = false;
        QTimer::singleShot(kHang, [&] { basGlobal.Closing = over = true; });
        while (!over) WaitForEvents(Seconds(kHang));
        state.SetIterationTime(Seconds(longest));
        state.counters["of_bar"] = Seconds(longest) / kGapBar;
        state.counters["refreshes"] = refreshes;
    }
    basGlobal = GlobalState{};
}
BENCHMARK(LongestGapDuringHangingConnect)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
