#include <QCheckBox>
#include <QTableView>
#include <vector>

#include "dialog/DialogFixture.h"
#include "platform/Text.h"
#include "settings/SettingsWriter.h"

namespace dravik {
namespace {

class SettingsSaving : public DialogTest {};

/// A text with one passage replaced; the passage has to be there.
std::string With(const std::string& text, const std::string& what, const std::string& with) {
    EXPECT_NE(text.find(what), std::string::npos) << what;
    return ReplaceAll(text, what, with);
}

TEST_F(SettingsSaving, WithoutAnEditBothFilesKeepEveryByte) {
    Open();
    Click("bSave");
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(folder_.Read("Dravik.ini"), kSettings);
    EXPECT_EQ(folder_.Read("languages/english.sensors"), kSensors);
}

TEST_F(SettingsSaving, WritesWhatWasTypedAndLeavesTheRestOfTheFile) {
    Open();
    Type("coCommSelect", QStringLiteral("COM12"));
    Type("tBusInitDelay", QStringLiteral("2"));
    Type("tUpdateIntervall", QStringLiteral("fast"));
    Type("tRefreshRate", QStringLiteral("250"));
    Type("coSkin", QStringLiteral("day"));
    Type("tOSKPath", QStringLiteral("/usr/bin/keys"));
    for (const char* box : {"chMiscOptions0", "chMiscOptions3", "chMiscOptions7"}) Click(box);
    Click("bSave");
    EXPECT_EQ(folder_.Read("Dravik.ini"),
              "; kept by hand\n[Options]\nMisc=136\nSkin=day\nLanguage=English\n"
              "OSKPath=/usr/bin/keys\nTheirs=stays\n\n[OBD]\nComPort=12\nBusInitDelay=2\n"
              "UpdateIntervall=fast\nRefreshRate=250\n");
}

TEST_F(SettingsSaving, ATickStandsForAKeyAndLeavesWhatItDoesNotKnow) {
    const struct {
        const char* Before;
        bool Ticked;
        const char* Clicked;  ///< what is in the file when the box was clicked
    } rows[] = {
        {"", false, "Decoding=standard\n"},
        {"Decoding=Standard\n", true, ""},
        {"Decoding=theirs\n", false, "Decoding=standard\n"},
    };
    const std::string settings = kSettings;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Before);
        folder_.Write("Dravik.ini", settings + row.Before);
        Open();
        EXPECT_EQ(Find<QCheckBox>("chDecoding")->isChecked(), row.Ticked);
        Click("bSave");
        EXPECT_EQ(folder_.Read("Dravik.ini"), settings + row.Before);
        Open();
        Click("chDecoding");
        Click("bSave");
        EXPECT_EQ(folder_.Read("Dravik.ini"), settings + row.Clicked);
        EXPECT_EQ(basGlobal.StandardDecoding, !row.Ticked);
    }
}

TEST_F(SettingsSaving, AShorterTableMovesItsEndMarkAndLeavesTheKeysBehindIt) {
    Open();
    ShowTab(1);
    Type("txtSensorFactor", QStringLiteral("0.5"));
    Find<QTableView>("listSensor")->selectRow(1);
    Click("cmdSensorDel");
    Click("bSave");
    std::string expected = With(kSensors, "0,25", "0.5");
    const std::size_t second = expected.find("Sensor1Function");
    const std::size_t third = expected.find("Sensor2Function");
    const std::string speed = With(expected.substr(third), "Sensor2", "Sensor1");
    expected = expected.substr(0, second) + speed.substr(0, speed.find("Sensor3")) +
               With(expected.substr(third), "Function=speed", "Function=0");
    EXPECT_EQ(folder_.Read("languages/english.sensors"), expected);
    EXPECT_EQ(basGlobal.SensorCount, 2);
    EXPECT_EQ(basGlobal.Sensors[1].Function, "speed");
    EXPECT_FLOAT_EQ(basGlobal.Sensors[0].Factor, 0.5F);
}

TEST_F(SettingsSaving, BytesAndDecimalsGoWithTheirSensorAndVanishWhenEmpty) {
    std::string sensors = With(kSensors, "Sensor1Factor", "Sensor1Bytes=1\nSensor1Factor");
    sensors = With(sensors, "Sensor2Factor", "Sensor2Decimals=0\nSensor2Factor");
    folder_.Write("languages/english.sensors", sensors);
    Open();
    ShowTab(1);
    Find<QTableView>("listSensor")->selectRow(1);
    EXPECT_EQ(TextOf("txtSensorBytes"), "1");
    Click("cmdSensorDel");
    EXPECT_EQ(TextOf("txtSensorBytes"), "");
    Find<QTableView>("listSensor")->selectRow(0);
    Type("txtSensorBytes", QStringLiteral("0-1"));
    Click("bSave");
    ASSERT_EQ(basGlobal.SensorCount, 2);
    EXPECT_EQ(basGlobal.Sensors[0].Bytes->Last, 1);
    EXPECT_FALSE(basGlobal.Sensors[0].Decimals);
    EXPECT_FALSE(basGlobal.Sensors[1].Bytes) << "that of the sensor that is gone";
    EXPECT_EQ(basGlobal.Sensors[1].Decimals, 0);
    const std::string saved = folder_.Read("languages/english.sensors");
    for (const char* key : {"Sensor1Bytes", "Sensor0Decimals"})
        EXPECT_EQ(saved.find(key), std::string::npos) << key;
}

// A language file from elsewhere must not choose which files of the user are overwritten.
TEST_F(SettingsSaving, SensorsOutsideTheProgramFolderAreNotWritten) {
    const TemporaryFolder elsewhere;
    const std::string sensors = elsewhere.Write("their.sensors", kSensors);
    const std::string way = std::filesystem::relative(sensors, folder_ / "languages").string();
    std::vector<std::string> names = {way};
#ifndef _WIN32  // only administrators make links there
    std::filesystem::create_symlink(sensors, folder_ / "languages/link.sensors");
    names.emplace_back("link.sensors");
#endif
    for (const std::string& name : names) {
        folder_.Write("languages/English.ini", "[Sensors]\nFilename=" + name + "\n");
        LoadSettings();
        EXPECT_EQ(basGlobal.SensorCount, 3) << "it is read";
        Open();
        Type("tRefreshRate", QStringLiteral("77"));
        ShowTab(1);
        Type("txtSensorCaption", QStringLiteral("New"));
        Click("bSave");
        ASSERT_NE(Dialog(), nullptr) << name;
        EXPECT_NE(Message().find("outside the program folder"), std::string::npos) << Message();
        EXPECT_EQ(folder_.Read("Dravik.ini"), kSettings);
        Type("txtSensorCaption", QStringLiteral("Engine"));
        Click("bSave");
        EXPECT_EQ(Dialog(), nullptr) << "the settings alone can be saved";
        EXPECT_EQ(elsewhere.Read("their.sensors"), kSensors);
        folder_.Write("Dravik.ini", kSettings);
    }
}

TEST_F(SettingsSaving, ATableWithoutSensorsIsItsEndMarkOnly) {
    folder_.Write("languages/english.sensors", "[SensorConfig]\nSensor0Function=rpm\n");
    Open();
    ShowTab(1);
    Click("cmdSensorDel");
    Click("bSave");
    EXPECT_EQ(folder_.Read("languages/english.sensors"), "[SensorConfig]\nSensor0Function=0\n");
    EXPECT_EQ(basGlobal.SensorCount, 0);
}

TEST_F(SettingsSaving, OptInKeysAreWrittenWhenFilledAndGoWhenEmptied) {
    const auto fill = [this](const char* baudrate, const char* device, const char* folder) {
        Open();
        Type("coBaudrate", QString::fromLatin1(baudrate));
        Find<QComboBox>("coPort")->setCurrentIndex(4);
        Type("coPortDevice", QString::fromLatin1(device));
        Find<QComboBox>("coPort")->setCurrentIndex(0);  // the text belongs to the port it was for
        Find<QComboBox>("coFolder")->setCurrentText(QStringLiteral("media"));
        Type("tFolder", QString::fromLatin1(folder));
        Click("bSave");
    };
    fill("38400", "tcp://192.168.0.10:35000", "/music");
    const std::string expected =
        With(std::string(kSettings), "RefreshRate=100\n", "RefreshRate=100\nBaudrate=38400\n") +
        "[Ports]\nCOM5=tcp://192.168.0.10:35000\n"
        "[Folders]\nmedia=/music\n";
    EXPECT_EQ(folder_.Read("Dravik.ini"), expected);
    fill("", "", "");
    EXPECT_EQ(folder_.Read("Dravik.ini"), std::string(kSettings) + "[Ports]\n[Folders]\n");
}

TEST_F(SettingsSaving, AppliesTheSettingsAndOpensTheMainMenu) {
    basGlobal.PidWanted[5] = true;
    basGlobal.ConnState = kReceivingData;
    Open();
    Type("tRefreshRate", QStringLiteral("250"));
    Click("chMiscOptions2");
    Click("chMiscOptions3");
    Click("bSave");
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(basGlobal.CurrentMenu, "mainmenu");
    EXPECT_EQ(basGlobal.tiMain.Interval(), 250);
    EXPECT_EQ(basGlobal.ConnState, kConnecting);
    EXPECT_FALSE(basGlobal.PidWanted[5]);
    EXPECT_EQ(window_->cursor().shape(), Qt::BlankCursor);
}

// A skin from the command line holds only as long as nobody chooses another one.
TEST_F(SettingsSaving, AChosenSkinTakesThePlaceOfTheOneFromTheCommandLine) {
    basGlobal.Launch.Skin = "night";
    Open();
    Type("tRefreshRate", QStringLiteral("250"));
    Click("bSave");
    EXPECT_EQ(basGlobal.Launch.Skin, "night");
    Open();
    Type("coSkin", QStringLiteral("day"));
    Click("bSave");
    EXPECT_EQ(basGlobal.SkinFile, basGlobal.SkinPath + "day.ini");
}

// Without a language there is no sensor file; the settings can be saved all the same.
TEST_F(SettingsSaving, TheFirstLanguageCanBeChosenWithoutAFolderOfLanguages) {
    std::filesystem::remove_all(folder_ / "languages");
    LoadSettings();
    Open();
    Type("coLanguage", QStringLiteral("Deutsch"));
    Click("bSave");
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(folder_.Read("Dravik.ini"),
              With(std::string(kSettings), "Language=English", "Language=Deutsch"));
}

// The user's folder holds the settings alone, and lies over an installation.
TEST_F(SettingsSaving, SensorsOfAnInstallationAreWrittenIntoTheUsersFolderWhenTheyChange) {
    const TemporaryFolder installed;
    for (const char* part : {"skins", "languages"})
        std::filesystem::rename(folder_ / part, installed / part);
    folder_.Write("skins/Night.ini", "[mainmenu]\n");
    folder_.Write("skins/own.ini", "[mainmenu]\n");
    basGlobal.Launch.InstalledData = installed.Path();
    LoadSettings();
    Open();
    QStringList skins;
    for (int i = 0; i < Find<QComboBox>("coSkin")->count(); ++i)
        skins.append(Find<QComboBox>("coSkin")->itemText(i));
    EXPECT_EQ(skins, QStringList() << QStringLiteral("day") << QStringLiteral("Night")
                                   << QStringLiteral("own"))
        << "each name once, as the user has it";
    Type("tRefreshRate", QStringLiteral("77"));
    Click("bSave");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "languages")) << "no sensor has changed";

    for (const char* caption : {"New", "Newer"}) {
        Open();
        ShowTab(1);
        Type("txtSensorCaption", QString::fromLatin1(caption));
        Click("bSave");
        EXPECT_EQ(folder_.Read("languages/english.sensors"),
                  With(kSensors, "Caption=Engine", std::string("Caption=") + caption));
        EXPECT_EQ(basGlobal.Sensors[0].Caption, caption);
    }
    EXPECT_EQ(installed.Read("languages/english.sensors"), kSensors);
}

}  // namespace
}  // namespace dravik
