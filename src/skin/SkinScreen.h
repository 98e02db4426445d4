#pragma once

#include <QSize>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/PictureCache.h"
#include "skin/SkinVocabulary.h"

class QWidget;

namespace dravik {

class PageCanvas;
class PaintedItem;

/// One element in use: what the skin file says of it, what stands for it on screen and how the
/// refresh evaluates it.
struct ScreenElement : SkinElement {
    QWidget* Control = nullptr;    ///< of a kind that has controls
    PaintedItem* Item = nullptr;   ///< of a kind that its container paints
    std::string Evaluated;         ///< function text in the form that the evaluators take
    std::string EvaluatedImage;    ///< the same of a button's image function
    std::string EvaluatedLabel;    ///< the same of a button's label function
    std::string EvaluatedEnabled;  ///< the same of what tells whether a button works
    bool FixedText = false;        ///< a label or a caption that no refresh changes
    std::optional<int> Places;     ///< decimals of a label's number, where stated
    bool SensorPlaces = false;     ///< they are those of the sensor that is shown
    std::string Shown;             ///< what the last refresh made it show: text or number
};

/// What the user does with the elements, by their index; set by the main window.
struct ScreenEvents {
    std::function<void(int index)> ButtonClicked;
    std::function<void(int index)> ButtonPressed;
    std::function<void(int index)> ButtonReleased;
    std::function<void(int index)> ButtonEntered;  ///< on every movement over the button
    std::function<void(int index, std::int32_t& value)> SliderChanged;
    std::function<void(int index)> ListActivated;
    std::function<void()> PressesDropped;  ///< see DropPresses
    std::function<void()> PageBuilt;       ///< a page or box has been built, but not painted yet
};

/// What the pictures of a page and its box may take of the memory together.
constexpr std::size_t kPagePictureBytes = 256u << 20;

/// The main window's elements: for each kind a growable array of controls and the record of every
/// element in use. Controls that a page does not need are hidden, never destroyed.
///
/// The page and the box each have a container. Kinds that only show something have no control of
/// their own: the container paints them.
class SkinScreen {
 public:
    /// Makes the two containers as children of the window.
    explicit SkinScreen(QWidget* window);
    ~SkinScreen();

    PageCanvas* Page() const { return page_; }
    PageCanvas* PopUp() const { return popUp_; }

    /// True while the box container is shown; it lies over the whole page and takes its clicks. A
    /// click beside its elements closes a box that has no button for that.
    bool BoxShown() const;
    void ShowBox(bool shown);

    /// Forgets every press that is still held, since the elements get another meaning or are
    /// covered: what was begun on one thing is not carried out on another.
    void DropPresses();

    /// Fits the containers into a window of that size: the design size scaled uniformly and
    /// centred; without a design size scale 1 at the top left.
    void Layout(QSize window);
    double Scale() const { return scale_; }

    /// Takes the design size from the skin, and lays out by it.
    void ReadDesignSize();
    /// Design size that the skin states; empty when it states none.
    QSize DesignSize() const { return designSize_; }

    std::vector<ScreenElement>& Elements(const SkinKind& kind) { return RoomOf(kind).Elements; }
    const std::vector<ScreenElement>& Elements(const SkinKind& kind) const {
        return RoomOf(kind).Elements;
    }
    int Count(const SkinKind& kind) const { return static_cast<int>(RoomOf(kind).Elements.size()); }

    // What the loader does with them.

    /// Counts a picture that an element is to show, each decoded one once.
    /// @return false when the page would then take more than PictureLimit; it is not counted
    bool CountPicture(const SkinPicture& picture);
    std::size_t PictureLimit = kPagePictureBytes;

    /// Starts a page: all counts go to 0, the containers are emptied.
    void BeginPage();
    /// Starts a box at that place: its elements follow those of the page.
    void BeginBox(int x, int y);
    /// Builds one element at the next index of its kind; an existing control of that index serves
    /// again. @return what went wrong, if anything did; the element is then not in use
    std::optional<SkinError> Build(SkinElement element);
    /// Hides the controls that no element uses.
    void HideSurplus();
    /// Puts the controls in use one above the other by the depth of their kind, and within a kind
    /// by index.
    void StackControls();
    /// The deferred pass for the element of that index, if it is still the one that the keys name.
    std::optional<SkinError> Finish(const SkinElement& keys, int index);
    /// Puts the touchable elements into their navigation order.
    void ApplyTabOrder();
    /// Sets the focus after a load: a visible text box of the box or else of the page, otherwise
    /// the container itself.
    void SetInitialFocus();

    ScreenEvents Events;

    /// Index of the page's highlight picture (an image whose function is "mouseover"), -1 = none.
    int Highlight = -1;
    bool HasDvdButton = false;
    bool HasMediaTagLabel = false;

    /// The control of that index; null when there is none yet, or the kind has no controls. From
    /// Count(kind) on they are hidden.
    QWidget* Control(const SkinKind& kind, int index) const;
    /// What the screen asks of a control.
    struct ControlCalls {
        std::function<void(double)> SetScale;  ///< see Layout
        std::function<void()> DropPress;       ///< see DropPresses; empty where nothing is pressed
    };
    /// Takes a new control in at the next index of its kind.
    void AddControl(const SkinKind& kind, QWidget* control, ControlCalls calls);
    /// Index of a control within its kind; -1 when it is not of that kind.
    int IndexOf(const SkinKind& kind, const QWidget* control) const;
    /// The controls in use that can be selected, by kind and index.
    std::vector<const ScreenElement*> Selectable() const;

    /// The container of an element.
    PageCanvas* ContainerOf(const SkinElement& element) const;

 private:
    struct MemberControl {
        QWidget* Widget;
        ControlCalls Calls;
    };
    /// Everything of one kind.
    struct Room {
        const SkinKind* Kind;
        std::vector<ScreenElement> Elements;
        std::vector<MemberControl> Controls;
    };

    Room& RoomOf(const SkinKind& kind);
    const Room& RoomOf(const SkinKind& kind) const;
    void Place();
    bool BoxHasWayOut() const;

    void ForgetPictures();

    QWidget* window_;
    PageCanvas* page_;
    PageCanvas* shield_;  ///< covers the page while a box is open; holds popUp_ and nothing else
    PageCanvas* popUp_;
    std::vector<Room> rooms_;            ///< in the order of SkinKinds
    std::vector<SkinPicture> pictures_;  ///< counted since the page began
    std::size_t pictureBytes_ = 0;
    QSize windowSize_;
    QSize designSize_;
    double scale_ = 1;
    double density_ = 1;  ///< pixels of the display along one window pixel
    int boxX_ = 0;
    int boxY_ = 0;
};

}  // namespace dravik
