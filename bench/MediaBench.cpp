#include <benchmark/benchmark.h>

#include <fstream>

#include "controls/SkinList.h"
#include "lists/basFunctions.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace dravik;

constexpr int kMediaSlot = 3;

/// A folder of so many files, in no particular order.
void FillFolder(const TemporaryFolder& folder, std::int64_t files) {
    std::filesystem::create_directories(folder / "music");
    for (std::int64_t i = 0; i < files; ++i) {
        const std::int64_t number = i * 7919 % files;
        std::ofstream(folder / ("music/Artist - Title " + std::to_string(number) + ".mp3"));
    }
}

/// Reading a folder until its list has been painted.
void ShowLargeFolder(benchmark::State& state) {
    const TemporaryFolder folder;
    FillFolder(folder, state.range(0));
    basGlobal = GlobalState{};
    InitGlobals(folder.Path());
    ListSlot& slot = basGlobal.Lists[kMediaSlot];
    SkinList list;
    list.SetBox(0, 0, 400, 300);
    list.SetListSlot(&slot);
    for (auto _ : state) {
        ShowFolder(kMediaSlot, "mp3,", folder / "music");
        list.Refresh();
        benchmark::DoNotOptimize(list.grab());
    }
    if (slot.Entries.size() != static_cast<std::size_t>(state.range(0)) + 1)
        state.SkipWithError("the list does not show the whole folder");
}
BENCHMARK(ShowLargeFolder)->Arg(100)->Arg(20'000)->Unit(benchmark::kMillisecond);

void ShowLargePlaylist(benchmark::State& state) {
    const TemporaryFolder folder;
    std::string text = "[playlist]\n";
    for (std::int64_t i = 1; i <= state.range(0); ++i) {
        const std::string number = std::to_string(i);
        text += "File" + number + "=music\\" + number + ".mp3\nTitle" + number + "=Title\n";
    }
    const std::string file = folder.Write("large.pls", text);
    basGlobal = GlobalState{};
    InitGlobals(folder.Path());
    for (auto _ : state) benchmark::DoNotOptimize(ShowPlaylist(kMediaSlot, file));
}
BENCHMARK(ShowLargePlaylist)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// Drags a full list about: nothing depends on its length.
void PaintLargeList(benchmark::State& state) {
    ListSlot slot;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        AddListEntry(slot, {"Entry " + std::to_string(i), "", ""});
    SkinList list;
    list.SetBox(0, 0, 400, 300);
    list.SetListSlot(&slot);
    int index = 0;
    for (auto _ : state) {
        SelectListEntry(slot, index = (index + 997) % static_cast<int>(state.range(0)));
        list.Refresh();
        benchmark::DoNotOptimize(list.grab());
    }
}
BENCHMARK(PaintLargeList)->Arg(20'000)->Unit(benchmark::kMillisecond);

}  // namespace
