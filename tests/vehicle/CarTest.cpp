#include <cmath>
#include <map>
#include <optional>

#include "Desk.h"

namespace dravik::vehicle {
namespace {

/// A car that is asked like a real one, by its PIDs, and whose answers are taken apart with the
/// standard's formulas.
class Probe {
 public:
    explicit Probe(const Scenario& scenario) : Car(scenario) {}

    std::optional<Bytes> Read(int pid) {
        const auto replies = Car.Request({0x01, static_cast<std::uint8_t>(pid)});
        if (replies.empty()) return std::nullopt;
        const Bytes& message = replies.front().Messages.front();
        EXPECT_EQ(message[0], 0x41);
        EXPECT_EQ(message[1], pid);
        return Bytes(message.begin() + 2, message.end());
    }

    double Number(int pid) {
        double number = 0;
        const auto bytes = Read(pid);
        EXPECT_TRUE(bytes) << std::hex << pid;
        for (auto byte : bytes.value_or(Bytes())) number = number * 256 + byte;
        return number;
    }
    double EngineSpeed() { return Number(0x0C) / 4; }
    double Speed() { return Number(0x0D); }
    double Load() { return Number(0x04) / 255; }
    double Coolant() { return Number(0x05) - 40; }
    double Trim(int pid) { return Number(pid) / 1.28 - 100; }
    double AirFlow() { return Number(0x10) / 100; }

    Vehicle Car;
};

/// Data bytes of each PID as the standard has them, sixteen to a row.
int LengthOf(int pid) {
    constexpr std::string_view kLengths =
        "4422111111112111"  // 00 .. 0F
        "2111222222221112"  // 10 .. 1F
        "4222444444441111"  // 20 .. 2F
        "1221444444442222"  // 30 .. 3F
        "442221111111122";  // 40 .. 4E
    return kLengths.at(static_cast<std::size_t>(pid)) - '0';
}

TEST(Car, MasksAgreeWithWhatIsAnsweredAndEveryAnswerHasItsLength) {
    const char* const scenarios[] = {
        "", "[vehicle]\nunsupported-pids = 02 05 0D 1F 21 33 4E\n",
        "[vehicle]\nunits = 3\nunsupported-pids = 42\n",
        "[vehicle]\nunsupported-pids = 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E\n"};
    for (const char* text : scenarios) {
        const Scenario scenario = ScenarioOf(std::string(text) + kIdle);
        Vehicle car(scenario);
        for (int unit = 1; unit <= scenario.Units; ++unit) {
            std::map<int, Bytes> answers;
            for (int pid = 0; pid <= 0xFF; ++pid) {
                for (const auto& reply : car.Request({0x01, static_cast<std::uint8_t>(pid)})) {
                    if (reply.Unit != unit) continue;
                    const Bytes& message = reply.Messages.front();
                    answers[pid] = Bytes(message.begin() + 2, message.end());
                    EXPECT_EQ(static_cast<int>(answers[pid].size()), LengthOf(pid))
                        << std::hex << pid;
                }
            }
            ASSERT_TRUE(answers.count(0x00));
            for (int pid = 1; pid <= 0xFF; ++pid) {
                const int base = (pid - 1) / 32 * 32, bit = (pid - 1) % 32;
                const bool masked =
                    answers.count(base) != 0 &&
                    (answers[base][static_cast<std::size_t>(bit / 8)] & (0x80 >> bit % 8)) != 0;
                EXPECT_EQ(masked, answers.count(pid) != 0)
                    << text << " unit " << unit << " PID " << std::hex << pid;
            }
        }
    }
}

TEST(Car, DefaultDriveVisiblyMovesWithinTheFirstSeconds) {
    Probe probe(BuiltIn("drive"));
    probe.Car.AdvanceTo(1);
    const double coolant = probe.Coolant();
    probe.Car.AdvanceTo(6);
    EXPECT_GT(probe.EngineSpeed(), 1000);
    EXPECT_GT(probe.Speed(), 10);
    EXPECT_GT(probe.Coolant(), coolant + 1);
    EXPECT_EQ(probe.Read(0x01), (Bytes{0x00, 0x07, 0x65, 0x04})) << "no codes, lamp off";
}

/// The relations that hold between readings at every instant of a drive of half an hour.
TEST(Car, ReadingsAgreeWithEachOtherOverALongDrive) {
    Probe probe(BuiltIn("drive"));
    double distance = 0, fastest = 0, lowestFuel = 1000;
    int inGear = 0, closedLoop = 0, closedThrottle = 0;
    std::map<int, int> gears;
    for (int tick = 1; tick <= 18000; ++tick) {
        const double now = tick * 0.1;
        probe.Car.AdvanceTo(now);
        const CarState& state = probe.Car.Car();
        const double rpm = probe.EngineSpeed(), speed = probe.Speed(), load = probe.Load();
        const double barometer = probe.Number(0x33), manifold = probe.Number(0x0B);
        SCOPED_TRACE("at " + std::to_string(now));
        distance += speed / 3600 * 0.1;
        fastest = std::max(fastest, speed);

        if (state.ClutchClosed) {
            ++inGear;
            ++gears[state.Gear];
            ASSERT_NEAR(rpm, EngineSpeedInGear(state.Speed, state.Gear), 1);
            ASSERT_NEAR(speed, state.Speed, 0.51);
        }
        ASSERT_NEAR(manifold, load * barometer, 1.2) << "an engine pulls as it breathes";
        const double absolute = probe.Number(0x43) / 255;
        ASSERT_NEAR(probe.AirFlow(), absolute * kAirDensity * kDisplacement * rpm / 120,
                    0.02 + 0.03 * probe.AirFlow());
        ASSERT_LE(absolute, 1.1);
        const double throttle = probe.Number(0x11) / 2.55;
        ASSERT_NEAR(probe.Number(0x45) / 2.55, throttle - kClosedThrottle, 0.5);
        ASSERT_GE(throttle, kClosedThrottle - 0.5);
        ASSERT_LE(throttle, 90);
        ASSERT_NEAR(probe.Number(0x22) * 0.079, probe.Number(0x0A) * 3 + barometer - manifold, 3.2);
        ASSERT_EQ(static_cast<int>(probe.Number(0x14)) & 0xFF, probe.Number(0x06));
        ASSERT_NEAR(std::floor(probe.Number(0x24) / 65536), std::floor(probe.Number(0x34) / 65536),
                    0.5)
            << "both forms of the mixture";
        ASSERT_LE(std::abs(probe.Trim(0x06)), 15);
        ASSERT_GT(probe.Number(0x42), now > 3 ? 13500 : 9500) << "the generator charges";
        closedLoop += probe.Number(0x03) == 0x0202;
        closedThrottle += throttle < kClosedThrottle + 1 && speed > 20;
        if (now < 1000) {
            ASSERT_LE(probe.Number(0x2F), lowestFuel);
            lowestFuel = probe.Number(0x2F);
        }
        ASSERT_EQ(probe.Number(0x1F), std::floor(state.RunTime));
    }
    EXPECT_EQ(gears.size(), 5u) << "all gears are used";
    EXPECT_GT(inGear, 9000);
    EXPECT_GT(closedLoop, 9000);
    EXPECT_GT(closedThrottle, 100) << "it also slows down with a closed throttle";
    EXPECT_GT(fastest, 120);
    EXPECT_LT(lowestFuel, 0.8 * 255 - 2);
    EXPECT_NEAR(probe.Number(0x31), distance, 1 + distance * 0.01);
    EXPECT_NEAR(probe.Number(0x1F), 1800, 2);
    EXPECT_NEAR(probe.Coolant(), 91, 6) << "the thermostat holds it";
    EXPECT_GT(probe.Number(0x3C) / 10 - 40, 400) << "a catalyst works hot";
    EXPECT_GT(probe.Number(0x3C), probe.Number(0x3E));
    EXPECT_EQ(probe.Read(0x41), (Bytes{0x00, 0x07, 0x65, 0x04})) << "monitors have run";
}

TEST(Car, FuelTrimSwingsAgainstTheOxygenSensor) {
    Probe probe(ScenarioOf("[vehicle]\ncoolant = 80\n[phase 1]\naction = cruise\nspeed = 60\n"));
    probe.Car.AdvanceTo(40);
    int swings = 0;
    bool wasRich = false;
    double before = probe.Car.Car().Banks[0].ShortTrim;
    for (double now = 40.05; now < 60; now += 0.05) {
        probe.Car.AdvanceTo(now + 0.001);
        const Bank& bank = probe.Car.Car().Banks[0];
        const bool rich = bank.FrontVolts > 0.45;
        if (bank.ShortTrim != before) {
            EXPECT_EQ(bank.ShortTrim < before, rich) << now;
        }
        before = bank.ShortTrim;
        swings += rich != wasRich;
        wasRich = rich;
    }
    EXPECT_GT(swings, 20);
    EXPECT_LT(swings, 80);
}

TEST(Car, EngineStartsTurnsIdlesAndStopsWithTheKey) {
    Probe probe(
        ScenarioOf("[phase 1]\naction = ignition\nfor = 5\n[phase 2]\naction = start\n"
                   "for = 30\n[phase 3]\naction = accelerate\nspeed = 60\nfor = 20\n"
                   "[phase 4]\naction = ignition\n"));
    probe.Car.AdvanceTo(4);
    EXPECT_EQ(probe.EngineSpeed(), 0);
    EXPECT_EQ(probe.AirFlow(), 0);
    EXPECT_EQ(probe.Number(0x0B), probe.Number(0x33)) << "no vacuum without an engine";
    EXPECT_EQ(probe.Number(0x1F), 0);
    EXPECT_LT(probe.Number(0x42), 13000);
    probe.Car.AdvanceTo(5.6);
    EXPECT_GT(probe.EngineSpeed(), 100);
    EXPECT_LT(probe.EngineSpeed(), 400) << "the starter turns it";
    EXPECT_LT(probe.Number(0x42), 11500);
    probe.Car.AdvanceTo(30);
    const double coldIdle = probe.EngineSpeed();
    EXPECT_GT(coldIdle, 1000);
    EXPECT_LT(coldIdle, 1400);
    EXPECT_EQ(probe.Speed(), 0);
    probe.Car.AdvanceTo(54);
    EXPECT_GT(probe.Speed(), 50);
    probe.Car.AdvanceTo(80);
    EXPECT_EQ(probe.EngineSpeed(), 0);
    EXPECT_EQ(probe.Speed(), 0);
}

TEST(Car, OverheatsOnlyWhenItsCoolingFails) {
    const std::string warm =
        "[vehicle]\ncoolant = 85\nambient = 35\n[phase 1]\naction = cruise\n"
        "speed = 110\nfor = 600\n[phase 2]\naction = ";
    Probe sound(ScenarioOf(warm + "cruise\nspeed = 110\n"));
    Probe broken(ScenarioOf(warm + "overheat\nspeed = 110\n"));
    sound.Car.AdvanceTo(600);
    EXPECT_LT(sound.Coolant(), 100);
    sound.Car.AdvanceTo(900);
    broken.Car.AdvanceTo(900);
    EXPECT_LT(sound.Coolant(), 100);
    EXPECT_GT(broken.Coolant(), 118);
    EXPECT_NEAR(broken.Speed(), 110, 4) << "it drives on meanwhile";
}

TEST(Car, OdometerIsReachedThroughTheMasksAndRunsWithTheDrive) {
    Desk desk(
        "[vehicle]\nodometer = 84210.3\n[phase 1]\naction = cruise\nspeed = 100\n"
        "[interface]\necho = off\nline-feeds = off\n");
    desk.Connect();
    for (const char* mask : {"0160", "0180"})
        EXPECT_EQ(desk.Ask(mask).substr(6), "00 00 00 01 \r\r>") << mask;
    EXPECT_EQ(desk.Ask("01A0"), "41 A0 04 00 00 00 \r\r>");
    const std::string before = desk.Ask("01A6");
    EXPECT_EQ(before.substr(0, 15), "41 A6 00 0C D9 ") << "842,103 is CD977";
    desk.Now = 36;
    EXPECT_GT(desk.Ask("01A6"), before);
}

TEST(Car, SameSeedAndTimeGiveTheSameReadingsWhateverTheSteps) {
    Scenario scenario = BuiltIn("drive");
    Probe once(scenario), often(scenario);
    for (double now = 0; now < 200; now += 0.37) often.Car.AdvanceTo(now);
    once.Car.AdvanceTo(200);
    often.Car.AdvanceTo(200);
    often.Car.AdvanceTo(3);  // time never goes back
    scenario.Seed = 2;
    Probe other(scenario);
    other.Car.AdvanceTo(200);
    int different = 0;
    for (int pid = 0; pid <= 0x4E; ++pid) {
        EXPECT_EQ(once.Read(pid), often.Read(pid)) << std::hex << pid;
        different += once.Read(pid) != other.Read(pid);
    }
    EXPECT_GT(different, 5);
}

}  // namespace
}  // namespace dravik::vehicle
