#include "settings/SensorTab.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTableView>

#include "core/basGlobal.h"
#include "settings/FunctionNames.h"
#include "settings/SensorListModel.h"
#include "settings/SensorPreview.h"
#include "settings/SettingsLook.h"
#include "skinfunc/ValueSource.h"

namespace dravik {

namespace {

constexpr int kPreviewEvery = 500;  // milliseconds
constexpr int kColumnWidths[] = {186, 98, 120, 90, 90, 90, 190, 90};
constexpr int kListWidth = 280;

/// Where the fields stand: their caption, row and column in the editor.
struct FieldPlace {
    SensorField Field;
    const char* Name;
    const char* Caption;
    int Row;
    int Column;
};

constexpr FieldPlace kFieldPlaces[] = {
    {SensorField::Factor, "txtSensorFactor", "Factor", 2, 0},
    {SensorField::Offset, "txtSensorOffset", "Offset", 2, 2},
    {SensorField::Min, "txtSensorMin", "Minimum", 3, 0},
    {SensorField::Max, "txtSensorMax", "Maximum", 3, 2},
    {SensorField::Caption, "txtSensorCaption", "Caption", 4, 0},
    {SensorField::Unit, "txtSensorUnit", "Unit", 4, 2},
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
    page->setObjectName(QStringLiteral("page"));
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(6, 6, 6, 0);
    row->addWidget(ListSide(), 2);
    row->addWidget(EditorSide(), 3);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidget(page);
    ScrollByTouch(this);

    ShowSelection();
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    QObject::connect(&Timer1_, &QTimer::timeout, this, [this] { Preview(); });
    Timer1_.start(kPreviewEvery);
}

QWidget* SensorTab::ListSide() {
    auto* side = new QWidget;
    listSensor_ = new QTableView;
    listSensor_->setObjectName(QStringLiteral("listSensor"));
    listSensor_->setModel(model_);
    listSensor_->setMinimumWidth(kListWidth);
    listSensor_->setSelectionBehavior(QAbstractItemView::SelectRows);
    listSensor_->setSelectionMode(QAbstractItemView::SingleSelection);
    listSensor_->setAlternatingRowColors(true);
    listSensor_->setShowGrid(false);
    listSensor_->setTabKeyNavigation(false);
    listSensor_->setWordWrap(false);
    listSensor_->verticalHeader()->hide();
    listSensor_->verticalHeader()->setDefaultSectionSize(kTouchHeight);
    listSensor_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    listSensor_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    listSensor_->horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < model_->columnCount(); ++column)
        listSensor_->setColumnWidth(column, kColumnWidths[column]);
    ScrollByTouch(listSensor_);
    QObject::connect(listSensor_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                     [this](const QModelIndex& current) {
                         if (!current.isValid()) return;
                         editor_.Select(current.row());
                         FillEditor();
                     });

    QPushButton* add = MakeButton("cmdSensorAdd", QStringLiteral("Add"));
    cmdSensorCopy_ = MakeButton("cmdSensorCopy", QStringLiteral("Copy"));
    cmdSensorDel_ = MakeButton("cmdSensorDel", QStringLiteral("Delete"));
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
    for (QPushButton* button : {add, cmdSensorCopy_, cmdSensorDel_}) buttons->addWidget(button, 1);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(listSensor_, 1);
    column->addLayout(buttons);
    return side;
}

void SensorTab::Connect(QComboBox* box, SensorField field) {
    QObject::connect(box, &QComboBox::editTextChanged, this,
                     [this, field](const QString& text) { Edit(field, text); });
}

QLineEdit* SensorTab::MakeTextField(SensorField field, const char* name) {
    QLineEdit* line = MakeField(name);
    QObject::connect(line, &QLineEdit::textChanged, this,
                     [this, field](const QString& text) { Edit(field, text); });
    return line;
}

QWidget* SensorTab::EditorSide() {
    FrameSensor_ = MakeGroup({});
    FrameSensor_->setObjectName(QStringLiteral("FrameSensor"));
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

    auto* grid = new QGridLayout(FrameSensor_);
    grid->setContentsMargins(4, 0, 4, 0);
    grid->setVerticalSpacing(5);
    grid->addWidget(MakeLabel(QStringLiteral("Function")), 0, 0);
    grid->addWidget(coSensorFunction_, 0, 1, 1, 3);
    grid->addWidget(MakeLabel(QStringLiteral("Source")), 1, 0);
    grid->addWidget(coSensorSource_, 1, 1);
    grid->addWidget(MakeCheck("chFreezeframe", QStringLiteral("Freezeframe")), 1, 2, 1, 2,
                    Qt::AlignLeft);
    for (const FieldPlace& place : kFieldPlaces) {
        QLineEdit* field = MakeTextField(place.Field, place.Name);
        txtSensor_[static_cast<std::size_t>(place.Field)] = field;
        grid->addWidget(MakeLabel(QString::fromLatin1(place.Caption)), place.Row, place.Column);
        grid->addWidget(field, place.Row, place.Column + 1);
    }
    grid->addWidget(MakeLabel(QStringLiteral("Rawdata:")), 5, 0);
    grid->addWidget(txtSensorRaw_, 5, 1);
    grid->addWidget(MakeLabel(QStringLiteral("Output:")), 5, 2);
    grid->addWidget(txtSensorOutput_, 5, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(6, 1);
    return FrameSensor_;
}

void SensorTab::FillEditor() {
    FrameSensor_->setTitle(Shown(editor_.Title()));
    ShowIn(coSensorFunction_, Shown(editor_.Text(SensorField::Function)));
    ShowIn(coSensorSource_, Shown(editor_.Text(SensorField::Source)));
    for (const FieldPlace& place : kFieldPlaces) {
        QLineEdit* field = txtSensor_[static_cast<std::size_t>(place.Field)];
        const QSignalBlocker quiet(field);
        field->setText(Shown(editor_.Text(place.Field)));
        field->setCursorPosition(0);  // the front of a long text is what tells most
    }
    const bool any = editor_.Selected() >= 0;
    FrameSensor_->setEnabled(any);
    cmdSensorCopy_->setEnabled(any);
    cmdSensorDel_->setEnabled(any);
}

void SensorTab::Edit(SensorField field, const QString& text) {
    if (editor_.Selected() < 0) return;
    editor_.SetText(field, Typed(text, editor_.Text(field)));
    model_->TextChanged(field);
}

void SensorTab::ChangeRows(const std::function<bool()>& change) {
    const bool made = model_->ChangeRows(change);
    ShowSelection();
    tell_(made ? QString()
               : QStringLiteral("No more than %1 sensors are possible.").arg(kSensorLimit));
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
    const std::string source = coSensorSource_->currentText().toStdString();
    txtSensorRaw_->setText(QString::number(SourceValue(source)));
    const auto field = [this](SensorField which) {
        return txtSensor_[static_cast<std::size_t>(which)]->text().toStdString();
    };
    // What is no number yet leaves the last output standing.
    const auto output =
        PreviewOutput(txtSensorRaw_->text().toStdString(), field(SensorField::Factor),
                      field(SensorField::Offset), field(SensorField::Unit));
    if (output) txtSensorOutput_->setText(Shown(*output));
}

}  // namespace dravik
