#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "platform/FormTimer.h"
#include "platform/serial/PseudoTerminal.h"
#include "support/GlobalsFixture.h"
#include "support/TestClock.h"
#include "vehicle/Desk.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::StartsWith;

/// The virtual vehicle on a real pseudo-terminal, with a clock of its own, so that its answers take
/// no time. A test may answer in its place.
class ServedVehicle {
 public:
    explicit ServedVehicle(const std::string& scenario) : desk_(scenario) {
        clock_.OnTick([this] { Serve(); });
    }

    const std::string& Device() const { return terminal_.Path(); }

    void Vanish() {
        vanished_ = true;
        terminal_.Vanish();
    }

    static void StayingSilent() { AdvanceHighResTimer(51); }

    /// Given a command, what is sent in the place of the vehicle's answer; nothing: its own.
    std::function<std::optional<std::string>(const std::string& command)> Instead =
        [](const auto&) { return std::nullopt; };
    std::vector<std::string> Commands;

 private:
    void Serve() {
        if (vanished_) return;
        line_ += terminal_.Receive();
        for (std::size_t end; !vanished_ && (end = line_.find('\r')) != std::string::npos;) {
            const std::string command = line_.substr(0, end);
            line_.erase(0, end + 1);
            Commands.push_back(command);
            const std::optional<std::string> instead = Instead(command);
            if (!vanished_) terminal_.Send(instead ? *instead : desk_.Ask(command));
        }
    }

    PseudoTerminal terminal_;
    vehicle::Desk desk_;
    std::string line_;
    bool vanished_ = false;
    FormTimer clock_{1, true};
};

/// Two units with codes of every kind, a frame of few values, and tests.
std::string TwoUnits(const std::string& protocol) {
    return "[vehicle]\nprotocol = " + protocol +
           "\nunits = 2\nvin = 1M8GDM9AXKP042788\nservices = 01 02 03 04 06 07 09 0A\n"
           "open-monitors = catalyst vapour\n"
           "unsupported-pids = 03 06 07 08 09 0B 0E 0F 10 11 14 15 2C 2D 2E 2F 33 42 43 44 45 46 "
           "47 49 4A 4C\n"
           "[unit 1]\nname = ECM-EngineControl\ncalibrations = DRAVIKECM0000001\n"
           "verifications = 17 91 BC 82\n"
           "[unit 2]\nname = TCM-Transmission\n"
           "[phase 1]\naction = idle\n"
           "[code 1]\ncode = P0133\npermanent = yes\n[code 2]\ncode = P0420\n"
           "[code 3]\ncode = P0700\nunit = 2\n"
           "[code 4]\ncode = P0455\nstate = pending\n"
           "[test 1]\nmonitor = 01\nscaling = 0A\nvalue = 0B B0\nhigh = 0C 00\n"
           "[test 2]\nmonitor = A2\nscaling = 0A\nvalue = 0D B0\nhigh = 0C 00\n"
           "[test 3]\nmonitor = 21\nscaling = 0A\nvalue = 0D B0\nhigh = 0C 00\n";
}

/// All services, but little to tell.
std::string OneUnit() {
    return "[vehicle]\nprotocol = can-11-500\nvin = 1M8GDM9AXKP042788\n"
           "services = 01 02 03 04 06 07 09 0A\n"
           "unsupported-pids = 03 04 06 07 08 09 0A 0B 0E 0F 10 11 14 15 1F 2C 2D 2E 2F 33 42 43 "
           "44 "
           "45 46 47 49 4A 4C\n"
           "[unit 1]\nname = ECM-EngineControl\nverifications = 17 91 BC 82\n"
           "calibrations = DRAVIKECM0000001\n[phase 1]\naction = idle\n"
           "[code 1]\ncode = P0133\npermanent = yes\n"
           "[test 1]\nmonitor = 21\nvalue = 0B B0\nhigh = 0C 00\n";
}

class DiagnosisTest : public GlobalsTest {
 protected:
    DiagnosisTest() {
        InitLink();
        basGlobal.tiHardware.SetInterval(0);
    }

    void Connect(const std::string& scenario) {
        basGlobal.comOBD.Close();
        vehicle_ = std::make_unique<ServedVehicle>(scenario);
        WriteFile("Dravik.ini", "[OBD]\nComPort=3\nDecoding=standard\n[Ports]\nCOM3=" +
                                    vehicle_->Device() + "\n");
        basGlobal.ConnState = kConnecting;
        HardwareStep();
        ASSERT_EQ(basGlobal.ConnState, kConnected);
        vehicle_->Commands.clear();
    }

    const Diagnosis& Diagnose() {
        StartDiagnosis();
        EXPECT_EQ(basGlobal.ConnState, kDiagnosing);
        HardwareStep();
        return *LastDiagnosis();
    }

    /// A live value comes, which it does only with headers off and nothing left on the line.
    static bool LiveDataGoOn() {
        basGlobal.LiveAt.fill(0);
        basGlobal.PidWanted.fill(false);
        basGlobal.PidWanted[0x0C] = true;
        HardwareStep();
        return Until([] { return basGlobal.LiveAt[0x0C] != 0; });
    }

    static std::vector<std::string> CodesOf(const Diagnosis& found) {
        std::vector<std::string> codes;
        for (const FoundCode& code : found.Codes) {
            const auto unit = std::find_if(
                found.Units.begin(), found.Units.end(),
                [&](const ControlUnit& candidate) { return candidate.Address == code.Unit; });
            codes.push_back(code.Code + " " + "SPM"[static_cast<int>(code.Kind)] +
                            std::to_string(unit - found.Units.begin()) +
                            (code.Frame ? " f" + std::to_string(*code.Frame) : ""));
        }
        return codes;
    }

    static std::string Label(const char* name) { return *DiagnosisText(name); }

    std::unique_ptr<ServedVehicle> vehicle_;
};

TEST_F(DiagnosisTest, FindsTheSameOnEveryBus) {
    for (const char* protocol : {"j1850-pwm", "j1850-vpw", "iso9141", "kwp-slow", "kwp-fast",
                                 "can-11-500", "can-29-500", "can-11-250", "can-29-250"}) {
        SCOPED_TRACE(protocol);
        Connect(TwoUnits(protocol));
        const Diagnosis& found = Diagnose();
        EXPECT_EQ(basGlobal.ConnState, kConnected);
        EXPECT_EQ(vehicle_->Commands.back(), "ATH0");
        EXPECT_EQ(Label("missing"), "Odometer: Not supported by this vehicle");
        EXPECT_THAT(found.Vin, Optional(std::string("1M8GDM9AXKP042788")));
        EXPECT_EQ(found.Check, VinCheck::Holds);
        ASSERT_EQ(found.Units.size(), 2U);
        EXPECT_EQ(found.Units[0].Name, "ECM-EngineControl");
        EXPECT_THAT(found.Units[0].Calibrations, ElementsAre("DRAVIKECM0000001"));
        EXPECT_THAT(found.Units[0].Verifications, ElementsAre("1791BC82"));
        EXPECT_EQ(found.Units[1].Name, "TCM-Transmission");
        EXPECT_THAT(CodesOf(found), ElementsAre("P0133 S0 f0", "P0420 S0 f1", "P0700 S1 f0",
                                                "P0455 P0", "P0133 M0"));
        ASSERT_EQ(found.Frames.size(), 3U);
        for (const FreezeFrame& frame : found.Frames)
            EXPECT_EQ(frame.Values.contains(0x0C),
                      frame.Unit == found.Units[0].Address || frame.Values.size() > 1)
                << frame.Code;
        ASSERT_EQ(found.Tests.size(), 3U);
        EXPECT_TRUE(found.Tests[0].Passed);
        EXPECT_FALSE(found.Tests[1].Ran) << "the catalyst's monitor is open";
        EXPECT_FALSE(found.Tests[2].Passed);
        ASSERT_TRUE(found.SinceClear && found.ThisDrive);
        EXPECT_TRUE(found.SinceClear->Lamp);
        EXPECT_EQ(ReadyForInspection(found)->Open, 2);
        EXPECT_EQ(found.TimeSinceClear, 600);
        EXPECT_EQ(DiagnosisPercent(), 100);
        EXPECT_EQ(Label("progress"), "Diagnosis complete");
        EXPECT_TRUE(LiveDataGoOn());
    }
}

TEST_F(DiagnosisTest, AsksOnlyForWhatTheVehicleSaysItHas) {
    Connect("[vehicle]\nprotocol = can-11-500\nservices = 01 03\n[phase 1]\naction = idle\n");
    const Diagnosis& found = Diagnose();
    EXPECT_EQ(basGlobal.ConnState, kConnected);
    for (const std::string& command : vehicle_->Commands) {
        if (command.starts_with("06") || command.starts_with("09")) {
            EXPECT_THAT(command, testing::AnyOf("0600", "0900"));
        }
        EXPECT_FALSE(command.starts_with("02")) << "no code, so no frame";
    }
    for (const DiagnosisPart part :
         {DiagnosisPart::Vin, DiagnosisPart::Calibrations, DiagnosisPart::UnitNames,
          DiagnosisPart::PendingCodes, DiagnosisPart::PermanentCodes, DiagnosisPart::Tests})
        EXPECT_EQ(LackOf(found, part), Lack::NotSupported) << PartText(part);
    EXPECT_EQ(LackOf(found, DiagnosisPart::StoredCodes), std::nullopt);
    EXPECT_EQ(Label("vin"), "Not supported by this vehicle");
    EXPECT_EQ(Label("permanent"), "Not supported by this vehicle");
    EXPECT_EQ(Label("stored"), "0");
}

/// The first request of each kind, in the order of a whole run.
std::vector<std::string> StepsOf(const std::vector<std::string>& commands) {
    std::vector<std::string> steps;
    std::set<std::string> kinds;
    for (const std::string& command : commands) {
        // Of the values of a frame, and of the tests, one stands for all.
        const bool many = command.starts_with("02") || command.starts_with("06");
        const bool special = command.substr(2, 2) == "00" || command.substr(2, 2) == "02";
        const std::string kind = many ? command.substr(0, special ? 4 : 2) : command;
        if (command != "ATH0" && kinds.insert(kind).second) steps.push_back(command);
    }
    return steps;
}

TEST_F(DiagnosisTest, WhateverGoesWrongAtAnyStepLeavesTheRestAndLiveDataGoOn) {
    const std::string scenario = OneUnit();
    Connect(scenario);
    Diagnose();
    const std::vector<std::string> steps = StepsOf(vehicle_->Commands);
    ASSERT_GT(steps.size(), 20U);

    enum Fault { Silence, Garbage, Refusal, NoData, Unplugged };
    for (const Fault fault : {Silence, Garbage, Refusal, NoData, Unplugged}) {
        for (const std::string& step : steps) {
            if (step.starts_with("AT") && (fault == Refusal || fault == NoData)) continue;
            SCOPED_TRACE(std::to_string(fault) + " at " + step);
            Connect(scenario);
            vehicle_->Instead = [&](const std::string& command) -> std::optional<std::string> {
                if (command != step) return std::nullopt;
                switch (fault) {
                    case Silence:
                        ServedVehicle::StayingSilent();
                        return "";
                    case Garbage:
                        return "7E8 0\x80G4 1\x07 \r\r>";
                    case Refusal:
                        return "7E8 03 7F " + step.substr(0, 2) + " 22 \r\r>";
                    case NoData:
                        return "NO DATA\r\r>";
                    case Unplugged:
                        vehicle_->Vanish();
                        return "";
                }
                return std::nullopt;
            };
            const Diagnosis& found = Diagnose();
            if (fault == Unplugged) {
                EXPECT_EQ(basGlobal.ConnState, kNotConnected);
                EXPECT_EQ(found.Missing.back().Part, DiagnosisPart::Tests);
                EXPECT_EQ(found.Missing.back().Why, Lack::LinkLost);
                continue;
            }
            ASSERT_EQ(basGlobal.ConnState, kConnected);
            EXPECT_TRUE(LiveDataGoOn());
            EXPECT_FALSE(found.Cancelled);
            if (step == "ATDPN" || step == "ATH1") continue;
            ASSERT_GT(found.Missing.size(), 1U) << "the odometer is always";
            // These a vehicle may lack without having said so.
            const std::set<std::string> optional = {"07", "0A", "0600", "0900", "020200"};
            const bool lacks = fault == NoData && optional.contains(step);
            EXPECT_EQ(found.Missing.front().Why == Lack::NotSupported, lacks) << Label("missing");
            // What came before is there.
            if (step.starts_with("03") || step.starts_with("02")) {
                EXPECT_TRUE(found.Vin && found.SinceClear && found.Voltage);
            }
            if (step.starts_with("02")) {
                EXPECT_EQ(found.Codes.size(), 2U);
                EXPECT_TRUE(LackOf(found, DiagnosisPart::FreezeFrames)) << Label("missing");
            }
            // A silent interface is not asked again and again.
            const auto asked =
                std::count(vehicle_->Commands.begin(), vehicle_->Commands.end(), step);
            EXPECT_LE(asked, 3);
            if (fault != Silence && step.starts_with("01") && step != "0100") {
                EXPECT_EQ(found.Codes.size(), 2U) << "the rest is asked for none the less";
            }
        }
    }
}

TEST_F(DiagnosisTest, AnInterfaceThatStaysSilentEndsTheLink) {
    Connect(TwoUnits("can-11-500"));
    bool dead = false;
    vehicle_->Instead = [&](const std::string& command) -> std::optional<std::string> {
        dead |= command == "03";
        if (!dead) return std::nullopt;
        ServedVehicle::StayingSilent();
        return "";
    };
    const Diagnosis& found = Diagnose();
    EXPECT_EQ(basGlobal.ConnState, kNotConnected);
    EXPECT_THAT(ReasonText(), StartsWith("No answer from the interface"));
    EXPECT_EQ(Label("progress"), "Diagnosis ended early");
    EXPECT_TRUE(found.Vin);
    EXPECT_EQ(LackOf(found, DiagnosisPart::StoredCodes), Lack::NoAnswer);
    EXPECT_EQ(LackOf(found, DiagnosisPart::Tests), Lack::NoAnswer);
    EXPECT_LE(std::count(vehicle_->Commands.begin(), vehicle_->Commands.end(), "03"), 2);
}

TEST_F(DiagnosisTest, AVehicleWhoseIgnitionGoesOffEndsTheRunSoon) {
    Connect(TwoUnits("can-11-500"));
    bool off = false;
    vehicle_->Instead = [&](const std::string& command) -> std::optional<std::string> {
        off |= command == "0902";
        if (!off || command.starts_with("AT")) return std::nullopt;
        return "CAN ERROR\r\r>";
    };
    const Diagnosis& found = Diagnose();
    EXPECT_EQ(basGlobal.ConnState, kConnected);
    EXPECT_LT(vehicle_->Commands.size(), 25U);
    EXPECT_EQ(LackOf(found, DiagnosisPart::StoredCodes), Lack::NoAnswer);
}

TEST_F(DiagnosisTest, WhatTheVehicleLeavesUnansweredDoesNotEndTheRun) {
    Connect(TwoUnits("can-11-500"));
    vehicle_->Instead = [](const std::string& command) -> std::optional<std::string> {
        const bool promised = command.starts_with("09") && command != "0900";
        return promised ? std::optional<std::string>("NO DATA\r\r>") : std::nullopt;
    };
    const Diagnosis& found = Diagnose();
    EXPECT_EQ(LackOf(found, DiagnosisPart::Vin), Lack::NoAnswer);
    EXPECT_EQ(LackOf(found, DiagnosisPart::UnitNames), Lack::NoAnswer);
    EXPECT_EQ(found.Codes.size(), 5U);
    EXPECT_EQ(found.Tests.size(), 3U);
}

TEST_F(DiagnosisTest, AnAnswerThatIsPutOffIsWaitedFor) {
    Connect(TwoUnits("can-11-500") + "[refusal 1]\nrequest = 03\npending = 2\nthen = answer\n");
    int busy = 0;
    vehicle_->Instead = [&](const std::string& command) -> std::optional<std::string> {
        if (command == "0902" && ++busy < 3) return "7E8 03 7F 09 78 \r\r>";
        return std::nullopt;
    };
    const Diagnosis& found = Diagnose();
    EXPECT_TRUE(found.Vin);
    EXPECT_EQ(found.Codes.size(), 5U);
}

TEST_F(DiagnosisTest, IsCancelledWithinOneRequest) {
    Connect(TwoUnits("kwp-fast"));
    vehicle_->Instead = [&](const std::string& command) -> std::optional<std::string> {
        if (command == "03") {
            ShowDiagnosis("codes");
            EXPECT_TRUE(basGlobal.Lists[kDiagnosisSlot].Entries.empty()) << "nobody knows yet";
        } else if (command == "07") {
            EXPECT_THAT(Label("progress"), StartsWith("Pending codes"));
            CancelDiagnosis();
        }
        return std::nullopt;
    };
    const Diagnosis& found = Diagnose();
    EXPECT_EQ(vehicle_->Commands.back(), "ATH0");
    EXPECT_EQ(*(vehicle_->Commands.end() - 2), "07");
    EXPECT_TRUE(found.Cancelled);
    EXPECT_EQ(LackOf(found, DiagnosisPart::StoredCodes), std::nullopt);
    EXPECT_EQ(LackOf(found, DiagnosisPart::PermanentCodes), Lack::Cancelled);
    EXPECT_EQ(Label("progress"), "Diagnosis cancelled");
    EXPECT_TRUE(LiveDataGoOn());
    EXPECT_EQ(Label("permanent"), "Cancelled before");

    vehicle_->Instead = [](const auto&) { return std::nullopt; };
    EXPECT_FALSE(Diagnose().Cancelled) << "that was about the other run";
}

TEST_F(DiagnosisTest, GivesWayToWhatElseIsAskedOfTheLink) {
    const struct {
        std::function<void()> Ask;
        int State;
    } rows[] = {{[] { Disconnect(); }, kNotConnected},
                {[] { basGlobal.ConnState = kConnecting; }, kConnecting}};
    for (const auto& [ask, state] : rows) {
        Connect(TwoUnits("can-29-500"));
        vehicle_->Instead = [&ask = ask](const std::string& command) -> std::optional<std::string> {
            if (command == "03") ask();
            return std::nullopt;
        };
        const Diagnosis& found = Diagnose();
        EXPECT_EQ(basGlobal.ConnState, state);
        EXPECT_TRUE(found.Vin);
        EXPECT_EQ(LackOf(found, DiagnosisPart::Tests), Lack::LinkLost);
        EXPECT_EQ(Label("progress"), "Diagnosis ended early");
    }
    basGlobal.ConnState = kNotConnected;
    StartDiagnosis();
    EXPECT_EQ(basGlobal.ConnState, kNotConnected) << "only from a link that is up";
}

TEST_F(DiagnosisTest, TheCodesAreTheLinksOwnOnlyWhenItDecodesByTheStandard) {
    for (const bool standard : {false, true}) {
        Connect(TwoUnits("can-11-500"));
        basGlobal.StandardDecoding = standard;
        basGlobal.DtcCount = 2;
        basGlobal.DtcList[0] = "as read";
        Diagnose();
        EXPECT_EQ(basGlobal.DtcCount, standard ? 3 : 2);
        EXPECT_EQ(basGlobal.DtcList[0], standard ? "P0133" : "as read");
        if (!standard) continue;
        EXPECT_EQ(basGlobal.DtcList[2], "P0700");
        EXPECT_EQ(basGlobal.CodeOrigins[1].Frame, 1);
        EXPECT_FALSE(basGlobal.CodeOrigins[1].Kept);
        ASSERT_TRUE(basGlobal.CodeOrigins[2].Kept) << "another unit has that frame, too";
        EXPECT_TRUE(basGlobal.CodeOrigins[2].Kept->contains(0x0D));
        EXPECT_EQ(basGlobal.Lists[kCodeListSlot].Entries.size(), 3U);
    }
}

TEST_F(DiagnosisTest, AfterAClearItSaysWhatRemains) {
    Connect(TwoUnits("can-11-500"));
    Diagnose();
    vehicle_->Commands.clear();
    basGlobal.ConnState = kClearingCodes;
    HardwareStep();
    EXPECT_EQ(Label("progress"), "As it was before the codes were cleared");
    EXPECT_EQ(basGlobal.ConnState, kReadingCodes);
    HardwareStep();
    ASSERT_EQ(basGlobal.ConnState, kDiagnosing) << "by itself";
    HardwareStep();
    ASSERT_EQ(basGlobal.ConnState, kConnected);
    const Diagnosis& found = *LastDiagnosis();
    EXPECT_FALSE(found.Cleared);
    EXPECT_THAT(CodesOf(found), ElementsAre("P0133 M0"));
    EXPECT_EQ(Label("stored"), "0");
    EXPECT_EQ(Label("lamp"), "Off");
    EXPECT_THAT(Label("ready"), HasSubstr("4 monitors open"));
    EXPECT_TRUE(found.Vin) << "what the vehicle is has not changed";
    EXPECT_THAT(vehicle_->Commands, testing::Not(testing::Contains("0902")));

    basGlobal.ConnState = kReadingCodes;
    HardwareStep();
    EXPECT_EQ(basGlobal.ConnState, kConnected) << "once only";
    basGlobal.ConnState = kConnecting;  // perhaps to another vehicle
    HardwareStep();
    basGlobal.ConnState = kClearingCodes;
    for (int step = 0; step < 2; ++step) HardwareStep();
    EXPECT_EQ(basGlobal.ConnState, kConnected) << "nothing is known of this one yet";
}

TEST_F(DiagnosisTest, TheListShowsEachSection) {
    EXPECT_EQ(Label("progress"), "Not diagnosed yet");
    ShowDiagnosis("codes");
    const ListSlot& list = basGlobal.Lists[kDiagnosisSlot];
    EXPECT_TRUE(list.Entries.empty());
    EXPECT_EQ(ListSlotByName("diagnosis_tests"), kDiagnosisSlot);
    EXPECT_EQ(ListSlotByName("diagnosistests"), -1);
    WriteFile("languages/codes", "[errorcodes]\nP0133=Slow sensor\n");
    basGlobal.DescriptionFile = (folder_ / "languages/codes").string();
    NameSensors({"rpm.engine"});
    basGlobal.Sensors[0] = {"rpm.engine", "obd_0C",       0.25F, 0,  0,
                            8000,         "Engine speed", "rpm", {}, {}};
    Connect(TwoUnits("can-11-500"));
    Diagnose();
    const auto lines = [&] {
        std::vector<std::string> texts;
        for (const ListEntry& entry : list.Entries)
            texts.push_back(entry.Picture + " " + entry.Text);
        return texts;
    };
    EXPECT_THAT(lines(), ElementsAre("bad P0133  Stored: Slow sensor (ECM-EngineControl)",
                                     "bad P0420  Stored: You can drive on (ECM-EngineControl)",
                                     "bad P0700  Stored: Have it seen soon (TCM-Transmission)",
                                     "open P0455  Pending: You can drive on (ECM-EngineControl)",
                                     "bad P0133  Permanent: Slow sensor (ECM-EngineControl)"));
    EXPECT_EQ(Label("severity"), "You can drive on");
    SelectListEntry(basGlobal.Lists[kDiagnosisSlot], 3);
    EXPECT_EQ(Label("severity"), "Have it seen soon");
    SelectListEntry(basGlobal.Lists[kDiagnosisSlot], 2);
    ShowDiagnosis("frame");
    EXPECT_THAT(lines().front(), StartsWith("bad Freeze frame of P0420"));
    EXPECT_THAT(lines(),
                testing::Contains(testing::ContainsRegex("none Engine speed: [0-9.]+ rpm")));
    ShowDiagnosis("codes");
    EXPECT_EQ(list.Selected, 2) << "back at the code";
    ShowDiagnosis("readiness");
    EXPECT_EQ(lines()[0], "bad Not ready: the lamp is on, 2 monitors open");
    EXPECT_THAT(lines(), testing::Contains(StartsWith("open Catalyst: Incomplete")));
    EXPECT_THAT(lines(), testing::Contains("none Heated catalyst: Not fitted"));
    EXPECT_EQ(Label("severity"), "");
    ShowDiagnosis("tests");
    EXPECT_THAT(
        lines(),
        ElementsAre(
            "good Oxygen sensor B1 S1, Test 01: 365.024 mV (0.000 mV to 374.784 mV)  Passed",
            "open Catalyst B1, Test 01: Not run yet",
            "bad Misfire, cylinder 1, Test 01: 427.488 mV (0.000 mV to 374.784 mV)  Failed"));
    ShowDiagnosis("vehicle");
    EXPECT_EQ(lines()[0], "good Vehicle number (VIN): 1M8GDM9AXKP042788");
    EXPECT_THAT(lines(), testing::Contains(HasSubstr("DRAVIKECM0000001")));
    EXPECT_EQ(Label("selected"), list.Entries[0].Text);
}

TEST_F(DiagnosisTest, FrozenValuesAreMadeOfTheirOwnBytes) {
    NameSensors({"volt", "trim", "absent"});
    basGlobal.Sensors[0] = {"volt", "obd_14", 0.005F, 0, 0, 2, "Voltage", "V", ByteRange{0, 0}, 3};
    basGlobal.Sensors[1] = {"trim", "obd_14", 1, 0, 0, 9, "Trim", "%", ByteRange{1, 1, 0xFF}, 0};
    basGlobal.Sensors[2] = {"far", "obd_14", 1, 0, 0, 9, "Far", "", ByteRange{2, 3}, {}};
    const std::vector<FrameValue> values = FrameValuesOf(0x14, {90, 0xFF});
    ASSERT_EQ(values.size(), 1);
    EXPECT_EQ(values[0].Caption + " " + values[0].Text, "Voltage 0.450 V");
    EXPECT_EQ(FrameValuesOf(0x14, {90, 128})[1].Text, "128 %");
}

}  // namespace
}  // namespace dravik
