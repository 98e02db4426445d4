#pragma once

#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <string>

#include "controls/DesignBox.h"
#include "controls/PictureCache.h"
#include "controls/SkinText.h"

namespace dravik {

/// Which picture a button shows.
enum class ButtonState : std::int16_t { Down = 0, Up = 1, Over = 2 };

constexpr int kTwipsPerPixel = 15;  ///< at 96 dots per inch

/// Twips that a picture's extent gives a button. Picture sizes are hundredths of a millimetre, and
/// the divisor is 1.76, not the exact 1.7639: skins are laid out for buttons of that size.
constexpr double ButtonTwips(double hundredthsOfMillimetre) {
    return hundredthsOfMillimetre / 1.76;
}

/// Width or height of a button in design pixels from that of its up picture. By ButtonTwips it is
/// 0.2 % larger than the picture, rounded to whole pixels: 800 gives 802.
int ButtonExtent(double picturePixels);

/// A button of the skin: one of three pictures, a small picture and a caption inside it, and the
/// pointer turned into a few events.
///
/// The small picture and the caption belong to the button's own surface, so a click on them is a
/// click on the button. Leaving is noticed by watching the pointer every 60 ms, because a leave
/// notification does not arrive everywhere.
class ButtonEx : public QWidget {
 public:
    explicit ButtonEx(QWidget* parent = nullptr);

    // Place and scale.
    void MoveTo(int x, int y);  ///< top left corner in design pixels
    void SetScale(double scale);
    const DesignBox& Box() const { return box_; }

    // The three pictures.

    /// Shows `picture` as the resting picture, sizes the button to it and switches hovering off
    /// until an over picture is set.
    void SetSkinUp(const SkinPicture& picture);
    /// Switches hovering on, also with a null picture.
    void SetSkinOver(const SkinPicture& picture);
    void SetSkinDown(const SkinPicture& picture);
    const SkinPicture& SkinUp() const { return up_; }
    const SkinPicture& SkinOver() const { return over_; }
    const SkinPicture& SkinDown() const { return down_; }

    ButtonState State() const { return state_; }
    /// The picture now shown: where the state's own picture is not set, the one shown before.
    const SkinPicture& ShownPicture() const { return shown_; }
    bool HoverOff() const { return hoverOff_; }

    /// Forgets a press that is still held: its release clicks nothing and raises nothing, and the
    /// down picture goes. For a button that is given another meaning, hidden or covered meanwhile.
    void DropPress();

    /// A dimmed button is drawn faint, shows its up picture and takes part in nothing: no press, no
    /// hovering, no focus. Its touches do not reach what lies beneath either. One that had the
    /// focus gives it to its container, and takes it back from there when it is no longer dimmed,
    /// unless DropPress has come between.
    void SetDimmed(bool dimmed);
    bool Dimmed() const { return dimmed_; }

    // The small picture (imgImage).
    void SetImage(const SkinPicture& picture);
    void SetImageVisible(bool visible);
    void SetImageX(std::int16_t x);
    void SetImageY(std::int16_t y);
    const SkinPicture& Image() const { return image_; }
    bool ImageVisible() const { return imageVisible_; }

    // The caption (Label). Without a width or a height it reaches to the button's edge.
    void SetLabelX(int x);
    void SetLabelY(int y);
    void SetLabelWidth(int width);
    void SetLabelHeight(int height);
    void SetLabelFontSize(double points);
    void SetLabelFont(const std::string& face);
    void SetLabelStyle(bool bold, bool italic);
    void SetLabelForecolor(const std::string& number);  ///< a lenient one; none is 0
    void SetLabelAlignment(int alignment);              ///< 0 left, 1 right, 2 centre
    void SetLabelCaption(const std::string& text);
    const std::string& LabelCaption() const { return caption_; }

    // Kept for the main window.
    std::string ImageFunction;
    std::string LabelFunction;

    // Events. Buttons: 1 left, 2 right, 4 middle; shift: 1 shift, 2 control, 4 alt; x and y are
    // twips inside the button.
    using MouseEvent = std::function<void(int button, int shift, int x, int y)>;
    std::function<void()> Click;
    MouseEvent MouseDown;
    MouseEvent MouseMove;  ///< part of the set, never raised
    MouseEvent MouseUp;
    std::function<void()> MouseEnter;  ///< on every movement over the button while it hovers
    std::function<void()> MouseExit;
    std::function<void(const std::string& name)> PropertyChanged;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

 private:
    /// What became of the left button's press.
    enum class Press {
        None,
        Held,     ///< its release inside is a click
        Clicked,  ///< the second one of a double click, which has clicked already
        Dropped,  ///< still held, but no longer meant for what the button is now
    };

    void ShowState(ButtonState state);
    void ShowStateOnce(ButtonState state);
    void CheckForLeave();
    bool PointerInside() const;
    void Place();
    QRect ImageRect() const;
    QRect LabelRect() const;
    template <typename T>
    void SetImagePart(T& field, const T& value);
    template <typename T>
    void SetLabelPart(T& field, const T& value);

    DesignBox box_;
    SkinPicture up_;
    SkinPicture over_;
    SkinPicture down_;
    SkinPicture shown_;
    ButtonState state_ = ButtonState::Up;
    bool hoverOff_ = true;
    bool dimmed_ = false;
    bool hadFocus_ = false;  ///< when it was dimmed
    Press press_ = Press::None;

    SkinPicture image_;
    bool imageVisible_ = true;
    std::int16_t imageX_ = 0;
    std::int16_t imageY_ = 0;

    int labelX_ = 0;
    int labelY_ = 0;
    int labelWidth_ = 0;
    int labelHeight_ = 0;
    TextLook labelLook_;
    std::string caption_;
    QString shownCaption_;

    QTimer Timer1_;  ///< leave watch
};

}  // namespace dravik
