#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "dialog/DialogControls.h"
#include "dialog/FieldGrid.h"
#include "dialog/GeneralTab.h"
#include "dialog/StepField.h"

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
    QLabel* note = MakeFaint(InWords(text));
    note->setWordWrap(true);
    return note;
}

FieldCell* MakeCell(const char* caption, QWidget* control) {
    return new FieldCell(InWords(caption), {control});
}

FieldCell* MakeSpeedCell(const char* caption, const char* name) {
    return new FieldCell(InWords(caption), {new StepField(name, {.Step = 5, .Lowest = 0}),
                                            MakeFaint(QStringLiteral("km/h"))});
}

}  // namespace

QWidget* MakeCanGroup() {
    QComboBox* baudrate = MakeChoice("lCANBaudrate");
    for (const char* text : kBaudrates) baudrate->addItem(InWords(text));

    auto* cells = new CellGrid;
    cells->Add(MakeCell("Port", new StepField("tCANComPort", {.Lowest = 1})));
    cells->Add(MakeCell("Baudrate", baudrate));
    cells->Add(MakeCell("Filter", MakeField("tCANFilter")));
    cells->Add(MakeCell("User Def.", MakeField("tCANUserBaudrate")));
    cells->Add(MakeCell("Mask", MakeField("tCANMask")));
    cells->Add(MakeCheck("chUseFilter", InWords("Use Filter")));
    cells->Add(MakeNote(kFilterNote), true);
    cells->Add(MakeNote(kBaudrateNote), true);
    return MakeGroup(InWords("CAN settings"), cells);
}

QWidget* MakeMeasurementGroup() {
    auto* cells = new CellGrid;
    cells->Add(MakeSpeedCell("Start", "tGPSAccelStart"));
    cells->Add(MakeSpeedCell("Finish", "tGPSAccelFinish"));
    return MakeGroup(InWords("Measurement"), cells);
}

}  // namespace dravik
