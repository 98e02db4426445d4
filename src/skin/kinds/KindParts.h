#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "controls/PictureCache.h"
#include "controls/SkinText.h"
#include "skin/PageCanvas.h"
#include "skin/SkinFile.h"
#include "skin/SkinScreen.h"
#include "skin/SkinVocabulary.h"

/// What the element kinds share.
namespace dravik {

/// Loads the pictures of an element and remembers the first that cannot be had or is too much for
/// the page.
class PictureReader {
 public:
    PictureReader(SkinScreen& screen, const SkinElement& element)
        : screen_(screen), element_(element) {}

    /// The picture of a key; an empty one for an empty name.
    SkinPicture Load(const char* key, const std::string& name);

    const std::optional<SkinError>& Error() const { return error_; }

 private:
    SkinScreen& screen_;
    const SkinElement& element_;
    std::optional<SkinError> error_;
};

/// Gives the element its control: that of its index from an earlier page, else a new one, which
/// `connect` ties to the events of the screen.
template <typename T>
T& UseControl(SkinScreen& screen, ScreenElement& element, int index,
              void (*connect)(SkinScreen& screen, T& control, int index)) {
    PageCanvas* container = screen.ContainerOf(element);
    auto* control = static_cast<T*>(screen.Control(*element.Kind, index));
    if (control == nullptr) {
        control = new T(container);
        control->hide();
        SkinScreen::ControlCalls calls;
        calls.SetScale = [control](double scale) { control->SetScale(scale); };
        if constexpr (requires { control->DropPress(); })
            calls.DropPress = [control] { control->DropPress(); };
        screen.AddControl(*element.Kind, control, std::move(calls));
        connect(screen, *control, index);
    }
    if (control->parentWidget() != container) control->setParent(container);
    element.Control = control;
    return *control;
}

/// Puts what the canvas paints of the element into its container.
template <typename T>
T& AddItem(SkinScreen& screen, ScreenElement& element, std::unique_ptr<T> item) {
    T& added = *item;
    element.Item = screen.ContainerOf(element)->Add(std::move(item), element.Kind->Depth);
    return added;
}

/// The item of an element, as its kind made it.
template <typename T>
T& ItemOf(const ScreenElement& element) {
    return static_cast<T&>(*element.Item);
}

/// The control of an element, as its kind made it.
template <typename T>
T& ControlOf(const ScreenElement& element) {
    return static_cast<T&>(*element.Control);
}

/// The checker's question to kinds that state their size themselves.
void CheckSize(const SkinElement& element, const Complain& complain);

/// Sets the style that a key FontStyle names; another text than the known ones is regular.
void SetFontStyle(TextLook& look, const std::string& style);

/// The checker's question to a key FontStyle.
void CheckFontStyle(const char* key, const std::string& style, const Complain& complain);

/// Takes over a text to show; false when it is the one already shown.
bool ShowText(ScreenElement& element, std::string text);

/// True while an element with the key Known has nothing to show since its value is not known.
bool ValueUnknown(ScreenElement& element);

/// Takes over the value of an element. Nothing when it has none now; it then keeps what it shows.
std::optional<float> ShowValue(ScreenElement& element);

}  // namespace dravik
