#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>

/// The vocabulary of skin files as data: every element kind with its keys and the way each is read.
/// The loader, the skin checker and the reference of skin authors all work from these tables.
namespace dravik {

/// Element kinds in the order in which the loader builds them.
enum class ElementKind { Button, Slider, Bargraph, Gauge, List, Label, Textbox, Image, Chart };
constexpr std::size_t kElementKinds = 9;

constexpr int kLastElement = 1000;      ///< highest number of an element within its section
constexpr int kLastCommonObject = 100;  ///< CommonObjects0 to CommonObjects100
constexpr int kMostElements =
    4096;  ///< of a kind on a page, where the kind has no limit of its own
constexpr std::size_t kSkinValueBytes = 63;

/// One element as its keys describe it; a kind uses the fields that its table names. Positions and
/// sizes are in the skin's own pixels, colours have red in their low byte, then green, then blue.
struct SkinElement {
    ElementKind Kind = ElementKind::Button;
    std::string Section;  ///< section and number that it stands under in the skin file
    int Number = 0;
    bool InBox = false;

    std::string Function;
    int X = 0, Y = 0, Width = 0, Height = 0;
    int Tabindex = 0;

    // Pictures, by file name.
    std::string Up, Over, Down;
    std::string Image;
    std::string Background, Progress, Bar, BarOver, BarDown;
    std::string Picture;

    // The picture and the caption inside a button.
    std::string ImageFunction;
    int ImageX = 0, ImageY = 0;
    std::string LabelFunction, LabelCaption, LabelFont;
    int LabelX = 0, LabelY = 0, LabelWidth = 0, LabelHeight = 0;
    int LabelAlignment = 0, LabelFontSize = 0, LabelColor = 0;

    // Text of labels, lists and text boxes.
    std::string Caption, Font, FontStyle;
    int FontSize = 0, Alignment = 0;
    int Color = 0, FontColor = 0, BackColor = 0;

    // Values.
    int Min = 0, Max = 0, Direction = 0;
    int Style = 0, AngleStart = 0, AngleEnd = 0, RadiusStart = 0, RadiusEnd = 0, StretchY = 0;
    int Time = 0, Mode = 0, GridColor = 0;
};

/// How the value of a key is read.
enum class Read {
    Integer,  ///< leading decimal digits, else 0
    Lenient,  ///< leading decimal or "&H" number, empty gives 0
    Strict,   ///< a whole decimal or "&H" number; anything else ends the load with an error
    Text,     ///< at most 63 bytes
    Picture,  ///< a file name in the image folder
};

using SkinField = std::variant<int SkinElement::*, std::string SkinElement::*>;

struct SkinKey {
    const char* Name;
    Read How;
    SkinField Field;
    const char* Meaning;    ///< for the reference of skin authors
    bool Deferred = false;  ///< on a page, read by the deferred pass and not by the first build
};

struct SkinKind {
    ElementKind Kind;
    const char* Word;
    std::span<const SkinKey> Keys;
    int Limit;  ///< most elements of the kind on a page
    const char* Meaning;
};

/// The nine kinds, in the order in which the loader builds them.
std::span<const SkinKind> SkinKinds();

const SkinKind& KindOf(ElementKind kind);

}  // namespace dravik
