#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "skin/check/SoundSkin.h"

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
    const char* Said;
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
    {"Button0Up=Key.PNG", "Button0Up=none.png", "mainmenu", "Button0Up", "no such picture"},
    {"Button0Up=Key.PNG", "Button0Up=broken.png", "mainmenu", "Button0Up", "not a picture"},
    {"Button0Up=Key.PNG", "Button0Up=half.png", "mainmenu", "Button0Up", "not a picture"},
    {"Button0Up=Key.PNG", "Button0Up=odd.png", "mainmenu", "Button0Up", "not twice as large"},
    {"Background=key.png\nButton0Function=yes", "Background=no.png\nButton0Function=yes", "query",
     "Background", "no such picture"},
    {"Imagefolder=test", "Imagefolder=tset", "General", "Imagefolder", "no such folder"},
    {"[keys]", "[keys]\nImage0Function=picture", "keys", "Image0Picture", "nothing is seen"},
    {"[keys]", "[keys]\nButton1Function=exit", "keys", "Button1Up", "no size"},
    {"Slider0Background=key.png", "", "engine", "Slider0Background", "no size"},
    {"List0Width=100", "", "engine", "List0Width", "nothing is seen"},
    {"[keys]", "[keys]\nButton0Down=key.png", "keys", "Button0Over",
     "until the pointer moves away"},
    {"Button0X= 10", "Button0X=800", "mainmenu", "Button0X", "off the page of 800 by 480"},
    {"Button0X= 10", "Button0X=10\nButton0Y=-40", "mainmenu", "Button0Y", "off the page"},
    {"List0Width=100", "List0Width=100\nList0X=-100", "engine", "List0X", "off the page"},
    {"Gauge0RadiusEnd=100", "Gauge0RadiusEnd=100\nGauge0Y=580", "mainmenu", "Gauge0Y", "off the"},
    {"Label0Color=&HFFFFFF", "Label0Color=1\nLabel0Y=480", "status", "Label0Y", "off the page"},
    // Numbers, each by its reading rule.
    {"Button0X= 10", "Button0X=ten", "mainmenu", "Button0X", "read as 0"},
    {"Button0X= 10", "Button0X=10px", "mainmenu", "Button0X", "read as 10"},
    {"Button0X= 10", "Button0X=+-5", "mainmenu", "Button0X", "read as 0"},
    {"Button0X= 10", "Button0X=&H10", "mainmenu", "Button0X", "read as 0"},
    {"Button0LabelX=", "Button0LabelX=12px", "mainmenu", "Button0LabelX", "read as 12"},
    {"Button0LabelX=", "Button0LabelX=9999999999", "mainmenu", "Button0LabelX", "32 bits"},
    {"Button0LabelX=", "Button0ImageX=40000", "mainmenu", "Button0ImageX", "not within -32768"},
    {"Gauge0Color=255", "Gauge0Color=red", "mainmenu", "Gauge0Color", "not a number"},
    {"Gauge0Color=255", "", "mainmenu", "Gauge0Color", "required"},
    {"Bargraph0Direction=1", "Bargraph0Direction=left", "mainmenu", "Bargraph0Direction",
     "not a number"},
    {"Width=800", "Width=800 pixels", "General", "Width", "read as 800"},
    {"BackgroundX=40", "BackgroundX=forty", "keys", "BackgroundX", "read as 0"},
    {"Bargraph0Max=100", "Bargraph0Max=0", "mainmenu", "Bargraph0Max", "equal to Min"},
    {"Gauge0Max=8000", "", "mainmenu", "Gauge0Max", "equal to Min"},
    {"Gauge0StretchY=100", "", "mainmenu", "Gauge0StretchY", "flat"},
    {"Label0Caption=", "Label0Alignment=3\nLabel0Caption=", "mainmenu", "Label0Alignment",
     "3 is none of 0 left, 1 right, 2 centre; it counts as 0"},
    {"Button0LabelX=", "Button0LabelAlignment=-1", "mainmenu", "Button0LabelAlignment", "none of"},
    {"[query]", "[query]\nLabel0Alignment=5", "query", "Label0Alignment", "5 is none of"},
    {"[query]", "[query]\nLabel0FontSize=-5", "query", "Label0FontSize", "counts as missing"},
    {"List0Width=100", "List0Width=100\nList0FontSize=-1", "engine", "List0FontSize", "below 0"},
    {"List0Width=100", "List0Width=100\nList0FontStyle=bold", "engine", "List0FontStyle",
     "only when written Bold"},
    {"List0Width=100", "List0Width=100\nList0FontStyle=Thin", "engine", "List0FontStyle",
     "counts as regular"},
    {"List0Width=100", "List0Width=100\nList0RowHeight=-9", "engine", "List0RowHeight", "below 0"},
    {"Label0Color=&HFF00&", "Label0Color=1\nLabel0Decimals=two", "mainmenu", "Label0Decimals",
     "\"two\" is none of the numbers 0 to 6"},
    {"Label0Color=&HFF00&", "Label0Color=1\nLabel0Decimals=7", "mainmenu", "Label0Decimals",
     "0 to 6"},
    {"List0Width=100", "List0Width=100\nChart0Time=-60", "engine", "Chart0Time", "below 0"},
    {"List0Width=100", "List0Width=100\nChart0Mode=3", "engine", "Chart0Mode", "2 points"},
    {"Gauge0Max=8000", "Gauge0Max=8000\nGauge0Style=5", "mainmenu", "Gauge0Style", "none of"},
    // Function texts.
    {"=openbox_keys", "=openbx_keys", "mainmenu", "Button1Function", "\"openbox\"?", 2},
    {"=exit", "=obd_conect", "codes", "Button0Function", "none of connect"},
    {"=exit", "=sensoron", "codes", "Button0Function", "needs an argument"},
    {"=exit", "=quit_now", "codes", "Button0Function", "takes no argument"},
    {"=exit", "=showinfo_Oil_low", "codes", "Button0Function", "one \"_\" too many"},
    {"=exit", "=clr_chart7", "codes", "Button0Function", "charts 0 to 6"},
    {"=exit", "=clr_charts", "codes", "Button0Function", "no chart"},
    {"=exit", "=gofolder_child", "codes", "Button0Function", "takes only the argument parent"},
    {"=exit", "=obd", "codes", "Button0Function", "needs an argument: connect, get"},
    {"=exit", "=clr_chart1", "codes", "Button0Function", "no chart 1: the page has at most 0"},
    {"=exit", "=pause_chart0", "codes", "Button0Function", "no chart 0"},
    {"=openmenu_codes", "=snapshot_1", "engine", "Button1Function", "no chart 1", 2},
    {"Command=obd_connect", "Command=obd_konnect", "mainmenu", "Command", "none of connect"},
    {"=time\n", "=time_hours\n", "status", "Label0Function", "none of hour, minute"},
    {"=time\n", "=sensor_rpm.enginee\n", "status", "Label0Function", "\"rpm.engine\"?"},
    {"=time\n", "=sensorcaption_rpm_engine\n", "status", "Label0Function", "holds a \"_\""},
    {"=time\n", "=obd_05\n", "status", "Label0Function", "none of status"},
    {"=time\n", "=key_enter\n", "status", "Label0Function", "not a whole number"},
    {"=sensorunit_rpm.engine", "=sensorunit_none", "mainmenu", "Button0LabelFunction",
     "no sensor \"none\""},
    {"=obd_connected", "=obd_conected", "status", "Image0Function", "none of connected"},
    {"=obd_connected", "=sensron_speed", "status", "Image0Function", "\"sensoron\"?"},
    {"=obd_connected", "=mouseover_slider0", "status", "Image0Function",
     "mouseover_slider_slider0"},
    {"=obd_05", "=obd_5G", "mainmenu", "Bargraph0Function", "no PID"},
    {"=obd_05", "=obd_4F", "mainmenu", "Bargraph0Function", "00 to 4E"},
    {"=obd_05", "=OBD_05", "mainmenu", "Bargraph0Function", "written in lower case: \"obd_05\""},
    {"=obd_05", "=obd_status", "mainmenu", "Bargraph0Function", "gives a text, not a number"},
    {"=obd_05", "=obd_connected", "mainmenu", "Bargraph0Function", "gives a text, not a number"},
    {"=obd_connected", "=mousover", "status", "Image0Function", "\"mouseover\"?"},
    {"=obd_connected", "=startupp", "status", "Image0Function", "always shown; did you mean"},
    {"=obd_connected", "=pictrue", "status", "Image0Function", "\"picture\"?"},
    {"=obd_connected", "=mouseover_button3", "status", "Image0Function", "no button 3"},
    {"=obd_connected", "=mouseover_slider_slider1", "status", "Image0Function", "no slider 1"},
    {"Button0LabelFunction=sensorunit_rpm.engine", "Button0ImageFunction=mouseover_button3",
     "mainmenu", "Button0ImageFunction", "no button 3"},
    {"=obd_05", "=can_2", "mainmenu", "Bargraph0Function", "no sensor"},
    {"=media", "=medias", "engine", "List0Function", "\"media\"?"},
    {"=yes", "=yess", "query", "Button0Function", "\"yes\"?", 2},
    {"Label0Caption=Welcome", "Label0Caption=" + std::string(64, 'x'), "mainmenu", "Label0Caption",
     "longer than 63"},
    {"Label0Function=text", "Label0Function=date", "mainmenu", "Label0Caption", "Function=text"},
    {"Label0Caption=Welcome", "", "mainmenu", "Label0Caption", "shows nothing"},
    {"=sensorunit_rpm.engine", "=text", "mainmenu", "Button0LabelCaption", "shows nothing"},
    {"=sensorunit_rpm.engine", "=APP_Title", "mainmenu", "Button0LabelFunction", "a label only"},
    // Keys and their numbering.
    {"Gauge0RadiusEnd=100", "Gauge0RadiusEnd=100\nGauge0RadiusStat=10", "mainmenu",
     "Gauge0RadiusStat", "\"RadiusStart\"?"},
    {"BackgroundX=40", "BackgroundX=40\nBackroundY=9", "keys", "BackroundY", "\"BackgroundY\"?"},
    {"[keys]", "[keys]\nButton01X=9", "keys", "Button01X", "such a key"},
    {"Height=480", "Height=480\nMenue2=engine", "General", "Menue2", "no such key"},
    {"=yes", "=yes\nLabel1X=9", "query", "Label1X", "no such key"},
    {"[keys]", "[keys]\nButton2Function=exit", "keys", "Button2Function", "Button1Function"},
    {"[keys]", "[keys]\nButton1X=9\nButton1Y=9", "keys", "Button1X", "Button1Function is missing"},
    {"[keys]", "[keys]\nBackgroundX=1", "keys", "BackgroundX", "more than once"},
    {"[keys]", "[keys]\nImage1001Function=picture\nImage1001X=1", "keys", "Image1001Function",
     "the numbers end at 1000"},
    {"Height=480", "Height=480\nMenu101=engine", "General", "Menu101", "numbers end at 100"},
    {"=yes", "=yes\nButton3Function=ok", "query", "Button3Function", "at most 3 buttons"},
    {"=yes", "=yes\nButon2X=1", "query", "Buton2X", "\"Button2X\"?"},
    {"; a comment", "Button0X=1\nButton0Y=1", "", "Button0X", "before the first section"},
    {"[keys]", "[keys]\nButton0X 10", "keys", "", "\"Button0X 10\" is no key"},
    {"[keys]", "[keys]\n=10", "keys", "", "no key in front of"},
    {"[codes]", "[codecs", "engine", "", "\"[codecs\" is no section", 4},
    {"[status]", "[status]\nCommand=exit", "status", "Command",
     "is not read: the section is shared"},
    {"[status]", "[status]\nBackgroundX=4", "status", "BackgroundX", "the section is shared"},
    {"Menu1=", "Menu2=", "General", "Menu2", "Menu1 is missing", 3},
    {"[engine]\nCommonObjects0", "[engine]\nCommonObjects1", "engine", "CommonObjects1",
     "CommonObjects0 is missing"},
    // Pages.
    {"=openmenu_codes", "=openmenu_codecs", "engine", "Button1Function", "no page \"codecs\"", 2},
    {":exit", ":obd_connect", "engine", "Button0Function", "one \"_\" too many"},
    {"=closebox", "=quit", "keys", "", "no button closes this box"},
    {":exit", ":leave", "engine", "Button0Function", "\"leave\" is not a command"},
    {"Menu1=engine", "Menu1=engin", "General", "Menu1", "no page \"engin\"", 3},
    {"Menu1=engine", "Menu1=Engine", "General", "Menu1", "lower case"},
    {"CommonObjects0=status\nCommand", "CommonObjects0=state\nCommand", "mainmenu",
     "CommonObjects0", "no section \"state\""},
    {"[codes]", "[codes]\nCommonObjects0=codes", "codes", "CommonObjects0", "names itself"},
    {"=exit", "=openmenu_-", "codes", "Button0Function", "\"Menu8\""},
    {"=exit", "=openmenu_+", "codes", "Button0Function", "\"mediaplayer\""},
    {"", "[lost]\nCommonObjects0=shared\n[shared]\nLabel0Function=date\nLabel0Color=1\n", "lost",
     "", "no command opens"},
    {"", "[codes]\nButton0X=1\n", "codes", "", "more than one such section"},
    {"Command=obd_connect", "Command=openmenu_mainmenu", "mainmenu", "Command", "opens the page"},
    {"[keys]", "[keys]\nCommand=openbox_keys", "keys", "Command", "opens the page itself"},
    {"Button0Function=yes", "Button0Function=no", "query", "Button0Function", "answers \"yes\""},
    {"Button1Function=no\n", "Button1Function=ok\n", "query", "Button0Function", "answers \"no\""},
    {"", "[info]\nBackground=key.png\n", "info", "Button0Function", "answers \"ok\""},
    {"", "[warning]\nBackground=key.png\n", "warning", "Button0Function", "answers \"ok\""},
    // What a page can hold.
    {"[codes]", "[codes]\n" + Elements("Label", 0, 41, "date"), "codes", "", "42 elements"},
    {"Label0Function=text", Elements("Label", 1, 40, "date") + "Label0Function=text", "mainmenu",
     "", "42 elements of the kind Label"},
    {"[keys]", "[keys]\n" + Elements("Label", 0, 39, "date"), "keys", "",
     "42 elements of the kind Label with its shared sections and the page \"mainmenu\""},
    {"[codes]", "[codes]\n" + Gauges(0, 17), "codes", "", "18 elements of the kind Gauge"},
    {"[codes]", "[codes]\n" + Elements("Chart", 0, 7, "sensor_speed"), "codes", "",
     "8 elements of the kind Chart"},
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

TEST(CheckSkin, LoaderTakesTheNumbersThatTheCheckerTakes) {
    const SoundSkin skin;
    for (const char* number : {"32767", "32768", "-32768", "-32769", "&H7FFF", "&H8000", ""}) {
        std::string text = SoundSkin::Text();
        const std::string old = "Button0LabelX=";
        text.replace(text.find(old), old.size(), "Button0ImageY=" + std::string(number));
        const bool clean = skin.Check(text).empty();
        SkinElement button;
        button.Section = "mainmenu";
        EXPECT_EQ(ReadElement(button, KeySet::First).has_value(), !clean) << number;
    }
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
