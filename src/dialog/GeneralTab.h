#pragma once

#include <array>
#include <functional>
#include <string>

#include "dialog/FieldGrid.h"
#include "obd/PortSearch.h"
#include "settings/SettingsWriter.h"
#include "settings/basSettings.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace dravik {

/// The tab "General": everything of the settings file.
class GeneralTab : public ArrangedTab {
 public:
    static constexpr std::size_t kMiscOptions = 8;

    /// @param tell  shows a message to the user; an empty one takes the last one away
    explicit GeneralTab(std::function<void(const QString& message)> tell);

    /// Shows the settings, and offers the skins and languages that there are.
    void Fill(const SettingsValues& values);

    /// The settings as they stand in the fields.
    SettingsValues Values() const;

    ~GeneralTab() override;

    /// True once a search has filled in the port and the speed.
    bool HasFound() const { return found_; }

    /// Offers a serial port.
    void OfferPort(const PortCandidate& port);

 protected:
    void Arrange(QSize room) override;

 private:
    QWidget* MakeControl(std::size_t setting);
    QComboBox* BoxOf(Setting setting) const;
    void AddCheck(CellGrid* cells, std::size_t setting);
    void AddSettings(CellGrid* cells, SettingFrame frame);
    QWidget* InterfaceGroup();
    QWidget* OptionsGroup();
    QWidget* SettingsGroup(const QString& title, SettingFrame frame);
    QWidget* KeyboardGroup();
    QWidget* AdditionsGroup();
    void FillAdditions();
    void CommSelected();
    void FindOrCancel();
    void TakeOver(const FoundInterface& found);
    void TellSearch();
    void BrowseKeyboard();
    void BrowseFolder();

    std::function<void(const QString& message)> tell_;
    SettingsValues values_;  ///< as read; the devices and folders as edited

    std::array<QLineEdit*, kSettingCount> fields_{};  ///< where each setting's text stands
    std::array<QComboBox*, kSettingCount> boxes_{};   ///< the box around it, where it is a choice
    std::array<QCheckBox*, kSettingCount> checks_{};  ///< instead of a field
    QLabel* lCommDevice_ = nullptr;
    QPushButton* cmdFind_ = nullptr;
    QTimer* searchWatch_ = nullptr;  ///< runs while a search of this tab does
    bool found_ = false;
    std::array<QCheckBox*, kMiscOptions> chMiscOptions_{};
    QComboBox* coPort_;
    QComboBox* coPortDevice_;
    QComboBox* coFolder_;
    QLineEdit* tFolder_;
};

/// The groups "CAN settings" and "Measurement": shown, but kept nowhere yet.
QWidget* MakeCanGroup();
QWidget* MakeMeasurementGroup();

}  // namespace dravik
