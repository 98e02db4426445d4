#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QTabWidget>
#include <QtTest>
#include <string>

#include "app/frMain.h"
#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "dialog/frSettings.h"
#include "settings/basSettings.h"
#include "support/TemporaryFolder.h"

namespace dravik {

constexpr const char* kSettings =
    "; kept by hand\n"
    "[Options]\nMisc=1\nSkin=night\nLanguage=English\nOSKPath=/opt/keys\nTheirs=stays\n\n"
    "[OBD]\nComPort=3\nBusInitDelay=1\nUpdateIntervall=50\nRefreshRate=100\n";

constexpr const char* kSensors =
    "; the sensors\n[SensorConfig]\n"
    "Sensor0Function=RPM\nSensor0Source=obd_0C\nSensor0Factor=0,25\nSensor0Offset=0\n"
    "Sensor0Min=0\nSensor0Max=8000\nSensor0Caption=Engine\nSensor0Unit= rpm\n"
    "Sensor1Function=temp\nSensor1Source=obd_05\nSensor1Factor=1\nSensor1Offset=-40\n"
    "Sensor1Min=-40\nSensor1Max=215\nSensor1Caption=K\xFChlwasser\nSensor1Unit=\" \260C\"\n"
    "Sensor2Function=speed\nSensor2Source=obd_0D\nSensor2Factor=1\nSensor2Offset=0\n"
    "Sensor2Min=0\nSensor2Max=255\nSensor2Caption=Speed\nSensor2Unit=km/h\n"
    "Sensor3Function=0\n";

/// A program folder with settings, three sensors and two skins, and the real main window with the
/// page "other" in it. The program itself is not started.
class DialogTest : public ::testing::Test {
 protected:
    DialogTest() {
        basGlobal = GlobalState{};
        folder_.Write("Dravik.ini", kSettings);
        folder_.Write("languages/English.ini", "[Sensors]\nFilename=english.sensors\n");
        folder_.Write("languages/english.sensors", kSensors);
        folder_.Write("skins/night.ini", kSkin);
        folder_.Write("skins/day.ini", kSkin);
        InitGlobals(folder_.Path());
        window_ = std::make_unique<frMain>();
        window_->resize(800, 480);
        window_->show();
        LoadSettings();
        basGlobal.CurrentMenu = "other";
    }

    ~DialogTest() override {
        window_.reset();
        basGlobal = GlobalState{};
    }

    /// The dialog, opened the way a command opens it.
    frSettings& Open() {
        upCalls.ShowSettingsDialog();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Dialog()));
        return *Dialog();
    }

    static frSettings* Dialog() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* dialog = dynamic_cast<frSettings*>(widget);
            if (dialog != nullptr && !dialog->Closed()) return dialog;
        }
        return nullptr;
    }

    template <typename Widget>
    static Widget* Find(const char* name) {
        auto* found = Dialog()->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    /// Goes on by that many tabs, by the keys for it.
    static void ShowTab(int tab) {
        auto* tabs = Dialog()->findChild<QTabWidget*>();
        const int shown = (tabs->currentIndex() + tab) % tabs->count();
        for (int i = 0; i < tab; ++i) QTest::keyClick(tabs, Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(tabs->currentIndex(), shown);
        QCoreApplication::processEvents();  // it is laid out when it is first seen
    }

    /// Clicks a control where it is seen, as a user does.
    static void Click(const char* name) {
        auto* widget = Find<QWidget>(name);
        for (QWidget* above = widget; above != nullptr; above = above->parentWidget())
            if (auto* area = qobject_cast<QScrollArea*>(above)) area->ensureWidgetVisible(widget);
        const bool box = qobject_cast<QCheckBox*>(widget) != nullptr;  // may be wider than its text
        ClickAt(widget,
                box ? QPoint(widget->height() / 2, widget->height() / 2) : widget->rect().center());
    }

    /// Through the window, which finds by itself what lies there.
    static void ClickAt(const QWidget* widget, QPoint place) {
        const QWidget* window = widget->window();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, widget->mapTo(window, place));
    }

    /// Types a text into a field or a box, over what stands there.
    static void Type(const char* name, const QString& text) {
        auto* widget = Find<QWidget>(name);
        widget->setFocus();
        auto* box = qobject_cast<QComboBox*>(widget);
        auto* field = box != nullptr ? box->lineEdit() : qobject_cast<QLineEdit*>(widget);
        field->selectAll();
        if (text.isEmpty())
            QTest::keyClick(field, Qt::Key_Delete);
        else
            QTest::keyClicks(field, text);
    }

    static std::string TextOf(const char* name) {
        auto* widget = Find<QWidget>(name);
        if (auto* box = qobject_cast<QComboBox*>(widget)) return box->currentText().toStdString();
        return widget->property("text").toString().toStdString();
    }

    static std::string Message() { return TextOf("lMessage"); }

    TemporaryFolder folder_;
    std::unique_ptr<frMain> window_;

 private:
    static constexpr const char* kSkin =
        "[mainmenu]\nLabel0Function=speed\nLabel0Color=0\n[other]\n";
};

}  // namespace dravik
