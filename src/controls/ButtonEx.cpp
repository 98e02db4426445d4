#include "controls/ButtonEx.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/PointerInput.h"
#include "platform/Number.h"

namespace dravik {

namespace {

constexpr int kLeaveWatchMs = 60;
constexpr double kDimmedOpacity = 0.4;
constexpr double kHundredthsPerPixel = 26.4583;  ///< hundredths of a millimetre at 96 dots per inch

}  // namespace

int ButtonExtent(double picturePixels) {
    const double twips = ButtonTwips(picturePixels * kHundredthsPerPixel);
    return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}

ButtonEx::ButtonEx(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    Timer1_.setInterval(kLeaveWatchMs);
    connect(&Timer1_, &QTimer::timeout, this, &ButtonEx::CheckForLeave);
}

// Place and scale ---------------------------------------------------------------------------------

void ButtonEx::MoveTo(int x, int y) {
    box_.X = x;
    box_.Y = y;
    Place();
}

void ButtonEx::SetScale(double scale) {
    box_.Scale = scale;
    for (SkinPicture* picture : {&up_, &over_, &down_, &shown_, &image_})
        *picture = picture->AtScale(scale);
    Place();
    update();
}

void ButtonEx::Place() {
    const QRect pixels = box_.Pixels();
    if (pixels != geometry()) setGeometry(pixels);
}

// Pictures and states -----------------------------------------------------------------------------

void ButtonEx::SetSkinUp(const SkinPicture& picture) {
    Timer1_.stop();
    hoverOff_ = true;
    up_ = picture.AtScale(box_.Scale);
    ShowState(ButtonState::Up);
    box_.Width = ButtonExtent(up_.DesignSize().width());
    box_.Height = ButtonExtent(up_.DesignSize().height());
    Place();
    if (PropertyChanged) PropertyChanged("SkinUp");
}

void ButtonEx::SetSkinOver(const SkinPicture& picture) {
    hoverOff_ = false;
    over_ = picture.AtScale(box_.Scale);
    if (state_ == ButtonState::Over) ShowState(state_);
}

void ButtonEx::SetSkinDown(const SkinPicture& picture) {
    down_ = picture.AtScale(box_.Scale);
    if (state_ == ButtonState::Down) ShowState(state_);
}

void ButtonEx::ShowState(ButtonState state) {
    state_ = state;
    const SkinPicture& wanted = state == ButtonState::Down ? down_
                                : state == ButtonState::Up ? up_
                                                           : over_;
    if (wanted.IsNull() || wanted == shown_) return;
    shown_ = wanted;
    update();
}

void ButtonEx::ShowStateOnce(ButtonState state) {
    if (state_ != state) ShowState(state);
}

void ButtonEx::SetDimmed(bool dimmed) {
    if (dimmed == dimmed_) return;
    dimmed_ = dimmed;
    setFocusPolicy(dimmed ? Qt::NoFocus : Qt::StrongFocus);
    QWidget* container = parentWidget();
    if (dimmed) {
        DropPress();
        Timer1_.stop();
        ShowStateOnce(ButtonState::Up);
        hadFocus_ = hasFocus();
        if (hadFocus_ && container != nullptr) container->setFocus(Qt::OtherFocusReason);
    } else if (std::exchange(hadFocus_, false) && container != nullptr && container->hasFocus()) {
        setFocus(Qt::OtherFocusReason);
    }
    update();
}

// The small picture and the caption ---------------------------------------------------------------

QRect ButtonEx::ImageRect() const {
    const QSizeF size = image_.DesignSize();
    return box_.Part(imageX_, imageY_, size.width(), size.height());
}

QRect ButtonEx::LabelRect() const {
    const double width = labelWidth_ > 0 ? labelWidth_ : box_.Width - labelX_;
    const double height = labelHeight_ > 0 ? labelHeight_ : box_.Height - labelY_;
    return box_.Part(labelX_, labelY_, std::max(width, 0.0), std::max(height, 0.0));
}

template <typename T>
void ButtonEx::SetImagePart(T& field, const T& value) {
    if (field == value) return;
    const QRect before = ImageRect();
    field = value;
    update(before.united(ImageRect()));
}

template <typename T>
void ButtonEx::SetLabelPart(T& field, const T& value) {
    if (field == value) return;
    const QRect before = LabelRect();
    field = value;
    if (!shownCaption_.isEmpty()) update(before.united(LabelRect()));
}

void ButtonEx::SetImage(const SkinPicture& picture) {
    SetImagePart(image_, picture.AtScale(box_.Scale));
}
void ButtonEx::SetImageVisible(bool visible) {
    SetImagePart(imageVisible_, visible);
}
void ButtonEx::SetImageX(std::int16_t x) {
    SetImagePart(imageX_, x);
}
void ButtonEx::SetImageY(std::int16_t y) {
    SetImagePart(imageY_, y);
}

void ButtonEx::SetLabelX(int x) {
    SetLabelPart(labelX_, x);
}
void ButtonEx::SetLabelY(int y) {
    SetLabelPart(labelY_, y);
}
void ButtonEx::SetLabelWidth(int width) {
    SetLabelPart(labelWidth_, width);
}
void ButtonEx::SetLabelHeight(int height) {
    SetLabelPart(labelHeight_, height);
}
void ButtonEx::SetLabelFontSize(double points) {
    SetLabelPart(labelLook_.Points, points);
}
void ButtonEx::SetLabelFont(const std::string& face) {
    SetLabelPart(labelLook_.Font, face);
}
void ButtonEx::SetLabelStyle(bool bold, bool italic) {
    SetLabelPart(labelLook_.Bold, bold);
    SetLabelPart(labelLook_.Italic, italic);
}
void ButtonEx::SetLabelForecolor(const std::string& number) {
    SetLabelPart(labelLook_.Color, LenientNumber(number).value_or(0));
}
void ButtonEx::SetLabelAlignment(int alignment) {
    SetLabelPart(labelLook_.Alignment, alignment);
}

void ButtonEx::SetLabelCaption(const std::string& text) {
    if (text == caption_) return;
    caption_ = text;
    shownCaption_ = ShownText(text);
    update(LabelRect());
}

void ButtonEx::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (dimmed_) painter.setOpacity(kDimmedOpacity);
    const QSizeF size = shown_.DesignSize();
    PaintPicture(painter, box_.Part(0, 0, size.width(), size.height()), shown_);
    if (imageVisible_ && event->region().intersects(ImageRect()))
        PaintPicture(painter, ImageRect(), image_);
    if (event->region().intersects(LabelRect()))
        PaintText(painter, LabelRect(), shownCaption_, labelLook_, box_.Scale);
}

// Pointer -----------------------------------------------------------------------------------------

namespace {

int Twips(double pixels, double scale) {
    return static_cast<int>(std::floor(pixels / scale)) * kTwipsPerPixel;
}

}  // namespace

// A handler may rebuild the page or, in the end, take the button with it; whatever follows an event
// looks whether the button is still there.

void ButtonEx::mousePressEvent(QMouseEvent* event) {
    if (dimmed_) return;
    const QPointer<ButtonEx> alive(this);
    if (event->button() == Qt::LeftButton) press_ = Press::Held;
    if (MouseDown)
        MouseDown(ButtonNumber(*event), ShiftNumber(*event),
                  Twips(event->position().x(), box_.Scale),
                  Twips(event->position().y(), box_.Scale));
    if (alive && press_ != Press::Dropped) ShowState(ButtonState::Down);
}

void ButtonEx::mouseMoveEvent(QMouseEvent* event) {
    if (dimmed_) return;
    if (press_ == Press::Dropped) {
        if (event->buttons().testFlag(Qt::LeftButton)) return;
        press_ = Press::None;  // its release went elsewhere
    }
    if (hoverOff_) return;
    if (!Timer1_.isActive())
        Timer1_.start();  // the pointer has just arrived
    else if (event->buttons() == Qt::NoButton)
        ShowStateOnce(ButtonState::Over);
    else if (event->buttons().testFlag(Qt::LeftButton))
        ShowStateOnce(ButtonState::Down);
    if (MouseEnter) MouseEnter();
}

void ButtonEx::mouseReleaseEvent(QMouseEvent* event) {
    if (dimmed_) return;
    const QPointer<ButtonEx> alive(this);
    const bool left = event->button() == Qt::LeftButton;
    const Press press = left ? std::exchange(press_, Press::None) : press_;
    if (press == Press::Dropped) return;
    const bool clicked =
        left && press == Press::Held && rect().contains(event->position().toPoint());
    if (MouseUp)
        MouseUp(ButtonNumber(*event), ShiftNumber(*event), Twips(event->position().x(), box_.Scale),
                Twips(event->position().y(), box_.Scale));
    if (alive) ShowState(PointerInside() ? ButtonState::Over : ButtonState::Up);
    if (alive && clicked && Click) Click();
}

void ButtonEx::mouseDoubleClickEvent(QMouseEvent* event) {
    if (dimmed_) return;
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    const QPointer<ButtonEx> alive(this);
    press_ = Press::Clicked;
    if (Click) Click();  // here, and not by the release that follows
    if (alive && press_ == Press::Clicked && MouseDown) MouseDown(1, 0, 0, 0);
}

void ButtonEx::DropPress() {
    hadFocus_ = false;
    if (press_ != Press::None) press_ = Press::Dropped;
    if (state_ == ButtonState::Down) ShowState(ButtonState::Up);
}

void ButtonEx::hideEvent(QHideEvent*) {
    DropPress();
}

bool ButtonEx::PointerInside() const {
    return isVisible() && rect().contains(mapFromGlobal(ScreenPointer()));
}

void ButtonEx::CheckForLeave() {
    if (PointerInside()) return;
    Timer1_.stop();
    ShowStateOnce(ButtonState::Up);
    if (MouseExit) MouseExit();
}

// Focus that a key or a rotary control brings counts as arrival, so that the selected button shows
// its over picture; focus that comes with a click or with the window does not.

void ButtonEx::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    if (hoverOff_ || (reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason &&
                      reason != Qt::OtherFocusReason))
        return;
    ShowStateOnce(ButtonState::Over);
    if (MouseEnter) MouseEnter();
}

void ButtonEx::focusOutEvent(QFocusEvent*) {
    if (Timer1_.isActive() || state_ != ButtonState::Up) CheckForLeave();
}

}  // namespace dravik
