#include "dialog/SettingsLook.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "platform/DeleteLater.h"
#include "platform/Text.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr int kArrowWidth = 12;
constexpr int kTextPixels = 16;

/// A colour of the dialog over a dark skin, and what takes its place over a light one.
struct LookColor {
    const char* Night;
    const char* Day;
};
constexpr LookColor kBack{"#181c22", "#e9edf1"};
constexpr LookColor kField{"#232a34", "#fbfcfd"};
constexpr LookColor kButton{"#2c3440", "#f3f6f8"};
constexpr LookColor kEdge{"#788aa0", "#8d9ba9"};
constexpr LookColor kText{"#e6eaf0", "#0b1016"};
constexpr LookColor kFaint{"#8a96a6", "#55616e"};
constexpr LookColor kDisabled{"#5d6878", "#93a0ad"};
constexpr LookColor kAccent{"#569cd6", "#005290"};

/// The colours of the sheet; a row replaces the first by the second.
constexpr LookColor kSheetColors[] = {
    kBack,
    kField,
    kButton,
    kText,
    kFaint,
    kDisabled,
    kAccent,
    {"#ff9d76", "#a63c00"},  // the message
    {"#333d4b", "#b4bfca"},  // edges: frames and tables
    {"#3f4b5c", "#8d9ba9"},  // fields
    {"#4a5769", "#8d9ba9"},  // buttons
    {"#2c3541", "#cbd3db"},  // what is disabled
    {"#1d222a", "#f1f4f7"},  // groups and tables
    {"#20262f", "#e7ecf1"},  // every other row
    {"#2a323d", "#cbd3db"},  // lines between rows
    {"#364152", "#e2f0fa"},  // under the pointer
    {"#1e242c", "#b5d9f0"},  // pressed
    {"#3d7fb5", "#003d6b"},  // pressed, accented
    {"#7db8e8", "#005290"},  // links
    {"#b4bfcd", "#3c4854"},  // tabs and headers
    {"#9fd0a4", "#1d6b2a"},  // results
    {"#10141a", "#ffffff"},  // text on the accent
};

/// Every number of pixels is a measure.
constexpr const char* kStyleSheet = R"(
* { font-size: 16px; }
QDialog, QScrollArea, QWidget#page { background: #181c22; }
QLabel { color: #e6eaf0; }
QLabel[faint="true"] { color: #8a96a6; }
QLabel#lMessage { color: #ff9d76; }
QLabel#lTitle { font-size: 28px; font-weight: bold; }
QGroupBox { border: 1px solid #333d4b; border-radius: 8px; margin-top: 14px;
            padding: 14px 8px 6px 8px; background: #1d222a; }
QGroupBox::title { subcontrol-origin: margin; left: 12px; padding: 2px 6px; color: #569cd6;
                   background: #181c22; border-radius: 4px; }
QLineEdit { background: #232a34; color: #e6eaf0; border: 1px solid #3f4b5c; border-radius: 6px;
            padding: 0 6px; selection-background-color: #569cd6;
            selection-color: #10141a; }
QLineEdit:focus { border: 2px solid #569cd6; padding: 0 5px; }
QLineEdit:read-only { background: #181c22; color: #9fd0a4; }
QLineEdit:disabled { color: #5d6878; border-color: #2c3541; }
QComboBox { combobox-popup: 0; }
QComboBox QLineEdit, QComboBox QLineEdit:focus { border: none; background: transparent;
                                                 padding: 0 4px; }
QCheckBox { spacing: 10px; color: #e6eaf0; border: 2px solid transparent; border-radius: 6px;
            padding-left: 2px; }
QCheckBox::indicator { width: 26px; height: 26px; }
QCheckBox:focus { border-color: #569cd6; }
QCheckBox:disabled, QLabel:disabled { color: #5d6878; }
QPushButton { background: #2c3440; color: #e6eaf0; border: 1px solid #4a5769; border-radius: 8px;
              padding: 0 14px; }
QPushButton:hover { background: #364152; }
QPushButton:pressed { background: #1e242c; }
QPushButton:focus { border: 2px solid #569cd6; }
QPushButton:disabled { color: #5d6878; border-color: #2c3541; }
QPushButton#bSave { background: #569cd6; color: #10141a; font-weight: bold; border: none; }
QPushButton#bSave:pressed { background: #3d7fb5; }
QPushButton#bSave:focus { border: 2px solid #e6eaf0; }
QPushButton[step="true"] { padding: 0; font-size: 20px; }
QPushButton[link="true"] { background: transparent; border: none; color: #7db8e8;
                           text-align: left; padding: 0 4px; font-size: 14px; }
QPushButton[link="true"]:focus { border: 2px solid #569cd6; }
QTabWidget::pane { border: none; border-top: 2px solid #569cd6; }
QTabBar::tab { min-height: 44px; background: #232a34; color: #b4bfcd;
               margin-right: 4px; border-top-left-radius: 8px; border-top-right-radius: 8px;
               border: 2px solid transparent; }
QTabBar::tab:selected { background: #569cd6; color: #10141a; font-weight: bold; }
QTabBar::tab:selected:focus { border-color: #e6eaf0; }
QTableView { background: #1d222a; alternate-background-color: #20262f; color: #e6eaf0;
             border: 1px solid #333d4b; border-radius: 6px; gridline-color: #2a323d;
             selection-background-color: #569cd6; selection-color: #10141a; outline: none; }
QTableView::item { border: none; padding: 0 8px; }
QTableView::item:hover { background: transparent; }
QTableView::item:selected { background: #569cd6; color: #10141a; }
QFileDialog QAbstractItemView::item { min-height: 40px; }
QFileDialog QToolButton { min-width: 42px; }
QTableView:focus { border: 1px solid #569cd6; }
QHeaderView::section { background: #2c3440; color: #b4bfcd; border: none; padding: 0 11px;
                       min-height: 36px; }
QAbstractItemView { background: #232a34; color: #e6eaf0; outline: none;
                    selection-background-color: #569cd6; selection-color: #10141a; }
QScrollBar:vertical { width: 16px; background: #181c22; }
QScrollBar:horizontal { height: 16px; background: #181c22; }
QScrollBar::handle { background: #4a5769; border-radius: 5px; margin: 3px; }
QScrollBar::handle:vertical { min-height: 44px; }
QScrollBar::handle:horizontal { min-width: 44px; }
QScrollBar::handle:pressed { background: #569cd6; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)";

double touchScale = 1;
bool daylight = false;

QColor ColorOf(const LookColor& color) {
    return QColor(QLatin1String(daylight ? color.Day : color.Night));
}

/// The sheet with its measures in pixels.
QString ScaledSheet() {
    QString scaled;
    QString sheet = QString::fromLatin1(kStyleSheet);
    if (daylight) {
        for (const LookColor& color : kSheetColors)
            sheet.replace(QLatin1String(color.Night), QLatin1String(color.Day));
    }
    static const QRegularExpression kMeasure(QStringLiteral("(\\d+)px"));
    qsizetype done = 0;
    for (auto found = kMeasure.globalMatch(sheet); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        scaled += sheet.mid(done, match.capturedStart() - done);
        scaled += QStringLiteral("%1px").arg(Px(match.captured(1).toInt()));
        done = match.capturedEnd();
    }
    return scaled + sheet.mid(done);
}

/// The arrow that opens a drop-down list, wide enough for a finger.
class TouchStyle : public QProxyStyle {
 public:
    TouchStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
        if (control != CC_ComboBox) return rect;
        const int left = option->rect.right() + 1 - Px(kTouchHeight);
        if (part == SC_ComboBoxArrow) rect.setLeft(left);
        if (part == SC_ComboBoxEditField) rect.setRight(left - 2);
        return rect;
    }

    /// The arrow that the style draws does not grow with the scale.
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (control != CC_ComboBox) return;
        const QRect arrow = subControlRect(control, option, SC_ComboBoxArrow, widget);
        const QPointF middle = QRectF(arrow).center();
        const double half = Px(kArrowWidth) / 2.0;
        const QPointF corners[] = {middle + QPointF(-half, -half / 2),
                                   middle + QPointF(half, -half / 2),
                                   middle + QPointF(0, half / 2)};
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(option->palette.buttonText());
        painter->drawPolygon(corners, std::size(corners));
        painter->restore();
    }
};

}  // namespace

double TouchScale(QSize dialog) {
    const QSize measures(800, 480);
    const double shorter = std::min(dialog.width(), dialog.height());
    const double longer = std::max(dialog.width(), dialog.height());
    return std::max(1.0, std::min(shorter / measures.height(), longer / measures.width()));
}

int Px(int measure) {
    return static_cast<int>(std::lround(measure * touchScale));
}

QPalette LookPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window,
                     ColorOf(kEdge));  // the style draws edges in a darker shade of it
    palette.setColor(QPalette::Base, ColorOf(kField));
    palette.setColor(QPalette::AlternateBase, ColorOf(kButton));
    palette.setColor(QPalette::Button, ColorOf(kButton));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, ColorOf(kText));
    palette.setColor(QPalette::PlaceholderText, ColorOf(kFaint));
    palette.setColor(QPalette::Highlight, ColorOf(kAccent));
    palette.setColor(QPalette::HighlightedText, ColorOf(kBack));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, ColorOf(kDisabled));
    return palette;
}

void ApplySettingsLook(QWidget* window, double scale) {
    touchScale = scale;
    daylight = EqualsNoCase(ReadSkinValue("General", "Look"), "day");
    auto* style = new TouchStyle;
    // Not the window's child: the controls, an open drop-down list among them, need it to their
    // end.
    QObject::connect(window, &QObject::destroyed, [style] { DeleteLater(style); });
    window->setStyle(style);
    QPalette palette = LookPalette();
    palette.setColor(QPalette::Window, ColorOf(kBack));
    window->setPalette(palette);
    QFont font = window->font();
    font.setFamilies({QStringLiteral("DejaVu Sans"), font.family()});  // laid out for the first
    font.setPixelSize(Px(kTextPixels));
    window->setFont(font);
    window->setStyleSheet(ScaledSheet());
}

void FitForTouch(QDialog* dialog) {
    for (QWidget* widget : dialog->findChildren<QWidget*>()) {
        const bool box = qobject_cast<QComboBox*>(widget) != nullptr;
        if (box) widget->setPalette(LookPalette());
        if (box || qobject_cast<QLineEdit*>(widget) != nullptr ||
            qobject_cast<QAbstractButton*>(widget) != nullptr)
            widget->setMinimumHeight(Px(kTouchHeight));
    }
    dialog->resize(dialog->parentWidget()->size());
}

}  // namespace dravik
