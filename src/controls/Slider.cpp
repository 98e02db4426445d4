#include "controls/Slider.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QRegion>
#include <algorithm>
#include <cmath>
#include <limits>

#include "controls/PointerInput.h"

namespace dravik {

namespace {

constexpr int kOverTimerMs = 40;
constexpr double kFarAway = 1e5;  ///< design pixels; beyond any screen, within what can be drawn

/// To the nearest whole number, halves to even, held inside the 32-bit range.
std::int32_t ToInteger(double value) {
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(std::nearbyint(value), kLowest, kHighest));
}

/// A value seen from the other end of a vertical track. With a negative minimum it is the plain
/// negative, which is the mirror image only when the bounds lie evenly about zero; skins count on
/// it. It is its own inverse.
std::int32_t Mirrored(std::int32_t value, std::int32_t min, std::int32_t max) {
    return ToInteger(min >= 0 ? double(max) - value : -double(value));
}

}  // namespace

Slider::Slider(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    OverTimer_.setInterval(kOverTimerMs);
    connect(&OverTimer_, &QTimer::timeout, this, &Slider::CheckPointerOver);
}

// Place and scale ---------------------------------------------------------------------------------

void Slider::MoveTo(int x, int y) {
    box_.X = x;
    box_.Y = y;
    Place();
}

void Slider::SetScale(double scale) {
    box_.Scale = scale;
    for (SkinPicture* picture : {&back_, &progress_, &bar_, &barOver_, &barDown_, &drawnKnob_})
        *picture = picture->AtScale(scale);
    Place();
    update();
}

void Slider::Place() {
    const QSizeF size = back_.IsNull() ? progress_.DesignSize() : back_.DesignSize();
    box_.Width = size.width();
    box_.Height = size.height();
    const QRect pixels = box_.Pixels();
    if (pixels != geometry()) setGeometry(pixels);
}

void Slider::SetDisplayOnly(bool displayOnly) {
    setAttribute(Qt::WA_TransparentForMouseEvents, displayOnly);
    setFocusPolicy(displayOnly ? Qt::NoFocus : Qt::StrongFocus);
}

void Slider::SetDim(bool dim) {
    if (dim == dim_) return;
    dim_ = dim;
    update();
}

// Properties --------------------------------------------------------------------------------------

void Slider::SetDirection(int direction) {
    if (horizontal_ == (direction != 0)) return;
    horizontal_ = direction != 0;
    update();
    ShowLastValue();
}

void Slider::SetValue(std::int32_t value) {
    // A refresh sets the value on every tick. While the user holds the knob, only a value that is
    // really new may move it.
    if (value == lastSet_ && (!dragged_ || heldDown_)) return;
    lastSet_ = value;
    dragged_ = false;
    ShowLastValue();
}

void Slider::SetNumber(double value) {
    const double whole = std::nearbyint(value);
    if (!(std::fabs(whole) <= std::numeric_limits<std::int32_t>::max())) return;
    SetValue(static_cast<std::int32_t>(whole));
}

void Slider::SetPosition(std::int32_t position) {
    if (position == position_) return;
    position_ = position;
    dragged_ = true;
    Draw(false);
}

void Slider::SetMax(std::int32_t max) {
    if (max == max_) return;
    max_ = max;
    ShowLastValue();
}

void Slider::Setmin(std::int32_t min) {
    if (min == min_) return;
    min_ = min;
    ShowLastValue();
}

void Slider::StartAtMin(std::int32_t min, std::int32_t max) {
    min_ = min;
    max_ = max;
    lastSet_ = min;
    dragged_ = false;
    // Where equal bounds give no scale, the knob stays here.
    position_ = horizontal_ ? 0 : ToInteger(TrackLength() - KnobLength());
    ShowLastValue();
}

void Slider::SetPicture(SkinPicture& part, const SkinPicture& picture) {
    const SkinPicture scaled = picture.AtScale(box_.Scale);
    if (scaled == part) return;
    part = scaled;
    Place();
    update();
    ShowLastValue();
}

void Slider::SetBar(const SkinPicture& picture) {
    SetPicture(bar_, picture);
}
void Slider::SetBarOver(const SkinPicture& picture) {
    SetPicture(barOver_, picture);
}
void Slider::SetBarDown(const SkinPicture& picture) {
    SetPicture(barDown_, picture);
}
void Slider::SetPictureBack(const SkinPicture& picture) {
    SetPicture(back_, picture);
}
void Slider::SetPictureProgress(const SkinPicture& picture) {
    SetPicture(progress_, picture);
}

/// Places the knob by the value set last, whatever became of the stored one since. A knob that was
/// moved otherwise stays where it is.
void Slider::ShowLastValue() {
    if (!dragged_) value_ = lastSet_;
    Draw(!dragged_);
}

// Drawing -----------------------------------------------------------------------------------------

double Slider::TrackLength() const {
    return horizontal_ ? box_.Width : box_.Height;
}

double Slider::KnobLength() const {
    return horizontal_ ? bar_.DesignSize().width() : bar_.DesignSize().height();
}

void Slider::Draw(bool recompute) {
    if (recompute) PlaceKnob();
    UpdateChanged();
}

void Slider::PlaceKnob() {
    if (max_ == min_) return;  // no scale to place it on
    if (!horizontal_) value_ = Mirrored(value_, min_, max_);
    const double ratio = (double(value_) - min_) / (double(max_) - min_);
    position_ = ToInteger(ratio * (TrackLength() - KnobLength()));
}

/// The knob's picture in its present state; where that is missing, the next plainer one.
const SkinPicture& Slider::Knob() const {
    if (heldDown_ && !barDown_.IsNull()) return barDown_;
    if (pointerOver_ && !barOver_.IsNull()) return barOver_;
    return bar_;
}

QRect Slider::KnobRect(std::int32_t position, const SkinPicture& knob) const {
    const QSizeF size = knob.DesignSize();
    const double start = std::clamp(double(position), -kFarAway, kFarAway);
    return horizontal_ ? box_.Part(start, 0, size.width(), size.height())
                       : box_.Part(0, start, size.width(), size.height());
}

/// Where the progress picture is seen. It lies at the track's own corner and is uncovered, not
/// moved or stretched.
QRect Slider::ProgressRect(std::int32_t position) const {
    const double start = std::clamp(double(position), 0.0, TrackLength());
    const QRect uncovered = horizontal_ ? box_.Part(0, 0, start, box_.Height)
                                        : box_.Part(0, start, box_.Width, box_.Height - start);
    const QSizeF size = progress_.DesignSize();
    return uncovered.intersected(box_.Part(0, 0, size.width(), size.height()));
}

/// Repaints what the knob's new place or picture has changed, and nothing when neither is new.
void Slider::UpdateChanged() {
    const SkinPicture& knob = Knob();
    if (position_ == drawnPosition_ && knob == drawnKnob_) return;
    const QRegion progressBefore = ProgressRect(drawnPosition_);
    QRegion changed = progressBefore.xored(ProgressRect(position_));
    changed += KnobRect(drawnPosition_, drawnKnob_);
    changed += KnobRect(position_, knob);
    drawnPosition_ = position_;
    drawnKnob_ = knob;
    update(changed);
}

void Slider::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    // The progress picture replaces the track's pixels, also where it is transparent, so the track
    // is left out there.
    const QSizeF backSize = back_.DesignSize();
    if (dim_) {
        constexpr double kDimOpacity = 0.4;
        painter.setOpacity(kDimOpacity);
        PaintPicture(painter, box_.Part(0, 0, backSize.width(), backSize.height()), back_);
        return;
    }
    const QSizeF progressSize = progress_.DesignSize();
    const QRegion filled = ProgressRect(position_);
    painter.setClipRegion(event->region().subtracted(filled));
    PaintPicture(painter, box_.Part(0, 0, backSize.width(), backSize.height()), back_);
    painter.setClipRegion(event->region().intersected(filled));
    PaintPicture(painter, box_.Part(0, 0, progressSize.width(), progressSize.height()), progress_);
    painter.setClipping(false);
    PaintPicture(painter, KnobRect(position_, Knob()), Knob());
}

// Pointer -----------------------------------------------------------------------------------------

double Slider::AlongTrack(const QPointF& pointer) const {
    return (horizontal_ ? pointer.x() : pointer.y()) / box_.Scale;
}

void Slider::FollowPointer(const QPointF& pointer) {
    const double room = std::max(std::floor(TrackLength() - KnobLength()), 0.0);
    position_ = ToInteger(std::clamp(AlongTrack(pointer) - grip_, 0.0, room));
    dragged_ = true;
}

/// The value that would place the knob where it stands.
std::int32_t Slider::ValueAtPosition() const {
    const double room = TrackLength() - KnobLength();
    if (max_ == min_ || !(room > 0)) return value_;
    const std::int32_t value = ToInteger(min_ + position_ / room * (double(max_) - min_));
    return horizontal_ ? value : Mirrored(value, min_, max_);
}

void Slider::RaiseChange() {
    value_ = ValueAtPosition();
    if (!Change) return;
    std::int32_t value = value_;
    const QPointer<Slider> alive(this);
    Change(value);
    if (alive) value_ = value;
}

void Slider::mousePressEvent(QMouseEvent* event) {
    const QPointer<Slider> alive(this);
    const double pointer = AlongTrack(event->position());
    const bool onKnob = pointer >= position_ && pointer < position_ + KnobLength();
    grip_ = onKnob ? pointer - position_ : KnobLength() / 2;
    heldDown_ = true;
    moved_ = false;
    if (MouseDown) {
        const QPointF at = event->position() / box_.Scale;
        MouseDown(ButtonNumber(*event), ShiftNumber(*event), int(at.x()), int(at.y()));
    }
    if (alive) Draw(false);
}

void Slider::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) {
        pointerOver_ = true;
        if (!OverTimer_.isActive()) OverTimer_.start();
        Draw(false);
        return;
    }
    if (!heldDown_) return;
    moved_ = true;
    FollowPointer(event->position());
    Draw(false);
    RaiseChange();
}

void Slider::mouseReleaseEvent(QMouseEvent* event) {
    if (!heldDown_) return;  // the press was dropped, or began elsewhere
    const QPointer<Slider> alive(this);
    if (!moved_) {
        FollowPointer(event->position());
        RaiseChange();
        if (!alive) return;
    }
    heldDown_ = false;
    Draw(true);
    moved_ = false;
    if (MouseUp) {
        const QPointF at = event->position() / box_.Scale;
        MouseUp(ButtonNumber(*event), ShiftNumber(*event), int(at.x()), int(at.y()));
    }
}

void Slider::DropPress() {
    if (!heldDown_) return;
    heldDown_ = false;
    moved_ = false;
    Draw(false);
}

/// A page change may hide the slider under the finger; its release then goes elsewhere.
void Slider::hideEvent(QHideEvent*) {
    DropPress();
}

void Slider::CheckPointerOver() {
    if (QApplication::widgetAt(ScreenPointer()) == this) return;
    OverTimer_.stop();
    pointerOver_ = false;
    Draw(false);
}

}  // namespace dravik
