#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "support/LinkFixture.h"
#include "vehicle/VehicleServer.h"

namespace dravik {
namespace {

/// The link over a pseudo-terminal to a car on a bus of its own kind.
class StandardVehicle : public LinkTest, public ::testing::WithParamInterface<const char*> {
 protected:
    /// Connects to a car with so many codes, shared out over its control units.
    void ConnectTo(int units, int codes) {
        std::string scenario = std::string("[vehicle]\nprotocol = ") + GetParam() +
                               "\nunits = " + std::to_string(units) +
                               "\norder = interleaved\npadding = AA\n[interface]\nbaud = 115200\n"
                               "command-latency = 0\nbus-latency = 0.002\n";
        expected_.clear();
        for (int code = 1; code <= codes; ++code) {
            char text[100];
            std::snprintf(text, sizeof text, "[code %d]\ncode = P01%02d\nunit = %d\nframe = %s\n",
                          code, code, code % units + 1, code == 1 ? "yes" : "no");
            scenario += text;
            std::snprintf(text, sizeof text, "P01%02d", code);
            expected_.emplace_back(text);
        }
        WriteFile("car.ini", scenario + "[phase 1]\naction = idle\nfor = 600\n");
        ASSERT_EQ(server_.LoadScenario((folder_ / "car.ini").string()), "");
        ASSERT_EQ(server_.ServeSerialLine(), "");
        WriteFile("Dravik.ini", "[OBD]\nComPort=3\n[Ports]\nCOM3=" + server_.Device() + "\n");
        basGlobal.StandardDecoding = true;
        Connect();
        ASSERT_EQ(basGlobal.ConnState, kConnected) << basGlobal.CommTrace;
    }

    static std::vector<std::string> Codes() {
        basGlobal.ConnState = kReadingCodes;
        HardwareStep();
        std::vector<std::string> codes(CodesInUse().begin(), CodesInUse().end());
        std::sort(codes.begin(), codes.end());
        return codes;
    }

    vehicle::VehicleServer server_;
    std::vector<std::string> expected_;
};

TEST_P(StandardVehicle, GivesAllItsCodesAndGoesOnWithLiveData) {
    for (const auto& [units, codes] : {std::pair(4, 40), {1, 40}, {3, 0}}) {
        SCOPED_TRACE(std::to_string(codes) + " codes of " + std::to_string(units));
        ConnectTo(units, codes);
        EXPECT_EQ(basGlobal.DtcCount, codes) << "as the units count them";
        EXPECT_EQ(Codes(), expected_) << basGlobal.CommTrace;
        EXPECT_EQ(basGlobal.MilOn, codes > 0);
        EXPECT_EQ(std::count_if(basGlobal.CodeOrigins.begin(), basGlobal.CodeOrigins.end(),
                                [](const CodeOrigin& origin) { return origin.Frame.has_value(); }),
                  codes > 0 ? 1 : 0);
        ASSERT_EQ(basGlobal.ConnState, kConnected);
        basGlobal.PidWanted[0x0C] = true;
        HardwareStep();
        EXPECT_TRUE(Until([] { return PidKnown(0x0C); })) << basGlobal.RxBuffer;
        EXPECT_GT(basGlobal.LiveRaw[0x0C], 0);
        basGlobal.comOBD.Close();
        server_.Stop();
    }
}

INSTANTIATE_TEST_SUITE_P(Buses, StandardVehicle,
                         ::testing::Values("j1850-pwm", "j1850-vpw", "iso9141", "kwp-slow",
                                           "kwp-fast", "can-11-500", "can-29-500"));

}  // namespace
}  // namespace dravik
