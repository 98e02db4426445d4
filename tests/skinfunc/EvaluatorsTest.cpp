#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "obd/basOBD.h"
#include "platform/Clock.h"
#include "platform/KeyState.h"
#include "settings/Words.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::FloatEq;

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

// One word behind "mouseover" is a button, whatever it says; no number counts as 0.
TEST_F(Evaluators, ImageFunctionsFollowTheSelection) {
    constexpr std::uint16_t kNone = kNoFocus;
    const struct {
        const char* Function;
        std::uint16_t Button, Slider;
        bool On;
    } rows[] = {
        {"mouseover_list", kNone, kNone, true},       {"MouseOver_LIST", kNone, kNone, true},
        {"mouseover_list", 0, kNone, false},          {"mouseover_list", kNone, 0, false},
        {"mouseover_button3", 3, kNone, true},        {"mouseover_button3", kNone, 3, false},
        {"mouseover_button0", kNone, kNone, false},   {"mouseover_button0", 0, kNone, true},
        {"mouseover_slider3", 3, kNone, true},        {"mouseover_slider3", kNone, 3, false},
        {"mouseover_xxxxxx12", 12, 1, true},          {"mouseover_button", 0, kNone, true},
        {"mouseover_button_button3", 3, 5, true},     {"mouseover_button_button3", 5, 3, false},
        {"mouseover_slider_slider3", 5, 3, true},     {"mouseover_slider_slider3", 3, 5, false},
        {"mouseover_list_list", kNone, kNone, false}, {"mouseover", kNone, kNone, false}};
    for (const auto& row : rows) {
        basGlobal.FocusedButton = row.Button;
        basGlobal.FocusedSlider = row.Slider;
        EXPECT_EQ(Image(row.Function), row.On)
            << row.Function << " " << row.Button << " " << row.Slider;
    }
}

TEST_F(Evaluators, SensorsOfOneReplyShowEachItsOwnBytes) {
    NameSensors({"volt", "trim"});
    for (SensorRecord& sensor : SensorsInUse()) sensor.Source = "obd_14";
    basGlobal.Sensors[0].Bytes = ByteRange{.First = 0, .Last = 0};
    basGlobal.Sensors[0].Factor = 0.005F;
    basGlobal.Sensors[1].Bytes = ByteRange{.First = 1, .Last = 1, .Absent = 0xFF};
    basGlobal.Sensors[1].Factor = -1;
    basGlobal.Sensors[1].Offset = 100;
    basGlobal.ConnState = kReceivingData;
    HandlePidReply("41 14 5A 80\r\r>");
    EXPECT_THAT(Number("sensor_volt"), FloatEq(0.45F));
    EXPECT_EQ(Number("live_trim"), -28);
    HandlePidReply("41 14 14 60\r\r>");
    EXPECT_THAT(Number("lowest_volt"), FloatEq(0.1F));
    EXPECT_THAT(Number("highest_volt"), FloatEq(0.45F));
    EXPECT_EQ(Number("lowest_trim"), -28);
    EXPECT_EQ(Number("highest_trim"), 4);
    EXPECT_TRUE(Image("known_trim"));

    for (const char* reply : {"41 14 5A\r\r>", "41 14 5A FF\r\r>"}) {
        HandlePidReply(reply);
        EXPECT_THAT(Number("live_volt"), FloatEq(0.45F));
        EXPECT_FALSE(Image("known_trim")) << reply;
        EXPECT_EQ(Label("live_trim"), "–") << reply;
        EXPECT_FALSE(ElementKnown("sensor_trim")) << reply;
    }
    EXPECT_EQ(Label("highest_trim"), "–");
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
    for (const std::string& on :
         Words("sensoron_on SENSORACTIVE_ON sensoroff_off startup startup_x obd_malfunction"))
        EXPECT_TRUE(Image(on)) << on;
    for (const std::string& off :
         Words("sensoroff_on sensoron_off sensoractive_off sensoron_caps sensoroff_caps "
               "sensoron_unused sensoroff_nothing pause pause_1 resume obd_other obd unknown_x"))
        EXPECT_FALSE(Image(off)) << off;
    EXPECT_FALSE(Image(""));

    basGlobal.StartupFlag = false;
    basGlobal.ResumeFlag = true;
    basGlobal.MilOn = false;
    EXPECT_FALSE(Image("startup"));
    EXPECT_TRUE(Image("resume_x"));
    EXPECT_FALSE(Image("obd_malfunction"));
    for (int state = 0; state < 24; ++state) {
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        EXPECT_EQ(Image("obd_connected"), state == 3 || state == 9) << state;
        EXPECT_EQ(Image("obd_connecting"), state == 4 || state == 8) << state;
        // Reading and clearing codes must not put out what the vehicle has said.
        const bool up = state == 3 || state == 9 || state == 16 || state == 18;
        basGlobal.MilOn = true;
        basGlobal.DtcCount = 1;
        EXPECT_EQ(Image("obd_lamp"), up) << state;
        EXPECT_EQ(Image("obd_codes"), up) << state;
        basGlobal.MilOn = false;
        EXPECT_FALSE(Image("obd_lamp"));
    }
    basGlobal.ConnState = kConnected;
    basGlobal.DtcCount = 0;
    EXPECT_FALSE(Image("obd_codes") || Image("obd_codesread") || Image("obd_finding"));
    basGlobal.DtcCount = 1;
    basGlobal.CodesRead = basGlobal.Search.Wanted = true;
    EXPECT_TRUE(Image("obd_codes") && Image("obd_codesread") && Image("obd_finding"));
    for (const char* program : {"", "0", "nowhere", "Dravik.ini"}) {
        const std::string path = (folder_ / program).string();
        WriteFile("Dravik.ini", "[Options]\nOSKPath=" + path + "\n");
        LoadSettings();
        EXPECT_EQ(Image("obd_keyboard"), std::string(program) == "Dravik.ini") << program;
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
    const struct {
        const char* Source;
        std::int32_t Live, Freeze;
        int Wanted;  ///< the PID that is then wanted, -1 = none
    } rows[] = {{"obd_0D", 1013, 2013, 13}, {"obd_d", 1013, 2013, 13},
                {"obd_4E", 1078, 2078, 78}, {"obd_4F", 0, 0, -1},
                {"obd_50", 0, 0, -1},       {"obd_10000", 0, 0, -1},
                {"obd_FFFFFFFF", 0, 0, -1}, {"obd_ZZ", 1000, 2000, 0},
                {"obd", 1000, 2000, 0},     {"OBD_0D", 0, 0, -1},
                {"x_obd_0D", 0, 0, -1},     {"can_1", 41, 41, -1},
                {"can_2", 0, 0, -1},        {"CAN_1", 0, 0, -1},
                {"freeze_0D", 0, 0, -1},    {"", 0, 0, -1}};
    for (const auto& row : rows) {
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
    const struct {
        const char* Menu;
        bool Active;
        float Factor, Offset;
        std::int32_t Raw;
        float Value;
        bool Wanted;
    } rows[] = {{"main", true, 0.25F, -40, 100, -15, true},
                {"main", false, 2, -40, 100, -40, false},
                {"freeze", false, 2, -40, 7, -26, true},
                {"FREEZE", false, 2, -40, 100, 160, true},
                {"main", true, 1, 0, 2147483647, 2147483648.0F, true},
                // Only double precision in between gives the last digit.
                {"main", true, 0.1F, 0.3F, 16777217, 1677722.0F, true}};
    for (const auto& row : rows) {
        basGlobal.CurrentMenu = row.Menu;
        sensor.Active = row.Active;
        sensor.Factor = row.Factor;
        sensor.Offset = row.Offset;
        basGlobal.LiveRaw[5] = row.Raw;
        basGlobal.FreezeRaw[5] = 7;
        basGlobal.PidWanted.fill(false);
        EXPECT_EQ(SensorValue(basGlobal.Sensors[0]), row.Value) << row.Menu << " " << row.Raw;
        EXPECT_EQ(basGlobal.PidWanted[5], row.Wanted) << row.Menu;
    }
}

// 65535 is the marker of "no number", and a caption may read like the marker of "no text". Texts
// split at the first "_", numbers at the last.
TEST_F(Evaluators, LabelsAreTextsThenNumbersThenStates) {
    NameSensors({"rpm", "big", "raw", "Caps", "bad", "o2_b1"});
    for (std::size_t i = 0; i < 6; ++i) {
        basGlobal.Sensors[i].Factor = 1;
        basGlobal.Sensors[i].Unit = "unit";
        basGlobal.Sensors[i].Caption = "error";
    }
    basGlobal.Sensors[0].Factor = 0.25F;
    basGlobal.Sensors[0].Caption = "Motor Ü";
    basGlobal.Sensors[4].Offset = std::numeric_limits<float>::infinity();
    basGlobal.LiveRaw = {6905, 150000000, 65535, 1, 1};
    basGlobal.ConnState = 16;
    basGlobal.InterfaceId = "IFX 1.5";
    basGlobal.ProtocolText = "CAN";
    basGlobal.DtcCount = 12;
    const std::pair<const char*, const char*> rows[] = {
        {"sensor_rpm", "1726.25"},       {"Sensor_BIG", "1.5E+08"},    {"sensorunit_rpm", "unit"},
        {"sensorunit_o2_b1", "unit"},    {"OBD_Interface", "IFX 1.5"}, {"obd_protocol", "CAN"},
        {"obd_troublecodescount", "12"}, {"sensoron_rpm", "On"},       {"startup", "On"}};
    for (const auto& [function, text] : rows) EXPECT_EQ(Label(function), text) << function;
    EXPECT_EQ(Label("sensorcaption_rpm"), "Motor Ü");
    EXPECT_EQ(Label("obd_status"), "Reading Trouble Codes.");
    for (const std::string& off :
         Words("sensor_raw sensor_caps sensor_bad sensor sensorcaption_big sensorunit_none "
               "sensor_o2_b1 obd_connected caption caption_x time_other obd_status_x"))
        EXPECT_EQ(Label(off), "Off") << off;
    EXPECT_EQ(Label(""), "Off");
    basGlobal.Sensors[0].Offset = -0.25F;
    basGlobal.Sensors[0].Factor = 1 / 3.0F;
    basGlobal.LiveRaw[0] = 10;
    EXPECT_EQ(Label("sensor_rpm"), "3.083333");
}

// A name keeps its capitals for where the language lacks it. Only a text function with an argument
// behind it is evaluated first, so that "Time" is not the clock.
TEST_F(Evaluators, WordsAreThoseOfTheLanguage) {
    WriteFile("languages/test.ini",
              "[Words]\nTrouble codes=Fehlercodes\nÖl_warm=Oil\nNot Connected=Nicht verbunden\n"
              "Motor Ü=Engine\nTime=Zeit\nDone.=Fertig!\nDone=Fertig\nNothing=\n");
    basGlobal.LanguageFile = (folder_ / "languages/test.ini").string();
    basGlobal.ConnState = kNotConnected;
    NameSensors({"rpm"});
    basGlobal.Sensors[0].Caption = "Motor Ü";
    for (const auto& [function, text] : {std::pair{"word_Trouble codes", "Fehlercodes"},
                                         {"WORD_trouble CODES", "Fehlercodes"},
                                         {"word_ÖL_Warm", "Oil"},
                                         {"word_Nobody Knows Me", "Nobody Knows Me"},
                                         {"word_Time", "Zeit"},
                                         {"word_A=b", "A=b"},
                                         {"word_Done.", "Fertig!"},
                                         {"word_Done..", "Fertig.."},
                                         {"word_...", "..."},
                                         {"word_Nothing", ""},
                                         {"word_", ""},
                                         {"word_OBD_Status", "Nicht verbunden."},
                                         {"word_sensorcaption_rpm", "Engine"},
                                         {"word_SensorCaption_none", "SensorCaption_none"},
                                         {"word_word_Time", "Zeit"}}) {
        std::string label = function;
        EXPECT_EQ(LabelText(label), text) << function;
        EXPECT_EQ(LabelText(label), text) << "again, as the first reading left it: " << label;
    }
    WriteFile("languages/test.ini", "[Words]\nTime=Uhr\n");
    EXPECT_EQ(Label("word_Time"), "Zeit") << "no file is read for a refresh";
    LoadWords();
    EXPECT_EQ(Label("word_Time"), "Uhr");
}

TEST_F(Evaluators, TheLastCommandIsShownOnce) {
    ExecuteCommand("ShowInfo_Hello World");
    EXPECT_EQ(Label("function"), "showinfo_hello world");
    EXPECT_EQ(Label("function"), "");
}

TEST_F(Evaluators, ListFunctionsReadTheCurrentList) {
    const struct {
        int Count, Selected;
        const char *Function, *Text;
    } rows[] = {{5, 3, "listentry_0", "text 3"},    {5, 3, "listentry_-1", "text 2"},
                {5, 3, "listentry_+2", "text 5"},   {5, 3, "listentry_3", ""},
                {5, 3, "listentry_-3", ""},         {5, 3, "listentry", "text 3"},
                {0, 0, "listentry_0", ""},          {5, 3, "indexlabel", "2/4"},
                {1, 1, "indexlabel", "0/0"},        {5, 3, "listview", "50"},
                {4, 2, "listview_any", "33.33333"}, {4, 1, "listview_x", "0"},
                {1, 1, "listview", "Off"},          {0, 0, "listview", "Off"}};
    for (const auto& row : rows) {
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
    LocalTime now;
    std::string texts;
    std::vector<float> numbers;
    do {  // a second that passes between two readings must not matter
        now = SystemTime();
        texts = Label("Time") + "|" + Label("Date") + "|" + Label("timedate");
        numbers.clear();
        for (const char* part : {"hour", "minute", "second", "day", "month", "year"})
            numbers.push_back(Number(std::string("time_") + part));
    } while (SystemTime().Second != now.Second);
    char date[32];
    std::snprintf(date, sizeof date, "%02d.%02d.%d", now.Day, now.Month, now.Year);
    EXPECT_EQ(texts, TimeText(now) + "|" + date + "|" + TimeText(now) + " , " + date);
    EXPECT_THAT(numbers, ElementsAre(FloatEq(static_cast<float>(now.Hour + now.Minute / 60.0)),
                                     now.Minute, now.Second, now.Day, now.Month, now.Year));
    EXPECT_EQ(Number("time"), 65535);
}

#ifndef _WIN32
// Windows knows of real keys only.
TEST_F(Evaluators, KeysAreNegativeWhileTheyAreDown) {
    NoteKeyEvent('A', true);
    EXPECT_EQ(Number("key_65"), -32767);
    NoteKeyEvent('A', false);
    EXPECT_EQ(Number("KEY_65"), 0);
    EXPECT_EQ(Number("key_1e30"), 0);
}
#endif

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
