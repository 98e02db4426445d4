#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/KeyState.h"
#include "skinfunc/basValueProc.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

class Evaluators : public GlobalsTest {
 protected:
    /// List 3 as the current list, entry "text 1" and so on, one of them selected.
    static void ShowList(int count, int selected) {
        basGlobal.CurrentList = 3;
        ListSlot& list = basGlobal.Lists[3];
        list.Entries.clear();
        for (int i = 1; i <= count; ++i)
            list.Entries.push_back({"text " + std::to_string(i), "", "tag " + std::to_string(i)});
        list.Selected = selected;
    }

    static std::string Label(std::string function) { return LabelText(function); }
    static bool Image(std::string function) { return ImageState(function); }
    static float Number(std::string function) { return LabelNumber(function); }
};

TEST_F(Evaluators, ImageFunctionsFollowTheSelection) {
    struct Row {
        const char* Function;
        std::uint16_t Button, Slider;
        bool On;
    };
    constexpr std::uint16_t kNone = kNoFocus;
    for (const Row& row :
         {Row{"mouseover_list", kNone, kNone, true}, Row{"MouseOver_LIST", kNone, kNone, true},
          Row{"mouseover_list", 0, kNone, false}, Row{"mouseover_list", kNone, 0, false},
          Row{"mouseover_button3", 3, kNone, true}, Row{"mouseover_button3", kNone, 3, false},
          Row{"mouseover_button0", kNone, kNone, false}, Row{"mouseover_button0", 0, kNone, true},
          Row{"mouseover_slider3", 3, kNone, true},  // one word behind "mouseover": a button
          Row{"mouseover_slider3", kNone, 3, false}, Row{"mouseover_xxxxxx12", 12, 1, true},
          Row{"mouseover_button", 0, kNone, true},  // no number counts as 0
          Row{"mouseover_button_button3", 3, 5, true}, Row{"mouseover_button_button3", 5, 3, false},
          Row{"mouseover_slider_slider3", 5, 3, true}, Row{"mouseover_slider_slider3", 3, 5, false},
          Row{"mouseover_list_list", kNone, kNone, false}, Row{"mouseover", kNone, kNone, false}}) {
        basGlobal.FocusedButton = row.Button;
        basGlobal.FocusedSlider = row.Slider;
        EXPECT_EQ(Image(row.Function), row.On)
            << row.Function << " " << row.Button << " " << row.Slider;
    }
}

TEST_F(Evaluators, ImageFunctionsFollowTheState) {
    NameSensors({"on", "off", "on", "Caps"});
    basGlobal.Sensors[1].Active = false;
    basGlobal.Sensors[2].Active = false;  // the second "on" is never looked at
    basGlobal.Sensors[5].Function = "unused";
    basGlobal.Sensors[5].Active = true;
    basGlobal.StartupFlag = true;
    basGlobal.ResumeFlag = false;
    basGlobal.MilOn = true;
    struct Row {
        const char* Function;
        bool On;
    };
    for (const Row& row : {Row{"sensoron_on", true},
                           Row{"SENSORACTIVE_ON", true},
                           Row{"sensoroff_on", false},
                           Row{"sensoron_off", false},
                           Row{"sensoractive_off", false},
                           Row{"sensoroff_off", true},
                           Row{"sensoron_caps", false},
                           Row{"sensoroff_caps", false},
                           Row{"sensoron_unused", false},
                           Row{"sensoroff_nothing", false},
                           Row{"pause", false},
                           Row{"pause_1", false},
                           Row{"startup", true},
                           Row{"startup_x", true},
                           Row{"resume", false},
                           Row{"obd_malfunction", true},
                           Row{"obd_other", false},
                           Row{"obd", false},
                           Row{"", false},
                           Row{"unknown_x", false}})
        EXPECT_EQ(Image(row.Function), row.On) << row.Function;

    basGlobal.StartupFlag = false;
    basGlobal.ResumeFlag = true;
    basGlobal.MilOn = false;
    EXPECT_FALSE(Image("startup"));
    EXPECT_TRUE(Image("resume_x"));
    EXPECT_FALSE(Image("obd_malfunction"));
    for (int state = 0; state < 24; ++state) {
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        EXPECT_EQ(Image("obd_connected"), state == 3 || state == 9) << state;
    }
}

TEST_F(Evaluators, TheCallersTextBecomesLowerCase) {
    std::string image = "OBD_Connected", text = "SensorUnit_RPM", number = "SENSOR_Rpm",
                label = "X_Y";
    ImageState(image);
    LabelTextFunction(text);
    LabelNumber(number);
    LabelText(label);
    EXPECT_EQ(image + text + number + label, "obd_connectedsensorunit_rpmsensor_rpmx_y");
}

TEST_F(Evaluators, SourcesNameAPidOrASensorOfTheSecondPort) {
    NameSensors({"a", "b", "c"});
    basGlobal.Sensors[1].Source = basGlobal.Sensors[2].Source = "can_1";
    basGlobal.Sensors[1].Raw = 41;
    basGlobal.Sensors[2].Raw = 42;
    struct Row {
        const char* Source;
        std::int32_t Live, Freeze;
        int Wanted;  ///< the PID that is then wanted, -1 = none
    };
    for (const Row& row :
         {Row{"obd_0D", 1013, 2013, 13}, Row{"obd_d", 1013, 2013, 13},
          Row{"obd_4E", 1078, 2078, 78}, Row{"obd_4F", 0, 0, -1}, Row{"obd_50", 0, 0, -1},
          Row{"obd_FFFF", 0, 0, -1}, Row{"obd_10000", 0, 0, -1}, Row{"obd_FFFFFFFF", 0, 0, -1},
          Row{"obd_ZZ", 1000, 2000, 0}, Row{"obd_", 1000, 2000, 0}, Row{"obd", 1000, 2000, 0},
          Row{"OBD_0D", 0, 0, -1}, Row{"x_obd_0D", 0, 0, -1}, Row{"can_1", 41, 41, -1},
          Row{"can_2", 0, 0, -1}, Row{"CAN_1", 0, 0, -1}, Row{"freeze_0D", 0, 0, -1},
          Row{"", 0, 0, -1}}) {
        for (const char* menu : {"main", "freezeframe", "Freeze"}) {
            SCOPED_TRACE(std::string(row.Source) + " " + menu);
            basGlobal.CurrentMenu = menu;
            for (int pid = 0; pid < 80; ++pid) {
                basGlobal.LiveRaw[static_cast<std::size_t>(pid)] = 1000 + pid;
                basGlobal.FreezeRaw[static_cast<std::size_t>(pid)] = 2000 + pid;
            }
            basGlobal.PidWanted.fill(false);
            EXPECT_EQ(SourceValue(row.Source), *menu == 'f' ? row.Freeze : row.Live);
            std::array<bool, 80> wanted{};
            if (row.Wanted >= 0) wanted[static_cast<std::size_t>(row.Wanted)] = true;
            EXPECT_EQ(basGlobal.PidWanted, wanted);
        }
    }
}

TEST_F(Evaluators, SensorsAreScaledUnlessTheyAreOff) {
    NameSensors({"t"});
    SensorRecord& sensor = basGlobal.Sensors[0];
    sensor.Source = "obd_05";
    sensor.Min = 0;
    sensor.Max = 10;
    struct Row {
        const char* Menu;
        bool Active;
        float Factor, Offset;
        std::int32_t Raw;
        float Value;
        bool Wanted;
    };
    for (const Row& row :
         {Row{"main", true, 0.25F, -40, 100, -15, true},
          Row{"main", false, 2, -40, 100, -40, false}, Row{"freeze", false, 2, -40, 7, -26, true},
          Row{"FREEZE", false, 2, -40, 100, 160, true},
          Row{"main", true, 1, 0, 2147483647, 2147483648.0F, true},
          // Only double precision in between gives the last digit.
          Row{"main", true, 0.1F, 0.3F, 16777217, 1677722.0F, true}}) {
        basGlobal.CurrentMenu = row.Menu;
        sensor.Active = row.Active;
        sensor.Factor = row.Factor;
        sensor.Offset = row.Offset;
        basGlobal.LiveRaw[5] = row.Raw;
        basGlobal.FreezeRaw[5] = 7;
        basGlobal.PidWanted.fill(false);
        EXPECT_EQ(SensorValue(0), row.Value) << row.Menu << " " << row.Raw;
        EXPECT_EQ(basGlobal.PidWanted[5], row.Wanted) << row.Menu;
    }
}

TEST_F(Evaluators, LabelsAreTextsThenNumbersThenStates) {
    NameSensors({"rpm", "big", "raw", "Caps", "bad", "o2_b1"});
    for (std::size_t i = 0; i < 6; ++i) {
        basGlobal.Sensors[i].Factor = 1;
        basGlobal.Sensors[i].Unit = "unit";
        basGlobal.Sensors[i].Caption = "error";
    }
    basGlobal.Sensors[0].Factor = 0.25F;
    basGlobal.Sensors[0].Caption = "Motor \xC3\x9C";
    basGlobal.Sensors[4].Offset = std::numeric_limits<float>::infinity();
    basGlobal.LiveRaw = {6905, 150000000, 65535, 1, 1};
    basGlobal.ConnState = 16;
    basGlobal.InterfaceId = "IFX 1.5";
    basGlobal.ProtocolText = "CAN";
    basGlobal.DtcCount = 12;
    struct Row {
        const char* Function;
        const char* Text;
    };
    for (const Row& row :
         {Row{"sensor_rpm", "1726.25"},
          Row{"Sensor_BIG", "1.5E+08"},
          Row{"sensor_raw", "Off"},  // 65535 is the marker
          Row{"sensor_caps", "Off"},
          Row{"sensor_bad", "Off"},
          Row{"sensor", "Off"},
          Row{"sensorcaption_rpm", "Motor \xC3\x9C"},
          Row{"sensorcaption_big", "Off"},  // a caption that reads like the marker
          Row{"sensorunit_rpm", "unit"},
          Row{"sensorunit_none", "Off"},
          Row{"sensorunit_o2_b1", "unit"},  // texts split at the first "_", numbers at the last
          Row{"sensor_o2_b1", "Off"},
          Row{"obd_status", "Reading Trouble Codes."},
          Row{"OBD_Interface", "IFX 1.5"},
          Row{"obd_protocol", "CAN"},
          Row{"obd_troublecodescount", "12"},
          Row{"obd_connected", "Off"},
          Row{"sensoron_rpm", "On"},
          Row{"startup", "On"},
          Row{"caption", "Off"},
          Row{"caption_x", "Off"},
          Row{"time_other", "Off"},
          Row{"obd_status_x", "Off"},
          Row{"", "Off"}})
        EXPECT_EQ(Label(row.Function), row.Text) << row.Function;
    basGlobal.Sensors[0].Offset = -0.25F;
    basGlobal.Sensors[0].Factor = 1 / 3.0F;
    basGlobal.LiveRaw[0] = 10;
    EXPECT_EQ(Label("sensor_rpm"), "3.083333");
}

TEST_F(Evaluators, TheLastCommandIsShownOnce) {
    ExecuteCommand("ShowInfo_Hello World");
    EXPECT_EQ(Label("function"), "showinfo_hello world");
    EXPECT_EQ(Label("function"), "");
}

TEST_F(Evaluators, ListFunctionsReadTheCurrentList) {
    struct Row {
        int Count, Selected;
        const char* Function;
        const char* Text;
    };
    for (const Row& row : {Row{5, 3, "listentry_0", "text 3"}, Row{5, 3, "listentry_-1", "text 2"},
                           Row{5, 3, "listentry_+2", "text 5"}, Row{5, 3, "listentry_3", ""},
                           Row{5, 3, "listentry_-3", ""}, Row{5, 3, "listentry", "text 3"},
                           Row{0, 0, "listentry_0", ""}, Row{5, 3, "indexlabel", "2/4"},
                           Row{1, 1, "indexlabel", "0/0"}, Row{5, 3, "listview", "50"},
                           Row{4, 2, "listview_any", "33.33333"}, Row{4, 1, "listview_x", "0"},
                           Row{1, 1, "listview", "Off"}, Row{0, 0, "listview", "Off"}}) {
        ShowList(row.Count, row.Selected);
        EXPECT_EQ(Label(row.Function), row.Text) << row.Count << " " << row.Function;
    }
    for (const auto& [tag, folder] :
         {std::pair{"C:\\Music\\Best of", "Best of"}, std::pair{"/home/me/Music", "Music"},
          std::pair{"plsparMy list", "My list"}, std::pair{"rooootDesktop", "Desktop"},
          std::pair{"abc", ""}, std::pair{"C:\\", ""}}) {
        basGlobal.Lists[3].Entries = {{"..", "", tag}, {"x", "", "y\\z"}};
        basGlobal.Lists[3].Selected = 2;
        EXPECT_EQ(Label("currentfolder"), folder);
    }
    basGlobal.CurrentList = -1;
    for (const char* function : {"indexlabel", "currentfolder", "listview"})
        EXPECT_EQ(Label(function), "Off") << function;
    EXPECT_EQ(Label("listentry_0"), "");
}

TEST_F(Evaluators, TimeAndDateComeFromTheClock) {
    // A second that passes between two readings must not matter.
    const auto same = [](const std::function<std::string()>& shown,
                         const std::function<std::string(const LocalTime&)>& expected) {
        for (;;) {
            const LocalTime before = SystemTime();
            const std::string text = shown();
            if (SystemTime().Second == before.Second) return text == expected(before);
        }
    };
    const auto date = [](const LocalTime& now) {
        const auto two = [](int n) { return std::string(n < 10 ? "0" : "") + std::to_string(n); };
        return two(now.Day) + "." + two(now.Month) + "." + std::to_string(now.Year);
    };
    EXPECT_TRUE(same([] { return Label("Time"); }, TimeText));
    EXPECT_TRUE(same([] { return Label("Date"); }, date));
    EXPECT_TRUE(same([] { return Label("timedate"); },
                     [&](const LocalTime& now) { return TimeText(now) + " , " + date(now); }));
    const auto number = [&](const char* function, double (*expected)(const LocalTime&)) {
        return same([=] { return std::to_string(Number(function)); },
                    [=](const LocalTime& now) {
                        return std::to_string(static_cast<float>(expected(now)));
                    });
    };
    EXPECT_TRUE(number("time_hour", [](const LocalTime& t) { return t.Hour + t.Minute / 60.0; }));
    EXPECT_TRUE(number("time_minute", [](const LocalTime& t) { return 0.0 + t.Minute; }));
    EXPECT_TRUE(number("time_second", [](const LocalTime& t) { return 0.0 + t.Second; }));
    EXPECT_TRUE(number("time_day", [](const LocalTime& t) { return 0.0 + t.Day; }));
    EXPECT_TRUE(number("time_month", [](const LocalTime& t) { return 0.0 + t.Month; }));
    EXPECT_TRUE(number("time_year", [](const LocalTime& t) { return 0.0 + t.Year; }));
    EXPECT_EQ(Number("time"), 65535);
}

TEST_F(Evaluators, KeysAreNegativeWhileTheyAreDown) {
    constexpr int kQtKeyA = 65;
    NoteKeyEvent(kQtKeyA, true);
    EXPECT_EQ(Number("key_65"), -32767);
    EXPECT_EQ(Number("key_65"), -32768);
    NoteKeyEvent(kQtKeyA, false);
    EXPECT_EQ(Number("KEY_65"), 0);
    EXPECT_EQ(Number("key_1e30"), 0);
    EXPECT_EQ(Number("key_-1"), 0);
}

TEST_F(Evaluators, ElementsShowNumbersThenSources) {
    NameSensors({"rpm"});
    basGlobal.Sensors[0].Factor = 2;
    basGlobal.LiveRaw = {21, 99};
    EXPECT_EQ(ElementValue("Sensor_RPM"), 42);
    EXPECT_EQ(ElementValue("obd_01"), 99);
    EXPECT_EQ(ElementValue("obd_troublecodescount"), 0);
    EXPECT_EQ(ElementValue("can_9"), 0);
    EXPECT_EQ(ElementValue("sensor_none"), std::nullopt);
    EXPECT_EQ(ElementValue(""), std::nullopt);
}

}  // namespace
}  // namespace dravik
