#include "app/frMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>

#include "app/Snapshot.h"
#include "core/DataFiles.h"
#include "core/UpCalls.h"
#include "dialog/frSettings.h"
#include "lists/basFunctions.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Blanking.h"
#include "platform/Events.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "report/Report.h"
#include "settings/basSettings.h"
#include "skin/PageCanvas.h"
#include "skin/Selection.h"
#include "skin/SkinFile.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "skin/message/ShowMessage.h"
#include "skin/message/frWarning.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr QSize kDefaultWindow(800, 480);
constexpr const char* kStartupPicture = "Dravik.jpg";

}  // namespace

frMain::frMain() : screen_(std::make_unique<SkinScreen>(this)), warning_(new frWarning(this)) {
    setObjectName(QStringLiteral("frMain"));
    setAttribute(Qt::WA_OpaquePaintEvent);  // it paints all of itself
    setWindowTitle(QStringLiteral("Dravik"));
    selection_ = std::make_unique<Selection>(*screen_);
    ConnectScreen();
    ConnectTimers();
    InitSkin(screen_.get());
    InitMessages(warning_);
    SetUpCalls();
    qApp->installEventFilter(this);
}

void frMain::SetUpCalls() {
    upCalls.MinimizeMainWindow = [this] { showMinimized(); };
    upCalls.UnloadMainWindow = [this] { Unload(); };
    upCalls.SendTabKey = [this](bool backwards) { selection_->MoveInTabOrder(backwards); };
    upCalls.MoveFocus = [this](Direction direction) { selection_->Move(direction); };
    upCalls.ApplyPointerShape = [this] { ApplyPointerShape(); };
    upCalls.ShowSettingsDialog = [this] { ShowSettings(); };
    upCalls.ChartPictures = [this] { return ChartPictures(*screen_); };
    upCalls.TakeSnapshot = [this](const std::vector<int>& charts) {
        TakeSnapshot(*screen_, charts);
    };
}

frMain::~frMain() {
    QObject::disconnect(qApp, nullptr, this, nullptr);  // the focus still wanders as children go
    InitMessages(nullptr);
    InitSkin(nullptr);
    upCalls = UpCalls{};
}

void frMain::ConnectTimers() {
    GlobalState& g = basGlobal;
    InitLink();
    InitReports();
    g.tiStartup.OnTick([] { basGlobal.tiStartup.SetEnabled(false); });
    g.tiMain.OnTick([this] { RefreshScreen(*screen_); });
    g.tiAux.OnTick([this] {
        basGlobal.StartupFlag = basGlobal.ResumeFlag = false;
        if (ShowsLiveData()) PutOffBlanking();
    });
    g.tiDTCScroll.OnTick(ScrollTroubleCode);
    g.tiNight.OnTick([] {
        // Nothing that waits for the user is taken away.
        if (BoxOpen() || MessageDialog()->IsOpen()) return;
        if (FollowClock()) ShowInNewSkin();
    });
}

void frMain::ConnectScreen() {
    screen_->Page()->BackgroundClicked = [this](bool) {
        ExecuteCommand(screen_->Page()->HasNotice() ? "config" : "openmenu_mainmenu");
    };
    ScreenEvents& events = screen_->Events;
    events.ButtonPressed = [this](int index) { selection_->ButtonPressed(index); };
    events.ButtonReleased = [this](int) { selection_->StopRepeat(); };
    events.ButtonClicked = [this](int index) { selection_->ButtonClicked(index); };
    events.ButtonEntered = [this](int index) { selection_->PointerOverButton(index); };
    events.PressesDropped = [this] { selection_->StopRepeat(); };
    // A page appears with its values, not a refresh later.
    events.PageBuilt = [this] {
        if (basGlobal.tiMain.Enabled()) RefreshScreen(*screen_);
    };
    events.ListActivated = [this](int index) {
        if (const auto* list = FindAt(screen_->Elements(kListKind), index))
            ActivateListEntry(ListSlotByName(list->Evaluated));
    };
    events.SliderChanged = [](int index, std::int32_t& value) { ScrollListBySlider(index, value); };
    QObject::connect(qApp, &QApplication::focusChanged, this,
                     [this](QWidget*, QWidget* now) { selection_->FocusChanged(now); });
}

void frMain::Start(const Options& options) {
    GlobalState& g = basGlobal;
    g.Launch = options.Launch;
    InitGlobals(options.ProgramFolder);
    g.DecimalSign = SystemDecimalSign();
    ShowStartupPicture();
    if (WelcomeAsked()) SuitScreen(options);
    ShowWindow(options);

    LoadSettings();
    LoadSkinFonts();  // now, while the start-up picture is shown
    ApplyPointerShape();
    LoadResumeState();
    Pause();
    if (g.Closing) return;

    startupPicture_ = QPixmap();
    g.Welcoming = WelcomeAsked() && g.Launch.DemoDevice.empty() && HasSkinSection(kWelcomePage);
    LoadSkinPage(g.Welcoming ? kWelcomePage : std::string(g.CurrentMenu), false);
    if (g.Closing) return;
    g.tiMain.SetEnabled(true);
    g.tiAux.SetEnabled(true);
    g.tiHardware.SetEnabled(true);
    g.tiNight.SetEnabled(true);
    show();
    started_ = true;
}

/// A missing picture is no error: the window then waits in black.
void frMain::ShowStartupPicture() {
    const std::string path =
        ResolvePath(DataFile(JoinPath(basGlobal.ProgramFolder, kStartupPicture)));
    startupPicture_.load(QString::fromStdString(path));
}

/// A new user has not chosen a skin yet. A window without a size of its own follows the skin
/// instead.
void frMain::SuitScreen(const Options& options) const {
    const QSize size = options.Windowed ? options.WindowSize : screen()->size();
    if (!size.isEmpty()) ChooseSkinForScreen(size.height() > size.width());
}

void frMain::ShowWindow(const Options& options) {
    if (options.Windowed) {
        resize(options.WindowSize.isEmpty() ? DesignedWindow() : options.WindowSize);
        show();
    } else {
        CoverScreen();
        showFullScreen();
        FollowScreen(screen());
    }
    QObject::connect(windowHandle(), &QWindow::screenChanged, this,
                     [this, windowed = options.Windowed](QScreen* screen) {
                         if (!windowed) {
                             FollowScreen(screen);
                             CoverScreen();
                         }
                         screen_->Layout(size());  // another display may have another density
                     });
}

/// The skin is known before the settings are loaded, so that the window opens at once as it stays.
QSize frMain::DesignedWindow() const {
    FindSkinFiles();
    screen_->ReadDesignSize();
    const QSize design = screen_->DesignSize();
    if (design.isEmpty()) return kDefaultWindow;
    const QSize area = screen()->availableSize();
    const bool fits = area.isEmpty() || design.boundedTo(area) == design;
    return fits ? design : design.scaled(area, Qt::KeepAspectRatio);
}

/// Without a window manager nobody else gives the window the size of the screen.
void frMain::CoverScreen() {
    const QRect area = screen()->geometry();
    if (!area.isEmpty()) setGeometry(area);  // a display that is switched off has no size
    // A window with a size of its own no longer counts as one that fills the screen.
    setWindowState(windowState() | Qt::WindowFullScreen);
}

void frMain::FollowScreen(const QScreen* screen) {
    QObject::disconnect(screenGeometry_);
    if (screen == nullptr) return;
    screenGeometry_ =
        QObject::connect(screen, &QScreen::geometryChanged, this, [this] { CoverScreen(); });
}

void frMain::ApplyPointerShape() {
    setCursor(basGlobal.HidePointer ? Qt::BlankCursor : Qt::ArrowCursor);
}

void frMain::Pause() {
    constexpr double kLookAgain = 1;
    while (basGlobal.tiStartup.Enabled() && !basGlobal.Closing) WaitForEvents(kLookAgain);
}

/// Nobody looks at a window that is minimised, or drawn where there is no screen.
bool frMain::ShowsLiveData() const {
    return basGlobal.ConnState == kReceivingData && isVisible() && !isMinimized() &&
           QGuiApplication::platformName() != QLatin1String("offscreen");
}

void frMain::Unload() {
    if (unloaded_) return;
    unloaded_ = true;
    GlobalState& g = basGlobal;
    g.Closing = true;  // every wait for the interface or the user ends
    SerialPort::AbortWaits();
    for (FormTimer* timer : {&g.tiMain, &g.tiAux, &g.tiHardware, &g.tiTimeout, &g.tiSkinReload,
                             &g.tiDTCScroll, &g.tiKeyrepeat, &g.tiNight, &g.tiReport})
        timer->SetEnabled(false);

    SaveResumeState();
    if (g.comOBD.IsOpen()) g.comOBD.Close();
    AllowBlanking();
    QApplication::closeAllWindows();
    QApplication::quit();
}

void frMain::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (startupPicture_.isNull()) return;
    const QSize size = startupPicture_.size().scaled(this->size(), Qt::KeepAspectRatio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(
        QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size),
        startupPicture_);
}

void frMain::resizeEvent(QResizeEvent*) {
    screen_->Layout(size());
    warning_->Layout(size(), screen_->Scale());
}

/// A key that is released elsewhere never tells.
void frMain::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) selection_->StopRepeat();
    QWidget::changeEvent(event);
}

/// The Tab key goes from element to element of the page or the box.
bool frMain::focusNextPrevChild(bool next) {
    selection_->MoveInTabOrder(!next);
    return true;
}

void frMain::closeEvent(QCloseEvent* event) {
    event->accept();
    Unload();
}

void frMain::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Q && event->modifiers() == Qt::ControlModifier)
        ExecuteCommand("quit");
    else if (!selection_->KeyPressed(*event))
        QWidget::keyPressEvent(event);
}

void frMain::keyReleaseEvent(QKeyEvent* event) {
    selection_->KeyReleased(*event);
}

/// Whether a wheel turned over that object works on the page. Asked before the object has the
/// event: on its way up through the widgets it would get lost.
bool frMain::TakesWheel(const QObject* object) const {
    return (basGlobal.Misc & kMiscMouseWheel) != 0 && object->isWidgetType() &&
           static_cast<const QWidget*>(object)->window() == this && !warning_->IsOpen();
}

/// Sees every event of the program: keeps track of pointer and keys, and takes the wheel.
bool frMain::eventFilter(QObject* object, QEvent* event) {
    const QEvent::Type type = event->type();
    if (input_.Takes(object, event)) return true;
    if (type == QEvent::Wheel && TakesWheel(object)) {
        selection_->WheelTurned(static_cast<QWheelEvent*>(event)->angleDelta().y());
        event->accept();
        return true;
    } else if (type == QEvent::Enter) {
        selection_->PointerOver(object);
    } else if (object == warning_ && (type == QEvent::Show || type == QEvent::Hide)) {
        MessageShown(type == QEvent::Show);
    }
    return QWidget::eventFilter(object, event);
}

/// A message lies in the main window, so the dialog above it has to give way.
void frMain::MessageShown(bool shown) {
    if (settings_ != nullptr && !basGlobal.Closing) settings_->GiveWay(shown);
}

void frMain::ShowSettings() {
    screen_->DropPresses();
    if (settings_ == nullptr || settings_->Closed()) settings_ = new frSettings(this);
    if (warning_->IsOpen())
        settings_->GiveWay(true);  // it follows once the message is answered
    else
        settings_->BringToFront();
}

}  // namespace dravik
