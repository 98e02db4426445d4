#include "controls/SkinList.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/At.h"

namespace dravik {

namespace {

constexpr int kRowPadding = 3;     ///< design pixels above and below a row's text
constexpr int kHighestRow = 500;   ///< design pixels that a skin can ask for
constexpr int kSidePadding = 4;    ///< design pixels left of, between and right of a row's parts
constexpr int kDragThreshold = 8;  ///< design pixels a finger may move and still tap
constexpr int kScrollMarkWidth = 3;
constexpr int kScrollMarkOpacity = 120;
constexpr std::size_t kPictureKeys = 256;
constexpr double kEmptyTextShare = 0.6;   ///< of the text's colour in the text of an empty list
constexpr double kSelectionShare = 0.25;  ///< of the text's colour in the selected row's ground

/// Between words where there are any, else anywhere: names of files need not have blanks.
QTextOption WrapAnywhere() {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

QColor Between(const QColor& from, const QColor& to, double share) {
    const auto mix = [share](int a, int b) { return qRound(a + (b - a) * share); };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

}  // namespace

SkinList::SkinList(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    SetLook({}, 0xFFFFFF);
}

// Place, scale and look ---------------------------------------------------------------------------

void SkinList::SetBox(int x, int y, int width, int height) {
    box_ = {double(x), double(y), double(width), double(height), box_.Scale};
    Place();
}

void SkinList::SetScale(double scale) {
    const double rows = double(offset_) / RowPixels();
    box_.Scale = scale;
    pictures_.clear();
    Place();
    ScrollTo(qRound(rows * RowPixels()));
    update();
}

void SkinList::Place() {
    const QRect pixels = box_.Pixels();
    if (pixels == geometry()) return;
    setGeometry(pixels);
    ScrollTo(offset_);
}

void SkinList::SetLook(const TextLook& look, std::int32_t backColor) {
    const QColor back = SkinColor(backColor);
    if (look == look_ && back == backColor_) return;
    look_ = look;
    backColor_ = back;
    pictures_.clear();  // they are fitted to the row
    ScrollTo(offset_);
    update();
}

void SkinList::SetPictureFolder(const std::string& folder) {
    if (folder == folder_) return;
    folder_ = folder;
    pictures_.clear();
    update();
}

void SkinList::SetLeastRowHeight(int height) {
    if (height == leastRowHeight_) return;
    leastRowHeight_ = height;
    pictures_.clear();
    ScrollTo(offset_);
    update();
}

void SkinList::SetEmptyText(const std::string& text) {
    const QString shown = ShownText(text);
    if (shown == emptyText_) return;
    emptyText_ = shown;
    if (Count() == 0) update();
}

int SkinList::RowHeight() const {
    const int ofText = QFontMetrics(SkinFont(look_, 1)).height() + 2 * kRowPadding;
    return std::clamp(leastRowHeight_, ofText, std::max(ofText, kHighestRow));
}

int SkinList::RowPixels() const {
    return std::max(1, qRound(RowHeight() * box_.Scale));
}

int SkinList::PageSize() const {
    const int row = RowHeight();
    return row > 0 ? static_cast<int>(std::nearbyint(box_.Height)) / row : 0;
}

// Entries and selection ---------------------------------------------------------------------------

void SkinList::SetListSlot(ListSlot* slot) {
    if (slot == slot_) return;
    slot_ = slot;
    shownChanges_ = slot ? slot->Changes - 1 : 0;
    shownCount_ = -1;
    offset_ = 0;
    update();
    Refresh();
    update();
}

int SkinList::Count() const {
    return slot_ ? static_cast<int>(slot_->Entries.size()) : 0;
}

void SkinList::Refresh() {
    if (!slot_) return;
    const bool reselected = slot_->Selected != shownSelected_;
    bool otherList = false;
    if (slot_->Changes != shownChanges_) {
        // A line that rotates changes the entries too, but must not undo the user's scrolling.
        otherList = Count() != shownCount_ || slot_->Folder != shownFolder_;
        shownChanges_ = slot_->Changes;
        shownCount_ = Count();
        shownFolder_ = slot_->Folder;
        ScrollTo(otherList ? 0 : offset_);
        update();
    }
    if (reselected) {
        update(RowRect(shownSelected_));
        shownSelected_ = slot_->Selected;
        update(RowRect(shownSelected_));
    }
    if (reselected || otherList) ScrollIntoView(slot_->Selected);
}

void SkinList::SelectEntry(int index) {
    if (index < 1 || index > Count()) return;
    const bool isNew = slot_->Selected != index;
    slot_->Selected = index;
    Refresh();
    ScrollIntoView(index);
    if (isNew && SelectionChanged) SelectionChanged(index);
}

// Scrolling ---------------------------------------------------------------------------------------

int SkinList::FirstVisible() const {
    return Count() > 0 ? offset_ / RowPixels() + 1 : 0;
}

int SkinList::EntryAt(int y) const {
    const int index = (y + offset_) / RowPixels() + 1;
    return y >= 0 && index <= Count() ? index : 0;
}

QRect SkinList::RowRect(int index) const {
    return QRect(0, (index - 1) * RowPixels() - offset_, width(), RowPixels());
}

void SkinList::ScrollTo(int offset) {
    offset = std::clamp(offset, 0, std::max(0, Count() * RowPixels() - height()));
    if (offset == offset_) return;
    offset_ = offset;
    update();
}

void SkinList::ScrollIntoView(int index) {
    if (index < 1 || index > Count()) return;
    const int top = (index - 1) * RowPixels();
    const int bottom = top + RowPixels();
    if (top < offset_)
        ScrollTo(top);
    else if (bottom > offset_ + height())
        ScrollTo(bottom - height());
}

// Pointer -----------------------------------------------------------------------------------------

void SkinList::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
    scrolling_ = false;
    pressY_ = event->position().toPoint().y();
    pressOffset_ = offset_;
}

void SkinList::mouseMoveEvent(QMouseEvent* event) {
    if (!pressed_) return;
    const int way = event->position().toPoint().y() - pressY_;
    if (std::abs(way) >= kDragThreshold * box_.Scale) scrolling_ = true;
    if (scrolling_) ScrollTo(pressOffset_ - way);
}

void SkinList::mouseReleaseEvent(QMouseEvent* event) {
    const bool tapped = pressed_ && !scrolling_ && rect().contains(event->position().toPoint());
    pressed_ = false;
    if (tapped) SelectEntry(EntryAt(event->position().toPoint().y()));
}

void SkinList::mouseDoubleClickEvent(QMouseEvent* event) {
    const int index = EntryAt(event->position().toPoint().y());
    if (event->button() != Qt::LeftButton || index == 0) return;
    const QPointer<SkinList> alive(this);
    SelectEntry(index);
    if (alive && Activated) Activated(index);
}

// Painting ----------------------------------------------------------------------------------------

/// The picture of a key, at most as high as a row.
const SkinPicture& SkinList::RowPicture(const std::string& key) {
    const auto known = pictures_.find(key);
    if (known != pictures_.end()) return known->second;
    if (pictures_.size() >= kPictureKeys) pictures_.clear();
    SkinPicture& picture = pictures_[key];
    picture = LoadSkinPicture(ListPictureFile(folder_, key), box_.Scale);
    const QSizeF size = picture.DesignSize();
    const double room = RowHeight() - 2;
    const double fit = room / std::max({size.width(), size.height(), room});
    if (fit < 1) picture = picture.AtScale(box_.Scale * fit);
    return picture;
}

void SkinList::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRect exposed = event->rect();
    painter.fillRect(exposed, backColor_);
    if (Count() == 0) {
        PaintEmptyText(painter);
        return;
    }
    const int row = RowPixels();
    const int firstVisible = FirstVisible();
    const int lastVisible = std::min(Count(), (offset_ + height() - 1) / row + 1);

    // All rows of the view make room for a picture as soon as one of them has one.
    bool pictures = false;
    for (int i = firstVisible; i <= lastVisible; ++i) {
        const ListEntry& entry = At(slot_->Entries, i - 1);
        pictures = pictures || !RowPicture(entry.Picture).IsNull();
    }
    const int indent =
        qRound(kSidePadding * box_.Scale) * (pictures ? 2 : 1) + (pictures ? row : 0);
    for (int i = firstVisible; i <= lastVisible; ++i) {
        if (RowRect(i).intersects(exposed)) PaintRow(painter, i, indent);
    }
    PaintScrollMark(painter);
}

void SkinList::PaintRow(QPainter& painter, int index, int indent) {
    const ListEntry& entry = At(slot_->Entries, index - 1);
    const QRect row = RowRect(index);
    const QColor textColor = SkinColor(look_.Color);
    if (index == slot_->Selected)
        painter.fillRect(row, Between(backColor_, textColor, kSelectionShare));

    const int side = qRound(kSidePadding * box_.Scale);
    const SkinPicture& picture = RowPicture(entry.Picture);
    if (!picture.IsNull()) {
        const QSize size = picture.Pixmap().deviceIndependentSize().toSize();
        const QPoint centre =
            QRect(row.left() + side, row.top(), row.height(), row.height()).center();
        const QPoint corner = centre - QPoint(size.width() / 2, size.height() / 2);
        PaintPicture(painter, QRect(corner, size), picture);
    }

    painter.setFont(SkinFont(look_, box_.Scale));
    painter.setPen(textColor);
    PaintText(painter, row.adjusted(indent, 0, -side, 0), ShownText(entry.Text));
}

/// As many lines as there is room for, the last one cut with "...".
void SkinList::PaintText(QPainter& painter, const QRect& room, const QString& text) const {
    const QFontMetrics metrics(painter.font());
    const int most = std::max(1, room.height() / metrics.height());
    QTextLayout layout(text, painter.font());
    layout.setTextOption(WrapAnywhere());
    QStringList lines;
    layout.beginLayout();
    while (lines.size() < most) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) break;
        line.setLineWidth(room.width());
        const bool last = lines.size() + 1 == most;
        lines.append(
            last ? metrics.elidedText(text.mid(line.textStart()), Qt::ElideRight, room.width())
                 : text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    const auto height = static_cast<int>(lines.size()) * metrics.height();
    QRect place(room.left(), room.top() + (room.height() - height) / 2, room.width(),
                metrics.height());
    for (const QString& line : lines) {
        painter.drawText(place, int(SkinAlignment(look_.Alignment) | Qt::TextSingleLine), line);
        place.translate(0, metrics.height());
    }
}

/// Fainter than an entry, which it must not be taken for.
void SkinList::PaintEmptyText(QPainter& painter) const {
    const int side = qRound(kSidePadding * box_.Scale);
    painter.setFont(SkinFont(look_, box_.Scale));
    painter.setPen(Between(backColor_, SkinColor(look_.Color), kEmptyTextShare));
    painter.drawText(rect().adjusted(side, side, -side, -side),
                     int(Qt::AlignCenter) | Qt::TextWordWrap, emptyText_);
}

/// A thin bar at the right edge tells how much of the list is seen, and where.
void SkinList::PaintScrollMark(QPainter& painter) const {
    const double whole = double(Count()) * RowPixels();
    if (whole <= height()) return;
    const int thickness = std::max(1, qRound(kScrollMarkWidth * box_.Scale));
    const int length = std::max(2 * thickness, qRound(height() * (height() / whole)));
    const int top = qRound((height() - length) * (offset_ / (whole - height())));
    QColor color = SkinColor(look_.Color);
    color.setAlpha(kScrollMarkOpacity);
    painter.fillRect(width() - thickness, top, thickness, length, color);
}

}  // namespace dravik
