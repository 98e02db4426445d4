#include <QAbstractButton>
#include <QCheckBox>
#include <QScrollArea>
#include <QTabWidget>
#include <set>
#include <sstream>

#include "core/ConsoleRequests.h"
#include "settings/dialog/DialogFixture.h"
#include "skin/ShowMessage.h"
#include "skin/frWarning.h"

namespace dravik {
namespace {

class SettingsDialog : public DialogTest {};

TEST_F(SettingsDialog, ShowsTheSettingsAndOffersTheFilesThatThereAre) {
    Open();
    EXPECT_EQ(TextOf("coCommSelect"), "COM3");
    EXPECT_EQ(TextOf("tBusInitDelay"), "1");
    EXPECT_EQ(TextOf("tOSKPath"), "/opt/keys");
    EXPECT_EQ(TextOf("tBaudrate"), "");
    EXPECT_TRUE(Find<QCheckBox>("chMiscOptions0")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>("chMiscOptions3")->isChecked());
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
    ShowSettingsDialog();
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

TEST_F(SettingsDialog, EveryControlFitsAFingerAndASmallScreen) {
    frSettings& dialog = Open();
    ASSERT_EQ(dialog.size(), QSize(800, 480));
    for (int tab = 0; tab < 4; ++tab) {
        for (const QWidget* widget : ShownControls()) {
            const QPoint corner = widget->mapTo(&dialog, widget->rect().bottomRight());
            EXPECT_GE(widget->height(), 40) << widget->objectName().toStdString();
            EXPECT_LT(corner.x(), dialog.width()) << widget->objectName().toStdString();
        }
        for (const QScrollArea* area : dialog.findChildren<QScrollArea*>()) {
            if (!area->isVisible()) continue;
            EXPECT_LE(area->widget()->minimumSizeHint().width(), area->viewport()->width());
        }
        ShowTab(1);
    }
    EXPECT_LE(Find<QWidget>("bSave")->mapTo(&dialog, QPoint(0, 42)).y(), dialog.height());
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
    ShowSettingsDialog();
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
    EXPECT_EQ(ElementLine("coSkin")[6], "0");  // further down
    AnswerRequest("move 400 300");
    AnswerRequest("wheel -5");
    const auto skin = ElementLine("coSkin");
    EXPECT_EQ(skin[0], "Combo");
    EXPECT_EQ(skin[6], "1");

    AnswerRequest("click " + MiddleOf(ElementLine("coSkin")));
    AnswerRequest("key Down");
    EXPECT_EQ(AnswerRequest("click " + MiddleOf(ElementLine("Command1"))), "ok");
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_TRUE(ElementLine("tRefreshRate").empty());
}

}  // namespace
}  // namespace dravik
