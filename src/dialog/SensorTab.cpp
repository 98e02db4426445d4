#include "dialog/SensorTab.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTableView>
#include <algorithm>

#include "core/basGlobal.h"
#include "dialog/DialogControls.h"
#include "dialog/FunctionNames.h"
#include "dialog/SensorListModel.h"
#include "dialog/SensorPreview.h"
#include "dialog/SettingsLook.h"
#include "dialog/StepField.h"
#include "platform/At.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

/// A field of the editor that holds a text or a number.
struct SensorTextField {
    SensorField Field;
    const char* Name;
    const char* Caption;
    double Step;  ///< of a number; 0 for a text
    bool Wide;    ///< has a row to itself
};

namespace {

/// Stands where the reply has not the bytes that the sensor names.
const QString kUnknown = QStringLiteral("\u2013");

constexpr int kPreviewEvery = 500;  // milliseconds

// Measures.
constexpr int kListWidth = 270;
constexpr int kListHeader = 54;  // and its scroll bar
constexpr int kListRest = 80;    // what the rows leave of the tab, so that buttons below show
constexpr int kFewestRows = 1;
constexpr int kMostRows = 5;
constexpr int kBeside = 700;  // a tab at least that wide has the editor beside the list
constexpr int kTwoColumns = 500;

/// In the order in which they stand.
constexpr SensorTextField kTextFields[] = {
    {SensorField::Factor, "txtSensorFactor", "Factor", 0.01, true},
    {SensorField::Offset, "txtSensorOffset", "Offset", 1, false},
    {SensorField::Unit, "txtSensorUnit", "Unit", 0, false},
    {SensorField::Min, "txtSensorMin", "Minimum", 1, false},
    {SensorField::Max, "txtSensorMax", "Maximum", 1, false},
    {SensorField::Caption, "txtSensorCaption", "Caption", 0, false},
    {SensorField::DataBytes, "txtSensorBytes", "Bytes", 0, false},
};

QString PidText(std::size_t pid) {
    return QStringLiteral("%1").arg(pid, 2, 16, QLatin1Char('0')).toUpper();
}

QLineEdit* MakeOutput(const char* name) {
    QLineEdit* field = MakeField(name);
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::NoFocus);
    return field;
}

}  // namespace

SensorTab::SensorTab(SensorEditor& editor, std::function<void(const QString& message)> tell)
    : editor_(editor), tell_(std::move(tell)), model_(new SensorListModel(editor, this)) {
    auto* page = new QWidget;
    sides_ = new QBoxLayout(QBoxLayout::LeftToRight, page);
    sides_->setContentsMargins(Px(6), Px(6), Px(6), 0);
    sides_->setSpacing(Px(6));
    sides_->addWidget(ListSide(), 2);
    sides_->addWidget(EditorSide(), 3);
    FillTab(this, page);

    ShowSelection();
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    QObject::connect(&Timer1_, &QTimer::timeout, this, [this] { Preview(); });
    Timer1_.start(kPreviewEvery);
}

QWidget* SensorTab::ListSide() {
    auto* side = new QWidget;
    listSensor_ = MakeTable("listSensor", model_, {186, 98, 120, 90, 90, 90, 190, 90});
    QObject::connect(listSensor_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                     [this](const QModelIndex& current) {
                         if (!current.isValid()) return;
                         editor_.Select(current.row());
                         FillEditor();
                     });

    QPushButton* add = MakeButton("cmdSensorAdd", InWords("Add"));
    cmdSensorCopy_ = MakeButton("cmdSensorCopy", InWords("Copy"));
    cmdSensorDel_ = MakeButton("cmdSensorDel", InWords("Delete"));
    QObject::connect(add, &QPushButton::clicked, this,
                     [this] { ChangeRows([this] { return editor_.Add(); }); });
    QObject::connect(cmdSensorCopy_, &QPushButton::clicked, this,
                     [this] { ChangeRows([this] { return editor_.Copy(); }); });
    QObject::connect(cmdSensorDel_, &QPushButton::clicked, this, [this] {
        ChangeRows([this] {
            editor_.Delete();
            return true;
        });
    });
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Px(6));
    for (QPushButton* button : {add, cmdSensorCopy_, cmdSensorDel_}) buttons->addWidget(button, 1);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Px(6));
    column->addWidget(listSensor_, 1);
    column->addLayout(buttons);
    return side;
}

void SensorTab::Connect(QComboBox* box, SensorField field) {
    QObject::connect(box, &QComboBox::editTextChanged, this,
                     [this, field](const QString& text) { Edit(field, text); });
}

QWidget* SensorTab::MakeTextField(const SensorTextField& place) {
    StepField* steps = place.Step > 0 ? new StepField(place.Name, {.Step = place.Step}) : nullptr;
    QLineEdit* line = steps != nullptr ? steps->Field() : MakeField(place.Name);
    At(txtSensor_, place.Field) = line;
    QObject::connect(line, &QLineEdit::textChanged, this,
                     [this, field = place.Field](const QString& text) { Edit(field, text); });
    QWidget* control = line;
    if (steps != nullptr) control = steps;
    return new FieldCell(InWords(place.Caption), {control});
}

QWidget* SensorTab::EditorSide() {
    coSensorFunction_ = MakeFreeCombo("coSensorFunction");
    coSensorSource_ = MakeFreeCombo("coSensorSource");
    for (std::size_t pid = 0; pid < kFunctionNames.size(); ++pid) {
        AddNoted(coSensorFunction_, Shown(kFunctionNames[pid]), PidText(pid));
        coSensorSource_->addItem(QStringLiteral("obd_") + PidText(pid));
    }
    // Filling a box sets its text as well, which is no edit: hence only now.
    Connect(coSensorFunction_, SensorField::Function);
    Connect(coSensorSource_, SensorField::Source);
    txtSensorRaw_ = MakeOutput("txtSensorRaw");
    txtSensorOutput_ = MakeOutput("txtSensorOutput");

    auto* cells = new CellGrid;
    cells->Add(new FieldCell(InWords("Function"), {coSensorFunction_}), true);
    cells->Add(new FieldCell(InWords("Source"), {coSensorSource_}));
    cells->Add(MakeCheck("chFreezeframe", InWords("Freezeframe")));
    for (const SensorTextField& place : kTextFields) cells->Add(MakeTextField(place), place.Wide);
    cells->Add(new FieldCell(InWords("Rawdata:"), {txtSensorRaw_}));
    cells->Add(new FieldCell(InWords("Output:"), {txtSensorOutput_}));
    FrameSensor_ = MakeGroup({}, cells);
    FrameSensor_->layout()->setAlignment(cells, Qt::AlignTop);
    FrameSensor_->setObjectName(QStringLiteral("FrameSensor"));
    return FrameSensor_;
}

/// Where there is no room beside the list the editor stands below it; the list then leaves enough
/// of the screen for a finger to push the page by.
void SensorTab::Arrange(QSize room) {
    const bool beside = room.width() >= kBeside;
    sides_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    const int rows = std::clamp((room.height() - kListRest) / kTouchHeight, kFewestRows, kMostRows);
    listSensor_->setMinimumSize(Px(beside ? kListWidth : 0),
                                beside ? 0 : Px(kListHeader + rows * kTouchHeight));
    ArrangeCells(widget(), room.width() < kTwoColumns ? 1 : 2, false);
}

void SensorTab::FillEditor() {
    FrameSensor_->setTitle(Shown(editor_.Title()));
    ShowIn(coSensorFunction_, Shown(editor_.Text(SensorField::Function)));
    ShowIn(coSensorSource_, Shown(editor_.Text(SensorField::Source)));
    for (const SensorTextField& place : kTextFields) {
        QLineEdit* field = At(txtSensor_, place.Field);
        const QSignalBlocker quiet(field);
        field->setText(Shown(editor_.Text(place.Field)));
        field->setCursorPosition(0);  // the front of a long text is what tells most
    }
    const bool any = editor_.Selected() >= 0;
    FrameSensor_->setEnabled(any);
    cmdSensorCopy_->setEnabled(any);
    cmdSensorDel_->setEnabled(any);
    txtSensorOutput_->clear();  // it was the other sensor's
    Preview();
}

void SensorTab::Edit(SensorField field, const QString& text) {
    if (editor_.Selected() < 0) return;
    editor_.SetText(field, Typed(text, editor_.Text(field)));
    model_->TextChanged(field);
}

void SensorTab::ChangeRows(const std::function<bool()>& change) {
    const bool made = model_->ChangeRows(change);
    ShowSelection();
    tell_(made ? QString() : InWords("No more than %1 sensors are possible.").arg(kSensorLimit));
}

/// The list shows the editor's selection, in view from its first column on.
void SensorTab::ShowSelection() {
    if (editor_.Selected() >= 0) {
        const QModelIndex row = model_->index(editor_.Selected(), 0);
        listSensor_->selectRow(row.row());
        listSensor_->scrollTo(row);
    }
    FillEditor();
}

/// Asking for the value also makes the link ask the vehicle for it.
void SensorTab::Preview() {
    const auto field = [this](SensorField which) {
        return At(txtSensor_, which)->text().toStdString();
    };
    const std::optional<std::int64_t> raw = RawNumber(coSensorSource_->currentText().toStdString(),
                                                      ReadByteRange(field(SensorField::DataBytes)));
    txtSensorRaw_->setText(raw ? QString::number(*raw) : kUnknown);
    if (!raw) txtSensorOutput_->clear();
    // What is no number yet leaves the last output standing.
    const auto output =
        PreviewOutput(txtSensorRaw_->text().toStdString(), field(SensorField::Factor),
                      field(SensorField::Offset), field(SensorField::Unit));
    if (output) txtSensorOutput_->setText(Shown(*output));
}

}  // namespace dravik
