#pragma once

#include <QRectF>
#include <QSize>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "skin/SkinFile.h"
#include "skin/SkinVocabulary.h"

class QWidget;

namespace dravik {

class ButtonEx;
class PageCanvas;
class SkinList;
class SkinPicture;
class SkinTextbox;
class Slider;

/// One element in use: what the skin file says of it and how the refresh evaluates it.
struct ScreenElement : SkinElement {
    std::string Evaluated;       ///< function text as the evaluators lower-case it
    std::string EvaluatedImage;  ///< the same of a button's image function
    std::string EvaluatedLabel;  ///< the same of a button's label function
    bool HasState = false;       ///< an image whose function switches it on and off
    bool ShowsEntry = false;     ///< an image that shows the picture of the selected list entry
    std::optional<std::string> EntryPicture;  ///< picture key of the entry that it shows
    bool FixedText = false;                   ///< a label or a caption that no refresh changes
    std::optional<int> Places;                ///< decimals of a label's number, where stated
    std::string Shown;  ///< what the last refresh made it show: text or number
};

/// Where an image lies, in design pixels: a width or height that is not stated is its picture's.
QRectF ImageArea(const SkinElement& element, const SkinPicture& picture);

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

/// The main window's elements: one growable array of controls per kind and the record of every
/// element in use. Controls that a page does not need are hidden, never destroyed.
///
/// The page and the box each have a container. Display-only kinds (label, image, gauge, chart) have
/// no control of their own: the container paints them.
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

    std::vector<ScreenElement>& Elements(ElementKind kind) {
        return elements_[static_cast<std::size_t>(kind)];
    }
    int Count(ElementKind kind) const {
        return static_cast<int>(elements_[static_cast<std::size_t>(kind)].size());
    }

    // What the loader does with them.

    /// Starts a page: all counts go to 0, the containers are emptied.
    void BeginPage();
    /// Starts a box at that place: its elements follow those of the page.
    void BeginBox(int x, int y);
    /// Builds one element at the next index of its kind; an existing control of that index serves
    /// again. @return what went wrong, if anything did; the element is then not in use
    std::optional<SkinError> Build(SkinElement element);
    /// Hides the controls that no element uses.
    void HideSurplus();
    /// Puts the controls in use one above the other by kind, and within a kind by index.
    void StackControls();
    /// The deferred pass for one button: its navigation index and its over and down pictures.
    std::optional<SkinError> FinishButton(const SkinElement& keys, int index);
    /// Puts the touchable elements into their navigation order.
    void ApplyTabOrder();
    /// Sets the focus after a load: a visible text box of the box or else of the page, otherwise
    /// the container itself.
    void SetInitialFocus();

    ScreenEvents Events;

    // The control arrays. Members from Count(kind) on are hidden.
    std::vector<ButtonEx*> Button;
    std::vector<Slider*> SliderArray;
    std::vector<Slider*> Bargraph;
    std::vector<SkinList*> List;
    std::vector<SkinTextbox*> Textbox;

    /// Index of the page's highlight picture (an image whose function is "mouseover"), -1 = none.
    int Highlight = -1;
    bool HasDvdButton = false;
    bool HasMediaTagLabel = false;

    /// The control of an element, where its kind has one.
    QWidget* Control(ElementKind kind, int index) const;
    /// The container of an element.
    PageCanvas* ContainerOf(const SkinElement& element) const;

    /// Index of a control within its array; -1 when it is not of that array.
    int ButtonIndex(const QWidget* control) const;
    int SliderIndex(const QWidget* control) const;

 private:
    std::optional<SkinError> BuildButton(const SkinElement& element, int index);
    std::optional<SkinError> BuildSlider(const SkinElement& element, int index);
    std::optional<SkinError> BuildBargraph(const SkinElement& element, int index);
    std::optional<SkinError> BuildGauge(const SkinElement& element, int index);
    std::optional<SkinError> BuildList(const SkinElement& element, int index);
    std::optional<SkinError> BuildLabel(const SkinElement& element, int index);
    std::optional<SkinError> BuildTextbox(const SkinElement& element, int index);
    std::optional<SkinError> BuildImage(const SkinElement& element, int index);
    std::optional<SkinError> BuildChart(const SkinElement& element, int index);

    void Connect(ButtonEx* button, int index);
    void Connect(Slider* slider, int index);
    void Connect(SkinList* list, int index);
    void Connect(SkinTextbox* field, int index);
    template <typename T>
    T* Member(std::vector<T*>& array, int index, const SkinElement& element);
    void Place();
    bool BoxHasWayOut() const;

    QWidget* window_;
    PageCanvas* page_;
    PageCanvas* shield_;  ///< covers the page while a box is open; holds popUp_ and nothing else
    PageCanvas* popUp_;
    std::array<std::vector<ScreenElement>, kElementKinds> elements_;
    QSize windowSize_;
    QSize designSize_;
    double scale_ = 1;
    double density_ = 1;  ///< pixels of the display along one window pixel
    int boxX_ = 0;
    int boxY_ = 0;
};

}  // namespace dravik
