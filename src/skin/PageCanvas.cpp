#include "skin/PageCanvas.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "core/basGlobal.h"

namespace dravik {

PageCanvas::PageCanvas(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::ClickFocus);
}

void PageCanvas::Clear() {
    images_.clear();
    gauges_.clear();
    labels_.clear();
    charts_.clear();
    notice_.clear();
    update();
}

void PageCanvas::Add(ImageItem item) {
    item.Box.Scale = scale_;
    update(item.Box.Pixels());
    images_.push_back(std::move(item));
}

void PageCanvas::Add(GaugeItem item) {
    gauges_.push_back(std::move(item));
}

void PageCanvas::Add(LabelItem item) {
    item.Box.Scale = scale_;
    item.ToRight = item.Box.Width <= 0;
    item.ToBottom = item.Box.Height <= 0;
    ReachEdges(item);
    update(item.Box.Pixels());
    labels_.push_back(std::move(item));
}

void PageCanvas::Add(ChartItem item) {
    item.Box.Scale = scale_;
    item.Look.Background = item.Look.Background.AtScale(scale_);
    update(item.Box.Pixels());
    charts_.push_back(std::move(item));
}

void PageCanvas::SetScale(double scale) {
    scale_ = scale;
    for (ImageItem& item : images_) {
        item.Box.Scale = scale;
        item.Picture = item.Picture.AtScale(scale);
    }
    for (LabelItem& item : labels_) {
        item.Box.Scale = scale;
        ReachEdges(item);
    }
    for (ChartItem& item : charts_) {
        item.Box.Scale = scale;
        item.Look.Background = item.Look.Background.AtScale(scale);
    }
    update();
}

void PageCanvas::SetExtent(QSize extent) {
    if (extent == extent_) return;
    extent_ = extent;
    for (LabelItem& item : labels_) ReachEdges(item);
    update();
}

/// A text that is aligned to the right or centred needs the true edge, not just one far away.
void PageCanvas::ReachEdges(LabelItem& item) const {
    const QSizeF page = QSizeF(extent_) / scale_;
    if (item.ToRight) item.Box.Width = std::max(page.width() - item.Box.X, 0.0);
    if (item.ToBottom) item.Box.Height = std::max(page.height() - item.Box.Y, 0.0);
}

void PageCanvas::SetNotice(const QString& text) {
    if (text == notice_) return;
    notice_ = text;
    update();
}

void PageCanvas::SetImageVisible(int index, bool visible) {
    ImageItem* item = Find(images_, index);
    if (item == nullptr || item->Visible == visible) return;
    item->Visible = visible;
    update(item->Box.Pixels());
}

void PageCanvas::SetImagePicture(int index, const SkinPicture& picture) {
    ImageItem* item = Find(images_, index);
    if (item == nullptr || item->Picture == picture) return;
    item->Picture = picture;
    update(item->Box.Pixels());
}

void PageCanvas::MoveImage(int index, const QRectF& designRect) {
    ImageItem* item = Find(images_, index);
    if (item == nullptr) return;
    DesignBox box{designRect.x(), designRect.y(), designRect.width(), designRect.height(), scale_};
    if (box.Pixels() == item->Box.Pixels()) return;
    update(item->Box.Pixels());
    item->Box = box;
    update(item->Box.Pixels());
}

void PageCanvas::SetNeedle(int index, float value) {
    GaugeItem* item = Find(gauges_, index);
    if (item == nullptr) return;
    const std::optional<NeedleLine> line = NeedleGeometry(item->Dial, value);
    if (!line || line == item->Line) return;
    if (item->Line) update(NeedleBounds(*item->Line, item->Look, scale_));
    item->Line = line;
    update(NeedleBounds(*line, item->Look, scale_));
}

void PageCanvas::SetLabelText(int index, const std::string& text) {
    LabelItem* item = Find(labels_, index);
    if (item == nullptr) return;
    QString shown = ShownText(text);
    if (shown == item->Text) return;
    item->Text = std::move(shown);
    update(item->Box.Pixels());
}

void PageCanvas::RedrawChart(int index) {
    if (const ChartItem* item = Find(charts_, index)) update(item->Box.Pixels());
}

void PageCanvas::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRegion& dirty = event->region();
    for (const ImageItem& item : images_) {
        const QRect target = item.Box.Pixels();
        if (item.Visible && dirty.intersects(target)) PaintPicture(painter, target, item.Picture);
    }
    for (const GaugeItem& item : gauges_) {
        if (item.Line && dirty.intersects(NeedleBounds(*item.Line, item.Look, scale_)))
            PaintNeedle(painter, *item.Line, item.Look, scale_);
    }
    for (const LabelItem& item : labels_) {
        const QRect target = item.Box.Pixels();
        if (!item.Text.isEmpty() && dirty.intersects(target))
            PaintText(painter, target, item.Text, item.Look, scale_);
    }
    for (const ChartItem& item : charts_) {
        const QRect target = item.Box.Pixels();
        if (dirty.intersects(target)) {
            PaintChart(painter, target, basGlobal.Charts[static_cast<std::size_t>(item.Index)],
                       item.Look, scale_);
        }
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
    const auto covers = [this, point](const QRect& element) {
        return element.contains(point) && !element.contains(QRect(QPoint(0, 0), extent_));
    };
    const auto any = [](const auto& items, const auto& covering) {
        return std::any_of(items.begin(), items.end(), covering);
    };
    return !any(images_, [&](const ImageItem& item) {
        return item.Visible && covers(item.Box.Pixels());
    }) && !any(labels_, [&](const LabelItem& item) {
        return !item.ToRight && !item.ToBottom && covers(item.Box.Pixels());
    }) && !any(charts_, [&](const ChartItem& item) {
        return covers(item.Box.Pixels());
    }) && !any(gauges_, [&](const GaugeItem& item) {
        return item.Line && covers(NeedleBounds(*item.Line, item.Look, scale_));
    }) && !any(children(), [&](const QObject* child) {
        const auto* control = qobject_cast<const QWidget*>(child);
        return control != nullptr && !control->isHidden() && control->geometry().contains(point);
    });
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
