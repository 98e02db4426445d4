#include <QGroupBox>
#include <QHeaderView>
#include <QLocale>
#include <QTableView>

#include "dialog/DialogFixture.h"
#include "dialog/FunctionNames.h"
#include "settings/SensorEditor.h"

namespace dravik {
namespace {

std::string Title() {
    QWidget* dialog = QApplication::activeWindow();
    return dialog->findChild<QGroupBox*>(QStringLiteral("FrameSensor"))->title().toStdString();
}

class SensorEditing : public DialogTest {
 protected:
    SensorEditing() {
        Open();
        ShowTab(1);
        list_ = Find<QTableView>("listSensor");
    }

    std::string Cell(int row, int column) const {
        return list_->model()->index(row, column).data().toString().toStdString();
    }

    void ClickRow(int row) {
        const QModelIndex cell = list_->model()->index(row, 0);
        list_->scrollTo(cell);
        ClickAt(list_->viewport(), list_->visualRect(cell).center());
    }

    QTableView* list_;
};

TEST_F(SensorEditing, TheListShowsTheFileAsItStands) {
    ASSERT_EQ(list_->model()->rowCount(), 3);
    const char* const first[] = {"RPM", "obd_0C", "0,25", "0", "0", "8000", "Engine", "rpm"};
    for (int column = 0; column < 8; ++column) EXPECT_EQ(Cell(0, column), first[column]);
    EXPECT_EQ(list_->model()->headerData(6, Qt::Horizontal), QStringLiteral("Caption"));
    EXPECT_EQ(Cell(1, 6), "Kühlwasser");
    EXPECT_EQ(Cell(1, 7), " °C");
}

TEST_F(SensorEditing, AClickedRowFillsTheEditorAndEveryFieldWritesItsOwnColumn) {
    ClickRow(1);
    EXPECT_EQ(Title(), "PID 01");
    EXPECT_EQ(TextOf("txtSensorOffset"), "-40");
    const char* const fields[] = {"coSensorFunction", "coSensorSource", "txtSensorFactor",
                                  "txtSensorOffset",  "txtSensorMin",   "txtSensorMax",
                                  "txtSensorCaption", "txtSensorUnit"};
    for (int column = 0; column < 8; ++column) {
        EXPECT_EQ(TextOf(fields[column]), Cell(1, column));
        Type(fields[column], QStringLiteral("new%1").arg(column));
        EXPECT_EQ(Cell(1, column), "new" + std::to_string(column));
    }
    EXPECT_EQ(Cell(0, 0), "RPM");
    EXPECT_EQ(Cell(2, 7), "km/h");
}

TEST_F(SensorEditing, WhatIsTypedIsNeverCompletedToAStandardName) {
    Type("coSensorFunction", QStringLiteral("RPM.eng"));
    QTest::keyClick(Find<QComboBox>("coSensorFunction"), Qt::Key_Return);
    EXPECT_EQ(Cell(0, 0), "RPM.eng");
    Type("coSensorFunction", QStringLiteral("SPEED"));
    QTest::keyClick(Find<QComboBox>("coSensorFunction"), Qt::Key_Tab);
    EXPECT_EQ(Cell(0, 0), "SPEED");
}

TEST_F(SensorEditing, AStandardNameComesFromTheListAtThePlaceOfItsPid) {
    auto* box = Find<QComboBox>("coSensorFunction");
    ASSERT_EQ(box->count(), 0x4F);
    EXPECT_EQ(box->itemText(0x0C), QStringLiteral("rpm.Engine"));
    EXPECT_EQ(box->itemText(0x13), box->itemText(0x1D));
    EXPECT_EQ(box->itemText(0x11), QStringLiteral("value.Thottle"));
    EXPECT_EQ(box->itemText(0x4E), QStringLiteral("time.DTCsCleared"));
    box->setFocus();
    box->setCurrentIndex(0x0D);
    EXPECT_EQ(Cell(0, 0), "speed");
}

TEST_F(SensorEditing, AddCopyAndDeleteKeepListEditorAndNumbersTogether) {
    Click("cmdSensorAdd");
    ASSERT_EQ(list_->model()->rowCount(), 4);
    const char* const added[] = {"", "", "1", "0", "1", "100", "Sensor 3", ""};
    for (int column = 0; column < 8; ++column) EXPECT_EQ(Cell(3, column), added[column]);
    EXPECT_EQ(Title(), "PID 03");
    EXPECT_EQ(list_->currentIndex().row(), 3);

    ClickRow(1);
    Click("cmdSensorCopy");
    ASSERT_EQ(list_->model()->rowCount(), 5);
    for (int column = 0; column < 8; ++column) EXPECT_EQ(Cell(4, column), Cell(1, column));
    Type("txtSensorUnit", QStringLiteral("K"));
    EXPECT_NE(Cell(1, 7), "K");

    ClickRow(1);
    Click("cmdSensorDel");
    EXPECT_EQ(Cell(1, 0), "speed");
    EXPECT_EQ(Title(), "PID 01");
    EXPECT_EQ(TextOf("coSensorFunction"), "speed");
    ClickRow(3);
    Click("cmdSensorDel");  // the last row: the one before it is selected
    EXPECT_EQ(Title(), "PID 02");
    EXPECT_EQ(TextOf("txtSensorCaption"), "Sensor 3");
}

TEST_F(SensorEditing, AnEmptyListIgnoresEditsAndStartsAnewAtZero) {
    const auto brightest = [] {
        const QImage picture = Find<QWidget>("chFreezeframe")->grab().toImage();
        int value = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                value = std::max(value, qGray(picture.pixel(x, y)));
        return value;
    };
    EXPECT_GT(brightest(), 200);
    for (int i = 0; i < 5; ++i) Click("cmdSensorDel");
    EXPECT_LT(brightest(), 150);  // greyed, its text as well
    EXPECT_EQ(list_->model()->rowCount(), 0);
    Type("txtSensorFactor", QStringLiteral("2"));
    Click("cmdSensorCopy");
    EXPECT_EQ(list_->model()->rowCount(), 0);
    Click("cmdSensorAdd");
    EXPECT_EQ(Cell(0, 6), "Sensor 0");
    EXPECT_EQ(Cell(0, 2), "1");
    EXPECT_EQ(Title(), "PID 00");
}

TEST_F(SensorEditing, AFullTableTakesNoMoreRowsAndReadsBackTheSame) {
    while (list_->model()->rowCount() < kSensorLimit) Click("cmdSensorAdd");
    EXPECT_EQ(Title(), "PID 5A");
    EXPECT_EQ(Message(), "");
    for (const char* button : {"cmdSensorAdd", "cmdSensorCopy"}) {
        Click(button);
        EXPECT_EQ(list_->model()->rowCount(), kSensorLimit);
        EXPECT_NE(Message().find("91"), std::string::npos);
    }
    Click("cmdSensorDel");
    EXPECT_EQ(Message(), "");
    Click("cmdSensorAdd");
    Type("txtSensorCaption", QStringLiteral("last = \"91\""));
    Click("bSave");
    EXPECT_EQ(basGlobal.SensorCount, kSensorLimit);
    EXPECT_EQ(basGlobal.Sensors[90].Caption, "last = \"91\"");
    SensorEditor editor;
    editor.Load(basGlobal.SensorFile);
    EXPECT_EQ(editor.Count(), kSensorLimit);
}

TEST_F(SensorEditing, ThePreviewReadsAndWritesNumbersAsTheRegionDoes) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    basGlobal.LiveRaw[0x0C] = 6903;
    const auto output = [] { return TextOf("txtSensorOutput"); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return output() == "1725,75rpm"; })) << output();
    EXPECT_EQ(TextOf("txtSensorRaw"), "6903");
    EXPECT_TRUE(basGlobal.PidWanted[0x0C]);

    // No number: the output stays, the raw value goes on.
    Type("txtSensorOffset", QStringLiteral("x"));
    basGlobal.LiveRaw[0x0C] = 1;
    EXPECT_TRUE(QTest::qWaitFor([] { return TextOf("txtSensorRaw") == "1"; }));
    EXPECT_EQ(output(), "1725,75rpm");
    ClickRow(1);
    EXPECT_EQ(output(), "-40 °C");
    ClickRow(0);
    EXPECT_EQ(output(), "") << "that of the other sensor";
    QLocale::setDefault(before);
}

TEST_F(SensorEditing, ThePreviewShowsTheBytesThatAreTyped) {
    basGlobal.LiveRaw[0x0C] = 0x1A08;
    basGlobal.LiveSize[0x0C] = 2;
    Type("txtSensorBytes", QStringLiteral("1"));
    EXPECT_TRUE(QTest::qWaitFor([] { return TextOf("txtSensorRaw") == "8"; }));
    for (const char* text : {"2", "0-"}) {
        Type("txtSensorBytes", QString::fromLatin1(text));
        EXPECT_TRUE(QTest::qWaitFor([] { return TextOf("txtSensorRaw") == "–"; })) << text;
        EXPECT_EQ(TextOf("txtSensorOutput"), "") << text;
    }
}

}  // namespace
}  // namespace dravik
