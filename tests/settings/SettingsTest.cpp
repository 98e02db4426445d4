#include "settings/basSettings.h"

#include <algorithm>
#include <string>

#include "skinfunc/basValueProc.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

using ::testing::EndsWith;

/// A path with the separators of the system.
std::string Native(std::string path) {
    std::replace(path.begin(), path.end(), '/', kPathSeparator);
    return path;
}

class Settings : public GlobalsTest {
 protected:
    /// A settings file, a language file and a sensor file with these sensors.
    void WriteSensors(const std::string& lines) {
        WriteFile("Dravik.ini", "[Options]\nLanguage=english\n");
        WriteFile("languages/english.ini", "[Sensors]\nFilename=sensors.ini\n");
        WriteFile("languages/sensors.ini", "[SensorConfig]\n" + lines);
    }

    static std::string ActiveSensors() {
        std::string states;
        for (const SensorRecord& sensor : basGlobal.Sensors) states += sensor.Active ? '1' : '0';
        return states;
    }
};

TEST_F(Settings, WithoutASettingsFileEveryDefaultHolds) {
    basGlobal.ConnState = 9;
    basGlobal.tiMain.SetEnabled(true);
    LoadSettings();
    LoadResumeState();
    const GlobalState& g = basGlobal;
    EXPECT_EQ(g.ImageScale, 0);
    EXPECT_EQ(g.Misc, 0);
    EXPECT_FALSE(g.HidePointer);
    EXPECT_EQ(g.ConnState, 1);
    EXPECT_TRUE(g.tiMain.Enabled()) << "as before";
    EXPECT_FALSE(g.tiAux.Enabled() || g.tiHardware.Enabled());
    EXPECT_EQ(g.ReconnectSeconds, 0);
    EXPECT_FALSE(g.StandardDecoding);
    EXPECT_EQ(g.SensorCount, 0);
    EXPECT_EQ(g.OSKPath, "0");
    EXPECT_EQ(g.CurrentMenu, "mainmenu");
    EXPECT_EQ(g.PreviousMenu, "mainmenu");
    const std::string root = folder_.string();
    EXPECT_EQ(g.LanguageFile, root + Native("/languages/0.ini"));
    EXPECT_EQ(g.SensorFile, root + Native("/languages/0"));
    EXPECT_EQ(g.DescriptionFile, root + Native("/languages/0"));
    EXPECT_EQ(g.SkinFile, root + Native("/skins/0.ini"));
    EXPECT_EQ(g.ImageFolder, root + Native("/skins/0/"));
    EXPECT_EQ(g.SaveFolder, root + Native("/save"));
    EXPECT_EQ(ActiveSensors(), std::string(90, '1') + "0");
}

TEST_F(Settings, FilesAreFoundThroughOneAnother) {
    WriteFile("Dravik.ini",
              "[Options]\nScaleImageWidth=125\nMisc=13\nLanguage=deutsch\nSkin=night\n"
              "OSKPath=C:\\keys.exe\n[OBD]\nReconnect=7\nDecoding=Standard\n");
    WriteFile("languages/deutsch.ini", "[Sensors]\nFilename=s.de\n[DTC]\nFilename=codes.de\n");
    WriteFile("skins/night.ini", "[General]\nImagefolder=dark\n");
    LoadSettings();
    const GlobalState& g = basGlobal;
    EXPECT_EQ(g.ImageScale, 1.25F);
    EXPECT_EQ(g.Misc, 13);
    EXPECT_TRUE(g.HidePointer);
    EXPECT_EQ(g.ConnState, 4);
    EXPECT_EQ(g.ReconnectSeconds, 7);
    EXPECT_TRUE(g.StandardDecoding);
    EXPECT_EQ(g.OSKPath, "C:\\keys.exe");
    EXPECT_THAT(g.SensorFile, EndsWith(Native("/languages/s.de")));
    EXPECT_THAT(g.DescriptionFile, EndsWith(Native("/languages/codes.de")));
    EXPECT_THAT(g.SkinFile, EndsWith(Native("/skins/night.ini")));
    EXPECT_THAT(g.ImageFolder, EndsWith(Native("/skins/dark/")));

    basGlobal.Launch = {"/dev/demo", "day", "francais"};
    WriteFile("Dravik.ini", "[Options]\nLanguage=deutsch\nSkin=night\n");
    LoadSettings();
    EXPECT_THAT(g.SkinFile, EndsWith(Native("/skins/day.ini")));
    EXPECT_THAT(g.LanguageFile, EndsWith(Native("/languages/francais.ini")));
    EXPECT_EQ(g.ConnState, 4) << "the demo connects without the option";
}

TEST_F(Settings, UnitsChooseAmongTheSensorFilesOfTheLanguage) {
    const std::string both = "[Sensors]\nFilename=own\nMetric=km\nImperial=miles\n";
    const struct {
        std::string Language;
        const char *Units, *File, *Shown;
    } rows[] = {{both, "", "own", "metric"},
                {both, "Units=Imperial", "miles", "imperial"},
                {both, "Units=metric", "km", "metric"},
                {both, "Units=leagues", "own", "metric"},
                {"[Sensors]\nFilename=own\n", "Units=imperial", "own", "metric"},
                {"[Sensors]\nFilename=own\nImperial=own\n", "", "own", "imperial"},
                {"", "Units=imperial", "0", "metric"}};
    for (const auto& row : rows) {
        WriteFile("Dravik.ini", std::string("[Options]\nLanguage=mine\n") + row.Units + "\n");
        WriteFile("languages/mine.ini", row.Language);
        LoadSettings();
        EXPECT_THAT(basGlobal.SensorFile, EndsWith(Native("/languages/") + row.File)) << row.Units;
        EXPECT_EQ(CurrentUnits(), row.Shown) << row.Language << row.Units;
    }
}

TEST_F(Settings, IntervalsBelowOneAreReplaced) {
    const struct {
        const char *Update, *Refresh;
        int Hardware, Main;
    } rows[] = {{"0", "0", 50, 100},
                {"-5", "-5", 50, 100},
                {"1", "1", 1, 1},
                {"", "fast", 50, 100},
                {"100000", "250 ms", 100000, 250}};
    for (const auto& row : rows) {
        WriteFile("Dravik.ini", std::string("[OBD]\nUpdateIntervall=") + row.Update +
                                    "\nRefreshRate=" + row.Refresh + "\n");
        LoadSettings();
        EXPECT_EQ(basGlobal.tiHardware.Interval(), row.Hardware) << row.Update;
        EXPECT_EQ(basGlobal.tiMain.Interval(), row.Main) << row.Refresh;
    }
}

TEST_F(Settings, TextKeysReadAsZeroWhenMissingAndStopAt255Bytes) {
    WriteFile("a.ini", "[S]\nEmpty=\nLong=" + std::string(300, 'x') + "\n");
    const std::string file = (folder_ / "a.ini").string();
    EXPECT_EQ(ReadIniString(file, "S", "Missing"), "0");
    EXPECT_EQ(ReadIniString(file, "T", "Empty"), "0");
    EXPECT_EQ(ReadIniString(file, "S", "Empty"), "");
    EXPECT_EQ(ReadIniString(file, "s", "long"), std::string(255, 'x'));
}

TEST_F(Settings, SensorsAreReadUpToTheFirstFunctionZero) {
    WriteSensors(
        "Sensor0Function=RPM\nSensor0Source=OBD_0C\nSensor0Factor=0,25\nSensor0Offset=-40\n"
        "Sensor0Min= .5e3\nSensor0Max=1.5 rpm\nSensor0Caption=Speed of Engine\nSensor0Unit=1/min\n"
        "Sensor1Function=K\xDCHLER\nSensor1Factor=much\n"
        "Sensor2Function=0\n"
        "Sensor3Function=lost\n");
    basGlobal.Sensors[0].Active = true;
    LoadSettings();
    EXPECT_EQ(basGlobal.SensorCount, 2);
    const SensorRecord& sensor = basGlobal.Sensors[0];
    EXPECT_EQ(sensor.Function, "rpm");
    EXPECT_EQ(sensor.Source, "OBD_0C");
    EXPECT_EQ(sensor.Factor, 0.25F);
    EXPECT_EQ(sensor.Offset, -40);
    EXPECT_EQ(sensor.Min, 500);
    EXPECT_EQ(sensor.Max, 1.5F);
    EXPECT_EQ(sensor.Caption, "Speed of Engine");
    EXPECT_EQ(sensor.Unit, "1/min");
    EXPECT_TRUE(sensor.Active) << "the table says nothing about it";
    for (const char* name : {"kühler", "k\xFChler"})
        EXPECT_EQ(FindSensor(name), &basGlobal.Sensors[1]) << "whatever the skin's encoding";
    EXPECT_EQ(basGlobal.Sensors[1].Factor, 0);
    EXPECT_EQ(basGlobal.Sensors[1].Source, "0");
    EXPECT_EQ(basGlobal.Sensors[3].Function, "");
}

TEST_F(Settings, BytesAndDecimalsOfASensorNeedNotBeThere) {
    constexpr int kOfNoReply = -1;
    const struct {
        const char* Text;
        int First, Last;
    } rows[] = {{"0", 0, 0},      {"3", 3, 3},     {" 0 - 1 ", 0, 1}, {"0-3", 0, 3},
                {"4", -1, -1},    {"1-0", -1, -1}, {"-1", -1, -1},    {"x", -1, -1},
                {"0-1x", -1, -1}, {"1!", -1, -1},  {"1!FF", 1, 1}};
    for (const auto& row : rows) {
        WriteSensors(std::string("Sensor0Function=a\nSensor0Decimals=0\nSensor1Function=b\n") +
                     "Sensor0Bytes=" + row.Text + "\n");
        ::testing::internal::CaptureStderr();
        LoadSettings();
        const std::string report = ::testing::internal::GetCapturedStderr();
        const std::optional<ByteRange>& bytes = basGlobal.Sensors[0].Bytes;
        ASSERT_TRUE(bytes) << row.Text;
        EXPECT_EQ(bytes->First, row.First) << row.Text;
        EXPECT_EQ(bytes->Last, row.Last) << row.Text;
        EXPECT_EQ(report.find("Sensor0Bytes") != std::string::npos, row.First == kOfNoReply);
        EXPECT_EQ(basGlobal.Sensors[0].Decimals, 0);
        EXPECT_FALSE(basGlobal.Sensors[1].Bytes);
        EXPECT_FALSE(basGlobal.Sensors[1].Decimals);
    }
    EXPECT_EQ(basGlobal.Sensors[0].Bytes->Absent, 0xFFU);
}

TEST_F(Settings, TheNinetySecondSensorIsReportedAndLeftOut) {
    for (const int count : {91, 92}) {
        std::string lines;
        for (int i = 0; i < count; ++i)
            lines += "Sensor" + std::to_string(i) + "Function=s" + std::to_string(i) + "\n";
        WriteSensors(lines);
        LoadSettings();
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(LoadSensorConfig(), count == 91);
        const std::string report = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(report.find("Sensor91Function") != std::string::npos, count == 92);
        EXPECT_EQ(basGlobal.SensorCount, 91);
        EXPECT_EQ(basGlobal.Sensors[90].Function, "s90");
    }
}

TEST_F(Settings, ResumeRestoresSensorsOneToNinetyOnlyFromExactlyNinetyCharacters) {
    const std::string on90 = std::string(90, '1') + "0";
    const std::string pattern = "1" + std::string(88, '0');
    const struct {
        int Misc;
        std::string Saved, Active;
    } rows[] = {{1, pattern + "1", "0" + pattern + "1"},
                {1, pattern + "x", "0" + pattern + "0"},
                {1, pattern, on90},
                {1, pattern + "11", on90},
                {0, pattern + "1", on90}};
    for (const auto& row : rows) {
        WriteFile("Dravik.ini", "[Options]\nMisc=" + std::to_string(row.Misc) +
                                    "\n[Resume]\nSensorActive=" + row.Saved + "\n");
        for (SensorRecord& sensor : basGlobal.Sensors) sensor.Active = false;
        LoadSettings();
        LoadResumeState();
        EXPECT_EQ(ActiveSensors(), row.Active) << row.Misc << " " << row.Saved;
    }
}

TEST_F(Settings, ResumeMenusAreReadAndWrittenOnlyWithTheirOption) {
    WriteFile("Dravik.ini", "; mine\n[Options]\nMisc=2\n[Resume]\nMenu=engine\nOther=kept\n");
    LoadSettings();
    LoadResumeState();
    EXPECT_EQ(basGlobal.CurrentMenu, "engine");
    EXPECT_EQ(basGlobal.PreviousMenu, "0");

    basGlobal.CurrentMenu = "trip";
    basGlobal.PreviousMenu = "engine";
    SaveResumeState();
    EXPECT_EQ(ReadFile("Dravik.ini"),
              "; mine\n[Options]\nMisc=2\n[Resume]\nMenu=trip\nOther=kept\nSensorActive=\n"
              "PreviousMenu=engine\n");

    basGlobal.Misc = 1;
    basGlobal.CurrentMenu = "not saved";
    for (std::size_t i = 0; i < basGlobal.Sensors.size(); ++i)
        basGlobal.Sensors[i].Active = i == 0 || i == 1 || i == 90;
    SaveResumeState();
    EXPECT_EQ(ReadFile("Dravik.ini"),
              "; mine\n[Options]\nMisc=2\n[Resume]\nMenu=trip\nOther=kept\nSensorActive=1" +
                  std::string(88, '0') + "1\nPreviousMenu=engine\n");
}

}  // namespace
}  // namespace dravik
