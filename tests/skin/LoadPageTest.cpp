#include <QApplication>
#include <QMouseEvent>

#include "SkinFixture.h"

namespace dravik {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class LoadPageTest : public SkinTest {};

TEST_F(LoadPageTest, SectionsAndKindsComeInOrderAndAFaultEndsTheLoadThere) {
    const std::string all =
        "Button0Function=a\nSlider0Function=a\nBargraph0Function=a\nBargraph0Direction=1\n"
        "Gauge0Function=a\nGauge0Color=1\nList0Function=media\nTextbox0Function=smstext\n"
        "Image0Function=a\nChart0Function=a\nLabel0Function=a\n";
    Start("[mainmenu]\nCommonObjects0=Shared\n" + all + "Label0Color=red\n[Shared]\n" + all +
          "Label0Color=0\n");
    EXPECT_THAT(errors, ElementsAre("Skin Config Error test.ini [mainmenu] Label0Color\r\n"
                                    "not a number that fits: \"red\""));
    int built[] = {2, 2, 2, 2, 2, 1, 1, 1, 1};
    int* expected = built;
    for (const SkinKind* kind : SkinKinds()) EXPECT_EQ(Count(*kind), *expected++) << kind->Word;
    EXPECT_EQ(Screen().Elements(kButtonKind)[0].Section, "Shared");
    EXPECT_EQ(Screen().Elements(kButtonKind)[1].Section, "mainmenu");
    EXPECT_FALSE(Button(1).isHidden()) << "what was built stays";
}

TEST_F(LoadPageTest, NumbersAreConsecutiveAndEndAtOneThousand) {
    Start(
        "[gap]\nButton1Function=b\n[empty]\nButton0Function=a\nButton1Function=\n"
        "Button2Function=c\n[many]\n" +
        Repeated("Button", 1003, "exit"));
    const std::pair<const char*, int> rows[] = {{"gap", 0}, {"empty", 1}, {"many", 1001}, {"?", 0}};
    for (const auto& [page, count] : rows) {
        EXPECT_THAT(Load(page), IsEmpty()) << page;
        EXPECT_EQ(Count(kButtonKind), count) << page;
    }
}

TEST_F(LoadPageTest, SharedSections) {
    std::string full = "[full]\nButton0Function=own\n";
    for (int i = 0; i <= 101; ++i) full += "CommonObjects" + std::to_string(i) + "=one\n";
    Start(
        "[one]\nButton0Function=shared\n[late]\nCommonObjects1=one\nButton0Function=own\n"
        "[self]\nCommonObjects0=self\nButton0Function=own\n"
        "[gone]\nCommonObjects0=nowhere\nButton0Function=own\n" +
        full);
    const struct {
        const char* Page;
        int Buttons;
        const char* Last;
    } rows[] = {
        {"late", 1, "own"}, {"self", 2, "own"}, {"gone", 1, "own"}, {"full", 101, "shared"}};
    for (const auto& row : rows) {
        EXPECT_THAT(Load(row.Page), IsEmpty());
        ASSERT_EQ(Count(kButtonKind), row.Buttons) << row.Page;
        EXPECT_EQ(Screen().Elements(kButtonKind).back().Function, row.Last) << row.Page;
    }
}

TEST_F(LoadPageTest, ControlsAreReusedGrownAndHiddenButNeverDestroyed) {
    const auto page = [](int n) {
        return Repeated("Button", n, "exit", {"Up=b64.png"}) +
               Repeated("Slider", n, "x", {"Background=b64.png"}) +
               Repeated("Bargraph", n, "x", {"Direction=0"}) + Repeated("List", n, "media") +
               Repeated("Textbox", n, "smstext");
    };
    Start("[mainmenu]\n[ten]\n" + page(10) + "[three]\n" + page(3));
    Load("ten");
    const auto controls = [this] {
        std::vector<const QWidget*> all;
        for (const SkinKind* kind : SkinKinds()) {
            for (int i = 0; const QWidget* control = Screen().Control(*kind, i); ++i)
                all.push_back(control);
        }
        return all;
    };
    const auto ten = controls();
    ASSERT_EQ(ten.size(), 50U) << "of five kinds";
    for (const auto& [name, used] : {std::pair{"three", 3}, {"ten", 10}, {"mainmenu", 0}}) {
        Load(name);
        EXPECT_EQ(controls(), ten);
        for (const SkinKind* kind : SkinKinds()) {
            for (int i = 0; const QWidget* control = Screen().Control(*kind, i); ++i)
                EXPECT_EQ(control->isHidden(), i >= used) << name << kind->Word << i;
        }
    }
}

TEST_F(LoadPageTest, ControlsLieOneAboveTheOtherByKind) {
    const std::string at = "X=100\nWidth=64\nHeight=64\n";
    Start(
        "[mainmenu]\nButton0Function=a\nButton0Up=b64.png\nButton0X=100\n"
        "[more]\nBargraph0Function=x\nBargraph0Background=b64.png\nBargraph0Direction=1\n"
        "Bargraph0X=100\nSlider0Function=x\nSlider0Background=b64.png\nSlider0X=100\n"
        "Button0Function=a\nButton0Up=b64.png\nButton0X=100\n"
        "[text]\nCommonObjects0=more\nTextbox0Function=smstext\nTextbox0X=100\n"
        "Textbox0Width=64\nTextbox0Height=64\n"
        "[list]\nCommonObjects0=text\nCommonObjects1=more\nList0Function=media\nList0X=100\n"
        "List0Width=64\nList0Height=64\n");
    const auto top = [this] { return window->childAt(132, 32); };
    Load("more");
    EXPECT_EQ(top(), &Button(0)) << "the slider came later, yet lies below";
    Load("text");
    EXPECT_EQ(top(), &Textbox(0));
    Load("list");
    EXPECT_EQ(top(), &List(0));
    Load("text");
    EXPECT_EQ(top(), &Textbox(0));
}

TEST_F(LoadPageTest, PreviousPageChangesOnlyWithTheName) {
    Start("[a]\n[b]\n[box]\n");
    const struct {
        const char* Page;
        bool Box;
        const char *Current, *Previous;
    } rows[] = {{"a", false, "a", "mainmenu"}, {"b", false, "b", "a"}, {"b", false, "b", "a"},
                {"box", true, "b", "a"},       {"b", false, "b", "a"}, {"a", false, "a", "b"}};
    for (const auto& row : rows) {
        Load(row.Page, row.Box);
        EXPECT_EQ(basGlobal.CurrentMenu, row.Current);
        EXPECT_EQ(basGlobal.PreviousMenu, row.Previous);
        EXPECT_EQ(basGlobal.CurrentBox, row.Box ? row.Page : "");
    }
}

TEST_F(LoadPageTest, FreezePagesNeedAFreezeFrame) {
    Start("[freezeframe]\nCommand=sensoron_x\n[Freeze]\n[other]\n");
    const struct {
        std::int16_t Codes;
        const char *From, *To;
        bool Built;
    } rows[] = {{0, "other", "freezeframe", false},
                {1, "other", "freezeframe", true},
                {0, "freezeframe", "my-freeze", true},
                {0, "other", "Freeze", true},
                {0, "other", "deepfreeze2", false}};
    for (const auto& row : rows) {
        basGlobal.DtcCount = 1;
        Load(row.From);
        basGlobal.DtcCount = row.Codes;
        basGlobal.LastCommand.clear();
        Load(row.To);
        EXPECT_EQ(basGlobal.CurrentMenu, row.Built ? row.To : row.From) << row.To;
        const bool commandRan = !basGlobal.LastCommand.empty();
        EXPECT_EQ(commandRan, row.Built && row.To == std::string("freezeframe")) << row.To;
    }
}

TEST_F(LoadPageTest, CommandRunsBeforeTheElementsAreBuilt) {
    Start(
        "[mainmenu]\nCommand=sensoron_oil\nButton0Function=a\nButton0Up=b64.png\n"
        "Button0ImageFunction=sensoron_oil\nButton0Image=b64.png\n");
    basGlobal.SensorCount = 1;
    basGlobal.Sensors[0].Function = "oil";
    basGlobal.Sensors[0].Active = false;
    Load("mainmenu");
    EXPECT_TRUE(Button(0).ImageVisible());
}

TEST_F(LoadPageTest, PagesThatOpenThemselvesOrEachOtherComeToAnEnd) {
    Start(
        "[self]\nCommand=openmenu_self\nButton0Function=a\n"
        "[ping]\nCommand=openmenu_pong\nButton0Function=a\n"
        "[pong]\nCommand=openmenu_ping\nButton0Function=a\nButton1Function=b\n"
        "[box]\nCommand=openbox_box\nButton0Function=c\n");
    Load("self");
    EXPECT_EQ(Count(kButtonKind), 1);
    Load("ping");
    EXPECT_EQ(basGlobal.CurrentMenu, "ping") << "the page asked for is built last";
    EXPECT_EQ(Count(kButtonKind), 1);
    Load("box", true);
    EXPECT_TRUE(BoxOpen());
    CloseBox();
    EXPECT_EQ(basGlobal.CurrentMenu, "ping");
}

TEST_F(LoadPageTest, BoxLiesOverThePageAndTakesItsClicks) {
    Picture("red.png", 64, 64, Qt::red);
    Start("[mainmenu]\n" + ButtonKeys({{"sensoron_page", 10, 10}, {"openbox_box", 200, 10}}) +
          "[box]\nBackgroundX=300\nBackgroundY=100\n" +
          ButtonKeys({{"sensoron_box", 5, 7}, {"exit", 300, 250}}) +
          "Button0Over=red.png\nButton0Down=red.png\n[bare]\n" + ButtonKeys({{"x", 0, 0}}));
    Finish();
    Click(230, 40);
    ASSERT_TRUE(BoxOpen());
    EXPECT_EQ(basGlobal.CurrentBox, "box");
    ASSERT_EQ(Count(kButtonKind), 4) << "its elements come after those of the page";
    EXPECT_EQ(Button(2).mapTo(window.get(), QPoint()), QPoint(305, 107));
    EXPECT_FALSE(Button(2).HoverOff()) << "a box has all its pictures at once";
    EXPECT_FALSE(Button(2).SkinDown().IsNull());

    basGlobal.LastCommand.clear();
    Click(40, 40);
    Click(700, 400);
    EXPECT_EQ(basGlobal.LastCommand, "") << "neither a button nor the background is beneath";
    Click(320, 120);
    EXPECT_EQ(basGlobal.LastCommand, "sensoron_box");

    ToggleBox("whatever");
    EXPECT_FALSE(BoxOpen());
    EXPECT_EQ(Count(kButtonKind), 2);
    EXPECT_TRUE(Button(2).isHidden());
    ToggleBox("bare");
    EXPECT_EQ(Button(2).mapTo(window.get(), QPoint()), QPoint(0, 0));
    Load("mainmenu");
    EXPECT_FALSE(BoxOpen()) << "a page may not lie under a box that is not its own";
    Click(40, 40);
    EXPECT_EQ(basGlobal.LastCommand, "sensoron_page");
}

TEST_F(LoadPageTest, ATouchBesideABoxClosesOneThatNothingElseCloses) {
    Picture("ground.png", 800, 480, Qt::gray);
    const std::string image = "Image0Function=x\nImage0Picture=b64.png\nImage0X=400\n";
    const std::string ground = "Image1Function=x\nImage1Picture=ground.png\n";
    const std::string label = "Label0Function=time\nLabel0Color=0\n";
    const auto box = [](const char* command) { return ButtonKeys({{command, 0, 0}}); };
    Start("[mainmenu]\n" + ButtonKeys({{"sensoron_page", 10, 10}}) +
          "[stuck]\nBackgroundX=200\nBackgroundY=100\n" + box("sensoron_a") + image + label +
          "[full]\n" + box("osk") + image + ground + "[close]\n" + box("CloseBox") + "[exit]\n" +
          box("exit") + "[other]\n" + box("openbox_stuck") + "[page]\n" + box("openmenu_mainmenu") +
          "[ask]\n" + box("showquery_Sure?:exit") + "[sizeless]\nButton0Function=exit\n[far]\n" +
          ButtonKeys({{"exit", 900, 0}}));
    const struct {
        const char* Box;
        QPoint At;
        bool Closes;
    } rows[] = {
        {"stuck", {20, 20}, true},     {"stuck", {700, 400}, true},  {"stuck", {230, 130}, false},
        {"stuck", {630, 130}, false},  {"full", {700, 400}, true},   {"full", {420, 30}, false},
        {"missing", {400, 240}, true}, {"close", {700, 400}, false}, {"exit", {700, 400}, false},
        {"other", {700, 400}, false},  {"page", {700, 400}, false},  {"ask", {700, 400}, false},
        {"sizeless", {99, 99}, true},  {"far", {99, 99}, true}};
    for (const auto& row : rows) {
        Load("mainmenu");
        Load(row.Box, true);
        Click(row.At.x(), row.At.y());
        EXPECT_EQ(BoxOpen(), !row.Closes) << row.Box << row.At.x();
        EXPECT_NE(basGlobal.LastCommand, "sensoron_page");
    }
    Load("mainmenu");
    Load("stuck", true);
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_FALSE(BoxOpen());
    // The second tap of two that began on the page.
    Load("stuck", true);
    const QPointF at(300, 300);
    for (const QEvent::Type type : {QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(Screen().PopUp(), &event);
    }
    EXPECT_TRUE(BoxOpen());
}

TEST_F(LoadPageTest, LimitsAreErrorsThatNameTheElement) {
    const std::string labels = Repeated("Label", 21, "time", {"Color=0"});
    const std::string gauges = Repeated("Gauge", 9, "x", {"Color=0"});
    const std::string charts = Repeated("Chart", 4, "x");
    Start("[labels]\nCommonObjects0=shared\n" + labels + "[gauges]\nCommonObjects0=shared\n" +
          gauges + "[charts]\nCommonObjects0=shared\n" + charts + "[shared]\n" + labels + gauges +
          charts);
    const struct {
        const char *Page, *Key;
        const SkinKind& Kind;
        int Limit;
    } rows[] = {{"labels", "Label20Function", kLabelKind, 41},
                {"gauges", "Gauge8Function", KindOf("Gauge"), 17},
                {"charts", "Chart3Function", kChartKind, 7}};
    for (const auto& row : rows) {
        const auto messages = Load(row.Page);
        EXPECT_THAT(messages, ElementsAre(HasSubstr(std::string("test.ini [") + row.Page + "] " +
                                                    row.Key + "\r\nmore than ")));
        EXPECT_EQ(Count(row.Kind), row.Limit);
        Refresh();
    }
}

TEST_F(LoadPageTest, OverAndDownPicturesAndTabindexComeWithTheDeferredPass) {
    Picture("sub/over.png", 64, 64, Qt::green);
    Start("[mainmenu]\nCommonObjects0=shared\n" + ButtonKeys({{"b", 100, 0}}) +
          "Button0Tabindex=7x\nButton0Down=Sub\\Over.PNG\n[shared]\n" + ButtonKeys({{"a", 0, 0}}) +
          "Button0Over=Sub\\Over.PNG\nButton0Tabindex=9\n[other]\n" + ButtonKeys({{"c", 0, 0}}));
    Load("mainmenu");
    EXPECT_TRUE(Button(0).HoverOff());
    Move(30, 30);
    Move(32, 32);
    EXPECT_EQ(basGlobal.FocusedButton, kNoFocus) << "the pointer selects only what hovers";
    Finish();
    EXPECT_FALSE(Button(0).SkinOver().IsNull());
    EXPECT_TRUE(Button(1).SkinOver().IsNull());
    EXPECT_FALSE(Button(1).SkinDown().IsNull());
    EXPECT_EQ(Screen().Elements(kButtonKind)[0].Tabindex, 9);
    EXPECT_EQ(Screen().Elements(kButtonKind)[1].Tabindex, 7);
    Move(30, 30);
    Move(32, 32);
    EXPECT_EQ(basGlobal.FocusedButton, 0);
    EXPECT_EQ(Button(0).State(), ButtonState::Over);
    EXPECT_EQ(Pixel(32, 32), QColor(Qt::green));
    Load("other");
    Finish();
    EXPECT_TRUE(Button(0).SkinOver().IsNull()) << "left over from another page";
}

TEST_F(LoadPageTest, DeferredPassLeavesTheBoxOfAFailedPageAlone) {
    Picture("over.png", 64, 64, Qt::green);
    Start(
        "[mainmenu]\n[bad]\nButton0Function=a\nButton0Up=missing.png\nButton0Over=over.png\n"
        "Button1Function=b\nButton1Over=over.png\n[box]\n" +
        ButtonKeys({{"x", 0, 0}, {"y", 0, 0}}));
    EXPECT_THAT(Load("bad"), ElementsAre(HasSubstr("[bad] Button0Up\r\nfile not found: ")));
    Load("box", true);
    ASSERT_EQ(Count(kButtonKind), 2);
    Finish();
    EXPECT_TRUE(Button(0).SkinOver().IsNull());
    EXPECT_TRUE(Button(1).SkinOver().IsNull());
}

TEST_F(LoadPageTest, PicturesThatCannotBeLoadedAreNamed) {
    Picture("whole.png", 300, 300, Qt::red);
    const std::string bytes = folder.Read(PictureName("whole.png"));
    folder.Write(PictureName("half.png"), bytes.substr(0, bytes.size() / 2));
    folder.Write(PictureName("empty.png"), "");
    folder.Write(PictureName("text.png"), "this is no picture");
    for (const char* format : {"jpg", "bmp"}) {
        const std::string name = std::string("half.") + format;
        Picture("whole." + name, 300, 300, Qt::red);
        const std::string whole = folder.Read(PictureName("whole." + name));
        ASSERT_GT(whole.size(), 1000U);
        folder.Write(PictureName(name), whole.substr(0, whole.size() / 2));
    }
    for (const char* key : {"Button0Up", "Button0Image", "Button0Over", "Button0Down",
                            "Slider0Background", "Slider0Progress", "Slider0Bar", "Slider0BarOver",
                            "Slider0BarDown", "Bargraph0Background", "Bargraph0Progress",
                            "Bargraph0Bar", "Image0Picture", "Chart0Background"}) {
        for (const char* file :
             {"missing.png", "half.png", "half.jpg", "half.bmp", "empty.png", "text.png", ".."}) {
            const std::string kind(key, std::string_view(key).find('0') + 1);
            const std::string skin = "[mainmenu]\n" + kind + "Function=a\n" + kind +
                                     "Direction=1\n" + key + "=" + file + "\n";
            if (window == nullptr)
                Start(skin);
            else
                WriteSkin(skin);
            Answers answers;
            LoadSkinPage("mainmenu", false);
            FinishPage();
            EXPECT_TRUE(Until([&] { return !answers.texts.empty(); })) << key << file;
            EXPECT_THAT(answers.texts,
                        ElementsAre(HasSubstr(std::string("test.ini [mainmenu] ") + key + "\r\n")))
                << file;
        }
    }
}

TEST_F(LoadPageTest, ThePicturesOfAPageAndItsBoxShareABudget) {
    for (const char* name : {"a.png", "b.png", "c.png"}) Picture(name, 512, 512, Qt::red);
    const auto images = [](const std::vector<std::string>& names) {
        std::string text;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::string prefix = "Image" + std::to_string(i);
            text += prefix + "Function=x\n" + prefix + "Picture=" + names[i] + "\n";
        }
        return text;
    };
    Start("[full]\n" + images({"a.png", "b.png", "a.png", "b.png"}) + "[over]\n" +
          images({"a.png", "b.png", "c.png"}) + "[box]\n" + images({"c.png"}) + "[late]\n" +
          images({"a.png"}) + "Button0Function=x\nButton0Up=b.png\nButton0Over=c.png\n");
    Screen().PictureLimit = 2u << 20;
    const auto fault = [](const char* place) {
        return ElementsAre(HasSubstr(std::string("test.ini ") + place +
                                     "\r\nthe pictures of the page take more than 2 MB"));
    };
    EXPECT_THAT(Load("full"), IsEmpty()) << "each picture counts once";
    EXPECT_THAT(Load("box", true), fault("[box] Image0Picture"));
    EXPECT_THAT(Load("over"), fault("[over] Image2Picture"));
    EXPECT_EQ(Count(KindOf("Image")), 2);
    EXPECT_THAT(Load("late"), IsEmpty());
    const Answers answers;
    FinishPage();
    EXPECT_THAT(answers.texts, fault("[late] Button0Over"));
    EXPECT_TRUE(Button(0).SkinOver().IsNull());
}

TEST_F(LoadPageTest, AFaultOfTheDeferredPassFollowsTheFirstMessage) {
    Picture("up.png", 64, 64, Qt::red);
    Start(
        "[mainmenu]\n[two]\nButton0Function=a\nButton0Up=up.png\nButton0Over=none.png\n"
        "Button1Function=b\nButton1Up=gone.png\n");
    std::vector<std::string> texts;
    QTimer answers;
    answers.callOnTimeout([&texts] {
        if (!MessageDialog()->IsOpen()) return;
        if (texts.empty()) FinishPage();
        texts.push_back(MessageDialog()->Message());
        MessageDialog()->Answer(kAnswerOk);
    });
    answers.start(0);
    LoadSkinPage("two", false);
    EXPECT_THAT(texts, ElementsAre(HasSubstr("[two] Button1Up"), HasSubstr("[two] Button0Over")));
}

TEST_F(LoadPageTest, FixedTextsTitleAndFlags) {
    Start(
        "[mainmenu]\nLabel0Function=text\nLabel0Caption=Rev / min\nLabel0Color=0\n"
        "Label1Function=text\nLabel1Caption=APP_Title\nLabel1Color=0\nLabel2Function=APP_Title\n"
        "Label2Color=0\nLabel3Function=text\nLabel3Color=0\nLabel4Function=id3artist\n"
        "Label4Color=0\nButton0Function=DvdMenu\nButton0Up=b64.png\nButton0LabelFunction=text\n"
        "Button0LabelCaption=Caf\xE9\n[plain]\n");
    char title[32];
    std::snprintf(title, sizeof title, "Dravik V%d.%02d.%02d", DRAVIK_VERSION_MAJOR,
                  DRAVIK_VERSION_MINOR, DRAVIK_VERSION_PATCH);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(LabelShown(0), "Rev / min");
        EXPECT_EQ(LabelShown(1), title);
        EXPECT_EQ(LabelShown(2), title);
        EXPECT_EQ(LabelShown(3), "");
        EXPECT_EQ(Button(0).LabelCaption(), "Caf\xE9");
        Refresh();
    }
    EXPECT_TRUE(Screen().HasDvdButton);
    EXPECT_TRUE(Screen().HasMediaTagLabel);
    Load("plain");
    EXPECT_FALSE(Screen().HasDvdButton);
    EXPECT_FALSE(Screen().HasMediaTagLabel);
}

TEST_F(LoadPageTest, LabelsWithoutASizeEndWhereThePageDoes) {
    const std::string labels =
        "Label0Function=text\nLabel0Caption=HHHHHH\nLabel0Color=255\nLabel0X=100\n"
        "Label0Alignment=1\nLabel0FontSize=40\n";
    Start("[mainmenu]\n" + labels + "[box]\nBackgroundX=300\nBackgroundY=50\n" + labels);
    Load("box", true);
    const auto inkAt = [this](QRect strip) {
        const QImage shown = window->grab(strip).toImage();
        for (int i = 0; i < shown.width() * shown.height(); ++i) {
            if (shown.pixelColor(i % shown.width(), i / shown.width()).red() > 128) return true;
        }
        return false;
    };
    for (const QSize size : {QSize(800, 480), QSize(1000, 300)}) {
        window->resize(size);
        ASSERT_TRUE(Until([&] { return Screen().Page()->size() == size; }));
        EXPECT_EQ(Element(kLabelKind, 0).Item->Place(),
                  QRect(100, 0, size.width() - 100, size.height()));
        EXPECT_EQ(Element(kLabelKind, 1).Item->Place(),
                  QRect(100, 0, size.width() - 400, size.height() - 50));
        EXPECT_TRUE(inkAt(QRect(size.width() - 30, 0, 30, 50))) << "at the edge of the page";
        EXPECT_TRUE(inkAt(QRect(size.width() - 30, 60, 30, 50))) << "and of the page beneath";
    }
}

TEST_F(LoadPageTest, TextBoxesTakeTheFocusAndKeepTheirText) {
    const std::string field = "X=10\n";
    Start("[mainmenu]\n" + ButtonKeys({{"a", 300, 0}}) +
          "[edit]\nTextbox0Function=PhoneNumber\nTextbox0Width=200\nTextbox0Height=30\n"
          "Textbox1Function=smstext\nTextbox1Y=50\nTextbox1Width=200\nTextbox1Height=30\n"
          "[box]\nTextbox0Function=searchstring\nTextbox0Width=90\nTextbox0Height=30\n"
          "[empty]\n");
    EXPECT_TRUE(Screen().Page()->hasFocus());
    Load("edit");
    EXPECT_TRUE(Textbox(0).hasFocus());
    for (const Qt::Key digit : {Qt::Key_0, Qt::Key_8, Qt::Key_1, Qt::Key_5}) Key(digit);
    Load("box", true);
    EXPECT_TRUE(Textbox(2).hasFocus()) << "that of the box, not that of the page";
    CloseBox();
    Load("empty", true);
    EXPECT_TRUE(Screen().PopUp()->hasFocus());
    Load("mainmenu");
    Load("edit");
    EXPECT_EQ(Textbox(0).Text(), "0815");
    EXPECT_EQ(Textbox(1).Text(), "");
}

TEST_F(LoadPageTest, APageWithoutASkinSaysSoAndATouchOpensTheSettings) {
    Start("[mainmenu]\n");
    const QImage empty = window->grab().toImage();
    const struct {
        const char* Skin;  ///< null: no file
        bool Notice, Fault;
    } rows[] = {{nullptr, true, false},
                {"", true, false},
                {"[other]\nButton0Function=x\n", true, false},
                {"[mainmenu]\nImage0Function=x\nImage0Picture=none.png\n", true, true},
                {"[mainmenu]\n", false, false}};
    for (const auto& row : rows) {
        if (row.Skin != nullptr)
            WriteSkin(row.Skin);
        else
            std::filesystem::remove(folder / "skins/test.ini");
        EXPECT_EQ(!Load("mainmenu").empty(), row.Fault);
        EXPECT_EQ(Screen().Page()->HasNotice(), row.Notice);
        EXPECT_EQ(window->grab().toImage() != empty, row.Notice);
        Click(400, 400);
        EXPECT_EQ(basGlobal.LastCommand, row.Notice ? "config" : "openmenu_mainmenu");
        for (QWidget* other : QApplication::topLevelWidgets()) {
            if (other != window.get() && other->isVisible()) other->close();
        }
    }
}

}  // namespace
}  // namespace dravik
