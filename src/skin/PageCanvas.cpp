#include "skin/PageCanvas.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "controls/SkinText.h"

namespace dravik {

void PaintedItem::SetVisible(bool visible) {
    if (visible == visible_) return;
    Repaint();
    visible_ = visible;
    Repaint();
}

void PaintedItem::MoveTo(const QRectF& designRect) {
    const DesignBox box{designRect.x(), designRect.y(), designRect.width(), designRect.height(),
                        Box.Scale};
    if (box.Pixels() == Box.Pixels()) return;
    Repaint();
    Box = box;
    Repaint();
}

void PaintedItem::Repaint() const {
    if (canvas_ != nullptr) canvas_->update(Covers());
}

PageCanvas::PageCanvas(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::ClickFocus);
}

void PageCanvas::Clear() {
    items_.clear();
    notice_.clear();
    update();
}

PaintedItem* PageCanvas::Add(std::unique_ptr<PaintedItem> item, int depth) {
    item->canvas_ = this;
    item->depth_ = depth;
    item->SetScale(scale_);
    item->FitInto(PageSize());
    item->Repaint();
    const auto place = std::upper_bound(items_.begin(), items_.end(), depth,
                                        [](int wanted, const std::unique_ptr<PaintedItem>& other) {
                                            return wanted < other->depth_;
                                        });
    return items_.insert(place, std::move(item))->get();
}

void PageCanvas::SetScale(double scale) {
    scale_ = scale;
    for (const auto& item : items_) {
        item->SetScale(scale);
        item->FitInto(PageSize());
    }
    update();
}

void PageCanvas::SetExtent(QSize extent) {
    if (extent == extent_) return;
    extent_ = extent;
    for (const auto& item : items_) item->FitInto(PageSize());
    update();
}

void PageCanvas::SetNotice(const QString& text) {
    if (text == notice_) return;
    notice_ = text;
    update();
}

void PageCanvas::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRegion& dirty = event->region();
    for (const auto& item : items_) {
        if (dirty.intersects(item->Covers())) item->Paint(painter);
    }
    if (!notice_.isEmpty()) {
        constexpr int kMargin = 24;
        constexpr double kPoints = 12;
        const QRect area = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
        painter.setPen(Qt::white);
        PaintFitted(
            painter, area,
            FitText(notice_, area.size(), {"", kPoints, 0, 2, false, false}, PlainScale(size())),
            Qt::AlignCenter);
    }
}

/// Whether no element lies at that point.
bool PageCanvas::IsBeside(QPoint point) const {
    const QRect page(QPoint(0, 0), extent_);
    const auto painted = [point, &page](const std::unique_ptr<PaintedItem>& item) {
        const QRect area = item->Covers();
        return item->TakesPlace() && area.contains(point) && !area.contains(page);
    };
    const auto control = [point](const QObject* child) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        return widget != nullptr && !widget->isHidden() && widget->geometry().contains(point);
    };
    return std::none_of(items_.begin(), items_.end(), painted) &&
           std::none_of(children().begin(), children().end(), control);
}

void PageCanvas::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
    pressedBeside_ =
        event->type() == QEvent::MouseButtonPress && IsBeside(event->position().toPoint());
}

void PageCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) return;
    const QPoint point = event->position().toPoint();
    if (rect().contains(point) && BackgroundClicked)
        BackgroundClicked(pressedBeside_ && IsBeside(point));
}

}  // namespace dravik
