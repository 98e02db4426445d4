#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QTabBar>
#include <QTabWidget>
#include <map>
#include <string>

#include "console/ConsoleRequests.h"
#include "skin/PageCanvas.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"

namespace dravik {

namespace {

/// The lines of a window's report, and how many there are of each kind so far.
class WindowReport {
 public:
    explicit WindowReport(QWidget* window) : window_(window) {}

    void Add(const std::string& kind, const QRect& globalRect, bool visible, const QString& name,
             const QString& shown) {
        const QPoint corner = window_->mapFromGlobal(globalRect.topLeft());
        text_ += kind;
        for (const int number : {counts_[kind]++, corner.x(), corner.y(), globalRect.width(),
                                 globalRect.height(), visible ? 1 : 0})
            text_ += "\t" + std::to_string(number);
        text_ += "\t" + OneLine(name.toStdString()) + "\t" + OneLine(shown.toStdString()) + "\n";
    }

    const std::string& Text() const { return text_; }

 private:
    QWidget* window_;
    std::map<std::string, int> counts_;
    std::string text_;
};

QRect GlobalRect(const QWidget& widget, const QRect& rect) {
    return {widget.mapToGlobal(rect.topLeft()), rect.size()};
}

/// The rows of a list that are in view: their cells, joined by tabs.
void AddRows(WindowReport& report, const QAbstractItemView& view, const QString& name) {
    const QAbstractItemModel* model = view.model();
    const QRect shown = view.viewport()->rect();
    for (int row = 0; row < model->rowCount(view.rootIndex()); ++row) {
        QStringList cells;
        QRect place;
        for (int column = 0; column < model->columnCount(view.rootIndex()); ++column) {
            const QModelIndex cell = model->index(row, column, view.rootIndex());
            cells << cell.data().toString();
            place |= view.visualRect(cell);
        }
        place &= shown;
        if (place.isEmpty()) continue;
        report.Add("Row", GlobalRect(*view.viewport(), place), true, name,
                   cells.join(QLatin1Char('\t')));
    }
}

void AddTabs(WindowReport& report, const QTabBar& bar) {
    const QString name = bar.parentWidget()->objectName();
    for (int i = 0; i < bar.count(); ++i)
        report.Add("Tab", GlobalRect(bar, bar.tabRect(i)), true, name, bar.tabText(i));
}

/// A widget's kind and what it shows; without a kind it is no element.
struct Description {
    const char* Kind = nullptr;
    QString Shown;
};

Description Describe(const QWidget& widget) {
    if (const auto* check = qobject_cast<const QCheckBox*>(&widget))
        return {"Check", check->isChecked() ? QStringLiteral("1") : QStringLiteral("0")};
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return {"Button", button->text()};
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget))
        return {"Combo", combo->currentText()};
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) return {"Text", field->text()};
    if (const auto* list = qobject_cast<const QAbstractItemView*>(&widget)) {
        const int row = list->currentIndex().row();
        return {"List", QString::number(row + 1)};
    }
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return {"Label", label->text()};
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return {"Label", group->title()};
    return {};
}

/// Names that begin so are those of parts inside a control.
bool IsNamed(const QWidget& widget) {
    const QString name = widget.objectName();
    return !name.isEmpty() && !name.startsWith(QLatin1String("qt_"));
}

/// The drop-down list that is open over the window.
struct DropDown {
    QWidget* Popup = nullptr;
    QComboBox* Box = nullptr;
};

DropDown OpenDropDown() {
    QWidget* popup = QApplication::activePopupWidget();
    if (popup == nullptr) return {};
    return {popup, qobject_cast<QComboBox*>(popup->parentWidget())};
}

}  // namespace

QWidget* PanelWindow() {
    return CurrentScreen()->Page()->window();
}

QWidget* WindowOnTop() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    // A dialog lies over the main window, also as long as the system has yet to make it active.
    QWidget* active = QApplication::activeWindow();
    if (active != nullptr && active->isVisible() && active->windowType() != Qt::Popup &&
        active != PanelWindow())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<QDialog*>(window) != nullptr) return window;
    }
    return PanelWindow();
}

std::string ReportWindow(QWidget* window) {
    WindowReport report(window);
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != window) continue;
        if (const auto* bar = qobject_cast<QTabBar*>(widget)) AddTabs(report, *bar);
        const Description description = Describe(*widget);
        if (description.Kind == nullptr || !IsNamed(*widget)) continue;
        report.Add(description.Kind, GlobalRect(*widget, widget->rect()),
                   !widget->visibleRegion().isEmpty(), widget->objectName(), description.Shown);
        if (const auto* list = qobject_cast<QAbstractItemView*>(widget))
            AddRows(report, *list, widget->objectName());
    }
    if (const DropDown open = OpenDropDown(); open.Box != nullptr)
        AddRows(report, *open.Box->view(), open.Box->objectName());
    return report.Text() + ".";
}

QPixmap GrabWindow(QWidget* window) {
    QPixmap picture = window->grab();
    if (QWidget* popup = QApplication::activePopupWidget()) {
        QPainter painter(&picture);
        painter.drawPixmap(window->mapFromGlobal(popup->mapToGlobal(QPoint(0, 0))), popup->grab());
    }
    return picture;
}

}  // namespace dravik
