#pragma once

#include <QTimer>
#include <array>
#include <functional>
#include <string>

#include "dialog/FieldGrid.h"
#include "settings/SensorEditor.h"

class QBoxLayout;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QTableView;

namespace dravik {

class SensorListModel;
struct SensorTextField;

/// The tab "PIDs": the list of sensors, the editor of the selected one and its live preview.
class SensorTab : public ArrangedTab {
 public:
    /// @param editor  what is shown and edited; outlives the tab
    /// @param tell    shows a message to the user; an empty one takes the last one away
    SensorTab(SensorEditor& editor, std::function<void(const QString& message)> tell);

 protected:
    void Arrange(QSize room) override;

 private:
    QWidget* ListSide();
    QWidget* EditorSide();
    void Connect(QComboBox* box, SensorField field);
    QWidget* MakeTextField(const SensorTextField& place);
    void FillEditor();
    void Edit(SensorField field, const QString& text);
    void ChangeRows(const std::function<bool()>& change);
    void ShowSelection();
    void Preview();

    SensorEditor& editor_;
    std::function<void(const QString& message)> tell_;
    SensorListModel* model_;
    QBoxLayout* sides_;
    QTableView* listSensor_;
    QPushButton* cmdSensorCopy_;
    QPushButton* cmdSensorDel_;
    QGroupBox* FrameSensor_;
    QComboBox* coSensorFunction_;
    QComboBox* coSensorSource_;
    std::array<QLineEdit*, kSensorFields.size()> txtSensor_{};  ///< from Factor on
    QLineEdit* txtSensorRaw_;
    QLineEdit* txtSensorOutput_;
    QTimer Timer1_;
};

}  // namespace dravik
