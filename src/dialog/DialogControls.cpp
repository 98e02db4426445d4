#include "dialog/DialogControls.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QScrollArea>
#include <QScroller>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "dialog/SettingsLook.h"
#include "platform/Text.h"
#include "settings/Words.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr int kNoteRole = Qt::UserRole + 1;
constexpr int kVisibleChoices = 7;
constexpr int kNoteMargin = 12;
constexpr double kPressDelay = 0.15;  // seconds until a press counts as none that pushes the page

/// Rows of a drop-down list: high enough for a finger, the note in a fainter colour at the right.
class ChoiceDelegate : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        const QString note = index.data(kNoteRole).toString();
        if (!note.isEmpty())
            size.rwidth() += option.fontMetrics.horizontalAdvance(note) + 3 * Px(kNoteMargin);
        return {size.width(), std::max(size.height(), Px(kTouchHeight))};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        painter->setPen(
            option.palette.color(selected ? QPalette::HighlightedText : QPalette::PlaceholderText));
        painter->setFont(option.font);
        painter->drawText(option.rect.adjusted(0, 0, -Px(kNoteMargin), 0),
                          Qt::AlignRight | Qt::AlignVCenter, index.data(kNoteRole).toString());
    }
};

/// A turn of the wheel moves the page and does not change the box that happens to lie beneath.
class WheelGuard : public QObject {
 public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::Wheel) return QObject::eventFilter(object, event);
        event->ignore();
        return true;
    }
};

/// A field that is touched can be typed into without keys. A push of the page ends elsewhere.
class KeyboardOnTouch : public QObject {
 public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        auto* field = qobject_cast<QLineEdit*>(object);
        if (event->type() == QEvent::MouseButtonRelease && field != nullptr &&
            !field->isReadOnly() &&
            field->rect().contains(static_cast<QMouseEvent*>(event)->position().toPoint()))
            BringUpKeyboard();
        return QObject::eventFilter(object, event);
    }
};

void OfferKeyboard(QLineEdit* field) {
    field->installEventFilter(new KeyboardOnTouch(field));
}

QComboBox* MakeCombo(const char* name) {
    auto* box = new QComboBox;
    box->setObjectName(QString::fromLatin1(name));
    box->setPalette(LookPalette());
    box->setMinimumHeight(Px(kTouchHeight));
    box->setMaxVisibleItems(kVisibleChoices);
    box->setItemDelegate(new ChoiceDelegate(box));
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(6);
    box->installEventFilter(new WheelGuard(box));
    ScrollByTouch(box->view());
    return box;
}

}  // namespace

QString Shown(std::string_view bytes) {
    return QString::fromStdString(ToUtf8(bytes));
}

QString InWords(std::string_view english) {
    return Shown(Word(english));
}

std::string Typed(const QString& text, const std::string& before) {
    return text == Shown(before) ? before : text.toStdString();
}

QLabel* MakeLabel(const QString& text) {
    return new QLabel(text);
}

QLabel* MakeFaint(const QString& text) {
    QLabel* label = MakeLabel(text);
    label->setProperty("faint", true);
    return label;
}

QLineEdit* MakeField(const char* name) {
    auto* field = new QLineEdit;
    field->setObjectName(QString::fromLatin1(name));
    field->setMinimumHeight(Px(kTouchHeight));
    OfferKeyboard(field);
    return field;
}

QCheckBox* MakeCheck(const char* name, const QString& text) {
    auto* check = new QCheckBox(text);
    check->setObjectName(QString::fromLatin1(name));
    check->setPalette(LookPalette());
    check->setMinimumHeight(Px(kTouchHeight));
    return check;
}

QPushButton* MakeButton(const char* name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(QString::fromLatin1(name));
    button->setMinimumHeight(Px(kTouchHeight));
    button->setAutoDefault(false);  // Return belongs to the button that has the focus
    return button;
}

QGroupBox* MakeGroup(const QString& title, QWidget* content) {
    auto* group = new QGroupBox(title);
    auto* inside = new QVBoxLayout(group);
    inside->setContentsMargins(Px(4), 0, Px(4), 0);
    inside->addWidget(content);
    return group;
}

QTableView* MakeTable(const char* name, QAbstractItemModel* rows,
                      std::initializer_list<int> columnWidths) {
    auto* table = new QTableView;
    table->setObjectName(QString::fromLatin1(name));
    table->setModel(rows);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(Px(kTouchHeight));
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setHighlightSections(false);
    int column = 0;
    for (const int width : columnWidths) table->setColumnWidth(column++, Px(width));
    ScrollByTouch(table);
    return table;
}

QComboBox* MakeFreeCombo(const char* name) {
    QComboBox* box = MakeCombo(name);
    box->setEditable(true);
    OfferKeyboard(box->lineEdit());
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);
    return box;
}

QComboBox* MakeChoice(const char* name) {
    return MakeCombo(name);
}

void AddNoted(QComboBox* box, const QString& text, const QString& note) {
    // The first choice of a box would take the place of the text that stands in it.
    const QSignalBlocker quiet(box);
    const QString before = box->currentText();
    box->addItem(text);
    box->setItemData(box->count() - 1, note, kNoteRole);
    ShowIn(box, before);
}

void ShowIn(QComboBox* box, const QString& text) {
    const QSignalBlocker quiet(box);
    box->setCurrentIndex(box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    box->setEditText(text);
}

void ScrollByTouch(QAbstractScrollArea* area) {
    // The window makes a mouse button of every touch that nobody takes, so this serves both.
    QScroller::grabGesture(area->viewport(), QScroller::LeftMouseButtonGesture);
    QScroller* scroller = QScroller::scroller(area->viewport());
    QScrollerProperties properties = scroller->scrollerProperties();
    properties.setScrollMetric(QScrollerProperties::MousePressEventDelay, kPressDelay);
    for (const auto policy : {QScrollerProperties::HorizontalOvershootPolicy,
                              QScrollerProperties::VerticalOvershootPolicy})
        properties.setScrollMetric(policy, QScrollerProperties::OvershootAlwaysOff);
    scroller->setScrollerProperties(properties);
    if (auto* view = qobject_cast<QAbstractItemView*>(area)) {
        view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    }
}

void FillTab(QScrollArea* tab, QWidget* page) {
    page->setObjectName(QStringLiteral("page"));
    tab->setWidgetResizable(true);
    tab->setFrameShape(QFrame::NoFrame);
    tab->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tab->setFocusPolicy(Qt::NoFocus);
    tab->setWidget(page);
    ScrollByTouch(tab);
}

}  // namespace dravik
