#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "settings/GeneralTab.h"
#include "settings/SettingsLook.h"

namespace dravik {

namespace {

constexpr const char* kBaudrates[] = {"0kbit/s",    "20kbit/s",   "50 Kbit/s",  "100 Kbit/s",
                                      "125 Kbit/s", "250 Kbit/s", "500 Kbit/s", "800 Kbit/s",
                                      "1 Mbit/s",   "User Def."};

constexpr const char* kFilterNote =
    "Note: It is recommended to use the filter option. Not using the filter may slow down some "
    "machines. With it, only the messages that match filter and mask are taken.";
constexpr const char* kBaudrateNote =
    "A user-defined baud rate is given as the three bit-rate configuration registers in "
    "hexadecimal, for example 09BA07.";

QLabel* MakeNote(const char* text) {
    QLabel* note = MakeLabel(QString::fromLatin1(text));
    note->setWordWrap(true);
    note->setProperty("faint", true);
    return note;
}

void AddField(QGridLayout* grid, int row, int column, const char* caption, QWidget* field) {
    grid->addWidget(MakeLabel(QString::fromLatin1(caption)), row, column);
    grid->addWidget(field, row, column + 1);
}

}  // namespace

QWidget* MakeCanGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("CAN settings"));
    QComboBox* baudrate = MakeChoice("lCANBaudrate");
    for (const char* text : kBaudrates) baudrate->addItem(QString::fromLatin1(text));

    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(4, 0, 4, 0);
    AddField(grid, 0, 0, "Port", MakeField("tCANComPort"));
    AddField(grid, 0, 2, "Baudrate", baudrate);
    AddField(grid, 1, 0, "Filter", MakeField("tCANFilter"));
    AddField(grid, 1, 2, "User Def.", MakeField("tCANUserBaudrate"));
    AddField(grid, 2, 0, "Mask", MakeField("tCANMask"));
    grid->addWidget(MakeCheck("chUseFilter", QStringLiteral("Use Filter")), 2, 2, 1, 2,
                    Qt::AlignLeft);
    grid->addWidget(MakeNote(kFilterNote), 3, 0, 1, 4);
    grid->addWidget(MakeNote(kBaudrateNote), 4, 0, 1, 4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return group;
}

QWidget* MakeMeasurementGroup() {
    QGroupBox* group = MakeGroup(QStringLiteral("Measurement"));
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(4, 0, 4, 0);
    AddField(grid, 0, 0, "Start", MakeField("tGPSAccelStart"));
    grid->addWidget(MakeLabel(QStringLiteral("km/h")), 0, 2);
    AddField(grid, 0, 3, "Finish", MakeField("tGPSAccelFinish"));
    grid->addWidget(MakeLabel(QStringLiteral("km/h")), 0, 5);
    return group;
}

}  // namespace dravik
