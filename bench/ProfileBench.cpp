#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <fstream>

#include "platform/Profile.h"

namespace {

using namespace dravik;

constexpr std::size_t kLimit = 63;

/// A profile of the size of a skin: 20 pages of 200 keys.
std::string WriteSkin(const QTemporaryDir& folder) {
    std::string file = folder.filePath(QStringLiteral("skin.ini")).toStdString();
    std::ofstream text(file);
    for (int page = 0; page < 20; ++page) {
        text << "[page" << page << "]\n";
        for (int key = 0; key < 200; ++key) text << "Button" << key << "Up=button_up.png\n";
    }
    return file;
}

void ReadWarm(benchmark::State& state) {
    const QTemporaryDir folder;
    const std::string file = WriteSkin(folder);
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadProfileString(file, "Page19", "Button199Up", "", kLimit));
}
BENCHMARK(ReadWarm);

/// A change of the file before each read, so that it is parsed anew.
void ReadCold(benchmark::State& state) {
    const QTemporaryDir folder;
    const std::string file = WriteSkin(folder);
    for (auto _ : state) {
        state.PauseTiming();
        std::ofstream(file, std::ios::app) << ";\n";
        state.ResumeTiming();
        benchmark::DoNotOptimize(ReadProfileString(file, "Page19", "Button199Up", "", kLimit));
    }
}
BENCHMARK(ReadCold);

/// The first read of a file whose names differ only where capitals and other signs share bits.
void ReadLookAlikes(benchmark::State& state) {
    const QTemporaryDir folder;
    const std::string file = folder.filePath(QStringLiteral("skin.ini")).toStdString();
    std::string lines = "[page]\n";
    for (unsigned name = 0; name < 1U << 14; ++name) {
        for (unsigned bit = 0; bit < 14; ++bit) lines += (name >> bit & 1U) != 0 ? '@' : '`';
        lines += "=1\n";
    }
    std::ofstream(file) << lines;
    for (auto _ : state) {
        state.PauseTiming();
        std::ofstream(file, std::ios::app) << ";\n";
        state.ResumeTiming();
        benchmark::DoNotOptimize(ReadProfileString(file, "page", "key", "", kLimit));
    }
}
BENCHMARK(ReadLookAlikes);

void Write(benchmark::State& state) {
    const QTemporaryDir folder;
    const std::string file = WriteSkin(folder);
    int value = 0;
    for (auto _ : state) {
        if (!WriteProfileString(file, "Page19", "Button199Up", std::to_string(++value))) {
            state.SkipWithError("the file could not be written");
            break;
        }
    }
}
BENCHMARK(Write)->UseRealTime();

}  // namespace
