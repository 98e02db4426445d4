#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/ChartTrace.h"
#include "controls/DesignBox.h"
#include "controls/GaugeNeedle.h"
#include "controls/PictureCache.h"
#include "controls/SkinText.h"

namespace dravik {

/// The container of a page or a box. It paints the elements that only show something, from back to
/// front: images, gauge needles, labels, charts. The elements that can be touched are its children
/// and lie above them.
///
/// Items are identified by their element's index on the page. Every setter compares first: what
/// does not change is not painted again.
class PageCanvas : public QWidget {
 public:
    explicit PageCanvas(QWidget* parent = nullptr);

    struct ImageItem {
        int Index = 0;
        DesignBox Box;
        SkinPicture Picture;
        bool Visible = true;
    };
    struct GaugeItem {
        int Index = 0;
        NeedleDial Dial;
        NeedleLook Look;
        std::optional<NeedleLine> Line;  ///< nothing until it has its first value
    };
    struct LabelItem {
        int Index = 0;
        DesignBox Box;  ///< a width or height of 0 reaches to the edge of the page
        TextLook Look;
        QString Text;
        bool ToRight = false;  ///< its width is what is left of the page; the canvas sees to it
        bool ToBottom = false;
    };
    struct ChartItem {
        int Index = 0;
        DesignBox Box;
        ChartLook Look;
    };

    /// Forgets all items, and the notice.
    void Clear();
    void Add(ImageItem item);
    void Add(GaugeItem item);
    void Add(LabelItem item);
    void Add(ChartItem item);

    void SetScale(double scale);

    /// How far the page reaches from the corner of the canvas, in window pixels.
    void SetExtent(QSize extent);

    /// Text shown in place of a page that cannot be built at all.
    void SetNotice(const QString& text);
    bool HasNotice() const { return !notice_.isEmpty(); }

    // Setters for the item of an element; nothing happens when this canvas has none of that index.
    void SetImageVisible(int index, bool visible);
    void SetImagePicture(int index, const SkinPicture& picture);
    void MoveImage(int index, const QRectF& designRect);
    void SetNeedle(int index, float value);
    void SetLabelText(int index, const std::string& text);
    /// The samples of a chart have changed.
    void RedrawChart(int index);

    const ImageItem* Image(int index) const { return Find(images_, index); }
    const GaugeItem* Gauge(int index) const { return Find(gauges_, index); }
    const LabelItem* Label(int index) const { return Find(labels_, index); }
    const ChartItem* Chart(int index) const { return Find(charts_, index); }

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
    void ReachEdges(LabelItem& item) const;
    template <typename Item>
    static const Item* Find(const std::vector<Item>& items, int index);
    template <typename Item>
    static Item* Find(std::vector<Item>& items, int index);

    std::vector<ImageItem> images_;
    std::vector<GaugeItem> gauges_;
    std::vector<LabelItem> labels_;
    std::vector<ChartItem> charts_;
    QString notice_;
    QSize extent_;
    double scale_ = 1;
    bool pressed_ = false;
    bool pressedBeside_ = false;
};

template <typename Item>
const Item* PageCanvas::Find(const std::vector<Item>& items, int index) {
    // Indices of a canvas are consecutive, so the first one tells where any other stands.
    if (items.empty()) return nullptr;
    const int position = index - items.front().Index;
    if (position < 0 || position >= static_cast<int>(items.size())) return nullptr;
    return &items[static_cast<std::size_t>(position)];
}

template <typename Item>
Item* PageCanvas::Find(std::vector<Item>& items, int index) {
    return const_cast<Item*>(Find(static_cast<const std::vector<Item>&>(items), index));
}

}  // namespace dravik
