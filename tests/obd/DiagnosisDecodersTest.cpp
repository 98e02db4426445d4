#include <gmock/gmock.h>

#include "obd/Diagnosis.h"
#include "obd/diagnosis/Decoders.h"
#include "platform/Number.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

using ::testing::DoubleEq;
using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Optional;

MessageBytes Hex(const std::string& text) {
    MessageBytes bytes;
    for (const std::string& byte : Words(text))
        bytes.push_back(WholeNumber<std::uint8_t>(byte, 16).value());
    return bytes;
}

MessageBytes HexAnd(const std::string& head, const std::string& text) {
    MessageBytes bytes = Hex(head);
    bytes.insert(bytes.end(), text.begin(), text.end());
    return bytes;
}

class Decoders : public GlobalsTest {};

TEST_F(Decoders, TheCheckDigitOfAVehicleNumberCountsWhereItMustBeThere) {
    const struct {
        const char* Vin;
        VinCheck Check;
    } rows[] = {
        {"1M8GDM9AXKP042788", VinCheck::Holds},  // the sum is 351, its rest 10
        {"11111111111111111", VinCheck::Holds},  // 89, rest 1
        {"1M8GDM9A1KP042788", VinCheck::Fails},
        {"1M8GDM9AXKP042789", VinCheck::Fails},
        {"WVWZZZ1KZ6W000001", VinCheck::NotChecked},  // Europe puts what it likes there
        {"1M8GDM9AXKP04278", VinCheck::NotANumber},
        {"1M8GDM9AXKPO42788", VinCheck::NotANumber},  // the letter O for a naught
    };
    for (const auto& [vin, check] : rows) EXPECT_EQ(CheckVin(vin), check) << vin;
}

TEST_F(Decoders, TextsComeInOneMessageOrInNumberedOnes) {
    EXPECT_THAT(TextsIn({HexAnd("49 02 01", "1M8GDM9AXKP042788")}, 17),
                Optional(ElementsAre("1M8GDM9AXKP042788")));
    const std::vector<MessageBytes> five = {
        HexAnd("49 02 03", "M9AX"), Hex("49 02 01 00 00 00 31"), HexAnd("49 02 02", "M8GD"),
        HexAnd("49 02 05", "2788"), HexAnd("49 02 04", "KP04"),
    };
    EXPECT_THAT(TextsIn(five, 17), Optional(ElementsAre("1M8GDM9AXKP042788")));
    for (std::size_t lost = 0; lost < five.size(); ++lost) {
        auto four = five;
        four.erase(four.begin() + static_cast<std::ptrdiff_t>(lost));
        EXPECT_EQ(TextsIn(four, 17), std::nullopt) << lost;
    }
    // Two identifications, the second filled up.
    EXPECT_THAT(
        TextsIn({HexAnd("49 04 02", std::string("ABCDEFGHIJKLMNOPSHORT") + std::string(11, '\0'))},
                16),
        Optional(ElementsAre("ABCDEFGHIJKLMNOP", "SHORT")));
    EXPECT_THAT(NumbersIn({Hex("49 06 02 17 91 BC 82 00 00 00 0A")}),
                Optional(ElementsAre("1791BC82", "0000000A")));
    EXPECT_THAT(NumbersIn({Hex("49 06 02 00 00 00 0A"), Hex("49 06 01 17 91 BC 82")}),
                Optional(ElementsAre("1791BC82", "0000000A")));
    EXPECT_EQ(NumbersIn({Hex("49 06 01 17 91")}), std::nullopt);
    EXPECT_EQ(UnitNameIn(std::string("ECM\0-EngineControl", 18)), "ECM-EngineControl");
}

TEST_F(Decoders, MasksTellWhatThereIs) {
    const struct {
        const char* Message;
        std::vector<std::size_t> Numbers;
    } rows[] = {
        {"41 00 BE 1F A8 13",
         {1, 3, 4, 5, 6, 7, 0x0C, 0x0D, 0x0E, 0x0F, 0x10, 0x11, 0x13, 0x15, 0x1C, 0x1F, 0x20}},
        {"41 20 80 00 00 01", {0x21, 0x40}},
        {"42 00 07 40 00 00 01", {2, 0x20}},  // frame 7
        {"49 00 01 54 00 00 00", {2, 4, 6}},  // with the count of the older buses
        {"49 00 55 40 00 00", {2, 4, 6, 8, 0x0A}},
        {"46 00 FF 80 00 00 00", {1}},  // filled up to the length of the older buses
        {"46 E0 80 00 00 01", {0xE1}},  // there is nothing behind FF
    };
    for (const auto& [message, numbers] : rows) {
        SupportMask mask;
        EXPECT_TRUE(AddSupported(Hex(message), mask)) << message;
        SupportMask expected;
        for (const std::size_t number : numbers) expected.set(number);
        EXPECT_EQ(mask, expected) << message;
    }
    SupportMask mask;
    EXPECT_FALSE(AddSupported(Hex("41 00 BE 1F A8"), mask));
    mask.set(0x20);
    EXPECT_THAT(NextMask(mask, 0), Optional(0x20));
    EXPECT_EQ(NextMask(mask, 0x20), std::nullopt);
    EXPECT_EQ(NextMask(mask, 0xE0), std::nullopt);
}

/// "name+" complete, "name-" not, those that are not fitted left out.
std::string Summary(const MonitorStatus& status) {
    std::string text;
    for (const Monitor& monitor : status.Monitors) {
        if (monitor.Fitted) text += std::string(monitor.Name) + (monitor.Complete ? "+ " : "- ");
    }
    return text;
}

TEST_F(Decoders, MonitorsAreReadBitByBit) {
    const auto spark = MonitorsIn(Hex("41 01 83 17 65 04"));
    ASSERT_TRUE(spark);
    EXPECT_TRUE(spark->Lamp);
    EXPECT_EQ(spark->Codes, 3);
    EXPECT_EQ(Summary(*spark),
              "Misfire- Fuel system+ Components+ Catalyst+ Fuel vapour system- "
              "Oxygen sensors+ Oxygen sensor heaters+ ");
    EXPECT_EQ(spark->Monitors.size(), 11U) << "with those that are not fitted";
    const auto compression = MonitorsIn(Hex("41 01 00 0E EB C1"));
    ASSERT_TRUE(compression);
    EXPECT_FALSE(compression->Lamp);
    EXPECT_EQ(Summary(*compression),
              "Fuel system+ Components+ NMHC catalyst- NOx aftertreatment+ Boost pressure+ "
              "Exhaust gas sensors+ Particulate filter- EGR and VVT- ");
    const auto drive = MonitorsIn(Hex("41 41 83 07 00 00"));
    ASSERT_TRUE(drive);
    EXPECT_FALSE(drive->Lamp) << "that byte is not the lamp's there";
    EXPECT_EQ(MonitorsIn(Hex("41 01 83 07 65")), std::nullopt);
}

TEST_F(Decoders, AnInspectionPassesWithTheLampOffAndOneOpenMonitorAtMost) {
    const auto verdict = [](std::vector<std::string> units) {
        Diagnosis diagnosis;
        for (const std::string& unit : units)
            AddMonitors(diagnosis.SinceClear, *MonitorsIn(Hex(unit)));
        return *ReadyForInspection(diagnosis);
    };
    EXPECT_EQ(ReadyForInspection(Diagnosis()), std::nullopt);
    EXPECT_TRUE(verdict({"41 01 00 07 65 00"}).Ready);
    EXPECT_TRUE(verdict({"41 01 00 07 65 01"}).Ready);
    EXPECT_FALSE(verdict({"41 01 00 07 65 05"}).Ready);
    EXPECT_TRUE(verdict({"41 01 00 07 65 9A"}).Ready) << "those that are not fitted do not count";
    EXPECT_FALSE(verdict({"41 01 80 07 65 00"}).Ready);
    // A second unit: its open monitor counts as well, its lamp, too.
    EXPECT_EQ(verdict({"41 01 00 04 00 00", "41 01 00 07 65 01"}).Open, 1);
    EXPECT_EQ(verdict({"41 01 00 07 65 01", "41 01 00 44 00 00"}).Open, 2);
    EXPECT_FALSE(verdict({"41 01 00 07 65 00", "41 01 80 04 00 00"}).Ready);
}

TEST_F(Decoders, TestsCarryTheirScaleOnCanAndOneLimitElsewhere) {
    const auto can = TestsIn(Hex("46 21 80 0A 0B B0 00 00 0C 00 21 81 9C FF 38 FF 00 01 00 "
                                 "21 82 77 00 05 00 06 00 09"),
                             true);
    ASSERT_TRUE(can && can->size() == 3U);
    const TestResult& millivolts = (*can)[0];
    EXPECT_EQ(TestName(millivolts), "Catalyst B1, Test 80");
    EXPECT_THAT(millivolts.Value, DoubleNear(365.024, 1e-9));
    EXPECT_THAT(*millivolts.High, DoubleNear(374.784, 1e-9));
    EXPECT_TRUE(millivolts.Passed);
    EXPECT_EQ(TestNumber(millivolts, millivolts.Value), "365.024 mV");
    EXPECT_THAT((*can)[1].Value, DoubleEq(-2));  // a signed scale
    EXPECT_THAT(*(*can)[1].Low, DoubleEq(-2.56));
    EXPECT_TRUE((*can)[1].Passed);
    EXPECT_TRUE((*can)[2].Raw) << "a scale of the maker's own";
    EXPECT_THAT((*can)[2].Value, DoubleEq(5));
    EXPECT_FALSE((*can)[2].Passed) << "below the least value";
    EXPECT_EQ(TestsIn(Hex("46 21 80 0A 0B B0 00 00 0C"), true), std::nullopt);
    EXPECT_EQ(TestsIn(Hex("46"), true), std::nullopt);

    const auto most = TestsIn(Hex("46 05 01 0B B0 0B B0"), false);
    ASSERT_TRUE(most && most->size() == 1U);
    EXPECT_TRUE((*most)[0].Passed && !(*most)[0].Low) << "the limit itself passes";
    const auto least = TestsIn(Hex("46 05 81 0B AF 0B B0"), false);
    ASSERT_TRUE(least && least->size() == 1U);
    EXPECT_FALSE((*least)[0].Passed);
    EXPECT_EQ(TestName((*least)[0]), "Test 05, component 01");
    EXPECT_EQ(TestsIn(Hex("46 05 01 0B B0"), false), std::nullopt);
}

TEST_F(Decoders, MonitorsOfTestsAreCountedByBankSensorAndCylinder) {
    const struct {
        int Id;
        const char* Name;
    } rows[] = {{0x01, "Oxygen sensor B1 S1"},
                {0x06, "Oxygen sensor B2 S2"},
                {0x44, "Oxygen sensor heater B1 S4"},
                {0x22, "Catalyst B2"},
                {0xA1, "Misfire"},
                {0xA5, "Misfire, cylinder 4"},
                {0xC7, "Monitor C7"}};
    for (const auto& [id, name] : rows) {
        TestResult test;
        test.MonitorId = static_cast<std::uint8_t>(id);
        test.TestId = 0x0B;
        EXPECT_EQ(TestName(test), std::string(name) + ", Test 0B");
    }
}

TEST_F(Decoders, TheVoltageIsRead) {
    EXPECT_THAT(VoltsIn("14.1V\r\r>"), Optional(DoubleEq(14.1)));
    EXPECT_EQ(VoltsIn("?\r\r>"), std::nullopt);
    EXPECT_EQ(VoltsIn("V14\r\r>"), std::nullopt);
}

TEST_F(Decoders, ACodeSaysWhatTheDriverShouldDo) {
    const struct {
        const char* Code;
        Severity Meaning;
    } rows[] = {
        {"P0217", Severity::Stop},         {"P0524", Severity::Stop},
        {"P0301", Severity::SeeSoon},      {"U0100", Severity::SeeSoon},
        {"B0001", Severity::SeeSoon},      {"P0420", Severity::DriveOn},
        {"P0455", Severity::DriveOn},      {"P0468", Severity::DriveOn},
        {"P0133", Severity::DriveOn},      {"P0168", Severity::SeeSoon},
        {"P1420", Severity::Manufacturer}, {"P3000", Severity::Manufacturer},
        {"P33FF", Severity::Manufacturer}, {"P3400", Severity::SeeSoon},
        {"C1234", Severity::Manufacturer}, {"U2FFF", Severity::Manufacturer},
        {"U3000", Severity::SeeSoon},      {"", Severity::SeeSoon},
    };
    for (const auto& [code, meaning] : rows) EXPECT_EQ(SeverityOf(code), meaning) << code;
}

}  // namespace
}  // namespace dravik
