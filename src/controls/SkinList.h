#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <string>

#include "controls/DesignBox.h"
#include "controls/PictureCache.h"
#include "controls/SkinText.h"

namespace dravik {

struct ListSlot;

/// Shows a list slot as rows of picture and text. The slot holds entries and selection; the widget
/// shows them, selects on a tap, scrolls on a drag and reports a double click. It paints the
/// visible rows only and never copies the entries.
class SkinList : public QWidget {
 public:
    explicit SkinList(QWidget* parent = nullptr);

    // Place, scale and look.
    void SetBox(int x, int y, int width, int height);  ///< design pixels
    void SetScale(double scale);
    const DesignBox& Box() const { return box_; }
    void SetLook(const TextLook& look, std::int32_t backColor);
    /// @param height  design pixels; a row is higher where its font needs it
    void SetLeastRowHeight(int height);
    /// What is shown while there are no entries.
    void SetEmptyText(const std::string& text);
    /// Where the pictures of entries are looked for, see ListPictureFile.
    void SetPictureFolder(const std::string& folder);

    /// The slot to show; null shows nothing. It must live as long as it is shown.
    void SetListSlot(ListSlot* slot);
    ListSlot* Slot() const { return slot_; }

    /// Brings the picture up to date when the slot's entries or selection have changed since;
    /// a new selection is scrolled into view. Costs two comparisons when nothing has changed.
    void Refresh();

    /// Selects entry `index` (1-based), scrolls it into view and reports it. An index outside the
    /// list is ignored.
    void SelectEntry(int index);

    /// Forgets a press that is still held: its release selects nothing.
    void DropPress() { pressed_ = false; }

    /// Whole rows that fit: height by row height, both rounded, the remainder dropped. 0 when a row
    /// has no height.
    int PageSize() const;
    int RowHeight() const;  ///< design pixels

    /// First entry that is at least partly visible, 1-based; 0 when the list is empty.
    int FirstVisible() const;

    std::function<void(int index)> SelectionChanged;  ///< by SelectEntry or a tap, when it is new
    std::function<void(int index)> Activated;         ///< double click on an entry

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent*) override { DropPress(); }

 private:
    void Place();
    int Count() const;
    int RowPixels() const;
    int EntryAt(int y) const;
    void ScrollTo(int offset);
    void ScrollIntoView(int index);
    QRect RowRect(int index) const;
    const SkinPicture& RowPicture(const std::string& key);
    void PaintRow(QPainter& painter, int index, int indent);
    void PaintText(QPainter& painter, const QRect& room, const QString& text) const;
    void PaintEmptyText(QPainter& painter) const;
    void PaintScrollMark(QPainter& painter) const;

    DesignBox box_;
    TextLook look_;
    QColor backColor_;
    int leastRowHeight_ = 0;
    QString emptyText_;
    std::string folder_;
    std::map<std::string, SkinPicture> pictures_;  ///< by key; null where there is no file

    ListSlot* slot_ = nullptr;
    int shownChanges_ = -1;
    int shownSelected_ = 0;
    int shownCount_ = 0;
    std::string shownFolder_;
    int offset_ = 0;  ///< window pixels scrolled

    int pressY_ = 0;
    int pressOffset_ = 0;
    bool pressed_ = false;
    bool scrolling_ = false;  ///< the press has become a drag
};

}  // namespace dravik
