#pragma once

#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <functional>

#include "controls/DesignBox.h"
#include "controls/PictureCache.h"

namespace dravik {

/// A value shown as a picture that fills up, with a knob that the user drags (slider) or without
/// one (bargraph).
///
/// Coordinates and positions are design pixels; the track's size is that of PictureBack, else of
/// PictureProgress, else 0. On a vertical track every recomputing Draw replaces the stored value
/// by its mirror image (max - value, or -value when min is negative), so that the minimum lies at
/// the bottom; Value() then reads the mirrored value. Bounds that are equal leave the knob and the
/// value as they are.
class Slider : public QWidget {
 public:
    explicit Slider(QWidget* parent = nullptr);

    // Place and scale.
    void MoveTo(int x, int y);  ///< top left corner in design pixels
    void SetScale(double scale);
    const DesignBox& Box() const { return box_; }

    /// A bargraph only shows: it takes neither the pointer nor the focus.
    void SetDisplayOnly(bool displayOnly);
    /// Forgets a press that is still held: the knob stays where it is, and what the pointer does
    /// until its next press changes nothing.
    void DropPress();
    /// A dim track is seen through half and shows neither progress nor knob.
    void SetDim(bool dim);
    bool Dim() const { return dim_; }
    /// 0: bottom to top. Anything else: left to right.
    void SetDirection(int direction);
    bool Horizontal() const { return horizontal_; }

    // Properties.

    /// Stores the value and redraws with the knob placed by it. Setting the value that was set
    /// last costs nothing unless something else moved the knob since.
    void SetValue(std::int32_t value);
    /// SetValue of the nearest whole number (halves to even). A number that is not finite or does
    /// not fit leaves the slider unchanged.
    void SetNumber(double value);
    /// Moves the knob without touching the value.
    void SetPosition(std::int32_t position);
    /// Sets both bounds at once and the value to `min`, whatever was shown before; with equal
    /// bounds the knob stands at the track's start. Comes after the direction and the pictures.
    void StartAtMin(std::int32_t min, std::int32_t max);
    void SetMax(std::int32_t max);
    void Setmin(std::int32_t min);
    void SetBar(const SkinPicture& picture);
    void SetBarOver(const SkinPicture& picture);
    void SetBarDown(const SkinPicture& picture);
    void SetPictureBack(const SkinPicture& picture);
    void SetPictureProgress(const SkinPicture& picture);
    std::int32_t Value() const { return value_; }
    std::int32_t Position() const { return position_; }
    std::int32_t Max() const { return max_; }
    std::int32_t min() const { return min_; }
    const SkinPicture& Bar() const { return bar_; }
    const SkinPicture& BarOver() const { return barOver_; }
    const SkinPicture& BarDown() const { return barDown_; }
    const SkinPicture& PictureBack() const { return back_; }
    const SkinPicture& PictureProgress() const { return progress_; }

    bool PointerOver() const { return pointerOver_; }
    bool HeldDown() const { return heldDown_; }

    /// Redraws; with `recompute` the knob is placed by the value first, without it the position
    /// counts as stored.
    void Draw(bool recompute);

    // Events. Buttons: 1 left, 2 right, 4 middle; shift: 1 shift, 2 control, 4 alt; x and y are
    // design pixels inside the control.
    using MouseEvent = std::function<void(int button, int shift, int x, int y)>;
    std::function<void(std::int32_t& value)> Change;  ///< may alter the value
    MouseEvent MouseDown;
    MouseEvent MouseUp;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

 private:
    void SetPicture(SkinPicture& part, const SkinPicture& picture);
    void ShowLastValue();
    void PlaceKnob();
    double AlongTrack(const QPointF& pointer) const;
    void FollowPointer(const QPointF& pointer);
    std::int32_t ValueAtPosition() const;
    void RaiseChange();
    void CheckPointerOver();
    void Place();
    void UpdateChanged();
    double TrackLength() const;
    double KnobLength() const;
    const SkinPicture& Knob() const;
    QRect KnobRect(std::int32_t position, const SkinPicture& knob) const;
    QRect ProgressRect(std::int32_t position) const;

    DesignBox box_;
    SkinPicture back_;
    SkinPicture progress_;
    SkinPicture bar_;
    SkinPicture barOver_;
    SkinPicture barDown_;

    std::int32_t position_ = 0;
    std::int32_t min_ = 0;
    std::int32_t max_ = 0;
    std::int32_t value_ = 0;
    bool pointerOver_ = false;
    bool heldDown_ = false;
    bool horizontal_ = true;
    bool moved_ = false;
    bool dim_ = false;

    std::int32_t lastSet_ = 0;  ///< by SetValue, never mirrored
    bool dragged_ = false;      ///< the knob was moved otherwise since lastSet_ was shown
    double grip_ = 0;           ///< where the pointer holds the knob
    std::int32_t drawnPosition_ = 0;
    SkinPicture drawnKnob_;

    QTimer OverTimer_;
};

}  // namespace dravik
