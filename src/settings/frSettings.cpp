#include "settings/frSettings.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTabWidget>

#include "core/MainWindow.h"
#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/PortPresence.h"
#include "settings/GeneralTab.h"
#include "settings/InfoTabs.h"
#include "settings/PortSearch.h"
#include "settings/SensorTab.h"
#include "settings/SettingsLook.h"
#include "settings/SettingsWriter.h"
#include "settings/basSettings.h"
#include "skin/PageControl.h"

namespace dravik {

namespace {

constexpr QSize kSmallest(480, 320);
constexpr QSize kLargest(1000, 700);
constexpr int kButtonWidth = 130;

/// What the user is told; the name alone, since there is no room for a path.
QString Explained(const NotSaved& failed) {
    const std::string name = failed.File.substr(failed.File.find_last_of("/\\") + 1);
    const QString text = failed.Outside
                             ? QStringLiteral(
                                   "Nothing is saved: %1 lies outside the program folder, and the "
                                   "sensors in it cannot be changed.")
                             : QStringLiteral(
                                   "%1 could not be written and is unchanged.\n"
                                   "Is the disk full or write-protected?");
    return text.arg(Shown(name));
}

}  // namespace

frSettings::frSettings(QWidget* window)
    : QDialog(window), SSTab1_(new QTabWidget), general_(new GeneralTab), lMessage_(new QLabel) {
    setObjectName(QStringLiteral("frSettings"));
    setWindowTitle(QStringLiteral("Dravik Settings"));
    setAttribute(Qt::WA_DeleteOnClose);
    ApplySettingsLook(this);

    editor_.Load(basGlobal.SensorFile);
    general_->Fill(ReadSettings());
    auto* sensors = new SensorTab(editor_, [this](const QString& message) { Tell(message); });
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    SSTab1_->addTab(general_, QStringLiteral("General"));
    SSTab1_->addTab(sensors, QStringLiteral("PIDs"));
    SSTab1_->addTab(MakeFunctionsTab(), QStringLiteral("Functions"));
    SSTab1_->addTab(MakeAboutTab(), QStringLiteral("About"));
    SSTab1_->setUsesScrollButtons(true);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(6, 6, 6, 8);
    column->setSpacing(6);
    column->addWidget(SSTab1_, 1);
    column->addWidget(Buttons());

    auto* save = new QShortcut(QKeySequence::Save, this);
    QObject::connect(save, &QShortcut::activated, this, [this] { Save(); });

    SearchPorts(
        PortCandidates(),
        [general = QPointer<GeneralTab>(general_)](const PortCandidate& port) {
            if (general != nullptr) general->OfferPort(port);
        },
        PortPresent);
    Place(window);
}

QWidget* frSettings::Buttons() {
    auto* bar = new QWidget;
    lMessage_->setObjectName(QStringLiteral("lMessage"));
    lMessage_->setWordWrap(true);
    QPushButton* cancel = MakeButton("Command1", QStringLiteral("Cancel"));
    QPushButton* save = MakeButton("bSave", QStringLiteral("Save"));
    QObject::connect(cancel, &QPushButton::clicked, this, [this] { close(); });
    QObject::connect(save, &QPushButton::clicked, this, [this] { Save(); });
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(6, 0, 6, 0);
    row->addWidget(lMessage_, 1);
    for (QPushButton* button : {cancel, save}) {
        button->setMinimumWidth(kButtonWidth);
        row->addWidget(button);
    }
    return bar;
}

/// Over a full-screen page the dialog has no frame, since there may be nobody to draw one and it
/// would cost room that a small screen does not have.
void frSettings::Place(QWidget* window) {
    setMinimumSize(kSmallest);
    if (window == nullptr) {
        resize(800, 480);
        return;
    }
    if (window->isFullScreen()) setWindowFlag(Qt::FramelessWindowHint);
    const QRect area = window->screen()->availableGeometry();
    const QSize size =
        window->size().boundedTo(kLargest).expandedTo(kSmallest).boundedTo(area.size());
    QRect place(QPoint(0, 0), size);
    place.moveCenter(QRect(window->mapToGlobal(QPoint(0, 0)), window->size()).center());
    setGeometry(place);
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
}

void frSettings::Save() {
    const SettingsValues before = ReadSettings();
    const SettingsValues values = general_->Values();
    if (const auto failed = SaveSettings(values, editor_.Rows())) {
        Tell(Explained(*failed));
        return;
    }
    // A skin or language chosen here takes the place of one from the command line.
    if (values.Skin != before.Skin) basGlobal.Launch.Skin.clear();
    if (values.Language != before.Language) basGlobal.Launch.Language.clear();
    Apply();
}

void frSettings::Apply() {
    ClearPidWanted();
    LoadSettings();
    ApplyPointerShape();
    close();  // first, so that nothing that the page has to say is hidden behind the dialog
    LoadSkinPage("mainmenu", false);
}

}  // namespace dravik
