#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "skin/ProgramTitle.h"
#include "skin/check/SoundSkin.h"
#include "support/TestFont.h"

namespace dravik {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Field;
using ::testing::HasSubstr;

std::string Lines(const std::vector<SkinError>& findings) {
    std::string lines;
    for (const SkinError& finding : findings)
        lines += finding.Context() + ": " + finding.Description + "\n";
    return lines;
}

/// A change to the sound skin and the finding that it brings.
struct Mistake {
    const char* Old;  ///< text of the sound skin; empty: the new text is added at the end
    std::string New;
    const char* Section;
    const char* Key;
    const char* Said = "";     ///< the word that was meant, where it is named
    std::size_t Findings = 1;  ///< with those that follow from it
};

/// Elements with nothing but a function (and a colour), from `first` on.
std::string Elements(const std::string& kind, int first, int last, const std::string& function,
                     const std::string& more = "Color=1") {
    std::string text;
    for (int n = first; n <= last; ++n) {
        const std::string prefix = kind + std::to_string(n);
        text += prefix + "Function=" + function + "\n" + prefix + more + "\n";
    }
    return text;
}

std::string Gauges(int first, int last) {
    std::string text;
    for (int n = first; n <= last; ++n) {
        const std::string prefix = "Gauge" + std::to_string(n);
        text += prefix + "Function=sensor_speed\n" + prefix + "Max=9\n" + prefix + "RadiusEnd=9\n" +
                prefix + "StretchY=100\n" + prefix + "Color=1\n";
    }
    return text;
}

const Mistake kMistakes[] = {
    // Pictures.
    {"Button0Up=Key.PNG", "Button0Up=none.png", "mainmenu", "Button0Up"},
    {"Button0Up=Key.PNG", "Button0Up=broken.png", "mainmenu", "Button0Up"},
    {"Button0Up=Key.PNG", "Button0Up=half.png", "mainmenu", "Button0Up"},
    {"Button0Up=Key.PNG", "Button0Up=odd.png", "mainmenu", "Button0Up"},
    {"Background=key.png\nButton0Function=yes", "Background=no.png\nButton0Function=yes", "query",
     "Background"},
    {"Imagefolder=test", "Imagefolder=tset", "General", "Imagefolder"},
    {"[keys]", "[keys]\nImage0Function=picture", "keys", "Image0Picture"},
    {"[keys]", "[keys]\nButton1Function=exit", "keys", "Button1Up"},
    {"Slider0Background=key.png", "", "engine", "Slider0Background"},
    {"List0Width=100", "", "engine", "List0Width"},
    {"[keys]", "[keys]\nButton0Down=key.png", "keys", "Button0Over"},
    {"Button0X= 10", "Button0X=800", "mainmenu", "Button0X"},
    {"Button0X= 10", "Button0X=10\nButton0Y=-40", "mainmenu", "Button0Y"},
    {"Gauge0RadiusEnd=100", "Gauge0RadiusEnd=100\nGauge0Y=580", "mainmenu", "Gauge0Y"},
    {"Label0Color=&HFFFFFF", "Label0Color=1\nLabel0Y=480", "status", "Label0Y"},
    // Numbers, each by its reading rule.
    {"Button0X= 10", "Button0X=ten", "mainmenu", "Button0X"},
    {"Button0X= 10", "Button0X=10px", "mainmenu", "Button0X"},
    {"Button0X= 10", "Button0X=+-5", "mainmenu", "Button0X"},
    {"Button0LabelX=", "Button0LabelX=12px", "mainmenu", "Button0LabelX"},
    {"Button0LabelX=", "Button0LabelX=9999999999", "mainmenu", "Button0LabelX"},
    {"Button0LabelX=", "Button0ImageX=40000", "mainmenu", "Button0ImageX"},
    {"Gauge0Color=255", "Gauge0Color=red", "mainmenu", "Gauge0Color"},
    {"Gauge0Color=255", "", "mainmenu", "Gauge0Color"},
    {"Width=800", "Width=800 pixels", "General", "Width"},
    {"BackgroundX=40", "BackgroundX=forty", "keys", "BackgroundX"},
    {"Bargraph0Max=100", "Bargraph0Max=0", "mainmenu", "Bargraph0Max"},
    {"Gauge0StretchY=100", "", "mainmenu", "Gauge0StretchY"},
    {"Label0Caption=", "Label0Alignment=3\nLabel0Caption=", "mainmenu", "Label0Alignment"},
    {"Button0LabelX=", "Button0LabelAlignment=-1", "mainmenu", "Button0LabelAlignment"},
    {"[query]", "[query]\nLabel0FontSize=-5", "query", "Label0FontSize"},
    {"List0Width=100", "List0Width=100\nList0FontStyle=bold", "engine", "List0FontStyle"},
    {"List0Width=100", "List0Width=100\nList0FontStyle=Thin", "engine", "List0FontStyle"},
    {"Label0Color=&HFF00&", "Label0Color=1\nLabel0Decimals=7", "mainmenu", "Label0Decimals"},
    {"List0Width=100", "List0Width=100\nChart0Time=-60", "engine", "Chart0Time"},
    {"List0Width=100", "List0Width=100\nChart0Mode=3", "engine", "Chart0Mode"},
    {"Gauge0Max=8000", "Gauge0Max=8000\nGauge0Style=5", "mainmenu", "Gauge0Style"},
    // Function texts.
    {"=openbox_keys", "=openbx_keys", "mainmenu", "Button1Function", "\"openbox\"?", 2},
    {"=exit", "=obd_conect", "codes", "Button0Function"},
    {"=exit", "=sensoron", "codes", "Button0Function"},
    {"=exit", "=quit_now", "codes", "Button0Function"},
    {"=exit", "=showinfo_Oil_low", "codes", "Button0Function"},
    {"=exit", "=clr_chart7", "codes", "Button0Function"},
    {"=exit", "=clr_charts", "codes", "Button0Function"},
    {"=exit", "=gofolder_child", "codes", "Button0Function"},
    {"=exit", "=clr_chart1", "codes", "Button0Function"},
    {"=openmenu_codes", "=snapshot_1", "engine", "Button1Function", "", 2},
    {"Command=obd_connect", "Command=obd_konnect", "mainmenu", "Command"},
    {"=time\n", "=time_hours\n", "status", "Label0Function"},
    {"=time\n", "=sensor_rpm.enginee\n", "status", "Label0Function", "\"rpm.engine\"?"},
    {"=time\n", "=sensorcaption_rpm_engine\n", "status", "Label0Function"},
    {"=time\n", "=obd_05\n", "status", "Label0Function"},
    {"=time\n", "=key_enter\n", "status", "Label0Function"},
    {"=sensorunit_rpm.engine", "=sensorunit_none", "mainmenu", "Button0LabelFunction"},
    {"=obd_connected", "=obd_conected", "status", "Image0Function"},
    {"=obd_connected", "=sensron_speed", "status", "Image0Function", "\"sensoron\"?"},
    {"=obd_connected", "=mouseover_slider0", "status", "Image0Function"},
    {"=obd_05", "=obd_5G", "mainmenu", "Bargraph0Function"},
    {"=obd_05", "=obd_4F", "mainmenu", "Bargraph0Function"},
    {"=obd_05", "=OBD_05", "mainmenu", "Bargraph0Function"},
    {"=obd_05", "=obd_status", "mainmenu", "Bargraph0Function"},
    {"=obd_connected", "=startupp", "status", "Image0Function"},
    {"=obd_connected", "=mouseover_button3", "status", "Image0Function"},
    {"=obd_connected", "=mouseover_slider_slider1", "status", "Image0Function"},
    {"=obd_05", "=can_2", "mainmenu", "Bargraph0Function"},
    {"=media", "=medias", "engine", "List0Function", "\"media\"?"},
    {"=yes", "=yess", "query", "Button0Function", "\"yes\"?", 2},
    {"Label0Caption=Welcome", "Label0Caption=" + std::string(64, 'x'), "mainmenu", "Label0Caption"},
    {"Label0Function=text", "Label0Function=date", "mainmenu", "Label0Caption"},
    {"Label0Caption=Welcome", "", "mainmenu", "Label0Caption"},
    {"=sensorunit_rpm.engine", "=text", "mainmenu", "Button0LabelCaption"},
    {"=sensorunit_rpm.engine", "=APP_Title", "mainmenu", "Button0LabelFunction"},
    // Keys and their numbering.
    {"Gauge0RadiusEnd=100", "Gauge0RadiusEnd=100\nGauge0RadiusStat=10", "mainmenu",
     "Gauge0RadiusStat", "\"RadiusStart\"?"},
    {"BackgroundX=40", "BackgroundX=40\nBackroundY=9", "keys", "BackroundY", "\"BackgroundY\"?"},
    {"[keys]", "[keys]\nButton01X=9", "keys", "Button01X"},
    {"Height=480", "Height=480\nMenue2=engine", "General", "Menue2"},
    {"=yes", "=yes\nLabel1X=9", "query", "Label1X"},
    {"[keys]", "[keys]\nButton2Function=exit", "keys", "Button2Function"},
    {"[keys]", "[keys]\nButton1X=9\nButton1Y=9", "keys", "Button1X"},
    {"[keys]", "[keys]\nBackgroundX=1", "keys", "BackgroundX"},
    {"[keys]", "[keys]\nImage1001Function=picture\nImage1001X=1", "keys", "Image1001Function"},
    {"Height=480", "Height=480\nMenu101=engine", "General", "Menu101"},
    {"=yes", "=yes\nButton3Function=ok", "query", "Button3Function"},
    {"=yes", "=yes\nButon2X=1", "query", "Buton2X", "\"Button2X\"?"},
    {"; a comment", "Button0X=1\nButton0Y=1", "", "Button0X"},
    {"[keys]", "[keys]\nButton0X 10", "keys", ""},
    {"[keys]", "[keys]\n=10", "keys", ""},
    {"[codes]", "[codecs", "engine", "", "", 4},
    {"[status]", "[status]\nCommand=exit", "status", "Command"},
    {"Menu1=", "Menu2=", "General", "Menu2", "", 3},
    {"[engine]\nCommonObjects0", "[engine]\nCommonObjects1", "engine", "CommonObjects1"},
    // Pages.
    {"=openmenu_codes", "=openmenu_codecs", "engine", "Button1Function", "", 2},
    {":exit", ":obd_connect", "engine", "Button0Function"},
    {"=closebox", "=quit", "keys", ""},
    {":exit", ":leave", "engine", "Button0Function"},
    {"Menu1=engine", "Menu1=engin", "General", "Menu1", "", 3},
    {"Menu1=engine", "Menu1=Engine", "General", "Menu1"},
    {"CommonObjects0=status\nCommand", "CommonObjects0=state\nCommand", "mainmenu",
     "CommonObjects0"},
    {"[codes]", "[codes]\nCommonObjects0=codes", "codes", "CommonObjects0"},
    {"=exit", "=openmenu_-", "codes", "Button0Function"},
    {"=exit", "=openmenu_+", "codes", "Button0Function"},
    {"", "[lost]\nCommonObjects0=shared\n[shared]\nLabel0Function=date\nLabel0Color=1\n", "lost",
     ""},
    {"", "[codes]\nButton0X=1\n", "codes", ""},
    {"Command=obd_connect", "Command=openmenu_mainmenu", "mainmenu", "Command"},
    {"Button0Function=yes", "Button0Function=no", "query", "Button0Function"},
    {"Button1Function=no\n", "Button1Function=ok\n", "query", "Button0Function"},
    {"", "[info]\nBackground=key.png\n", "info", "Button0Function"},
    // What a page can hold.
    {"[codes]", "[codes]\n" + Elements("Label", 0, 41, "date"), "codes", ""},
    {"Label0Function=text", Elements("Label", 1, 40, "date") + "Label0Function=text", "mainmenu",
     ""},
    {"[keys]", "[keys]\n" + Elements("Label", 0, 39, "date"), "keys", ""},
    {"[codes]", "[codes]\n" + Gauges(0, 17), "codes", ""},
    {"[codes]", "[codes]\n" + Elements("Chart", 0, 7, "sensor_speed"), "codes", ""},
};

TEST(CheckSkin, FindsNothingInASoundSkin) {
    EXPECT_EQ(Lines(SoundSkin().Check(SoundSkin::Text())), "");
}

TEST(CheckSkin, NamesSectionAndKeyOfEveryMistake) {
    const SoundSkin skin;
    for (const Mistake& mistake : kMistakes) {
        std::string text = SoundSkin::Text();
        const std::size_t place = *mistake.Old == 0 ? text.size() : text.find(mistake.Old);
        ASSERT_NE(place, std::string::npos) << mistake.Old;
        text.replace(place, std::string_view(mistake.Old).size(), mistake.New);
        const auto findings = skin.Check(text);
        SCOPED_TRACE(mistake.New.substr(0, 80) + "\n" + Lines(findings));
        EXPECT_EQ(findings.size(), mistake.Findings);
        EXPECT_THAT(findings,
                    Contains(AllOf(Field(&SkinError::Section, mistake.Section),
                                   Field(&SkinError::Key, mistake.Key),
                                   Field(&SkinError::Description, HasSubstr(mistake.Said)))));
    }
}

/// What looks like a mistake and is none.
TEST(CheckSkin, LeavesAloneWhatWorks) {
    constexpr std::pair<const char*, const char*> kChanges[] = {
        // Any word of one's own is a fixed picture, also one short of a known word.
        {"=obd_connected", "=bla"},
        {"=obd_connected", "=old"},
        {"=obd_connected", "=Picture"},
        // Button 2 is that of the box, slider 0 that of another page with the same lamp.
        {"=obd_connected", "=mouseover_button2"},
        {"=obd_connected", "=mouseover_slider_slider0"},
        {"[keys]", "[keys]\nLabel0Function=mouseover_button2\nLabel0Color=1"},
        {"[status]", "[status]\nButton0Function=clr_chart0\nButton0Up=key.png"},
        {"Button0LabelX=", "Button0ImageX=-32768"},
        {"List0Width=100", "List0Width=100\nList0FontStyle=Regular"},
        {"=time\n", "=id3album\n"},
        {"=time\n", "=artisttrackname\n"},
        {"=time\n", "=APP_Title\n"},
        {"=time\n", "=SENSOR_RPM.Engine\n"},
        {"=obd_05", "=obd_0c"},
        {"; a comment", "\n \n ;; a comment"},
        {"=closebox", "=showquery_Sure?:exit"},
    };
    const SoundSkin skin;
    for (const auto& [old, other] : kChanges) {
        std::string text = SoundSkin::Text();
        text.replace(text.find(old), std::string_view(old).size(), other);
        EXPECT_EQ(Lines(skin.Check(text)), "") << other;
    }
}

/// The sound skin with a label and a button's caption in a font of which every character takes half
/// of its size: 8 pixels at 12 points.
class CheckSkinText : public ::testing::Test {
 protected:
    static constexpr int kCharacter = 8;

    CheckSkinText() {
        const TemporaryFolder& folder = skin_.Folder();
        folder.Write("fonts/half.ttf", TestFont("Test Half", 500));
        folder.Write("languages/test.sensors", Sensors("rpm", "1/min", "0.25", "8000"));
        folder.Write("languages/Long.ini", "[Sensors]\nFilename=long.sensors\n");
        folder.Write("languages/long.sensors", Sensors("Umdrehungen", "/min", "1", "65535"));
    }

    static std::string Sensors(const std::string& caption, const std::string& unit,
                               const std::string& factor, const std::string& max) {
        return "[SensorConfig]\nSensor0Function=rpm.engine\nSensor0Source=obd_0C\nSensor0Caption=" +
               caption + "\nSensor0Unit=" + unit + "\nSensor0Factor=" + factor +
               "\nSensor0Offset=-100\nSensor0Min=-100\nSensor0Max=" + max +
               "\nSensor1Function=speed\nSensor1Source=can_1\n";
    }

    /// The findings of the sound skin with a label of these keys.
    std::vector<SkinError> WithLabel(const std::string& keys, int width,
                                     const std::string& font = "Test Half") const {
        std::string text = SoundSkin::Text();
        const std::string old = "Label0Function=time\n";
        text.replace(text.find(old), old.size(),
                     keys + "\nLabel0Font=" + font +
                         "\nLabel0FontSize=12\nLabel0Width=" + std::to_string(width) + "\n");
        return skin_.Check(text);
    }

    const SoundSkin skin_;
};

TEST_F(CheckSkinText, WiderThanItsPlaceIsToldWithTheLanguageThatMakesItSo) {
    const struct {
        const char* Keys;
        std::size_t Characters;
        const char* Key;
        const char* Text;
    } texts[] = {
        {"Label0Function=text\nLabel0Caption=Engine", 6, "Label0Caption", "\"Engine\" is wider"},
        {"Label0Function=sensorcaption_RPM.Engine", 11, "Label0Function", "\"Umdrehungen\" (Long)"},
        {"Label0Function=sensorunit_rpm.engine", 5, "Label0Function", "\"1/min\" (German)"},
        {"Label0Function=sensor_rpm.engine", 7, "Label0Function", "\"8888.88\" (German)"},
        {"Label0Function=sensor_rpm.engine\nLabel0Decimals=0", 5, "Label0Function",
         "\"88888\" (Long)"},
        {"Label0Function=sensor_rpm.engine\nLabel0Decimals=2", 8, "Label0Function",
         "\"88888.88\" (Long)"},
        {"Label0Function=live_rpm.engine\nLabel0Decimals=0", 5, "Label0Function",
         "\"88888\" (Long)"},
        {"Label0Function=live_rpm.engine\nLabel0Decimals=sensor", 7, "Label0Function",
         "\"88888.8\" (Long)"},
        {"Label0Function=sensorcaption_picked", 11, "Label0Function", "\"Umdrehungen\" (Long)"},
        {"Label0Function=text\nLabel0Caption=one two\nLabel0Lines=2", 3, "Label0Caption",
         "it takes "},
        {"Label0Function=obd_status", 25, "Label0Function", "\"Resetting Trouble Codes..\""},
        {"Label0Function=obd_troublecodescount", 3, "Label0Function", "\"128\""},
        {"Label0Function=time", 8, "Label0Function", "\"88:88:88\""},
        {"Label0Function=date", 10, "Label0Function", "\"88.88.8888\""},
        {"Label0Function=APP_Title", ProgramTitle().size(), "Label0Function", "\"Dravik V"},
    };
    for (const auto& row : texts) {
        const int width = static_cast<int>(row.Characters) * kCharacter;
        const auto narrow = WithLabel(row.Keys, width - 1);
        EXPECT_THAT(narrow, ::testing::ElementsAre(
                                AllOf(Field(&SkinError::Key, row.Key),
                                      Field(&SkinError::Description, HasSubstr(row.Text)))))
            << row.Keys << "\n"
            << Lines(narrow);
        EXPECT_EQ(Lines(WithLabel(row.Keys, width)), "") << row.Keys;
    }
}

TEST_F(CheckSkinText, OfAButtonEndsWithItsPicture) {
    for (const auto& [x, findings] : {std::pair(0, 0U), {1, 1U}}) {
        std::string text = SoundSkin::Text();
        const std::string old = "Button0LabelX=\nButton0LabelFunction=sensorunit_rpm.engine";
        text.replace(text.find(old), old.size(),
                     "Button0LabelX=" + std::to_string(x) +
                         "\nButton0LabelFont=Test Half\nButton0LabelFontSize=12\n"
                         "Button0LabelFunction=text\nButton0LabelCaption=12345");
        const auto found = skin_.Check(text);
        EXPECT_EQ(found.size(), findings) << Lines(found);
        for (const SkinError& finding : found) EXPECT_EQ(finding.Key, "Button0LabelCaption");
    }
}

TEST_F(CheckSkinText, InAFontThatIsNotThereIsOneMistake) {
    const auto findings = WithLabel(
        "Label0Function=text\nLabel0Caption=Wide\nLabel1Function=time\nLabel1Color=1\n"
        "Label1Font=test MISSING",
        1, "Test Missing");
    EXPECT_EQ(Lines(findings),
              "test.ini [status] Label0Font: there is no font \"Test Missing\": another one takes "
              "its place\n");
}

TEST_F(CheckSkinText, WhatAFunctionShowsIsMeasuredAsTheLanguageHasIt) {
    skin_.Folder().Write("languages/Long.ini",
                         "[Sensors]\nFilename=long.sensors\n[Words]\n"
                         "Connected=Mit dem Fahrzeug fest verbunden\nOff=Abgeschaltet\n");
    const std::pair<std::string, std::string> rows[] = {
        {"Label0Function=word_obd_status", "Mit dem Fahrzeug fest verbunden."},
        {"Label0Function=word_live_rpm.engine\nLabel0Decimals=0", "Abgeschaltet"}};
    for (const auto& [keys, text] : rows) {
        const int width = static_cast<int>(text.size()) * kCharacter;
        EXPECT_THAT(Lines(WithLabel(keys, width - 1)), HasSubstr("\"" + text + "\" (Long)"));
        EXPECT_EQ(Lines(WithLabel(keys, width)), "");
    }
    EXPECT_EQ(Lines(WithLabel("Label0Function=word_obd_interface", 1)), "") << "nobody knows it";
}

TEST(CheckSkin, LoaderTakesTheNumbersThatTheCheckerTakes) {
    const SoundSkin skin;
    for (const char* number : {"32767", "32768", "-32768", "-32769", "&H7FFF", "&H8000", ""}) {
        std::string text = SoundSkin::Text();
        const std::string old = "Button0LabelX=";
        text.replace(text.find(old), old.size(), "Button0ImageY=" + std::string(number));
        const bool clean = skin.Check(text).empty();
        SkinElement button;
        button.Kind = &kButtonKind;
        button.Section = "mainmenu";
        EXPECT_EQ(ReadElement(button, KeySet::First).has_value(), !clean) << number;
    }
}

// A text that several elements show is told once, and a language without any words is told as such.
TEST(CheckSkin, NamesTheLanguagesThatLackAWord) {
    const SoundSkin skin;
    skin.Folder().Write("languages/test.ini",
                        "[Sensors]\nFilename=test.sensors\n[Words]\nEngine=Motor\n");
    skin.Folder().Write("languages/other.ini", "[Words]\nengine=Moteur\nFuel=Carburant\n");
    skin.Folder().Write("languages/German.ini", "[Words]\nEngine=Motor\nFuel=x\nOil=y\n");
    skin.Folder().Write("languages/old.ini", "[Sensors]\nFilename=test.sensors\n");
    const auto findings = skin.Check(
        SoundSkin::Text() +
        "[engine2]\nLabel0Function=word_Fuel\nLabel0Color=1\nLabel1Function=word_FUEL\n"
        "Label1Color=1\nLabel2Function=word_Engine\nLabel2Color=1\n"
        "Label3Function=word_a=b\nLabel3Color=1\nLabel4Function=word_sensorcaption_none\n"
        "Label4Color=1\nLabel5Function=word_obd_status\nLabel5Color=1\n"
        "Button0Function=openmenu_mainmenu\nButton0Up=key.png\nButton0LabelFunction=word_Oil\n"
        "Button0LabelColor=1\n");
    std::string told;
    for (const SkinError& finding : findings)
        if (!finding.Key.empty()) told += finding.Key + " " + finding.Description + "\n";
    EXPECT_EQ(told,
              "Label0Function test.ini lacks the word \"Fuel\"\n"
              "Label3Function no language file can hold a text with a \"=\"\n"
              "Label4Function the sensor file has no sensor \"none\"\n"
              "Button0LabelFunction old.ini has no section Words\n"
              "Button0LabelFunction other.ini lacks the word \"Oil\"\n"
              "Button0LabelFunction test.ini lacks the word \"Oil\"\n");
}

TEST(CheckSkin, TellsFindingsInTheOrderOfTheFile) {
    std::string text = SoundSkin::Text();
    for (const auto& [old, wrong] : {std::pair{"Gauge0Max=8000", "Gauge0Max=x"},
                                     {"Label0Color=&HFFFFFF", "Label0Color=x"},
                                     {"Button0X= 10", "Button0X=x"}})
        text.replace(text.find(old), std::string_view(old).size(), wrong);
    std::vector<std::string> keys;
    for (const SkinError& finding : SoundSkin().Check(text))
        keys.push_back(finding.Section + " " + finding.Key);
    EXPECT_THAT(keys, ::testing::ElementsAre("status Label0Color", "mainmenu Button0X",
                                             "mainmenu Gauge0Max", "mainmenu Gauge0Max"));
}

TEST(CheckSkin, TwoPagesThatOnlyOpenEachOtherAreBothLost) {
    const auto findings =
        SoundSkin().Check(SoundSkin::Text() +
                          "[east]\nButton0Function=openmenu_west\nButton0Up=key.png\n"
                          "[west]\nButton0Function=openmenu_east\nButton0Up=key.png\n");
    EXPECT_THAT(Lines(findings), HasSubstr("[east]: no command opens"));
    EXPECT_THAT(Lines(findings), HasSubstr("[west]: no command opens"));
}

}  // namespace
}  // namespace dravik
