#pragma once

#include <QDialog>
#include <QPointer>

#include "settings/SensorEditor.h"

class QBoxLayout;
class QLabel;
class QTabWidget;

namespace dravik {

class GeneralTab;

/// The settings dialog. It shows what the settings file and the sensor file hold at the time it is
/// made, and changes nothing until it is saved. Not modal: the page behind goes on. It deletes
/// itself when it is closed.
class frSettings : public QDialog {
 public:
    /// A window of its own over `window` (may be null), as large as that one but never larger
    /// than the screen.
    explicit frSettings(QWidget* window);

    /// Shows the dialog in front of everything else.
    void BringToFront();

    /// Hides the dialog while something in the main window has to be seen, and shows it again.
    void GiveWay(bool hidden);

    /// True once it was closed; it may then live on for a moment.
    bool Closed() const { return closed_; }

    /// Writes everything, loads the settings anew and opens the main menu. When a file cannot be
    /// written the dialog stays open and says so.
    void Save();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void done(int result) override;

 private:
    QWidget* Buttons();
    void Place();
    void FitTabs();
    void Tell(const QString& message);
    void Apply();

    QPointer<QWidget> window_;
    SensorEditor editor_;
    GeneralTab* general_ = nullptr;
    QTabWidget* SSTab1_;
    QLabel* lMessage_;
    QBoxLayout* bar_ = nullptr;
    bool closed_ = false;
    bool gaveWay_ = false;
};

}  // namespace dravik
