#include "settings/GeneralTab.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Paths.h"
#include "platform/ProcessStart.h"
#include "platform/SerialPort.h"
#include "settings/SettingsLook.h"

namespace dravik {

namespace {

constexpr int kPortPrefix = 3;  // characters of "COM"
constexpr int kNumberWidth = 100;
constexpr int kPortListWidth = 330;  // room for the devices beside the names
constexpr const char* kIniExtension = ".ini";

/// The check boxes by their bit; the first three say what happens at start-up.
constexpr std::array<const char*, GeneralTab::kMiscOptions> kMiscCaptions = {
    "Resume Settings",     "Resume Menu", "Auto Connect", "Hide Mouse Cursor",
    "Mouse Wheel Support", "aux",         "aux",          "aux"};
constexpr std::size_t kStartupOptions = 3;
constexpr std::size_t kRowsPerColumn = 3;

QString PortName(int number) {
    return QStringLiteral("COM%1").arg(number);
}

/// Names of the ini files of a folder, without the extension.
void OfferIniFiles(QComboBox* box, const std::string& folder) {
    box->clear();
    for (const std::string& name : FilesMatching(folder, kIniExtension))
        box->addItem(Shown(std::string_view(name).substr(0, name.size() - 4)));
}

void StartKeyboard() {
    const std::string& program = basGlobal.OSKPath;
    if (FileExists(program)) StartMinimised(ResolvePath(program));
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

QLabel* MakeFaint(const QString& text) {
    QLabel* label = MakeLabel(text);
    label->setProperty("faint", true);
    return label;
}

}  // namespace

GeneralTab::GeneralTab() {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("page"));
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setSpacing(6);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->addWidget(InterfaceGroup(), 0, 0, 1, 2);
    grid->addWidget(OptionsGroup(), 1, 0, 1, 2);
    grid->addWidget(SkinGroup(), 2, 0);
    grid->addWidget(LanguageGroup(), 2, 1);
    grid->addWidget(KeyboardGroup(), 3, 0, 1, 2);
    grid->addWidget(AdditionsGroup(), 4, 0, 1, 2);
    grid->addWidget(MakeCanGroup(), 5, 0, 1, 2);
    grid->addWidget(MakeMeasurementGroup(), 6, 0, 1, 2);
    grid->setRowStretch(7, 1);

    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidget(page);
    ScrollByTouch(this);
}

QWidget* GeneralTab::InterfaceGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("OBD interface"));
    coCommSelect_ = MakeFreeCombo("coCommSelect");
    coCommSelect_->view()->setMinimumWidth(kPortListWidth);
    lCommDevice_ = MakeFaint({});
    lCommDevice_->setObjectName(QStringLiteral("lCommDevice"));
    tBusInitDelay_ = MakeField("tBusInitDelay", kNumberWidth);
    tUpdateIntervall_ = MakeField("tUpdateIntervall", kNumberWidth);
    tRefreshRate_ = MakeField("tRefreshRate", kNumberWidth);
    QObject::connect(coCommSelect_, &QComboBox::editTextChanged, this,
                     [this] { ShowCommDevice(); });

    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(4, 0, 4, 0);
    grid->addWidget(MakeLabel(QStringLiteral("Port")), 0, 0);
    grid->addWidget(coCommSelect_, 0, 1);
    grid->addWidget(lCommDevice_, 0, 2);
    grid->addWidget(MakeLabel(QStringLiteral("Businit Delay")), 0, 3);
    grid->addWidget(tBusInitDelay_, 0, 4);
    grid->addWidget(MakeFaint(QStringLiteral("s")), 0, 5);
    grid->addWidget(MakeLabel(QStringLiteral("Update Intervall")), 1, 0);
    auto* interval = new QHBoxLayout;
    interval->addWidget(tUpdateIntervall_);
    interval->addWidget(MakeFaint(QStringLiteral("ms")));
    interval->addStretch();
    grid->addLayout(interval, 1, 1, 1, 2);
    grid->addWidget(MakeLabel(QStringLiteral("Screen Refresh")), 1, 3);
    grid->addWidget(tRefreshRate_, 1, 4);
    grid->addWidget(MakeFaint(QStringLiteral("ms")), 1, 5);
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(1, 140);
    return group;
}

QWidget* GeneralTab::OptionsGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("Miscellaneous"));
    QGroupBox* startup = MakeGroup(QStringLiteral("Startup"));
    auto* startupColumn = new QVBoxLayout(startup);
    startupColumn->setContentsMargins(2, 0, 2, 0);
    startupColumn->setSpacing(0);
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(0);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    for (std::size_t i = 0; i < kMiscOptions; ++i) {
        const std::string name = "chMiscOptions" + std::to_string(i);
        QCheckBox* box = MakeCheck(name.c_str(), QString::fromLatin1(kMiscCaptions[i]));
        chMiscOptions_[i] = box;
        if (i < kStartupOptions) {
            startupColumn->addWidget(box, 0, Qt::AlignLeft);
            continue;
        }
        const std::size_t place = i - kStartupOptions;
        grid->addWidget(box, static_cast<int>(place % kRowsPerColumn),
                        static_cast<int>(place / kRowsPerColumn), Qt::AlignLeft);
    }
    // The other columns stand level with the rows of the inner frame.
    auto* columns = new QHBoxLayout(group);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->addWidget(startup);
    auto* level = new QVBoxLayout;
    level->setContentsMargins(10, 0, 0, 9);
    level->addStretch();
    level->addLayout(grid);
    columns->addLayout(level, 1);
    return group;
}

QWidget* GeneralTab::SkinGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("Skin"));
    coSkin_ = MakeFreeCombo("coSkin");
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(4, 0, 4, 0);
    row->addWidget(coSkin_);
    return group;
}

QWidget* GeneralTab::LanguageGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("Language"));
    coLanguage_ = MakeFreeCombo("coLanguage");
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(4, 0, 4, 0);
    row->addWidget(coLanguage_);
    return group;
}

QWidget* GeneralTab::KeyboardGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("Keyboard"));
    tOSKPath_ = MakeField("tOSKPath");
    QPushButton* browse = MakeButton("cmdOSKPath", QStringLiteral("Browse"));
    QPushButton* test = MakeButton("Command6", QStringLiteral("Test"));
    QObject::connect(browse, &QPushButton::clicked, this, [this] { BrowseKeyboard(); });
    QObject::connect(test, &QPushButton::clicked, this, [] { StartKeyboard(); });
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(4, 0, 4, 0);
    row->addWidget(tOSKPath_, 1);
    row->addWidget(browse);
    row->addWidget(test);
    return group;
}

QWidget* GeneralTab::AdditionsGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("Connection and folders"));
    tBaudrate_ = MakeField("tBaudrate", kNumberWidth);
    tBaudrate_->setPlaceholderText(QStringLiteral("9600"));
    tReconnect_ = MakeField("tReconnect", kNumberWidth);
    tReconnect_->setPlaceholderText(QStringLiteral("never"));
    coPort_ = MakeChoice("coPort");
    for (int number = 1; number <= kPortCount; ++number) coPort_->addItem(PortName(number));
    tPortDevice_ = MakeField("tPortDevice");
    coFolder_ = MakeChoice("coFolder");
    for (const std::string& slot : FolderSlots()) coFolder_->addItem(Shown(slot));
    tFolder_ = MakeField("tFolder");
    QPushButton* browse = MakeButton("cmdFolder", QStringLiteral("Browse"));
    FillAdditions();

    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(4, 0, 4, 0);
    grid->addWidget(MakeLabel(QStringLiteral("Baudrate")), 0, 0);
    grid->addWidget(tBaudrate_, 0, 1);
    auto* reconnect = new QHBoxLayout;
    reconnect->addStretch();
    reconnect->addWidget(MakeLabel(QStringLiteral("Reconnect every")));
    reconnect->addWidget(tReconnect_);
    reconnect->addWidget(MakeFaint(QStringLiteral("s")));
    grid->addLayout(reconnect, 0, 2, 1, 2);
    grid->addWidget(MakeLabel(QStringLiteral("Device of")), 1, 0);
    grid->addWidget(coPort_, 1, 1);
    grid->addWidget(tPortDevice_, 1, 2, 1, 2);
    grid->addWidget(MakeLabel(QStringLiteral("Folder of")), 2, 0);
    grid->addWidget(coFolder_, 2, 1);
    grid->addWidget(tFolder_, 2, 2);
    grid->addWidget(browse, 2, 3);
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(1, 160);

    QObject::connect(coPort_, &QComboBox::currentIndexChanged, this, [this] { FillAdditions(); });
    QObject::connect(coFolder_, &QComboBox::currentIndexChanged, this, [this] { FillAdditions(); });
    QObject::connect(tPortDevice_, &QLineEdit::textEdited, this, [this](const QString& text) {
        values_.Ports[coPort_->currentIndex() + 1] = text.toStdString();
    });
    // Browsing sets the text as well, so this one listens to every change.
    QObject::connect(tFolder_, &QLineEdit::textChanged, this, [this](const QString& text) {
        std::string& folder = values_.Folders[coFolder_->currentText().toStdString()];
        folder = Typed(text, folder);
    });
    QObject::connect(browse, &QPushButton::clicked, this, [this] { BrowseFolder(); });
    return group;
}

void GeneralTab::FillAdditions() {
    const int number = coPort_->currentIndex() + 1;
    tPortDevice_->setText(Shown(values_.Ports[number]));
    tPortDevice_->setPlaceholderText(Shown(DefaultPortDevice(number)));
    tFolder_->setText(Shown(values_.Folders[coFolder_->currentText().toStdString()]));
}

void GeneralTab::Fill(const SettingsValues& values) {
    values_ = values;
    OfferIniFiles(coSkin_, basGlobal.SkinPath);
    OfferIniFiles(coLanguage_, basGlobal.LanguagePath);
    ShowIn(coSkin_, Shown(values.Skin));
    ShowIn(coLanguage_, Shown(values.Language));
    for (std::size_t i = 0; i < kMiscOptions; ++i)
        chMiscOptions_[i]->setChecked((values.Misc & (1 << i)) != 0);
    tOSKPath_->setText(Shown(values.OSKPath));
    ShowIn(coCommSelect_, QStringLiteral("COM") + Shown(values.ComPort));
    ShowCommDevice();
    tBusInitDelay_->setText(Shown(values.BusInitDelay));
    tUpdateIntervall_->setText(Shown(values.UpdateIntervall));
    tRefreshRate_->setText(Shown(values.RefreshRate));
    tBaudrate_->setText(Shown(values.Baudrate));
    tReconnect_->setText(Shown(values.Reconnect));
    FillAdditions();
}

SettingsValues GeneralTab::Values() const {
    SettingsValues values = values_;
    values.Misc = 0;
    for (std::size_t i = 0; i < kMiscOptions; ++i)
        values.Misc += chMiscOptions_[i]->isChecked() ? 1 << i : 0;
    values.Skin = Typed(coSkin_->currentText(), values_.Skin);
    values.Language = Typed(coLanguage_->currentText(), values_.Language);
    values.OSKPath = Typed(tOSKPath_->text(), values_.OSKPath);
    values.ComPort = coCommSelect_->currentText().mid(kPortPrefix).toStdString();
    values.BusInitDelay = tBusInitDelay_->text().toStdString();
    values.UpdateIntervall = tUpdateIntervall_->text().toStdString();
    values.RefreshRate = tRefreshRate_->text().toStdString();
    values.Baudrate = tBaudrate_->text().toStdString();
    values.Reconnect = tReconnect_->text().toStdString();
    return values;
}

void GeneralTab::OfferPort(const PortCandidate& port) {
#ifdef _WIN32
    const QString device;
#else
    const QString device = Shown(port.Device);
#endif
    AddNoted(coCommSelect_, PortName(port.Number), device);
}

/// The device that the typed port stands for, cut in the middle where there is no room for it.
void GeneralTab::ShowCommDevice() {
#ifndef _WIN32
    const int number = coCommSelect_->currentText().mid(kPortPrefix).toInt();
    const QString device = Shown(PortDevice(number));
    lCommDevice_->setText(
        lCommDevice_->fontMetrics().elidedText(device, Qt::ElideMiddle, kNumberWidth * 2));
    lCommDevice_->setToolTip(device);
#endif
}

void GeneralTab::BrowseKeyboard() {
    QFileDialog* dialog = Browse(tOSKPath_, QStringLiteral("Keyboard"));
    dialog->setFileMode(QFileDialog::ExistingFile);
#ifdef _WIN32
    dialog->setNameFilter(QStringLiteral("Executable (*.exe)"));
#else
    // Programs have no extension of their own here.
    dialog->setNameFilters(
        {QStringLiteral("Executable (*)"), QStringLiteral("Executable (*.exe)")});
#endif
    dialog->open();
}

void GeneralTab::BrowseFolder() {
    QFileDialog* dialog = Browse(tFolder_, QStringLiteral("Folder"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->open();
}

}  // namespace dravik
