#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "support/FakeScreen.h"
#include "support/TemporaryFolder.h"
#include "support/Waiting.h"

namespace dravik {

/// The words of a text that are parted by blanks.
inline std::vector<std::string> Words(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

/// All shared state as at start-up, on a program folder of the test's own.
class GlobalsTest : public ::testing::Test {
 protected:
    GlobalsTest() {
        for (const char* part : {"skins", "languages"})
            std::filesystem::create_directory(folder_ / part);
        basGlobal = GlobalState{};
        InitGlobals(folder_.string());
        InstallFakeScreen();
    }
    ~GlobalsTest() override { basGlobal = GlobalState{}; }

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

    const TemporaryFolder temporaryFolder_;
    const std::filesystem::path folder_ = temporaryFolder_.Path();
};

}  // namespace dravik
