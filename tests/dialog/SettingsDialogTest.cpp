#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <filesystem>
#include <set>
#include <sstream>

#include "console/ConsoleRequests.h"
#include "dialog/DialogFixture.h"
#include "dialog/StepField.h"
#include "platform/Profile.h"
#include "settings/Words.h"
#include "skin/message/ShowMessage.h"
#include "skin/message/frWarning.h"

namespace dravik {
namespace {

class SettingsDialog : public DialogTest {};

TEST_F(SettingsDialog, ShowsTheSettingsAndOffersTheFilesThatThereAre) {
    folder_.Write("skins/.ini", "[mainmenu]\n");  // has no name to be chosen by
    Open();
    EXPECT_EQ(TextOf("coCommSelect"), "COM3");
    EXPECT_EQ(TextOf("tBusInitDelay"), "1");
    EXPECT_EQ(TextOf("tOSKPath"), "/opt/keys");
    EXPECT_EQ(TextOf("coBaudrate"), "");
    EXPECT_TRUE(Find<QCheckBox>("chMiscOptions0")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>("chMiscOptions3")->isChecked());
    EXPECT_EQ(TextOf("coPort"), "COM3");
    EXPECT_EQ(Find<QComboBox>("coFolder")->count(), 4);  // of the lists that show folders
    auto* skins = Find<QComboBox>("coSkin");
    ASSERT_EQ(skins->count(), 2);
    EXPECT_EQ(skins->itemText(0), QStringLiteral("day"));
    EXPECT_EQ(skins->itemText(1), QStringLiteral("night"));
    EXPECT_EQ(skins->currentText(), QStringLiteral("night"));
    EXPECT_EQ(Find<QTabWidget>("SSTab1")->count(), 4);
}

TEST_F(SettingsDialog, WithoutASettingsFileNumbersShowZeroAndTextsTheMarkOfAbsence) {
    std::filesystem::remove(folder_ / "Dravik.ini");
    LoadSettings();
    Open();
    EXPECT_EQ(TextOf("coCommSelect"), "COM0");
    EXPECT_EQ(TextOf("tRefreshRate"), "0");
    EXPECT_EQ(TextOf("coSkin"), "0");
}

TEST_F(SettingsDialog, OpeningItAgainBringsTheOneDialogBack) {
    frSettings& first = Open();
    Type("tRefreshRate", QStringLiteral("77"));
    upCalls.ShowSettingsDialog();
    EXPECT_EQ(Dialog(), &first);
    EXPECT_EQ(TextOf("tRefreshRate"), "77");
    EXPECT_FALSE(first.isModal());
    first.close();
    Open();  // a new one, although the old one may not be gone yet
    EXPECT_EQ(TextOf("tRefreshRate"), "100");
}

TEST_F(SettingsDialog, CancelAndEscapeWriteNothing) {
    for (const bool escape : {false, true}) {
        Open();
        Type("tRefreshRate", QStringLiteral("77"));
        Click("chMiscOptions2");
        ShowTab(1);
        Click("cmdSensorDel");
        if (escape)
            QTest::keyClick(Dialog(), Qt::Key_Escape);
        else
            Click("Command1");
        EXPECT_EQ(Dialog(), nullptr);
    }
    EXPECT_EQ(folder_.Read("Dravik.ini"), kSettings);
    EXPECT_EQ(folder_.Read("languages/english.sensors"), kSensors);
    EXPECT_EQ(basGlobal.CurrentMenu, "other");
    EXPECT_EQ(basGlobal.SensorCount, 3);
}

TEST_F(SettingsDialog, ReturnInAFieldNeitherSavesNorCloses) {
    Open();
    Type("tRefreshRate", QStringLiteral("77"));
    QTest::keyClick(Find<QLineEdit>("tRefreshRate"), Qt::Key_Return);
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_EQ(folder_.Read("Dravik.ini"), kSettings);
    Find<QWidget>("Command1")->setFocus();
    QTest::keyClick(Find<QWidget>("Command1"), Qt::Key_Return);
    EXPECT_EQ(Dialog(), nullptr);
}

/// Our own controls of that kind that are on the tab in front. Parts inside a control have names
/// that begin with "qt_", and the tab bar's arrows are only there when there is no room for tabs.
std::vector<QWidget*> ShownControls() {
    std::vector<QWidget*> controls;
    for (QWidget* widget : QApplication::activeWindow()->findChildren<QWidget*>()) {
        const bool touched = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                             qobject_cast<QComboBox*>(widget) != nullptr ||
                             qobject_cast<QLineEdit*>(widget) != nullptr;
        const QString name = widget->objectName();
        if (touched && widget->isVisible() && !name.isEmpty() &&
            !name.startsWith(QLatin1String("qt_")))
            controls.push_back(widget);
    }
    return controls;
}

/// Whole within the width of the dialog, and nothing of its text missing.
void ExpectWhole(const QWidget* widget, const QWidget& dialog) {
    const std::string name = widget->objectName().toStdString();
    const QPoint corner = widget->mapTo(&dialog, QPoint(0, 0));
    EXPECT_GE(corner.x(), 0) << name;
    EXPECT_LE(corner.x() + widget->width(), dialog.width()) << name;
    const auto* label = qobject_cast<const QLabel*>(widget);
    const bool shrinks = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                         qobject_cast<const QComboBox*>(widget) != nullptr ||
                         (label != nullptr && label->wordWrap());
    if (!shrinks) {
        EXPECT_GE(widget->width(), widget->sizeHint().width()) << name;
    }
}

TEST_F(SettingsDialog, EveryControlFitsAFingerOnScreensOfEveryShape) {
    const std::pair<QSize, double> screens[] = {
        {{320, 240}, 1}, {{480, 272}, 1},    {{480, 800}, 1},   {{800, 480}, 1},
        {{600, 800}, 1}, {{720, 1200}, 1.5}, {{1280, 720}, 1.5}};
    const QSize room = window_->screen()->availableGeometry().size();
    for (const auto& [size, scale] : screens) {
        SCOPED_TRACE(std::to_string(size.width()) + "x" + std::to_string(size.height()));
        window_->resize(size);
        frSettings& dialog = Open();
        EXPECT_EQ(dialog.size().boundedTo(room), dialog.size());
        EXPECT_EQ(dialog.size().boundedTo(size), dialog.size());
        auto* tabs = dialog.findChild<QTabWidget*>();
        for (int tab = 0; tab < tabs->count(); ++tab) {
            EXPECT_LE(tabs->tabBar()->tabRect(tab).right(), dialog.width());
            EXPECT_GE(tabs->tabBar()->tabRect(tab).height(), 42 * scale);
            EXPECT_TRUE(dialog.rect().contains(tabs->tabBar()->geometry()));
            for (const QWidget* widget : ShownControls()) {
                EXPECT_GE(widget->height(), 42 * scale) << widget->objectName().toStdString();
                EXPECT_GE(widget->width(), 38 * scale) << widget->objectName().toStdString();
                ExpectWhole(widget, dialog);
            }
            for (const QLabel* label : tabs->currentWidget()->findChildren<QLabel*>())
                if (label->isVisible()) ExpectWhole(label, dialog);
            for (const char* button : {"bSave", "Command1"}) {
                const auto* widget = Find<QWidget>(button);
                const QRect place(widget->mapTo(&dialog, QPoint(0, 0)), widget->size());
                EXPECT_TRUE(dialog.rect().contains(place)) << button;
            }
            ShowTab(1);
        }
        dialog.close();
    }
}

/// What a widget says, where it has a caption of its own.
QString CaptionOf(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
    if (const auto* group = qobject_cast<const QGroupBox*>(widget)) return group->title();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) return button->text();
    if (const auto* table = qobject_cast<const QTableView*>(widget)) {
        QString headers;
        for (int i = 0; i < table->model()->columnCount(); ++i)
            headers += table->model()->headerData(i, Qt::Horizontal).toString();
        return headers;
    }
    return {};
}

// A language that puts a mark in front of every word shows which captions are none of them.
TEST_F(SettingsDialog, EveryCaptionIsAWordOfTheLanguage) {
    const std::string english = DRAVIK_LANGUAGES "English.ini";
    std::string marked = "[Sensors]\nFilename=english.sensors\n[Words]\n";
    for (const std::string& name : ProfileKeys(english, "Words"))
        marked += name + "=§" + name + "\n";
    folder_.Write("languages/marked.ini", marked);
    ASSERT_TRUE(ChooseLanguage("marked"));
    const std::set<std::string> everywhere = {"",
                                              "s",
                                              "ms",
                                              "km/h",
                                              "aux",
                                              "−",
                                              "+",
                                              "COM3",
                                              "/dev/ttyUSB2",
                                              "PID 00",
                                              "PID§Source§Function"};
    const frSettings& dialog = Open();
    EXPECT_EQ(dialog.windowTitle().toStdString(), "§Dravik Settings");
    auto* tabs = dialog.findChild<QTabWidget*>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        EXPECT_TRUE(tabs->tabText(tab).startsWith(QStringLiteral("§")));
        for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
            const std::string caption = CaptionOf(widget).toStdString();
            if (widget->isVisible() && !everywhere.contains(caption) &&
                !widget->objectName().startsWith(QStringLiteral("lbl")) &&
                widget->objectName() != QStringLiteral("lTitle") &&
                widget->objectName() != QStringLiteral("lBuild")) {
                EXPECT_TRUE(caption.starts_with("§")) << caption;
            }
        }
        ShowTab(1);
    }
}

TEST_F(SettingsDialog, NothingIsClippedInAnyLanguage) {
    basGlobal.LanguagePath = DRAVIK_LANGUAGES;
    ASSERT_GE(LanguageNames().size(), 6U);
    for (const std::string& language : LanguageNames()) {
        basGlobal.Launch.Language = language;
        LoadSettings();
        for (const QSize size : {QSize(800, 480), QSize(480, 800)}) {
            SCOPED_TRACE(language + " " + std::to_string(size.width()));
            window_->resize(size);
            frSettings& dialog = Open();
            auto* tabs = dialog.findChild<QTabWidget*>();
            for (int tab = 0; tab < tabs->count(); ++tab) {
                const QTabBar* bar = tabs->tabBar();
                EXPECT_LE(bar->fontMetrics().horizontalAdvance(bar->tabText(tab)),
                          bar->tabRect(tab).width())
                    << bar->tabText(tab).toStdString();
                for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
                    const bool button = qobject_cast<const QAbstractButton*>(widget) != nullptr;
                    const auto* group = qobject_cast<const QGroupBox*>(widget);
                    if (!widget->isVisible()) continue;
                    if ((button && !widget->objectName().isEmpty()) ||
                        qobject_cast<const QLabel*>(widget) != nullptr)
                        ExpectWhole(widget, dialog);
                    if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
                        const QString note = field->placeholderText();
                        EXPECT_LE(field->fontMetrics().horizontalAdvance(note), field->width())
                            << note.toStdString();
                    }
                    if (group != nullptr) {
                        EXPECT_LT(group->fontMetrics().horizontalAdvance(group->title()),
                                  group->width())
                            << group->title().toStdString();
                    }
                }
                ShowTab(1);
            }
            dialog.close();
        }
    }
}

// Units are chosen by their name in the language and kept by a word that no language changes.
TEST_F(SettingsDialog, UnitsAreChosenApartFromTheLanguage) {
    folder_.Write("languages/Deutsch.ini",
                  "[Sensors]\nFilename=english.sensors\n[Words]\nImperial=Imperiale\n");
    ASSERT_TRUE(ChooseLanguage("Deutsch"));
    const std::string before = folder_.Read("Dravik.ini");
    Open();
    EXPECT_EQ(TextOf("coUnits"), "");
    auto* units = Find<QComboBox>("coUnits");
    ASSERT_EQ(units->count(), 2);
    units->setCurrentText(units->itemText(1));
    EXPECT_EQ(TextOf("coUnits"), "Imperiale");
    Click("bSave");
    EXPECT_EQ(ReadIniString(basGlobal.IniFile, "Options", "Units"), "imperial");
    Open();
    EXPECT_EQ(TextOf("coUnits"), "Imperiale");
    Type("coUnits", QString());
    Click("bSave");
    EXPECT_EQ(folder_.Read("Dravik.ini"), before);
}

/// The ways a finger reaches the program: as a mouse, and as itself.
class Finger {
 public:
    explicit Finger(frSettings& dialog, bool touches) : dialog_(dialog), touches_(touches) {}

    void Press(QPoint place) {
        if (touches_)
            Touch().press(0, place);
        else
            QTest::mousePress(dialog_.windowHandle(), Qt::LeftButton, {}, place);
    }
    void Move(QPoint place) {
        if (touches_)
            Touch().move(0, place);
        else
            QTest::mouseMove(dialog_.windowHandle(), place);
    }
    void Release(QPoint place) {
        if (touches_)
            Touch().release(0, place);
        else
            QTest::mouseRelease(dialog_.windowHandle(), Qt::LeftButton, {}, place);
    }

 private:
    QTest::QTouchEventSequence Touch() {
        static QPointingDevice* device = QTest::createTouchDevice();
        return QTest::touchEvent(dialog_.windowHandle(), device);
    }

    frSettings& dialog_;
    bool touches_;
};

TEST_F(SettingsDialog, APushMovesThePageAndChangesNothingOnIt) {
    for (const bool touches : {false, true}) {
        SCOPED_TRACE(touches ? "touch" : "mouse");
        frSettings& dialog = Open();
        auto* page = qobject_cast<QScrollArea*>(dialog.findChild<QTabWidget*>()->currentWidget());
        auto* box = Find<QCheckBox>("chMiscOptions3");
        const QPoint place = box->mapTo(&dialog, QPoint(10, box->height() / 2));
#ifdef _WIN32  // a window manager may move the window late, and a press finds things by their place
        QTest::qWait(500);
#endif
        Finger finger(dialog, touches);
        finger.Press(place);
        finger.Release(place);
        EXPECT_TRUE(box->isChecked());

        const QPoint start = place - QPoint(0, box->height());  // no second click of a double one
        finger.Press(start);
        for (int moved = 10; moved <= 150; moved += 10) {
            QTest::qWait(2);  // a push has a speed
            finger.Move(start - QPoint(0, moved));
        }
        finger.Release(start - QPoint(0, 150));
        EXPECT_GT(page->verticalScrollBar()->value(), 60);
        EXPECT_TRUE(box->isChecked());
        dialog.close();
    }
}

#ifndef _WIN32  // the keyboard is a shell script
TEST_F(SettingsDialog, ATouchedFieldBringsUpTheKeyboardOfTheSettingsOnce) {
    folder_.Write("starts", "");
    const std::string keys =
        folder_.Write("keys.sh", "#!/bin/sh\necho >>" + folder_ / "starts" + "\nwhile [ -e " +
                                     folder_ / "keys.sh" + " ]; do sleep 0.02; done\n");
    std::filesystem::permissions(keys, std::filesystem::perms::owner_all);
    const auto starts = [this] { return folder_.Read("starts").size(); };
    Open();
    Click("tRefreshRate");  // the keyboard of the settings is not there
    basGlobal.OSKPath = keys;
    Click("tRefreshRateMore");
    Find<QWidget>("tBusInitDelay")->setFocus();
    EXPECT_EQ(TextOf("tRefreshRate"), "110");
    EXPECT_EQ(starts(), 0U);
    for (const char* field : {"tRefreshRate", "tOSKPath", "tRefreshRate"}) Click(field);
    QTest::mouseClick(Find<QComboBox>("coSkin")->lineEdit(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return starts() == 1; }));
    std::filesystem::rename(keys, folder_ / "others.sh");  // that one ends
    std::filesystem::copy(folder_ / "others.sh", keys + "2");
    basGlobal.OSKPath = keys + "2";
    EXPECT_TRUE(QTest::qWaitFor([&] {
        Click("tRefreshRate");
        return starts() >= 2;
    }));
}
#endif

TEST_F(SettingsDialog, SaysThatNoKeyboardIsSet) {
    basGlobal.OSKPath = "0";
    Open();
    Click("Command6");
    EXPECT_NE(Message().find("No on-screen keyboard is set"), std::string::npos) << Message();
}

TEST(SteppedNumber, KeepsTheWayInWhichItIsWritten) {
    const NumberSteps milliseconds{.Step = 10, .Lowest = 1};
    const NumberSteps seconds{.Lowest = 1, .OrNothing = true};
    const NumberSteps factor{.Step = 0.01};
    const struct {
        const char* Text;
        NumberSteps Steps;
        bool Up;
        const char* Then;
    } rows[] = {
        {"50", milliseconds, true, "60"},   {"55", milliseconds, false, "50"},
        {"10", milliseconds, false, "1"},   {"1", milliseconds, true, "10"},
        {"fast", milliseconds, true, "10"}, {"", seconds, true, "1"},
        {"1", seconds, false, ""},          {"-40", {}, false, "-41"},
        {"0,25", factor, true, "0,26"},     {"0.3921568627", factor, true, "0.4021568627"},
        {"0.01", factor, false, "0.00"},    {"1", factor, true, "1.01"},
        {"1e-3", factor, true, "0.011"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Stepped(QString::fromLatin1(row.Text), row.Steps, row.Up).toStdString(), row.Then)
            << row.Text;
}

TEST_F(SettingsDialog, TheTabKeyReachesEveryFieldOfATab) {
    frSettings& dialog = Open();
    for (int tab = 0; tab < 2; ++tab) {
        std::set<const QWidget*> reached;
        for (int i = 0; i < 60; ++i) {
            QTest::keyClick(dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog,
                            Qt::Key_Tab);
            reached.insert(dialog.focusWidget());
        }
        for (const QWidget* widget : ShownControls()) {
            const auto* field = qobject_cast<const QLineEdit*>(widget);
            if (field != nullptr && field->isReadOnly()) continue;
            if (widget->focusPolicy() == Qt::NoFocus) continue;  // the buttons beside a number
            EXPECT_EQ(reached.count(widget), 1U) << widget->objectName().toStdString();
        }
        ShowTab(1);
    }
}

TEST_F(SettingsDialog, StandsAsideForAMessageAndComesBack) {
    frSettings& dialog = Open();
    Type("tRefreshRate", QStringLiteral("77"));
    ShowPopup("Look here", 1);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(window_->Warning().IsOpen());
    window_->Warning().Answer(kAnswerOk);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(TextOf("tRefreshRate"), "77");
}

TEST_F(SettingsDialog, OpenedDuringAMessageItWaitsForTheAnswer) {
    ShowPopup("Look here", 1);
    upCalls.ShowSettingsDialog();
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_FALSE(Dialog()->isVisible());
    window_->Warning().Answer(kAnswerOk);
    EXPECT_TRUE(Dialog()->isVisible());
}

/// The fields of the console's line for a named widget.
std::vector<std::string> ElementLine(const std::string& name) {
    std::istringstream report(AnswerRequest("elements"));
    for (std::string line; std::getline(report, line);) {
        std::vector<std::string> fields;
        std::istringstream parts(line);
        for (std::string field; std::getline(parts, field, '\t');) fields.push_back(field);
        if (fields.size() > 7 && fields[7] == name) return fields;
    }
    return {};
}

std::string MiddleOf(const std::vector<std::string>& line) {
    const auto middle = [&line](std::size_t from, std::size_t size) {
        return std::to_string(std::stoi(line[from]) + std::stoi(line[size]) / 2);
    };
    return middle(2, 4) + " " + middle(3, 5);
}

TEST_F(SettingsDialog, AConsoleUsesItByWhatItLists) {
    Open();
    const auto field = ElementLine("tRefreshRate");
    ASSERT_EQ(field.size(), 9U);
    EXPECT_EQ(field[0], "Text");
    EXPECT_EQ(field[6], "1");
    EXPECT_EQ(field[8], "100");
    EXPECT_EQ(ElementLine("coBaudrate")[6], "0");  // further down
    AnswerRequest("move 400 300");
    for (int turn = 0; turn < 3; ++turn) AnswerRequest("wheel -4");  // one goes a page at most
    const auto speed = ElementLine("coBaudrate");
    EXPECT_EQ(speed[0], "Combo");
    EXPECT_EQ(speed[6], "1");

    AnswerRequest("click " + MiddleOf(speed));
    AnswerRequest("key Down");
    EXPECT_EQ(AnswerRequest("click " + MiddleOf(ElementLine("Command1"))), "ok");
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_TRUE(ElementLine("tRefreshRate").empty());
}

}  // namespace
}  // namespace dravik
