#pragma once

#include <QPixmap>
#include <QPointer>
#include <QSize>
#include <QWidget>
#include <memory>
#include <string>

#include "app/InputWatch.h"
#include "core/basGlobal.h"

class QScreen;

namespace dravik {

class frSettings;
class frWarning;
class Selection;
class SkinScreen;

/// The main window: it holds the page, runs the start-up and the shut-down, and turns input into
/// commands. Everything else happens in the ticks of the form timers.
class frMain : public QWidget {
 public:
    struct Options {
        std::string ProgramFolder;
        LaunchOptions Launch;
        bool Windowed = false;  ///< a window instead of the full screen
        QSize WindowSize;  ///< of the window; empty: the skin's design size, scaled down where the
                           ///< screen is smaller; without one 800 x 480
    };

    frMain();
    ~frMain() override;

    /// The start-up sequence: settings, resume state, one second on the start-up picture, first
    /// page, timers. Pumps events for that second; returns early when the program is asked to end.
    void Start(const Options& options);

    /// The shut-down sequence; runs once. The event loop ends when the handlers that are now
    /// running have returned.
    void Unload();

    SkinScreen& Screen() { return *screen_; }
    frWarning& Warning() { return *warning_; }
    Selection& Selected() { return *selection_; }

    /// Shows the settings dialog; there is never more than one.
    void ShowSettings();

    /// True once the first page has been built.
    bool Started() const { return started_; }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

 private:
    bool TakesWheel(const QObject* object) const;
    void ShowStartupPicture();
    void ConnectTimers();
    void SetUpCalls();
    void ApplyPointerShape();
    void ConnectScreen();
    void Pause();
    bool ShowsLiveData() const;
    void SuitScreen(const Options& options) const;
    void ShowWindow(const Options& options);
    QSize DesignedWindow() const;
    void CoverScreen();
    void FollowScreen(const QScreen* screen);
    void MessageShown(bool shown);

    std::unique_ptr<SkinScreen> screen_;
    std::unique_ptr<Selection> selection_;
    InputWatch input_;
    frWarning* warning_;
    QPointer<frSettings> settings_;
    QPixmap startupPicture_;
    QMetaObject::Connection screenGeometry_;
    bool started_ = false;
    bool unloaded_ = false;
};

}  // namespace dravik
