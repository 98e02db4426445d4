#include <filesystem>
#include <string>
#include <vector>

#include "lists/basFunctions.h"
#include "platform/Clock.h"
#include "platform/Text.h"
#include "platform/serial/PseudoTerminal.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Dispatcher : public GlobalsTest {
 protected:
    /// What the screen is asked for by one command.
    static std::vector<std::string> Run(const std::string& command) {
        fakeScreen.Calls.clear();
        ExecuteCommand(command);
        return fakeScreen.Calls;
    }

    static std::string Only(const std::string& command) {
        const std::vector<std::string> calls = Run(command);
        return calls.size() == 1 ? calls.front() : std::to_string(calls.size()) + " calls";
    }

    /// Another skin with that menu list.
    void WriteMenus(const std::vector<std::string>& menus) {
        const std::string name = "skins/" + std::to_string(++skins_) + ".ini";
        std::string text = "[General]\n";
        for (std::size_t i = 0; i < menus.size(); ++i)
            text += "Menu" + std::to_string(i) + "=" + menus[i] + "\n";
        WriteFile(name, text);
        basGlobal.SkinFile = (folder_ / name).string();
    }

    static std::vector<bool> Paused() {
        std::vector<bool> paused;
        for (int i = 0; i < basGlobal.ChartCount; ++i)
            paused.push_back(basGlobal.Charts[static_cast<std::size_t>(i)].Paused);
        return paused;
    }

    static std::string Active() {
        std::string states;
        for (int i = 0; i < basGlobal.SensorCount; ++i)
            states += basGlobal.Sensors[static_cast<std::size_t>(i)].Active ? '1' : '0';
        return states;
    }

    int skins_ = 0;
};

TEST_F(Dispatcher, CommandsThatAskTheScreenForOneThing) {
    basGlobal.PreviousMenu = "before";
    basGlobal.ChartCount = 3;
    const std::pair<const char*, const char*> rows[] = {
        {"OpenMenu_MainMenu", "page mainmenu"},
        {"openmenu_previous", "page before"},
        {"openbox_Keys", "toggle keys"},
        {"closebox", "closebox"},
        {"exit", "page mainmenu"},
        {"object_+", "tab"},
        {"object_-", "tab back"},
        {"object_left", "focus left"},
        {"object_down", "focus down"},
        {"snapshot", "snapshot 0"},
        {"snapshot_ALL", "snapshot 0 1 2"},
        {"snapshot_1.6", "snapshot 2"},
        {"showinfo_Engine Warm", "popup 1 Engine Warm"},
        {"SHOWWARNING_Oil: Low", "popup 0 Oil: Low"},
        {"showquery_Really?:quit", "message 2 : Really?:quit"},
        {"config", "settings"},
        {"minimize", "minimize"},
        {"quit", "unload"},
        {"PowerOff", "unload"}};
    for (const auto& [command, call] : rows) {
        EXPECT_EQ(Only(command), call) << command;
        EXPECT_EQ(basGlobal.LastCommand, LowerCased(command));
    }
    fakeScreen.BoxIsOpen = true;
    EXPECT_EQ(Only("exit"), "closebox");
}

// The link, the sensors that are on and the page stay; nothing but that one option is written.
TEST_F(Dispatcher, LanguageAndUnitsChangeAtOnce) {
    const std::string settings = "; mine\n[Options]\nLanguage=English\nSkin=night\n";
    WriteFile("Dravik.ini", settings);
    const std::string sensor = "[SensorConfig]\nSensor0Function=speed\nSensor0Source=obd_0D\n";
    WriteFile("languages/English.ini", "[Sensors]\nFilename=e.sensors\nImperial=m.sensors\n");
    WriteFile("languages/German.ini",
              "[Sensors]\nFilename=d.sensors\nMetric=d.sensors\nImperial=m.sensors\n"
              "[DTC]\nFilename=d.codes\n[Words]\nGerman=Deutsch\nmetric=metrisch\n");
    WriteFile("languages/e.sensors", sensor + "Sensor0Unit=km/h\n");
    WriteFile("languages/d.sensors", sensor + "Sensor0Unit=km/h de\n");
    WriteFile("languages/m.sensors", sensor + "Sensor0Unit=mph\n");
    WriteFile("languages/d.codes", "[errorcodes]\nP0001=Mengenregler\nP0002=Regler\n");
    LoadSettings();
    basGlobal.ConnState = kReceivingData;
    basGlobal.Sensors[0].Active = false;
    basGlobal.DtcCount = 2;
    basGlobal.DtcList = {"P0001", "P0002"};
    ShowTroubleCodes();
    SelectListEntry(*FindList(kCodeListSlot), 2);
    basGlobal.ChartCount = 1;
    basGlobal.Launch.Language = "English";  // chosen by touch, another takes its place
    const auto shown = [](std::string function) { return LabelText(function); };
    const auto lit = [](std::string function) { return ImageState(function); };

    EXPECT_THAT(Run("language_german"), ElementsAre("clear 0"));
    EXPECT_EQ(shown("word_setting_language") + ", " + shown("setting_units"), "Deutsch, metric");
    EXPECT_TRUE(lit("language_GERMAN") && lit("units_metric"));
    EXPECT_FALSE(lit("language_english") || lit("units_imperial"));
    EXPECT_EQ(shown("sensorunit_speed"), "km/h de");
    const ListSlot& codes = *FindList(kCodeListSlot);
    EXPECT_EQ(codes.Entries.front().Text, "P0001: Mengenregler. ");
    EXPECT_EQ(codes.Selected, 2);
    EXPECT_EQ(ReadFile("Dravik.ini"), ReplaceAll(settings, "English", "German"));

    Run("Units_Imperial");
    EXPECT_EQ(shown("sensorunit_speed") + ", " + shown("setting_units"), "mph, imperial");
    EXPECT_TRUE(lit("units_imperial"));
    Run("language_English");
    EXPECT_EQ(shown("sensorunit_speed"), "mph") << "units are chosen for every language";
    Run("units_metric");
    EXPECT_EQ(shown("sensorunit_speed"), "km/h") << "a language with one sensor file has that one";
    EXPECT_THAT(Run("language_Klingon"), IsEmpty());
    EXPECT_EQ(shown("setting_language"), "English");
    EXPECT_EQ(ReadFile("Dravik.ini"), settings + "Units=metric\n");
    EXPECT_EQ(basGlobal.ConnState, kReceivingData);
    EXPECT_EQ(Active(), "0");

    basGlobal.IniFile = (folder_ / "none" / "Dravik.ini").string();  // cannot be written
    Run("language_German");
    LoadSettings();
    EXPECT_EQ(shown("setting_language"), "German") << "until the end of the program";
}

TEST_F(Dispatcher, BadCommandsDoNothing) {
    basGlobal.ChartCount = 3;
    NameSensors({"rpm"});
    std::vector<std::string> commands = Words(
        "_ _x open_menu_main showinfo_Engine_Warm nothing quit_now_please showinfo showwarning_ "
        "showquery openmenu openmenu_ openbox object object_select pause clr clr_all clr_xhartall "
        "clr_chart7 clr_chart3 clr_chart-1 clr_chart1e9 pause_chart3 sensoron sensoroff_RPX "
        "sensortoggle_ obd obd_other value snapshot_3");
    commands.push_back("");
    for (const std::string& command : commands) {
        EXPECT_THAT(Run(command), IsEmpty()) << command;
        EXPECT_THAT(Paused(), ElementsAre(false, false, false)) << command;
        EXPECT_EQ(Active(), "1") << command;
        EXPECT_EQ(basGlobal.ConnState, 0) << command;
    }
}

TEST_F(Dispatcher, ChartsAreClearedAndPausedByNumberOrAllTogether) {
    basGlobal.ChartCount = 3;
    EXPECT_THAT(Run("clr_chartall"), ElementsAre("clear 0", "clear 1", "clear 2"));
    EXPECT_EQ(Only("clr_chart2"), "clear 2");
    EXPECT_EQ(Only("clr_chart1.6"), "clear 2");
    EXPECT_EQ(Only("clr_chart"), "clear 0");

    ExecuteCommand("pause_chart1");
    EXPECT_THAT(Paused(), ElementsAre(false, true, false));
    ExecuteCommand("pause_chartall");
    EXPECT_THAT(Paused(), ElementsAre(true, true, true));
    ExecuteCommand("pause_otherall");  // the five characters in front are not looked at
    EXPECT_THAT(Paused(), ElementsAre(false, false, false));
    ExecuteCommand("pause_xxxxx2");
    EXPECT_THAT(Paused(), ElementsAre(false, false, true));
    ExecuteCommand("pause_chart2");
    EXPECT_THAT(Paused(), ElementsAre(false, false, false));
    EXPECT_FALSE(basGlobal.Charts[3].Paused);

    basGlobal.ChartCount = 0;
    EXPECT_THAT(Run("clr_chartall"), IsEmpty());
    EXPECT_THAT(Run("pause_chartall"), IsEmpty());
}

TEST_F(Dispatcher, ValueStepsTheListOrTheSelectedSlidersTarget) {
    basGlobal.CurrentList = 0;
    ListSlot& list = basGlobal.Lists[0];
    list.Entries.assign(30, {});
    basGlobal.SliderTag = {"listview", "sensor_rpm", "gallery"};
    const struct {
        std::uint16_t Slider;
        const char* Command;
        int Expected;  ///< from entry 10
    } rows[] = {{kNoFocus, "value_+", 9},  {kNoFocus, "value_+3", 9}, {kNoFocus, "value_-", 11},
                {kNoFocus, "value_x", 11}, {kNoFocus, "value", 11},   {0, "value_+", 15},
                {0, "value_-", 5},         {0, "value_+3", 13},       {0, "value_up", 9},
                {0, "value", 10},          {1, "value_+", 10},        {2, "value_-", 10}};
    for (const auto& row : rows) {
        list.Selected = 10;
        basGlobal.FocusedSlider = row.Slider;
        ExecuteCommand(row.Command);
        EXPECT_EQ(list.Selected, row.Expected) << row.Slider << " " << row.Command;
    }
}

TEST_F(Dispatcher, SelectRunsTheSelectedButtonAndStepsTheList) {
    basGlobal.ButtonTag = {"OpenMenu_Trip", "listview_down"};
    basGlobal.CurrentList = 0;
    basGlobal.Lists[0].Entries.assign(3, {});
    basGlobal.Lists[0].Selected = 1;
    basGlobal.FocusedButton = 0;
    // The page that the button opens replaces the buttons while its command still runs.
    fakeScreen.WhileLoading = [] { basGlobal.ButtonTag.clear(); };
    EXPECT_EQ(Only("object_select"), "page trip");
    EXPECT_EQ(basGlobal.LastCommand, "openmenu_trip");
    EXPECT_EQ(basGlobal.Lists[0].Selected, 1);

    basGlobal.ButtonTag = {"openmenu_trip", "listview_down"};
    basGlobal.FocusedButton = 1;
    EXPECT_THAT(Run("object_select"), IsEmpty());
    EXPECT_EQ(basGlobal.Lists[0].Selected, 2);
    basGlobal.FocusedButton = 2;
    EXPECT_THAT(Run("object_select"), IsEmpty());
}

TEST_F(Dispatcher, CommandsThatLeadToThemselvesEnd) {
    basGlobal.ButtonTag = {"object_select"};
    basGlobal.FocusedButton = 0;
    EXPECT_THAT(Run("object_select"), IsEmpty());

    fakeScreen.WhileLoading = [] { ExecuteCommand("openmenu_loop"); };
    EXPECT_GT(Run("openmenu_loop").size(), 1U);
    fakeScreen.WhileLoading = nullptr;
    EXPECT_EQ(Only("openmenu_trip"), "page trip") << "and later commands run again";
}

TEST_F(Dispatcher, MenuListStepping) {
    std::vector<std::string> full;
    for (int i = 0; i <= 100; ++i) full.push_back("m" + std::to_string(i));
    std::vector<std::string> twelve(full.begin(), full.begin() + 12);
    const std::vector<std::string> three = {"a", "b", "c"};
    const std::vector<std::string> gap = {"a", "", "c"};
    // Forward the first match counts, back the last.
    const std::vector<std::string> twice = {"a", "b", "c", "b"};
    const struct {
        std::vector<std::string> Menus;
        const char *Current, *Next, *Previous;
    } rows[] = {{three, "a", "page b", "page c"},
                {three, "b", "page c", "page a"},
                {three, "c", "page a", "page b"},
                {three, "A", "page mediaplayer", "page "},
                {{"a"}, "a", "page a", "page a"},
                {{}, "a", "page mediaplayer", "page mainmenu"},
                {twelve, "x", "page mediaplayer", "page m8"},
                {gap, "c", "page mediaplayer", "page "},
                {gap, "a", "page a", "page a"},
                {twice, "b", "page c", "page c"},
                {full, "m100", "page m0", "page m99"},
                {full, "m0", "page m1", "page m100"},
                {full, "x", "page +", "page m8"}};
    for (const auto& row : rows) {
        WriteMenus(row.Menus);
        basGlobal.CurrentMenu = row.Current;
        EXPECT_EQ(Only("openmenu_+"), row.Next) << row.Menus.size() << " " << row.Current;
        EXPECT_EQ(Only("openmenu_-"), row.Previous) << row.Menus.size() << " " << row.Current;
    }
}

TEST_F(Dispatcher, LinkCommandsOnlyAskAndOnlyInTheRightState) {
    PseudoTerminal terminal;
    basGlobal.comOBD.SetDevice(terminal.Path());
    ASSERT_TRUE(basGlobal.comOBD.Open());
    int answer = 6;
    fakeScreen.Answer = [&answer] { return answer; };
    const auto stateAfter = [](const char* command, int state) {
        basGlobal.ConnState = static_cast<std::uint8_t>(state);
        Run(command);
        return static_cast<int>(basGlobal.ConnState);
    };
    for (const int state : {1, 2, 3, 4, 8, 9, 16, 18}) {
        const bool connected = state == 3 || state == 9;
        EXPECT_EQ(stateAfter("OBD_Connect", state), 4) << state;
        EXPECT_EQ(stateAfter("obd_gettroublecodes", state), connected ? 16 : state);
        answer = 6;
        EXPECT_EQ(stateAfter("obd_cleartroublecodes", state), connected ? 18 : state);
        EXPECT_EQ(fakeScreen.Calls.size(), connected ? 1U : 0U);
        for (const int other : {7, 1, 0}) {
            answer = other;
            EXPECT_EQ(stateAfter("obd_cleartroublecodes", state), state);
        }
    }
    EXPECT_EQ(stateAfter("obd_cleartroublecodes", 3), 3);
    EXPECT_THAT(fakeScreen.Calls,
                ElementsAre("message 32 Dravik: Clear troublecodes and all stored data?"));
    // The port decides after the answer, the state only before the question.
    fakeScreen.Answer = [] {
        basGlobal.ConnState = 1;
        return 6;
    };
    EXPECT_EQ(stateAfter("obd_cleartroublecodes", 9), 18);
    fakeScreen.Answer = [] {
        basGlobal.comOBD.Close();
        return 6;
    };
    EXPECT_EQ(stateAfter("obd_cleartroublecodes", 9), 9);
}

TEST_F(Dispatcher, SensorsAreSwitchedWithTheirPids) {
    NameSensors({"a", "b", "c", "a", "Caps"});
    basGlobal.Sensors[5].Active = true;  // not in use
    const struct {
        const char *Command, *Before, *After;
    } rows[] = {{"sensortoggle_all", "11111", "00000"},  {"sensortoggle_all", "11101", "11111"},
                {"sensortoggle_ALL", "00000", "11111"},  {"sensortoggle_b", "11111", "10111"},
                {"sensortoggle_B", "10111", "11111"},    {"sensortoggle_a", "00000", "10000"},
                {"sensortoggle_caps", "00000", "00000"}, {"sensoron_b", "00000", "01000"},
                {"sensoron_all", "01000", "11111"},      {"sensoroff_c", "11111", "11011"},
                {"sensoroff_all", "01011", "00000"},     {"sensoroff_x", "11111", "11111"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Command);
        const std::string before = row.Before;
        for (std::size_t i = 0; i < 5; ++i) {
            basGlobal.Sensors[i].Active = before[i] == '1';
            basGlobal.PidWanted[i] = before[i] == '1';
        }
        Run(row.Command);
        EXPECT_EQ(Active(), row.After);
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_EQ(basGlobal.PidWanted[i], row.After[i] == '1') << i;
        EXPECT_TRUE(basGlobal.Sensors[5].Active);
    }
}

TEST_F(Dispatcher, WantedPidsFollowOnlyLinkSensors) {
    const std::pair<const char*, int> rows[] = {
        // -1: no PID follows the sensor
        {"obd_0D", 13}, {"obd_0d", 13}, {"obd4F", 79},  {"obd_FF", -1}, {"obd_50", -1},
        {"obd", -1},    {"obd_0", -1},  {"can_0D", -1}, {"OBD_0D", -1}, {"", -1}};
    for (const auto& [source, pid] : rows) {
        for (const bool active : {true, false}) {
            SensorRecord sensor;
            sensor.Source = source;
            sensor.Active = active;
            std::array<bool, 80> expected{};
            expected.fill(!active);
            basGlobal.PidWanted = expected;
            UpdatePidWanted(sensor);
            if (pid >= 0) expected[static_cast<std::size_t>(pid)] = active;
            EXPECT_EQ(basGlobal.PidWanted, expected) << source << " " << active;
        }
    }
    NameSensors({"first", "second"});
    basGlobal.Sensors[1].Source = "obd_00";
    ExecuteCommand("sensoroff_first");
    EXPECT_FALSE(basGlobal.PidWanted[0]);
    ExecuteCommand("sensoron_second");
    EXPECT_TRUE(basGlobal.PidWanted[0]) << "the one switched last decides";
}

TEST_F(Dispatcher, TheKeyboardProgramIsStartedWhenThereIsOne) {
    const std::filesystem::path program = folder_ / "keys.sh";
    WriteFile("keys.sh", "#!/bin/sh\ntouch '" + (folder_ / "started").string() + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    for (const std::string& path : {std::string(), std::string("0"), folder_.string()}) {
        basGlobal.OSKPath = path;
        ExecuteCommand("osk");
        EXPECT_THAT(fakeScreen.Calls, ::testing::IsEmpty());
        ExecuteCommand("keyboard");
        ASSERT_FALSE(fakeScreen.Calls.empty());
        EXPECT_EQ(fakeScreen.Calls.back().find("popup 1 "), 0U);
        fakeScreen.Calls.clear();
    }
    Settle();
    EXPECT_FALSE(std::filesystem::exists(folder_ / "started"));
    basGlobal.OSKPath = program.string();
    for (const char* command : {"OSK", "Keyboard"}) {
        ExecuteCommand(command);
        EXPECT_TRUE(Until([this] { return std::filesystem::exists(folder_ / "started"); }));
        std::filesystem::remove(folder_ / "started");
    }
    EXPECT_THAT(fakeScreen.Calls, ::testing::IsEmpty());
}

TEST_F(Dispatcher, APickedSensorIsKnownByItsStandInAndKeptInTheSettings) {
    NameSensors({"rpm.engine", "speed"});
    basGlobal.Sensors[1].Caption = "Tempo";
    const auto caption = [](std::string function) { return LabelText(function); };
    // A tile without a sensor must not show the names of functions.
    basGlobal.PanelSensors[0] = "gone";
    for (const std::string tile : {"picked", "panel1"}) {
        EXPECT_EQ(caption("sensorcaption_" + tile) + caption("sensorunit_" + tile), "");
        EXPECT_EQ(caption("word_live_" + tile), "\u2013");
        EXPECT_EQ(caption("word_highest_" + tile), "\u2013");
    }
    basGlobal.PanelSensors[0] = "rpm.engine";
    EXPECT_THAT(Run("openvalue_nonsense"), IsEmpty());
    EXPECT_EQ(Only("openvalue_speed"), "page value");
    EXPECT_EQ(caption("sensorcaption_picked"), "Tempo");

    EXPECT_THAT(Run("panel_5"), IsEmpty());
    EXPECT_EQ(Only("panel_3"), "page choose");
    EXPECT_EQ(Only("choose_picked"), "page panel");
    EXPECT_EQ(caption("sensorcaption_panel3"), "Tempo");
    LoadSettings();
    EXPECT_THAT(basGlobal.PanelSensors,
                ElementsAre("rpm.engine", "speed", "speed", "value.loadcalculated"));
    basGlobal.PickedSensor = "picked";  // must not lead to itself for ever
    EXPECT_FALSE(FindSensor("picked"));
}

TEST_F(Dispatcher, ASkinIsChosenAtOnceAndKept) {
    for (const char* name : {"day", "Night", "plain"})
        WriteFile("skins/" + std::string(name) + ".ini",
                  std::string("[General]\n[MainMenu]\n") + (*name == 'p' ? "" : "[Dash]\n"));
    WriteFile("Dravik.ini", "[Options]\nSkin=day\n");
    LoadSettings();
    basGlobal.CurrentMenu = "dash";
    EXPECT_THAT(Run("skin_nonsense"), IsEmpty());
    EXPECT_EQ(CurrentSkin(), "day");
    EXPECT_EQ(Only("skin_night"), "page dash");
    EXPECT_EQ(basGlobal.SkinFile, basGlobal.SkinPath + "Night.ini");
    EXPECT_EQ(ReadFile("Dravik.ini"), "[Options]\nSkin=Night\n");
    EXPECT_EQ(Only("skin_next"), "page mainmenu") << "that skin has no such page";
    EXPECT_EQ(Only("skin_next"), "page dash") << "behind the last comes the first";
    EXPECT_EQ(CurrentSkin(), ReadIniString(basGlobal.IniFile, "Options", "Skin"));
}

TEST_F(Dispatcher, SkinsAreThoseForTheShapeOfTheScreen) {
    for (const char* name : {"tall", "tall-day", "wide", "wide-day"}) {
        const bool tall = *name == 't';
        WriteFile("skins/" + std::string(name) + ".ini",
                  std::string(tall ? "[General]\nWidth=480\nHeight=800\n"
                                   : "[General]\nWidth=800\nHeight=480\n") +
                      (std::string(name).ends_with("day") ? "Look=day\n" : ""));
    }
    WriteFile("Dravik.ini", "[Options]\nSkin=wide\n");
    LoadSettings();
    for (const char* next : {"wide-day", "wide"}) {
        EXPECT_TRUE(ChooseNextSkin());
        EXPECT_EQ(CurrentSkin(), next);
    }
    ChooseSkinForScreen(false);
    EXPECT_EQ(CurrentSkin(), "wide");
    basGlobal.Launch.DemoDevice = "demo";
    ChooseSkinForScreen(true);
    EXPECT_EQ(CurrentSkin(), "tall") << "the night stays night, whichever file comes first";
    EXPECT_EQ(ReadFile("Dravik.ini"), "[Options]\nSkin=wide\n") << "a demonstration";
    basGlobal.Launch.DemoDevice.clear();
    ChooseSkin("wide-day");
    ChooseSkinForScreen(true);
    EXPECT_EQ(ReadFile("Dravik.ini"), "[Options]\nSkin=tall-day\n");
    basGlobal.Launch.Skin = "wide";
    ChooseSkinForScreen(true);
    EXPECT_EQ(CurrentSkin(), "wide") << "as the command line has it";
}

TEST_F(Dispatcher, TheSkinForTheNightComesAndGoesByTheClock) {
    const LocalTime now = SystemTime();
    const auto at = [&now](int minutes) {
        const int minute = (now.Hour * 60 + now.Minute + minutes + 24 * 60) % (24 * 60);
        return std::to_string(minute / 60) + ":" + std::to_string(minute % 60);
    };
    const auto settings = [this](const std::string& from, const std::string& to) {
        WriteFile("Dravik.ini", "[Options]\nSkin=day\nNightSkin=night\nNightFrom=" + from +
                                    "\nNightTo=" + to + "\n");
    };
    settings(at(60), at(-60));  // over midnight or not, as the time of this test has it
    LoadSettings();
    EXPECT_EQ(CurrentSkin(), "day");
    settings(at(-60), at(60));
    FollowClock();
    EXPECT_EQ(CurrentSkin(), "day") << "better than no skin at all";
    WriteFile("skins/Night.ini", "");
    EXPECT_TRUE(FollowClock());
    EXPECT_EQ(CurrentSkin(), "night");
    WriteFile("skins/bright.ini", "");
    EXPECT_TRUE(ChooseSkin("bright"));
    EXPECT_FALSE(FollowClock());
    EXPECT_EQ(CurrentSkin(), "bright") << "the user's choice lasts until the morning";
    settings("25:00", at(60));
    FollowClock();
    EXPECT_EQ(CurrentSkin(), "day");
}

}  // namespace
}  // namespace dravik
