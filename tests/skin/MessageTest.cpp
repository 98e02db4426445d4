#include "SkinFixture.h"

namespace dravik {
namespace {

constexpr const char* kSkin =
    "[mainmenu]\nButton0Function=sensoron_page\nButton0Up=b64.png\nButton1Function=x\n"
    "Button1Up=b64.png\nButton1X=100\n"
    "[query]\nBackground=box.png\nButton0Function=Yes\nButton0X=10\nButton0Y=120\n"
    "Button0Up=b64.png\nButton1Function=NO\nButton1X=300\nButton1Y=120\nButton1Up=b64.png\n"
    "Button2Function=maybe\nButton2Up=b64.png\nLabel0X=20\nLabel0Y=20\nLabel0Width=360\n"
    "Label0Height=60\nLabel0FontSize=14\nLabel0Color=255\nLabel0Alignment=2\n"
    "[info]\nBackground=box.png\nButton0Function=ok\nButton0X=10\nButton0Y=120\n"
    "Button0Up=b64.png\n";

class MessageTest : public SkinTest {
 protected:
    void Begin(const std::string& skin = kSkin) {
        Picture("box.png", 400, 200, Qt::darkGray);
        Start(skin);
    }
    frWarning& Dialog() const { return window->Warning(); }

    /// Shows a message and does something about it while it is open.
    int Ask(const std::string& text, int style, const std::function<void()>& act) const {
        QTimer::singleShot(0, window.get(), act);
        return ShowMessage(text, style, "Dravik");
    }
    void ClickButton(const char* name) const {
        const ButtonEx* button = Dialog().ShownButton(name);
        ASSERT_NE(button, nullptr) << name;
        const QPoint at = button->mapTo(window.get(), button->rect().center());
        Click(at.x(), at.y());
    }
};

TEST_F(MessageTest, StyleChoosesTheKindAndAnUnknownStyleAnswersNoAtOnce) {
    Begin();
    for (const auto& [style, kind] : {std::pair{32, 2}, {2, 2}, {64, 1}, {16, 0}}) {
        int shown = -1;
        EXPECT_EQ(Ask("text", style,
                      [&] {
                          shown = Dialog().IsOpen() ? Dialog().Kind() : -1;
                          Dialog().Answer(kAnswerOk);
                      }),
                  kAnswerOk);
        EXPECT_EQ(shown, kind) << style;
    }
    for (const int style : {0, 1, 48, 33, -16}) {
        EXPECT_EQ(ShowMessage("text", style, ""), kAnswerNo);
        EXPECT_FALSE(Dialog().IsOpen());
    }
}

TEST_F(MessageTest, ButtonsStandWhereTheSkinPutsThemAndAnswer) {
    Begin();
    // The box of 400 x 200 stands in the middle of 800 x 480.
    EXPECT_EQ(Ask("Really?", kMessageQuestion, [&] { Click(200 + 42, 140 + 152); }), kAnswerYes);
    EXPECT_EQ(Ask("Really?", kMessageQuestion, [&] { Click(200 + 332, 140 + 152); }), kAnswerNo);
    EXPECT_EQ(Ask("Note", kMessageInformation,
                  [&] {
                      EXPECT_EQ(Dialog().ShownButton("yes"), nullptr) << "left over";
                      ClickButton("ok");
                  }),
              kAnswerOk);
    EXPECT_EQ(Ask("Really?", kMessageQuestion,
                  [&] {
                      EXPECT_EQ(Dialog().ShownButton("ok"), nullptr);
                      EXPECT_EQ(Pixel(205, 145), QColor(Qt::darkGray));
                      Click(10, 10);  // the page beneath
                      EXPECT_TRUE(Dialog().IsOpen());
                      Click(400, 180);  // the text
                  }),
              kAnswerNo);
    EXPECT_EQ(Ask("Really?", kMessageQuestion, [&] { Click(400, 330); }), kAnswerNo);
    EXPECT_NE(basGlobal.LastCommand, "sensoron_page");
}

TEST_F(MessageTest, FunctionBehindTheLastColonRunsOnYesOnly) {
    Begin();
    const struct {
        const char *Text, *Shown, *Function;
    } rows[] = {{"Go on?:sensoron_a", "Go on?", "sensoron_a"},
                {"At 12:30?:SensorOn_B", "At 12:30?", "sensoron_b"},
                {"Go on?:", "Go on?", ""},
                {"Go on?", "Go on?", ""}};
    for (const auto& row : rows) {
        for (const int answer : {kAnswerYes, kAnswerNo, kAnswerOk}) {
            basGlobal.LastCommand.clear();
            EXPECT_EQ(Ask(row.Text, kMessageQuestion,
                          [&] {
                              EXPECT_EQ(Dialog().Message(), row.Shown);
                              EXPECT_EQ(basGlobal.LastCommand, "");
                              Dialog().Answer(answer);
                          }),
                      answer);
            EXPECT_EQ(basGlobal.LastCommand, answer == kAnswerYes ? row.Function : "") << row.Text;
        }
    }
}

TEST_F(MessageTest, WithoutASectionTheBoxIsPlainButComplete) {
    Begin("[mainmenu]\n");
    const struct {
        int Style;
        const char* Button;
        int Answer;
    } rows[] = {{kMessageQuestion, "yes", kAnswerYes},
                {kMessageQuestion, "no", kAnswerNo},
                {kMessageInformation, "ok", kAnswerOk},
                {kMessageCritical, "ok", kAnswerOk}};
    const QImage page = window->grab().toImage();
    for (const auto& row : rows) {
        EXPECT_EQ(Ask("Something has happened", row.Style,
                      [&] {
                          EXPECT_NE(window->grab().toImage(), page);
                          ClickButton(row.Button);
                      }),
                  row.Answer);
    }
}

// What the program words in English stays so for the console.
TEST_F(MessageTest, ASkinMayShowTheLanguageOfTheUser) {
    folder.Write("languages/test.ini",
                 "[Words]\nSurely?=Sicher?\nChart %1 saved=%1 liegt da\nYes=Ja\nok=Gut\n");
    const std::string skin = kSkin;
    const std::string opted = skin +
                              "Label0Function=Word_Message\nButton0LabelFunction=word_Yes\n"
                              "Button0LabelWidth=60\nButton0LabelColor=&HFF\n";
    const struct {
        std::string Skin;
        const char *Text, *Caption;
    } rows[] = {
        {skin, "Surely?", ""}, {opted, "Sicher?", "Ja"}, {"[mainmenu]\n", "Sicher?", "Gut"}};
    for (const auto& row : rows) {
        window.reset();
        Picture("box.png", 400, 200, Qt::darkGray);
        Start(row.Skin, QSize(800, 480), "Language=test\n");
        ShowPopup("Surely?", 1);
        EXPECT_EQ(Dialog().Message(), "Surely?");
        EXPECT_EQ(Dialog().ShownText().toStdString(), row.Text);
        EXPECT_EQ(Dialog().ShownButton("ok")->LabelCaption(), row.Caption);
        const std::string saved = "Chart a 1.bmp saved.\r\nChart b saved.";
        ShowPopup(saved, 1);
        EXPECT_EQ(Dialog().Message(), saved);
        const std::string lines = Dialog().ShownText().toStdString();
        EXPECT_EQ(lines.starts_with("a 1.bmp liegt da."), *row.Caption != 0) << lines;
        EXPECT_EQ(lines.ends_with("b liegt da."), *row.Caption != 0) << lines;
    }
}

/// A text fits when the whole of its box, with a rim all round, is on the window.
TEST_F(MessageTest, PlainBoxIsSizedByTheWindowAtEveryDesign) {
    const std::string path = "/media/usb-stick/" + std::string(150, 'x') + "/last-of-all.png";
    for (const char* design : {"", "Width=1920\nHeight=1080\n", "Width=200\nHeight=150\n"}) {
        for (const QSize size : {QSize(320, 240), QSize(800, 480), QSize(480, 800)}) {
            window.reset();
            Start(std::string(design) + "[mainmenu]\n", size);
            for (const int kind : {0, 2}) {
                ShowPopup("Skin Config Error\r\nfile not found: " + path, kind);
                for (const char* name : {"yes", "no", "ok"}) {
                    const ButtonEx* button = Dialog().ShownButton(name);
                    if (button == nullptr) continue;
                    EXPECT_TRUE(window->rect().contains(button->geometry())) << design << name;
                    EXPECT_GE(std::min(button->width(), button->height()), 44);
                }
                EXPECT_TRUE(window->rect().contains(Dialog().TextArea()));
                EXPECT_THAT(Dialog().ShownText().toStdString(), testing::HasSubstr(path));
                EXPECT_GE(Dialog().ShownFont().pixelSize(), 12) << design << size.width();
            }
        }
    }
}

TEST_F(MessageTest, ATextThatIsTooLongIsSetSmallerAndKeepsItsEnd) {
    Begin();
    const auto shown = [this](int letters) {
        ShowPopup("not a picture: " + std::string(static_cast<std::size_t>(letters), 'x') + "end",
                  2);
        return Dialog().ShownText().toStdString();
    };
    using testing::EndsWith, testing::StartsWith, testing::AllOf;
    const QString word(100, QLatin1Char('x'));
    const QFont font = SkinFont({}, 1);
    EXPECT_GT(WrappedHeight(word, font, 200), 2 * WrappedHeight(word, font, 4000)) << "wraps";
    EXPECT_THAT(shown(9), EndsWith("not a picture: xxxxxxxxxend"));
    const int large = Dialog().ShownFont().pixelSize();
    EXPECT_EQ(shown(120).size(), 138U);
    EXPECT_LT(Dialog().ShownFont().pixelSize(), large);
    EXPECT_THAT(shown(4000), AllOf(StartsWith("not a picture: x"), EndsWith("xend")));
    EXPECT_EQ(Dialog().ShownFont().pixelSize(), kLeastFontPixels);
}

TEST_F(MessageTest, TextIsSeenWhateverTheSectionLeavesOut) {
    Begin(
        "[mainmenu]\n[info]\nButton0Function=ok\n[warning]\nBackground=missing.png\n"
        "Label0Color=&HFFFFFF\n");
    for (const int kind : {0, 1}) {
        ShowPopup("", kind);
        const QImage empty = window->grab().toImage();
        ShowPopup("HHHHHHHHHH", kind);
        const QImage written = window->grab().toImage();
        int strong = 0;
        for (int y = 0; y < written.height(); ++y) {
            for (int x = 0; x < written.width(); ++x)
                strong += std::abs(qGray(written.pixel(x, y)) - qGray(empty.pixel(x, y))) > 100;
        }
        EXPECT_GT(strong, 50) << kind;
    }
}

TEST_F(MessageTest, SecondMessageReplacesTheFirstAndAnswersBoth) {
    Begin();
    int second = 0;
    const int first = Ask("First:sensoron_first", kMessageQuestion, [&] {
        second = Ask("Second:sensoron_second", kMessageQuestion, [&] {
            EXPECT_EQ(Dialog().Message(), "Second");
            Dialog().Answer(kAnswerYes);
        });
    });
    EXPECT_EQ(first, kAnswerYes);
    EXPECT_EQ(second, kAnswerYes);
    EXPECT_EQ(basGlobal.LastCommand, "sensoron_first") << "the outer one returns last";
}

TEST_F(MessageTest, NobodyAnswers) {
    Begin("[mainmenu]\n[query]\nButton0Function=yes\nButton0Up=b64.png\n");
    EXPECT_EQ(Ask("Really?", kMessageQuestion,
                  [&] {
                      auto* timer = Dialog().findChild<QTimer*>(QStringLiteral("Timer1"));
                      ASSERT_NE(timer, nullptr);
                      EXPECT_TRUE(timer->isActive());
                      EXPECT_EQ(timer->interval(), 30000);
                      timer->start(1);
                  }),
              kAnswerNo);
    EXPECT_EQ(Ask("Really?", kMessageQuestion, [&] { window->Unload(); }), kAnswerNo);
    EXPECT_EQ(ShowMessage("Too late", kMessageQuestion, ""), kAnswerNo);
}

TEST_F(MessageTest, KeysBelongToTheMessage) {
    Begin();
    Button(0).setFocus();
    const struct {
        std::vector<Qt::Key> Keys;
        int Style, Answer;
    } rows[] = {{{Qt::Key_Escape}, kMessageQuestion, kAnswerNo},
                {{Qt::Key_Return}, kMessageInformation, kAnswerOk},
                {{Qt::Key_Right, Qt::Key_Return}, kMessageQuestion, kAnswerYes},
                {{Qt::Key_Right, Qt::Key_Right, Qt::Key_Return}, kMessageQuestion, kAnswerNo},
                {{Qt::Key_Left, Qt::Key_Enter}, kMessageQuestion, kAnswerNo},
                {{Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Tab, Qt::Key_Return},
                 kMessageQuestion,
                 kAnswerYes}};
    for (const auto& row : rows) {
        EXPECT_EQ(Ask("Well?", row.Style,
                      [&] {
                          Key(Qt::Key_Down);
                          Key(Qt::Key_X);
                          for (const Qt::Key key : row.Keys) Key(key);
                          if (Dialog().IsOpen()) Dialog().Answer(99);
                      }),
                  row.Answer);
        EXPECT_EQ(basGlobal.FocusedButton, 0) << "back where it was";
    }
    EXPECT_EQ(basGlobal.LastCommand, "");
}

TEST_F(MessageTest, StaysOnTopOfAPageThatComesMeanwhile) {
    Begin(std::string(kSkin) + "[other]\n" + ButtonKeys({{"a", 0, 0}}) + "[box]\n" +
          ButtonKeys({{"b", 300, 200}}));
    Button(1).setFocus();
    EXPECT_EQ(Ask("Well?", kMessageQuestion,
                  [&] {
                      LoadSkinPage("other", false);
                      LoadSkinPage("box", true);
                      Key(Qt::Key_Right);
                      EXPECT_TRUE(Dialog().ShownButton("yes")->hasFocus());
                      Click(400, 330);
                  }),
              kAnswerNo);
    EXPECT_TRUE(BoxOpen());
    EXPECT_TRUE(Screen().PopUp()->hasFocus()) << "what had the focus is gone";
}

TEST_F(MessageTest, MovesWithTheWindowAndKeepsItsTime) {
    Begin();
    EXPECT_EQ(Ask("Well?", kMessageQuestion,
                  [&] {
                      window->resize(1000, 600);
                      QTest::qWait(10);
                      Click(300 + 42, 200 + 152);
                      if (Dialog().IsOpen()) Dialog().Answer(99);
                  }),
              kAnswerYes);
}

}  // namespace
}  // namespace dravik
