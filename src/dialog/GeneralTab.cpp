#include "dialog/GeneralTab.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

#include "core/basGlobal.h"
#include "dialog/DialogControls.h"
#include "dialog/SettingsLook.h"
#include "dialog/StepField.h"
#include "obd/basOBD.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/serial/SerialPort.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr int kSearchWatchMs = 100;
constexpr const char* kFindCaption = "Find";
constexpr const char* kCancelCaption = "Cancel";
constexpr int kPortListWidth = 290;  // room for the devices beside the names
constexpr int kDeviceWidth = 120;
constexpr int kTwoColumns = 640;      // a tab at least that wide has two of them
constexpr int kCaptionsBeside = 440;  // and has its captions beside the fields

/// The speeds that interfaces are set to; any other can be typed.
constexpr const char* kBaudrates[] = {"9600",  "10400",  "19200",  "38400",
                                      "57600", "115200", "230400", "500000"};
/// Where an interface in a network of its own usually answers.
constexpr const char* kNetworkDevice = "tcp://192.168.0.10:35000";

/// The check boxes by their bit; the first three say what happens at start-up.
constexpr std::array<const char*, GeneralTab::kMiscOptions> kMiscCaptions = {
    "Resume Settings",     "Resume Menu", "Auto Connect", "Hide Mouse Cursor",
    "Mouse Wheel Support", "aux",         "aux",          "aux"};
constexpr std::size_t kStartupOptions = 3;

void Offer(QComboBox* box, const std::vector<std::string>& names) {
    box->clear();
    for (const std::string& name : names) box->addItem(Shown(name));
}

QString PortPrefix() {
    return QString::fromLatin1(RowOf(Setting::ComPort).Prefix);
}

QString PortName(int number) {
    return PortPrefix() + QString::number(number);
}

struct Choice {
    const char* Value;  ///< in the settings file
    const char* Text;
};
constexpr Choice kUnits[] = {{kMetric, "Metric"}, {kImperial, "Imperial"}};

/// The value of a setting as its field shows it, and back. Units are called in the language.
QString ShownValue(const SettingRow& row, const std::string& value) {
    if (row.Choice == SettingChoice::Units)
        for (const Choice& units : kUnits)
            if (value == units.Value) return InWords(units.Text);
    return QString::fromLatin1(row.Prefix) + Shown(value);
}

/// The value of a setting that a check box stands for. What it does not know stays.
bool IsTicked(const SettingRow& row, const std::string& value) {
    return EqualsNoCase(value, row.Ticked);
}

std::string TickedValue(const SettingRow& row, bool ticked, const std::string& before) {
    if (ticked == IsTicked(row, before)) return before;
    return ticked ? row.Ticked : "";
}

std::string ValueOf(const SettingRow& row, const QString& text, const std::string& before) {
    if (row.Choice == SettingChoice::Units)
        for (const Choice& units : kUnits)
            if (text == InWords(units.Text)) return units.Value;
    return Typed(text.mid(QString::fromLatin1(row.Prefix).size()), before);
}

/// A dialog that puts the chosen path into the field.
QFileDialog* Browse(QLineEdit* field, const QString& title) {
    auto* dialog = new QFileDialog(field->window(), title, field->text());
    dialog->setOption(QFileDialog::DontUseNativeDialog);  // that one may be too small to touch
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    FitForTouch(dialog);
    QObject::connect(dialog, &QFileDialog::fileSelected, field, &QLineEdit::setText);
    return dialog;
}

}  // namespace

GeneralTab::GeneralTab(std::function<void(const QString& message)> tell) : tell_(std::move(tell)) {
    auto* page = new CellGrid;
    page->setContentsMargins(Px(6), Px(6), Px(6), Px(6));
    page->Add(InterfaceGroup(), true);
    page->Add(OptionsGroup(), true);
    page->Add(SettingsGroup(InWords("Skin"), SettingFrame::Skin), true);
    page->Add(SettingsGroup(InWords("Language"), SettingFrame::Language), true);
    for (const Choice& units : kUnits) BoxOf(Setting::Units)->addItem(InWords(units.Text));
    page->Add(KeyboardGroup(), true);
    page->Add(AdditionsGroup(), true);
    page->Add(MakeCanGroup(), true);
    page->Add(MakeMeasurementGroup(), true);
    FillTab(this, page);
}

void GeneralTab::Arrange(QSize room) {
    ArrangeCells(widget(), room.width() < kTwoColumns ? 1 : 2, room.width() < kCaptionsBeside);
}

/// A box where there is something to choose, a field with steps for a number, else a plain field.
QWidget* GeneralTab::MakeControl(std::size_t setting) {
    const SettingRow& row = kSettingRows[setting];
    if (row.Choice != SettingChoice::None) {
        QComboBox* box = MakeFreeCombo(row.Field);
        box->lineEdit()->setPlaceholderText(InWords(row.WhenEmpty));
        fields_[setting] = box->lineEdit();
        boxes_[setting] = box;
        return box;
    }
    if (row.Steps.Step > 0) {
        auto* steps = new StepField(row.Field, row.Steps);
        fields_[setting] = steps->Field();
        fields_[setting]->setPlaceholderText(InWords(row.WhenEmpty));
        return steps;
    }
    fields_[setting] = MakeField(row.Field);
    fields_[setting]->setPlaceholderText(InWords(row.WhenEmpty));
    return fields_[setting];
}

void GeneralTab::AddCheck(CellGrid* cells, std::size_t setting) {
    const SettingRow& row = kSettingRows[setting];
    checks_[setting] = MakeCheck(row.Field, InWords(row.Caption));
    cells->Add(checks_[setting], row.Wide);
    QLabel* note = MakeFaint(InWords(row.Note));
    note->setWordWrap(true);
    cells->Add(note, true);
}

/// The settings of a frame, each with its unit; the port has its device in that place.
void GeneralTab::AddSettings(CellGrid* cells, SettingFrame frame) {
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        const SettingRow& row = kSettingRows[i];
        if (row.Frame != frame) continue;
        if (*row.Ticked != '\0') {
            AddCheck(cells, i);
            continue;
        }
        const QString caption = InWords(row.Caption);
        QWidget* control = MakeControl(i);
        const bool port = row.Choice == SettingChoice::Ports;
        if (!port && *row.Unit == '\0') {
            cells->Add(new FieldCell(caption, {control}), row.Wide);
            continue;
        }
        QLabel* note = MakeFaint(QString::fromLatin1(row.Unit));
        if (port) lCommDevice_ = note;
        cells->Add(new FieldCell(caption, {control, note}));
    }
}

QWidget* GeneralTab::SettingsGroup(const QString& title, SettingFrame frame) {
    auto* cells = new CellGrid;
    AddSettings(cells, frame);
    return MakeGroup(title, cells);
}

QComboBox* GeneralTab::BoxOf(Setting setting) const {
    return boxes_[Index(setting)];
}

QWidget* GeneralTab::InterfaceGroup() {
    auto* cells = new CellGrid;
    AddSettings(cells, SettingFrame::Interface);
    cmdFind_ = MakeButton("cmdFind", {});
    cells->Add(new FieldCell({}, {cmdFind_}), true);
    QObject::connect(cmdFind_, &QPushButton::clicked, this, [this] { FindOrCancel(); });
    searchWatch_ = new QTimer(this);
    searchWatch_->setInterval(kSearchWatchMs);
    QObject::connect(searchWatch_, &QTimer::timeout, this, [this] { TellSearch(); });
    cmdFind_->setText(InWords(kFindCaption));
    QWidget* group = MakeGroup(InWords("OBD interface"), cells);
    QComboBox* port = BoxOf(Setting::ComPort);
    port->view()->setMinimumWidth(Px(kPortListWidth));
    lCommDevice_->setObjectName(QStringLiteral("lCommDevice"));
    QObject::connect(port, &QComboBox::editTextChanged, this, [this] { CommSelected(); });
    return group;
}

QWidget* GeneralTab::OptionsGroup() {
    auto* startup = new CellGrid;
    auto* others = new CellGrid;
    for (std::size_t i = 0; i < kMiscOptions; ++i) {
        const std::string name = "chMiscOptions" + std::to_string(i);
        chMiscOptions_[i] = MakeCheck(name.c_str(), InWords(kMiscCaptions[i]));
        if (i < kStartupOptions)
            startup->Add(chMiscOptions_[i], true);
        else
            others->Add(chMiscOptions_[i]);
    }
    auto* cells = new CellGrid;
    cells->Add(MakeGroup(InWords("Startup"), startup));
    cells->Add(MakeGroup({}, others));  // level with the rows of the other frame
    return MakeGroup(InWords("Miscellaneous"), cells);
}

QWidget* GeneralTab::KeyboardGroup() {
    QWidget* path = MakeControl(Index(Setting::OSKPath));
    QPushButton* browse = MakeButton("cmdOSKPath", InWords("Browse"));
    QPushButton* test = MakeButton("Command6", InWords("Test"));
    QObject::connect(browse, &QPushButton::clicked, this, [this] { BrowseKeyboard(); });
    QObject::connect(test, &QPushButton::clicked, this, [this] { tell_(Shown(StartKeyboard())); });
    auto* cells = new CellGrid;
    cells->Add(new FieldCell({}, {path}, {browse, test}), true);
    return MakeGroup(InWords("Keyboard"), cells);
}

QWidget* GeneralTab::AdditionsGroup() {
    coPort_ = MakeChoice("coPort");
    for (int number = 1; number <= kPortCount; ++number) coPort_->addItem(PortName(number));
    coPortDevice_ = MakeFreeCombo("coPortDevice");
    AddNoted(coPortDevice_, QString::fromLatin1(kNetworkDevice), QStringLiteral("Wi-Fi"));
    coFolder_ = MakeChoice("coFolder");
    for (const std::string& slot : FolderSlots()) coFolder_->addItem(Shown(slot));
    tFolder_ = MakeField("tFolder");
    QPushButton* browse = MakeButton("cmdFolder", InWords("Browse"));

    auto* cells = new CellGrid;
    AddSettings(cells, SettingFrame::Additions);
    for (const char* speed : kBaudrates)
        BoxOf(Setting::Baudrate)->addItem(QString::fromLatin1(speed));
    cells->Add(new FieldCell(InWords("Device of"), {coPort_}, {coPortDevice_}), true);
    cells->Add(new FieldCell(InWords("Folder of"), {coFolder_}, {tFolder_, browse}), true);

    QObject::connect(coPort_, &QComboBox::currentIndexChanged, this, [this] { FillAdditions(); });
    QObject::connect(coFolder_, &QComboBox::currentIndexChanged, this, [this] { FillAdditions(); });
    QObject::connect(coPortDevice_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        std::string& device = values_.Ports[coPort_->currentIndex() + 1];
        device = Typed(text, device);
    });
    // Browsing sets the text as well, so this one listens to every change.
    QObject::connect(tFolder_, &QLineEdit::textChanged, this, [this](const QString& text) {
        std::string& folder = values_.Folders[coFolder_->currentText().toStdString()];
        folder = Typed(text, folder);
    });
    QObject::connect(browse, &QPushButton::clicked, this, [this] { BrowseFolder(); });
    return MakeGroup(InWords("Connection and folders"), cells);
}

void GeneralTab::FillAdditions() {
    const int number = coPort_->currentIndex() + 1;
    ShowIn(coPortDevice_, Shown(values_.Ports[number]));
    coPortDevice_->lineEdit()->setPlaceholderText(Shown(DefaultPortDevice(number)));
    tFolder_->setText(Shown(values_.Folders[coFolder_->currentText().toStdString()]));
}

void GeneralTab::Fill(const SettingsValues& values) {
    values_ = values;
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        if (kSettingRows[i].Choice == SettingChoice::Skins) Offer(boxes_[i], SkinNames());
    }
    Offer(BoxOf(Setting::Language), LanguageNames());
    for (std::size_t i = 0; i < kMiscOptions; ++i)
        chMiscOptions_[i]->setChecked((values.Misc & (1 << i)) != 0);
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        const QString text = ShownValue(kSettingRows[i], values.Texts[i]);
        if (checks_[i] != nullptr)
            checks_[i]->setChecked(IsTicked(kSettingRows[i], values.Texts[i]));
        else if (boxes_[i] != nullptr)
            ShowIn(boxes_[i], text);
        else
            fields_[i]->setText(text);
    }
    CommSelected();
    FillAdditions();
}

SettingsValues GeneralTab::Values() const {
    SettingsValues values = values_;
    values.Misc = 0;
    for (std::size_t i = 0; i < kMiscOptions; ++i)
        values.Misc += chMiscOptions_[i]->isChecked() ? 1 << i : 0;
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        const SettingRow& row = kSettingRows[i];
        const std::string& before = values_.Texts[i];
        values.Texts[i] = checks_[i] != nullptr ? TickedValue(row, checks_[i]->isChecked(), before)
                                                : ValueOf(row, fields_[i]->text(), before);
    }
    return values;
}

/// On Windows the port and its device are the same thing.
void GeneralTab::OfferPort(const PortCandidate& port) {
#ifdef _WIN32
    AddNoted(BoxOf(Setting::ComPort), PortName(port.Number), {});
#else
    const QString device = Shown(port.Device);
    AddNoted(BoxOf(Setting::ComPort), PortName(port.Number), device);
    AddNoted(coPortDevice_, device, PortName(port.Number));
#endif
}

/// Shows the device that the typed port stands for, cut in the middle where there is no room for
/// it, and offers it to be changed.
void GeneralTab::CommSelected() {
    const QString port = fields_[Index(Setting::ComPort)]->text();
    const int number = port.mid(PortPrefix().size()).toInt();
    if (number >= 1 && number <= kPortCount) coPort_->setCurrentIndex(number - 1);
#ifndef _WIN32
    const QString device = Shown(PortDevice(number));
    lCommDevice_->setText(
        lCommDevice_->fontMetrics().elidedText(device, Qt::ElideMiddle, Px(kDeviceWidth)));
    lCommDevice_->setToolTip(device);
#endif
}

/// The ports with the devices as they stand in the fields, saved or not.
void GeneralTab::FindOrCancel() {
    if (Searching()) return CancelSearch();
    std::vector<PortCandidate> ports = PortCandidates();
    for (PortCandidate& port : ports) {
        const std::string& device = values_.Ports[port.Number];
        port.Device = device.empty() ? DefaultPortDevice(port.Number) : device;
        port.Ours = false;  // the search closes it first
    }
    FindInterface(std::move(ports), [tab = QPointer<GeneralTab>(this)](const auto& found) {
        if (tab == nullptr) return;
        if (found) tab->TakeOver(*found);
        tab->TellSearch();
    });
    searchWatch_->start();
    TellSearch();
}

void GeneralTab::TakeOver(const FoundInterface& found) {
    found_ = true;
    ShowIn(BoxOf(Setting::ComPort), PortName(found.Port));
    if (found.Baudrate > 0) ShowIn(BoxOf(Setting::Baudrate), QString::number(found.Baudrate));
    CommSelected();
}

void GeneralTab::TellSearch() {
    const bool searching = Searching();
    if (!searching) searchWatch_->stop();
    cmdFind_->setText(InWords(searching ? kCancelCaption : kFindCaption));
    tell_(Shown(FindingText()));
}

/// What nobody waits for any more.
GeneralTab::~GeneralTab() {
    if (searchWatch_->isActive()) CancelSearch();
}

void GeneralTab::BrowseKeyboard() {
    QFileDialog* dialog = Browse(fields_[Index(Setting::OSKPath)], InWords("Keyboard"));
    dialog->setFileMode(QFileDialog::ExistingFile);
#ifdef _WIN32
    dialog->setNameFilter(InWords("Executable") + QStringLiteral(" (*.exe)"));
#else
    // Programs have no extension of their own here.
    dialog->setNameFilters({InWords("Executable") + QStringLiteral(" (*)"),
                            InWords("Executable") + QStringLiteral(" (*.exe)")});
#endif
    dialog->open();
}

void GeneralTab::BrowseFolder() {
    QFileDialog* dialog = Browse(tFolder_, InWords("Folder"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->open();
}

}  // namespace dravik
