#include "dialog/frSettings.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "dialog/DialogControls.h"
#include "dialog/GeneralTab.h"
#include "dialog/InfoTabs.h"
#include "dialog/SensorTab.h"
#include "dialog/SettingsLook.h"
#include "obd/PortSearch.h"
#include "obd/basOBD.h"
#include "platform/serial/PortPresence.h"
#include "settings/SettingsWriter.h"
#include "settings/basSettings.h"
#include "skin/basSkin.h"

namespace dravik {

namespace {

constexpr QSize kAlone(800, 480);     // without a window to lie over
constexpr QSize kSmallest(320, 240);  // in pixels, whatever the scale
constexpr int kButtonWidth = 130;
constexpr int kMessageBeside = 640;  // a dialog at least that wide has messages beside its buttons
constexpr int kTabWidth = 134;
constexpr int kTabGap = 4;
constexpr int kMargin = 6;

QSize SizeOver(const QWidget* window) {
    if (window == nullptr) return kAlone;
    return window->size().expandedTo(kSmallest);
}

/// What a dialog over that window may cover of the screen; empty when the display is off.
QRect RoomFor(const QWidget* window) {
    QRect room = window->screen()->availableGeometry();
    if (window->isFullScreen()) return room;
    const QRect inside = window->geometry();
    const QRect outside = window->frameGeometry();
    return room.adjusted(inside.left() - outside.left(), inside.top() - outside.top(),
                         inside.right() - outside.right(), inside.bottom() - outside.bottom());
}

/// What the user is told; the name alone, since there is no room for a path.
QString Explained(const NotSaved& failed) {
    const std::string name = failed.File.substr(failed.File.find_last_of("/\\") + 1);
    const QString text =
        failed.Outside
            ? InWords(
                  "Nothing is saved: %1 lies outside the program folder, and the sensors in it "
                  "cannot be changed.")
            : InWords("%1 could not be written and is unchanged.") + QLatin1Char('\n') +
                  InWords("Is the disk full or write-protected?");
    return text.arg(Shown(name));
}

}  // namespace

frSettings::frSettings(QWidget* window)
    : QDialog(window), window_(window), SSTab1_(new QTabWidget), lMessage_(new QLabel) {
    setObjectName(QStringLiteral("frSettings"));
    setWindowTitle(InWords("Dravik Settings"));
    setAttribute(Qt::WA_DeleteOnClose);
    ApplySettingsLook(this, TouchScale(SizeOver(window)));

    const auto tell = [this](const QString& message) { Tell(message); };
    editor_.Load(basGlobal.SensorFile);
    general_ = new GeneralTab(tell);
    general_->Fill(ReadSettings());
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    SSTab1_->addTab(general_, InWords("General"));
    SSTab1_->addTab(new SensorTab(editor_, tell), InWords("PIDs"));
    SSTab1_->addTab(MakeFunctionsTab(), InWords("Functions"));
    SSTab1_->addTab(MakeAboutTab(), InWords("About"));

    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetNoConstraint);  // the screen decides
    column->setContentsMargins(Px(kMargin), Px(kMargin), Px(kMargin), Px(kMargin));
    column->setSpacing(Px(kMargin));
    column->addWidget(SSTab1_, 1);
    column->addWidget(Buttons());

    auto* save = new QShortcut(QKeySequence::Save, this);
    QObject::connect(save, &QShortcut::activated, this, [this] { Save(); });

    SearchPorts(
        PortCandidates(),
        [general = QPointer<GeneralTab>(general_)](const PortCandidate& port) {
            const bool usable = port.State != PortState::NoPermission;
            if (general != nullptr && usable) general->OfferPort(port);
        },
        LookAtPort);
    Place();
    if (window != nullptr)  // a display that is turned, or a keyboard that takes a part of it
        QObject::connect(window->screen(), &QScreen::availableGeometryChanged, this,
                         [this] { Place(); });
}

QWidget* frSettings::Buttons() {
    auto* bar = new QWidget;
    lMessage_->setObjectName(QStringLiteral("lMessage"));
    lMessage_->setWordWrap(true);
    QPushButton* cancel = MakeButton("Command1", InWords("Cancel"));
    QPushButton* save = MakeButton("bSave", InWords("Save"));
    QObject::connect(cancel, &QPushButton::clicked, this, [this] { close(); });
    QObject::connect(save, &QPushButton::clicked, this, [this] { Save(); });
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Px(kMargin));
    for (QPushButton* button : {cancel, save}) {
        button->setMinimumWidth(Px(kButtonWidth));
        buttons->addWidget(button);
    }
    bar_ = new QBoxLayout(QBoxLayout::LeftToRight, bar);
    bar_->setContentsMargins(Px(kMargin), 0, Px(kMargin), 0);
    bar_->addWidget(lMessage_, 1);
    bar_->addLayout(buttons);
    return bar;
}

/// Over a full-screen page the dialog has no frame, since there may be nobody to draw one and it
/// would cost room that a small screen does not have.
void frSettings::Place() {
    QRect place(QPoint(0, 0), SizeOver(window_));
    if (window_ == nullptr) {
        resize(place.size());
        return;
    }
    if (window_->isFullScreen() && !windowFlags().testFlag(Qt::FramelessWindowHint))
        setWindowFlag(Qt::FramelessWindowHint);
    place.moveCenter(QRect(window_->mapToGlobal(QPoint(0, 0)), window_->size()).center());
    const QRect room = RoomFor(window_);
    if (!room.isEmpty()) {
        place.setSize(place.size().boundedTo(room.size()));
        place.moveRight(std::min(place.right(), room.right()));
        place.moveBottom(std::min(place.bottom(), room.bottom()));
        place.moveTopLeft({std::max(place.left(), room.left()), std::max(place.top(), room.top())});
    }
    setGeometry(place);
}

void frSettings::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    const bool beside = width() >= Px(kMessageBeside);
    bar_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    Tell(lMessage_->text());
    FitTabs();
}

/// All tabs are in view: one that a narrow screen hid would have to be looked for.
void frSettings::FitTabs() {
    QTabBar* tabs = SSTab1_->tabBar();
    const int room = (width() - 2 * Px(kMargin)) / tabs->count() - 2 * Px(kTabGap);
    const bool narrow = room < Px(kTabWidth) / 2 + Px(kTabGap);
    tabs->setStyleSheet(QStringLiteral("QTabBar::tab { width: %1px; %2 }")
                            .arg(std::min(Px(kTabWidth), room))
                            .arg(narrow ? QStringLiteral("font-size: 12px;") : QString()));
}

void frSettings::BringToFront() {
    show();
    raise();
    activateWindow();
}

void frSettings::GiveWay(bool hidden) {
    if (closed_ || hidden == gaveWay_) return;
    gaveWay_ = hidden;
    if (hidden)
        hide();
    else
        BringToFront();
}

void frSettings::done(int result) {
    closed_ = true;
    QDialog::done(result);
}

void frSettings::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    if (event->isAutoRepeat()) return;  // the key that opened the dialog may still be held
    // Return presses the button that has the focus; in a field it must not close the dialog.
    if (auto* button = qobject_cast<QPushButton*>(focusWidget())) button->click();
}

void frSettings::Tell(const QString& message) {
    lMessage_->setText(message);
    lMessage_->setVisible(bar_->direction() == QBoxLayout::LeftToRight || !message.isEmpty());
}

void frSettings::Save() {
    const SettingsValues before = ReadSettings();
    const SettingsValues values = general_->Values();
    if (const auto failed = SaveSettings(values, editor_.Rows())) {
        Tell(Explained(*failed));
        return;
    }
    // A skin or language chosen here takes the place of one from the command line.
    if (values[Setting::Skin] != before[Setting::Skin]) {
        basGlobal.Launch.Skin.clear();
        basGlobal.ChosenSkin.clear();
    }
    if (values[Setting::Language] != before[Setting::Language]) basGlobal.Launch.Language.clear();
    Apply();
}

void frSettings::Apply() {
    ClearPidWanted();
    LoadSettings();
    if (general_->HasFound()) basGlobal.ConnState = kConnecting;  // that is what it was found for
    upCalls.ApplyPointerShape();
    close();  // first, so that nothing that the page has to say is hidden behind the dialog
    LoadSkinPage("mainmenu", false);
}

}  // namespace dravik
