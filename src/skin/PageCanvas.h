#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "controls/DesignBox.h"

namespace dravik {

class PageCanvas;

/// What a canvas paints of one element: a kind without a control of its own derives one.
class PaintedItem {
 public:
    virtual ~PaintedItem() = default;

    /// Where the element lies, in the canvas's pixels.
    QRect Place() const { return Box.Pixels(); }
    bool Visible() const { return visible_; }
    /// The pixels that Paint can touch; empty while there is nothing to see.
    virtual QRect Covers() const { return visible_ ? Place() : QRect(); }
    virtual void Paint(QPainter& painter) const = 0;
    virtual void SetScale(double scale) { Box.Scale = scale; }
    /// Tells how large the page is, in design pixels.
    virtual void FitInto(const QSizeF& /*page*/) {}
    /// Whether a touch on its place is meant for it rather than for what lies beneath.
    virtual bool TakesPlace() const { return true; }

    // What does not change is not painted again.
    void SetVisible(bool visible);
    void MoveTo(const QRectF& designRect);
    /// What it covers now is to be painted anew.
    void Repaint() const;

    DesignBox Box;

 private:
    friend class PageCanvas;
    QWidget* canvas_ = nullptr;
    int depth_ = 0;
    bool visible_ = true;
};

/// The container of a page or a box. It paints the elements that only show something, from back to
/// front. The elements that can be touched are its children and lie above them.
class PageCanvas : public QWidget {
 public:
    explicit PageCanvas(QWidget* parent = nullptr);

    /// Forgets all items, and the notice.
    void Clear();
    /// Puts an item in front of those of its own depth and of lower ones.
    /// @return the item, which lives until Clear
    PaintedItem* Add(std::unique_ptr<PaintedItem> item, int depth);

    void SetScale(double scale);

    /// How far the page reaches from the corner of the canvas, in window pixels.
    void SetExtent(QSize extent);

    /// Text shown in place of a page that cannot be built at all.
    void SetNotice(const QString& text);
    bool HasNotice() const { return !notice_.isEmpty(); }

    /// Forgets a press on the background that is still held: its release is no click.
    void DropPress() { pressed_ = false; }

    /// A click on the background, where no control takes it. `beside` tells that no other element
    /// lies there either: an image as large as the page and a label that reaches to its edge do not
    /// count, nor does the second press of a double click.
    std::function<void(bool beside)> BackgroundClicked;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent*) override { DropPress(); }

 private:
    bool IsBeside(QPoint point) const;
    QSizeF PageSize() const { return QSizeF(extent_) / scale_; }

    std::vector<std::unique_ptr<PaintedItem>> items_;  ///< from back to front
    QString notice_;
    QSize extent_;
    double scale_ = 1;
    bool pressed_ = false;
    bool pressedBeside_ = false;
};

}  // namespace dravik
