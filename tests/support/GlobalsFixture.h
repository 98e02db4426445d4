#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "core/basGlobal.h"
#include "platform/Events.h"
#include "platform/Paths.h"
#include "support/FakeScreen.h"

namespace dravik {

/// Pumps events until the condition holds. The limit only ends a test that has failed already.
inline bool Until(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        WaitForEvents(0.005);
    }
    return true;
}

/// Runs the event loop a while longer, for what must not happen.
inline void Settle() {
    for (int round = 0; round < 20; ++round) WaitForEvents(0.002);
}

/// All shared state as at start-up, on a program folder of the test's own.
class GlobalsTest : public ::testing::Test {
 protected:
    GlobalsTest() {
        std::string name = (std::filesystem::temp_directory_path() / "dravik-XXXXXX").string();
        folder_ = mkdtemp(name.data());
        for (const char* part : {"skins", "languages"})
            std::filesystem::create_directory(folder_ / part);
        basGlobal = GlobalState{};
        InitGlobals(folder_.string());
        fakeScreen = FakeScreen{};
    }
    ~GlobalsTest() override {
        basGlobal = GlobalState{};
        std::filesystem::remove_all(folder_);
    }

    void WriteFile(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ / name, std::ios::binary) << text;
    }
    std::string ReadFile(const std::string& name) const {
        return ReadWholeFile((folder_ / name).string()).value_or("(no file)");
    }

    /// Sensors 0, 1, ... with these names, "obd_00", "obd_01", ... as sources, switched on.
    static void NameSensors(const std::vector<std::string>& names) {
        basGlobal.SensorCount = static_cast<std::int16_t>(names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            basGlobal.Sensors[i].Function = names[i];
            basGlobal.Sensors[i].Source = "obd_0" + std::to_string(i);
            basGlobal.Sensors[i].Active = true;
        }
    }

    std::filesystem::path folder_;
};

}  // namespace dravik
