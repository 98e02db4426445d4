#include "dialog/FieldGrid.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>

#include "dialog/DialogControls.h"
#include "dialog/SettingsLook.h"

namespace dravik {

namespace {

constexpr int kSpacing = 6;
constexpr int kLineSpacing = 4;

QHBoxLayout* InOneLine(std::initializer_list<QWidget*> widgets) {
    auto* line = new QHBoxLayout;
    line->setSpacing(Px(kSpacing));
    for (QWidget* widget : widgets) line->addWidget(widget);
    return line;
}

}  // namespace

FieldCell::FieldCell(const QString& caption, std::initializer_list<QWidget*> control,
                     std::initializer_list<QWidget*> tail)
    : caption_(MakeLabel(caption)),
      lines_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      first_(new QBoxLayout(QBoxLayout::LeftToRight)) {
    lines_->setContentsMargins(0, 0, 0, 0);
    lines_->setSpacing(Px(kSpacing));
    first_->setSpacing(Px(kSpacing));
    first_->addWidget(caption_);
    first_->addLayout(InOneLine(control), 1);
    lines_->addLayout(first_, 1);
    if (tail.size() > 0) lines_->addLayout(InOneLine(tail), 1);
    caption_->setVisible(!caption.isEmpty());
}

int FieldCell::CaptionWidth() const {
    return stacked_ || caption_->text().isEmpty() ? 0 : caption_->sizeHint().width();
}

void FieldCell::SetCaptionWidth(int width) {
    caption_->setMinimumWidth(width);
}

void FieldCell::Stack(bool tail, bool control) {
    stacked_ = control;
    lines_->setDirection(tail ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    first_->setDirection(control ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

CellGrid::CellGrid() : grid_(new QGridLayout(this)) {
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(Px(2 * kSpacing));
    grid_->setVerticalSpacing(Px(kLineSpacing));
}

void CellGrid::Add(QWidget* cell, bool wide) {
    cell->setParent(this);
    cells_.push_back({cell, wide});
}

void CellGrid::Arrange(int columns, bool stacked) {
    while (grid_->count() > 0) delete grid_->takeAt(0);
    int row = 0;
    int column = 0;
    for (const Cell& cell : cells_) {
        if (cell.Wide && column > 0) {
            ++row;
            column = 0;
        }
        const int span = cell.Wide ? columns : 1;
        grid_->addWidget(cell.Widget, row, column, 1, span);
        column += span;
        if (column >= columns) {
            ++row;
            column = 0;
        }
        if (auto* field = dynamic_cast<FieldCell*>(cell.Widget))
            field->Stack(columns == 1, stacked);
    }
    for (int i = 0; i < std::max(columns, grid_->columnCount()); ++i)
        grid_->setColumnStretch(i, i < columns ? 1 : 0);
    AlignCaptions(columns);
}

/// The controls below each other begin at the same place.
void CellGrid::AlignCaptions(int columns) {
    for (int column = 0; column < columns; ++column) {
        std::vector<FieldCell*> fields;
        int width = 0;
        for (int i = 0; i < grid_->count(); ++i) {
            int atRow = 0;
            int atColumn = 0;
            int ignored = 0;
            grid_->getItemPosition(i, &atRow, &atColumn, &ignored, &ignored);
            auto* field = dynamic_cast<FieldCell*>(grid_->itemAt(i)->widget());
            if (field == nullptr || atColumn != column) continue;
            fields.push_back(field);
            width = std::max(width, field->CaptionWidth());
        }
        for (FieldCell* field : fields) field->SetCaptionWidth(width);
    }
}

void ArrangeCells(QWidget* page, int columns, bool stacked) {
    QList<QWidget*> widgets = page->findChildren<QWidget*>();
    widgets.prepend(page);
    for (QWidget* widget : widgets) {
        if (auto* grid = dynamic_cast<CellGrid*>(widget)) grid->Arrange(columns, stacked);
    }
}

/// Judged by the whole width, with or without a scroll bar, so that the bar never comes and goes by
/// itself. What is being typed into stays in view when an on-screen keyboard takes its room.
void ArrangedTab::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    const double scale = Px(1000) / 1000.0;
    Arrange(QSize(static_cast<int>(width() / scale), static_cast<int>(height() / scale)));
    QWidget* focused = focusWidget();
    if (focused != nullptr && isAncestorOf(focused)) ensureWidgetVisible(focused, 0, 0);
}

}  // namespace dravik
