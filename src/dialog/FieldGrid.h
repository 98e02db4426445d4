#pragma once

#include <QScrollArea>
#include <QWidget>
#include <initializer_list>
#include <vector>

class QBoxLayout;
class QGridLayout;
class QLabel;

/// How the fields of a tab stand on screens of every shape: beside each other where there is room,
/// one below the other where there is none.
namespace dravik {

/// One setting: its caption, the control, and what stands behind that.
class FieldCell : public QWidget {
 public:
    /// @param caption  may be empty
    /// @param control  takes the room that is left, together with its unit
    /// @param tail     goes on a line of its own where there is one column only
    FieldCell(const QString& caption, std::initializer_list<QWidget*> control,
              std::initializer_list<QWidget*> tail = {});

    /// The room that the caption needs; 0 where it stands above its control.
    int CaptionWidth() const;
    void SetCaptionWidth(int width);

    /// What goes below instead of beside: the tail, and the control itself below its caption.
    void Stack(bool tail, bool control);

 private:
    QLabel* caption_;
    QBoxLayout* lines_;
    QBoxLayout* first_;
    bool stacked_ = false;
};

/// Cells in columns, filled row by row in the order in which they were added.
class CellGrid : public QWidget {
 public:
    CellGrid();

    /// @param wide  the cell has a row to itself
    void Add(QWidget* cell, bool wide = false);

    /// Puts the cells into that many columns.
    ///
    /// @param stacked  captions stand above their controls
    void Arrange(int columns, bool stacked);

 private:
    struct Cell {
        QWidget* Widget;
        bool Wide;
    };

    void AlignCaptions(int columns);

    std::vector<Cell> cells_;
    QGridLayout* grid_;
};

/// Arranges all grids of a page.
void ArrangeCells(QWidget* page, int columns, bool stacked);

/// A tab that is pushed up and down, and stands as its size asks for.
class ArrangedTab : public QScrollArea {
 protected:
    /// @param room  the tab's size as a measure
    virtual void Arrange(QSize room) = 0;

    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace dravik
