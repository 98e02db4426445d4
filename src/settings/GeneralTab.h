#pragma once

#include <QScrollArea>
#include <array>
#include <string>

#include "settings/PortSearch.h"
#include "settings/SettingsWriter.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace dravik {

/// The tab "General": everything of the settings file.
class GeneralTab : public QScrollArea {
 public:
    static constexpr std::size_t kMiscOptions = 8;

    GeneralTab();

    /// Shows the settings, and offers the skins and languages that there are.
    void Fill(const SettingsValues& values);

    /// The settings as they stand in the fields.
    SettingsValues Values() const;

    /// Offers a serial port.
    void OfferPort(const PortCandidate& port);

 private:
    QWidget* InterfaceGroup();
    QWidget* OptionsGroup();
    QWidget* SkinGroup();
    QWidget* LanguageGroup();
    QWidget* KeyboardGroup();
    QWidget* AdditionsGroup();
    void FillAdditions();
    void ShowCommDevice();
    void BrowseKeyboard();
    void BrowseFolder();

    SettingsValues values_;  ///< as read; the devices and folders as edited

    QComboBox* coCommSelect_;
    QLabel* lCommDevice_;
    QLineEdit* tBusInitDelay_;
    QLineEdit* tUpdateIntervall_;
    QLineEdit* tRefreshRate_;
    std::array<QCheckBox*, kMiscOptions> chMiscOptions_{};
    QComboBox* coSkin_;
    QComboBox* coLanguage_;
    QLineEdit* tOSKPath_;
    QLineEdit* tBaudrate_;
    QLineEdit* tReconnect_;
    QComboBox* coPort_;
    QLineEdit* tPortDevice_;
    QComboBox* coFolder_;
    QLineEdit* tFolder_;
};

/// The groups "CAN settings" and "Measurement": shown, but kept nowhere yet.
QWidget* MakeCanGroup();
QWidget* MakeMeasurementGroup();

}  // namespace dravik
