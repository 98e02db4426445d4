#include <cmath>
#include <limits>

#include "SkinFixture.h"
#include "lists/basFunctions.h"
#include "obd/basOBD.h"
#include "support/PaintWatch.h"
#include "support/TestClock.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;

class RefreshTest : public SkinTest {
 protected:
    static void AddSensor(const char* name, int pid, std::int32_t raw) {
        SensorRecord& sensor = basGlobal.Sensors[static_cast<std::size_t>(basGlobal.SensorCount++)];
        char source[8];
        std::snprintf(source, sizeof source, "obd_%02X", static_cast<unsigned>(pid));
        sensor = {};
        sensor.Function = name;
        sensor.Source = source;
        sensor.Factor = 1;
        sensor.Active = true;
        basGlobal.LiveRaw[static_cast<std::size_t>(pid)] = raw;
    }
    static void FillList(int slot, int entries) {
        ListSlot& list = *FindList(slot);
        ClearList(list);
        for (int i = 1; i <= entries; ++i)
            AddListEntry(list, {"entry " + std::to_string(i), i == 2 ? "mp3" : "none", ""});
    }
};

TEST_F(RefreshTest, ButtonsComeBeforeLabelsAndTheLastCommandIsShownOnce) {
    Start(
        "[mainmenu]\nButton0Function=a\nButton0Up=b64.png\nButton0LabelFunction=Function\n"
        "Label0Function=Function\nLabel0Color=0\n[labels]\nLabel0Function=Function\n"
        "Label0Color=0\nLabel1Function=function\nLabel1Color=0\n");
    ExecuteCommand("Closebox_X");
    Refresh();
    EXPECT_EQ(Button(0).LabelCaption(), "closebox_x");
    EXPECT_EQ(LabelShown(0), "");
    Refresh();
    EXPECT_EQ(Button(0).LabelCaption(), "");
    Load("labels");
    ExecuteCommand("nothing");
    Refresh();
    EXPECT_EQ(LabelShown(0), "nothing");
    EXPECT_EQ(LabelShown(1), "");
}

TEST_F(RefreshTest, WordsFollowTheLanguageAndKeepTheirCapitals) {
    folder.Write("languages/one.ini", "[Words]\nEngine=Motor\n");
    folder.Write("languages/two.ini", "[Words]\nEngine=Moteur\nFuel Rail=Rampe\n");
    Start(
        "[mainmenu]\nButton0Function=a\nButton0Up=b64.png\nButton0LabelFunction=word_Engine\n"
        "Label0Function=Word_Fuel Rail\nLabel0Color=0\n",
        QSize(800, 480), "Language=one\n");
    Refresh();
    EXPECT_EQ(Button(0).LabelCaption() + "," + LabelShown(0), "Motor,Fuel Rail");
    basGlobal.LanguageFile = folder / "languages/two.ini";
    Refresh();
    EXPECT_EQ(Button(0).LabelCaption() + "," + LabelShown(0), "Moteur,Rampe");
}

TEST_F(RefreshTest, StatusPicturesFollowTheirFunctionFromTheStart) {
    Picture("red.png", 20, 20, Qt::red);
    Start(
        "[mainmenu]\nImage0Function=OBD_Malfunction\nImage0Picture=red.png\n"
        "Image1Function=background\nImage1Picture=red.png\nImage1X=100\n"
        "Image2Function=sensoroff_rpm\nImage2Picture=red.png\nImage2X=200\n"
        "Image3Function=obd_nothing\nImage3Picture=red.png\nImage3X=300\n"
        "Button0Function=a\nButton0Up=b64.png\nButton0Y=100\nButton0Image=red.png\n"
        "Button0ImageX=10\nButton0ImageY=10\nButton0ImageFunction=obd_malfunction\n"
        "Button1Function=a\nButton1Up=b64.png\nButton1Y=100\nButton1X=100\n"
        "Button1Image=red.png\n");
    AddSensor("rpm", 12, 0);
    for (const bool lamp : {true, false, true}) {
        basGlobal.MilOn = lamp;
        basGlobal.Sensors[0].Active = lamp;
        if (lamp)
            Load("mainmenu");
        else
            Refresh();
        EXPECT_EQ(Pixel(10, 10) == QColor(Qt::red), lamp);
        EXPECT_EQ(Pixel(110, 10), QColor(Qt::red)) << "a fixed picture";
        EXPECT_EQ(Pixel(210, 10) == QColor(Qt::red), !lamp);
        EXPECT_NE(Pixel(310, 10), QColor(Qt::red));
        EXPECT_EQ(Pixel(15, 115) == QColor(Qt::red), lamp);
        EXPECT_EQ(Pixel(105, 105), QColor(Qt::red)) << "a picture without a function";
    }
}

TEST_F(RefreshTest, HighlightFollowsTheSelection) {
    Picture("glow.png", 10, 10, Qt::red);
    Picture("frame.png", 64, 64, Qt::transparent);
    Start(
        "[mainmenu]\nImage0Function=Mouseover\nImage0Picture=glow.png\n"
        "Button0Function=a\nButton0Up=frame.png\nButton0X=10\nButton0Y=10\n"
        "Slider0Function=x\nSlider0Background=frame.png\nSlider0X=200\nSlider0Y=100\n");
    const auto shown = [this](int x, int y) { return Pixel(x, y) == QColor(Qt::red); };
    Refresh();
    EXPECT_FALSE(shown(12, 12));
    Button(0).setFocus();
    Refresh();
    EXPECT_TRUE(shown(11, 11) && shown(73, 73) && !shown(75, 75)) << "as large as the button";
    SliderAt(0).setFocus();
    Refresh();
    EXPECT_TRUE(!shown(12, 12) && shown(201, 101) && shown(263, 163));
    Screen().Page()->setFocus();
    Refresh();
    EXPECT_FALSE(shown(12, 12) || shown(201, 101));
}

TEST_F(RefreshTest, ALabelTakesTheDecimalsOfTheSensorThatIsPicked) {
    Start("[mainmenu]\nLabel0Function=word_sensor_picked\nLabel0Color=0\nLabel0Decimals=Sensor\n");
    const std::pair<std::optional<int>, const char*> sensors[] = {
        {0, "4000"}, {2, "4000.00"}, {std::nullopt, "4000.0"}};
    AddSensor("rpm", 12, 4000);
    basGlobal.PickedSensor = "rpm";
    Load("mainmenu");
    for (const auto& [decimals, shown] : sensors) {
        basGlobal.Sensors[0].Decimals = decimals;
        Refresh();
        EXPECT_EQ(LabelShown(0), shown);
    }
}

TEST_F(RefreshTest, ValuesReachTheirElementsAndMarkTheirPids) {
    Picture("track.png", 100, 20, Qt::black);
    Start(
        "[mainmenu]\n[dash]\nSlider0Function=obd_05\nSlider0Background=track.png\n"
        "Slider0Direction=1\nBargraph0Function=sensor_rpm\nBargraph0Background=track.png\n"
        "Bargraph0Direction=1\nBargraph0Max=8000\nGauge0Function=sensor_rpm\nGauge0Max=8000\n"
        "Gauge0AngleStart=45\nGauge0AngleEnd=315\nGauge0RadiusEnd=100\nGauge0StretchY=100\n"
        "Gauge0X=300\nGauge0Y=300\nGauge0Color=255\nLabel0Function=Sensor_RPM\nLabel0Color=0\n"
        "Label1Function=sensor_rpm\nLabel1Color=0\nLabel1Decimals=1\n"
        "Gauge1Function=nonsense\nGauge1Color=0\nGauge1Max=9\nGauge2Function=sensor_rpm\n"
        "Gauge2Color=0\nGauge2Min=5\nGauge2Max=5\nBargraph1Function=sensor_rpm\n"
        "Bargraph1Background=track.png\nBargraph1Direction=0\nBargraph1Min=5\nBargraph1Max=5\n"
        "Chart0Function=sensor_rpm\n");
    AddSensor("rpm", 12, 4000);
    basGlobal.LiveRaw[5] = 40;
    Load("dash");
    for (const bool wanted : basGlobal.PidWanted) EXPECT_FALSE(wanted) << "nothing yet";
    Refresh();
    for (std::size_t pid = 0; pid < kPidCount; ++pid)
        EXPECT_EQ(basGlobal.PidWanted[pid], pid == 5 || pid == 12) << pid;
    EXPECT_EQ(LabelShown(0), "4000");
    EXPECT_EQ(LabelShown(1), "4000.0");
    EXPECT_EQ(SliderAt(0).Position(), 40);
    EXPECT_EQ(Bargraph(0).Position(), 50);
    const auto needle = Element(KindOf("Gauge"), 0).Item->Covers();
    EXPECT_NEAR(needle.center().x(), 300, 1) << "half way is straight up";
    EXPECT_NEAR(needle.top(), 200, 3);
    EXPECT_TRUE(Element(KindOf("Gauge"), 1).Item->Covers().isEmpty())
        << "its function names nothing";
    EXPECT_TRUE(Element(KindOf("Gauge"), 2).Item->Covers().isEmpty()) << "equal bounds";
    EXPECT_EQ(basGlobal.Charts[0].Filled, 1);

    basGlobal.Sensors[0].Factor = std::numeric_limits<float>::infinity();
    basGlobal.LiveRaw[5] = 60;
    Refresh();
    EXPECT_EQ(Element(KindOf("Gauge"), 0).Item->Covers(), needle) << "no finite value";
    EXPECT_EQ(Bargraph(0).Position(), 50);
    EXPECT_EQ(SliderAt(0).Position(), 60) << "the others go on";
    Load("mainmenu");
    Refresh();
    for (const bool wanted : basGlobal.PidWanted) EXPECT_FALSE(wanted);
}

TEST_F(RefreshTest, AValueThatWasNeverReceivedIsShownAsUnknown) {
    Picture("track.png", 100, 20, Qt::white);
    Start(
        "[mainmenu]\nLabel0Function=live_rpm\nLabel0Color=0\nLabel0Decimals=1\n"
        "Gauge0Function=sensor_rpm\nGauge0Known=1\nGauge0Max=8000\nGauge0AngleStart=45\n"
        "Gauge0AngleEnd=315\nGauge0RadiusEnd=100\nGauge0StretchY=100\nGauge0X=300\n"
        "Gauge0Y=300\nGauge0Color=255\nBargraph0Function=obd_0C\nBargraph0Known=1\n"
        "Bargraph0Background=track.png\nBargraph0Direction=1\nBargraph0Max=8000\n"
        "Chart0Function=sensor_rpm\nChart0Known=1\nImage0Function=known_rpm\n"
        "Image0Picture=b64.png\nGauge1Function=time_second\nGauge1Known=1\nGauge1Max=60\n"
        "Gauge1Color=255\nGauge1RadiusEnd=50\nGauge1AngleEnd=90\nGauge1StretchY=100\n");
    AddSensor("rpm", 12, 4000);
    basGlobal.ConnState = kReceivingData;
    Load("mainmenu");
    const auto expect = [this](const std::string& text, bool known) {
        Refresh();
        EXPECT_EQ(LabelShown(0), text);
        EXPECT_EQ(Element(KindOf("Gauge"), 0).Item->Covers().isEmpty(), !known) << text;
        EXPECT_EQ(Bargraph(0).Dim(), !known) << text;
        EXPECT_EQ(Element(KindOf("Image"), 0).Item->Visible(), known) << text;
    };
    expect("\u2013", false);
    EXPECT_FALSE(Element(KindOf("Gauge"), 1).Item->Covers().isEmpty()) << "not the vehicle's";
    EXPECT_EQ(basGlobal.Charts[0].Filled, 0);
    EXPECT_TRUE(basGlobal.PidWanted[12]) << "or it would stay unknown";
    HandlePidReply("41 0C 0F A0\r\r>");
    expect("4000.0", true);
    EXPECT_EQ(Bargraph(0).Position(), 50);
    EXPECT_EQ(basGlobal.Charts[0].Filled, 1);
    basGlobal.ConnState = kNotConnected;
    expect("\u2013", false);
    basGlobal.ConnState = kReceivingData;
    AdvanceHighResTimer(5.1);
    expect("\u2013", false);
    EXPECT_TRUE(std::isnan(basGlobal.Charts[0].LastValue));
    basGlobal.Sensors[0].Active = false;
    Refresh();
    EXPECT_EQ(LabelShown(0), "Off");
}

TEST_F(RefreshTest, ALoadedElementStartsAtItsMinimum) {
    Picture("track.png", 100, 100, Qt::black);
    const std::string look =
        "Background=track.png\nBargraph0Background=track.png\nBargraph1Background=track.png\n"
        "Bargraph0Direction=1\nBargraph1Direction=0\nSlider0Direction=1\n";
    Start(
        "[mainmenu]\nSlider0Function=obd_05\nBargraph0Function=obd_05\nBargraph0Max=100\n"
        "Bargraph1Function=obd_05\nBargraph1Max=100\nSlider0" +
        look +
        "[mute]\nSlider0Function=x\nBargraph0Function=x\nBargraph0Min=-1000\n"
        "Bargraph0Max=900\nBargraph1Function=x\nBargraph1Min=5\nBargraph1Max=5\nSlider0" +
        look);
    basGlobal.LiveRaw[5] = 40;
    Load("mainmenu");
    Refresh();
    EXPECT_EQ(SliderAt(0).Position(), 40);
    EXPECT_EQ(Bargraph(0).Position(), 40);
    EXPECT_EQ(Bargraph(1).Position(), 60);
    Load("mute");
    Refresh();
    EXPECT_EQ(SliderAt(0).Position(), 0);
    EXPECT_EQ(Bargraph(0).Position(), 0);
    EXPECT_EQ(Bargraph(1).Position(), 100) << "empty, though equal bounds give no scale";
}

TEST_F(RefreshTest, TheTickerRunsWhileTheListShowsACode) {
    Start("[mainmenu]\n[codes]\nList0Function=troublecodes\nList0Width=100\nList0Height=100\n");
    const auto read = [](std::int16_t codes) {
        basGlobal.DtcCount = codes;
        ShowTroubleCodes();
        return basGlobal.tiDTCScroll.Enabled();
    };
    basGlobal.DtcList[0] = "P0133";
    EXPECT_FALSE(read(1)) << "not on this page";
    Load("codes");
    EXPECT_TRUE(basGlobal.tiDTCScroll.Enabled());
    EXPECT_FALSE(read(0));
    basGlobal.DtcCount = 1;  // counted by the interface, but not read
    Load("codes");
    EXPECT_FALSE(basGlobal.tiDTCScroll.Enabled()) << "\"No Errors\" stands still";
    EXPECT_TRUE(read(1)) << "read while the page is open";
    Load("mainmenu");
    EXPECT_FALSE(basGlobal.tiDTCScroll.Enabled());
}

TEST_F(RefreshTest, ChartsStartEmptyOnEachPage) {
    Start(
        "[mainmenu]\nChart0Function=sensor_rpm\nChart1Function=sensor_rpm\n[one]\n"
        "Chart0Function=sensor_rpm\n[bare]\n[curve]\nCommonObjects0=one\n");
    AddSensor("rpm", 12, 100);
    Refresh();
    EXPECT_EQ(basGlobal.ChartCount, 2);
    EXPECT_EQ(basGlobal.Charts[1].Filled, 1);
    ExecuteCommand("pause_chart1");
    ExecuteCommand("clr_chartall");
    Refresh();
    EXPECT_EQ(basGlobal.Charts[0].Filled, 1);
    EXPECT_EQ(basGlobal.Charts[1].Filled, 0) << "paused";
    Load("bare", true);
    EXPECT_EQ(basGlobal.Charts[0].Filled, 1) << "a box without a chart leaves them alone";
    EXPECT_TRUE(basGlobal.Charts[1].Paused);
    Load("curve", true);
    EXPECT_EQ(basGlobal.Charts[0].Filled, 0) << "a box with one does not";
    EXPECT_EQ(basGlobal.ChartCount, 3);
    Refresh();
    Load("one");
    EXPECT_EQ(basGlobal.ChartCount, 1);
    EXPECT_EQ(basGlobal.Charts[0].Filled, 0);
    EXPECT_FALSE(basGlobal.Charts[1].Paused);
}

TEST_F(RefreshTest, ListsShowTheirSlotAndTheLastOneIsCurrent) {
    Picture("track.png", 100, 20, Qt::black);
    Picture("knob.png", 10, 20, Qt::white);
    Picture("mp3.png", 16, 16, Qt::red);
    Start(
        "[mainmenu]\nList0Function=playlist\nList0Width=200\nList0Height=100\n"
        "List1Function=Media\nList1X=300\nList1Width=200\nList1Height=100\n"
        "Slider0Function=ListView\nSlider0Background=track.png\nSlider0Bar=knob.png\n"
        "Slider0Direction=1\nSlider0X=0\nSlider0Y=200\nLabel0Function=listentry_0\n"
        "Label0Color=0\nImage0Function=ListEntry\nImage0X=300\nImage0Y=300\n"
        "Image0Width=16\nImage0Height=16\n[bare]\n");
    const int media = ListSlotByName("media");
    FillList(media, 11);
    EXPECT_EQ(basGlobal.CurrentList, media);
    EXPECT_EQ(List(0).Slot(), FindList(ListSlotByName("playlist")));
    EXPECT_EQ(ListPageSize(), 100 / List(1).RowHeight());
    Refresh();
    EXPECT_EQ(LabelShown(0), "entry 1");
    EXPECT_EQ(SliderAt(0).Position(), 0);

    Press(5, 210);
    Move(30, 210);
    Move(50, 210);
    Refresh();
    EXPECT_EQ(FindList(media)->Selected, 6) << "half way along the track";
    EXPECT_EQ(LabelShown(0), "entry 6");
    Release(790, 210);
    Refresh();
    EXPECT_EQ(FindList(media)->Selected, 11);
    EXPECT_EQ(SliderAt(0).Position(), 90);
    SelectListEntry(*FindList(media), 2);
    Refresh();
    EXPECT_EQ(Pixel(308, 308), QColor(Qt::red)) << "the picture of the selected entry";
    EXPECT_EQ(SliderAt(0).Position(), 9);
    Load("bare");
    EXPECT_EQ(CurrentList(), nullptr);
    EXPECT_EQ(ListPageSize(), 0);
}

TEST_F(RefreshTest, AnEmptyListSaysWhyInTheWordsOfTheSkin) {
    Start("[mainmenu]\n" +
          Repeated("List", 3, "troublecodes", {"Width=200", "Height=100", "FontColor=&HFFFFFF"}) +
          "List1Function=media\nList1X=300\nList2X=600\n"
          "List0EmptyText=None\nList0UnreadText=Not read yet\nList1EmptyText=OBD_Status\n");
    basGlobal.ConnState = kNotConnected;
    const auto shown = [this](int list) { return Element(kListKind, list).Shown; };
    const auto bright = [this](int x) {
        const QImage image = window->grab(QRect(x, 0, 200, 100)).toImage();
        int count = 0;
        for (int place = 0; place < 200 * 100; ++place)
            count += image.pixelColor(place % 200, place / 200).green() > 100;
        return count > 0;
    };
    Refresh();
    EXPECT_EQ(shown(0), "Not read yet");
    EXPECT_EQ(shown(1), "Not Connected.") << "a label function";
    EXPECT_EQ(shown(2), "");
    EXPECT_TRUE(bright(0) && bright(300));
    EXPECT_FALSE(bright(600)) << "nothing without the key";
    basGlobal.CodesRead = true;
    Refresh();
    EXPECT_EQ(shown(0), "None");
    ShowTroubleCodes();
    SelectListEntry(basGlobal.Lists[kCodeListSlot], 1);
    Refresh();
    EXPECT_EQ(shown(0), "None") << "in place of the one entry that says so";
    EXPECT_EQ(shown(2), "No Errors");
    EXPECT_TRUE(bright(0));
    basGlobal.DtcCount = 1;
    basGlobal.DtcList[0] = "P0118";
    ShowTroubleCodes();
    SelectListEntry(basGlobal.Lists[kCodeListSlot], 1);
    Refresh();
    EXPECT_THAT(shown(0), ::testing::StartsWith("P0118: "));
}

TEST_F(RefreshTest, OnlyWhatChangedIsPainted) {
    Picture("track.png", 100, 20, Qt::black);
    Picture("fill.png", 100, 20, Qt::red);
    Start("[mainmenu]\n" + ButtonKeys({{"a", 0, 0}, {"b", 100, 0}}) +
          "Button0Image=track.png\nButton0ImageFunction=obd_connected\n"
          "Button1LabelFunction=sensor_rpm\n"
          "Slider0Function=sensor_rpm\nSlider0Background=track.png\nSlider0Y=300\n"
          "Slider0Direction=1\nBargraph0Function=sensor_rpm\nBargraph0Background=track.png\n"
          "Bargraph0Direction=0\nBargraph0Max=90\nBargraph0Y=340\n"
          "Slider0Progress=fill.png\nBargraph0Progress=fill.png\nGauge0Function=sensor_rpm\n"
          "Gauge0X=600\nGauge0Y=200\nGauge0Max=100\nGauge0AngleEnd=90\nGauge0RadiusEnd=50\n"
          "Gauge0Color=255\nGauge0StretchY=100\nList0Function=media\nList0X=200\nList0Y=300\n"
          "List0Width=100\nList0Height=100\nLabel0Function=obd_status\nLabel0X=300\nLabel0Y=10\n"
          "Label0Width=200\nLabel0Height=30\nLabel0Color=255\nLabel1Function=sensor_rpm\n"
          "Label1X=300\nLabel1Y=50\nLabel1Width=200\nLabel1Height=30\nLabel1Color=255\n"
          "Textbox0Function=smstext\nTextbox0Y=400\nTextbox0Width=100\nTextbox0Height=30\n"
          "Image0Function=mouseover\nImage0Picture=track.png\nImage1Function=obd_malfunction\n"
          "Image1Picture=track.png\nImage1X=600\nImage1Y=400\nChart0Function=sensor_rpm\n");
    AddSensor("rpm", 12, 20);
    FillList(ListSlotByName("media"), 5);
    basGlobal.Charts[0].Paused = true;
    Finish();
    Screen().Page()->setFocus();  // a text cursor blinks
    Refresh();
    PaintWatch paints(window.get());
    for (int i = 0; i < 50; ++i) Refresh();
    EXPECT_TRUE(paints.Take().isEmpty()) << "an idle page";

    basGlobal.ConnState = kConnecting;
    Refresh();
    EXPECT_EQ(paints.Take(), QRegion(300, 10, 200, 30));
    basGlobal.MilOn = true;
    Refresh();
    EXPECT_EQ(paints.Take(), QRegion(600, 400, 100, 20));

    // Where each element lies; the rest of the page stays as it is.
    QRegion allowed(QRect(300, 50, 200, 30));
    allowed += QRect(100, 0, 64, 64);
    allowed += QRect(0, 300, 100, 20);
    allowed += QRect(0, 340, 100, 20);
    allowed += QRect(540, 140, 120, 120);
    basGlobal.LiveRaw[12] = 30;
    Refresh();
    const QRegion painted = paints.Take();
    EXPECT_TRUE(painted.subtracted(allowed).isEmpty());
    for (const QRect& part : allowed) EXPECT_TRUE(painted.intersects(part)) << part.x();
    Load("mainmenu");
    EXPECT_FALSE(paints.Take().isEmpty()) << "a new page";
}

TEST_F(RefreshTest, AChartIsPaintedWhenAColumnIsNew) {
    Start("[mainmenu]\nChart0Function=sensor_rpm\nChart0Time=1000000\n");
    AddSensor("rpm", 12, 20);
    Refresh();
    PaintWatch paints(window.get());
    for (int value = 0; value < 20; ++value) {
        basGlobal.LiveRaw[12] = value;
        Refresh();
    }
    EXPECT_TRUE(paints.Take().isEmpty()) << "all within one column";
    ExecuteCommand("clr_chart0");
    EXPECT_FALSE(paints.Take().isEmpty());
    Refresh();
    EXPECT_EQ(paints.Take().boundingRect().topLeft(), QPoint(0, 0));
}

}  // namespace
}  // namespace dravik
