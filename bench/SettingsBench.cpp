#include <benchmark/benchmark.h>

#include "core/basGlobal.h"
#include "settings/SettingsWriter.h"
#include "settings/basSettings.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

/// A full table, every text of it changed, saved and loaded as the settings dialog does it.
void SaveAndReload(benchmark::State& state) {
    const TemporaryFolder folder;
    folder.Write("Dravik.ini", "[Options]\nLanguage=English\n");
    folder.Write("languages/English.ini", "[Sensors]\nFilename=english.sensors\n");
    InitGlobals(folder.Path());
    LoadSettings();
    std::vector<SensorRow> rows(kSensorLimit);
    int round = 0;
    for (auto _ : state) {
        const std::string text = std::to_string(++round);
        for (SensorRow& row : rows) row.fill(text);
        if (SaveSettings(ReadSettings(), rows)) state.SkipWithError("not saved");
        LoadSettings();
        if (basGlobal.SensorCount != kSensorLimit) state.SkipWithError("not loaded");
    }
}
BENCHMARK(SaveAndReload)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace dravik
