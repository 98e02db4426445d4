#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <variant>

#include "skinfunc/FunctionWords.h"

/// The vocabulary of skin files as data: every element kind with its keys, the way each is read and
/// what becomes of it on screen. The loader, the refresh, the skin checker, the console and the
/// reference of skin authors all work from these tables.
namespace dravik {

class SkinScreen;
struct ScreenElement;
struct SkinKind;

constexpr int kLastElement = 1000;      ///< highest number of an element within its section
constexpr int kLastCommonObject = 100;  ///< CommonObjects0 to CommonObjects100
constexpr int kMostElements =
    4096;  ///< of a kind on a page, where the kind has no limit of its own

/// One element as its keys describe it; a kind uses the fields that its table names. Positions and
/// sizes are in the skin's own pixels, colours have red in their low byte, then green, then blue.
struct SkinElement {
    const SkinKind* Kind = nullptr;
    std::string Section;  ///< section and number that it stands under in the skin file
    int Number = 0;
    bool InBox = false;

    std::string Function;
    int X = 0, Y = 0, Width = 0, Height = 0;
    int Tabindex = 0, RowHeight = 0;

    // Pictures, by file name.
    std::string Up, Over, Down;
    std::string Image;
    std::string Background, Progress, Bar, BarOver, BarDown;
    std::string Picture;

    // Whether a button works, the picture and the caption inside it.
    std::string Enabled;
    std::string ImageFunction;
    int ImageX = 0, ImageY = 0;
    std::string LabelFunction, LabelCaption, LabelFont, LabelFontStyle;
    int LabelX = 0, LabelY = 0, LabelWidth = 0, LabelHeight = 0;
    int LabelAlignment = 0, LabelFontSize = 0, LabelColor = 0;

    // Text of labels, lists and text boxes.
    std::string Caption, Font, FontStyle, Decimals;
    std::string EmptyText, UnreadText;
    int FontSize = 0, Alignment = 0, Lines = 0;
    int Color = 0, FontColor = 0, BackColor = 0;

    // Values.
    int Min = 0, Max = 0, Direction = 0;
    int Known = 0;
    int Dim = 0;
    int Style = 0, AngleStart = 0, AngleEnd = 0, RadiusStart = 0, RadiusEnd = 0, StretchY = 0;
    int Time = 0, Mode = 0, GridColor = 0;
};

/// How the value of a key is read.
enum class Read {
    Integer,  ///< leading decimal digits, else 0
    Lenient,  ///< leading decimal or "&H" number, empty gives 0
    Short,    ///< the same within 16 bits; a larger number ends the load with an error
    Strict,   ///< a whole decimal or "&H" number; anything else ends the load with an error
    Text,     ///< at most 63 bytes
    Picture,  ///< a file name in the image folder
    Font,     ///< the name of a font, read as a text
};

/// What a key with a function text may name: words of these evaluators, and words of its own.
struct FunctionRole {
    using Rows = std::vector<FunctionWord> (*)();
    enum class Split { First, Last };
    struct Evaluator {
        Rows Words;
        Split At = Split::Last;
        bool KeepsCase = false;
    };
    std::span<const Evaluator> Evaluators;  ///< in the order in which they are tried
    std::span<const FunctionWord> Own;
    bool AnyWord = false;  ///< a word that nobody knows, without "_", is all right, too
    const char* Meaning;   ///< what the text decides
};

// Words that the loader looks for itself; the roles list them among their own.
constexpr const char* kTextWord = "text";             ///< a label that shows its caption key
constexpr const char* kTitleWord = "APP_Title";       ///< a label that names the program
constexpr const char* kMediaTagWord = "id3";          ///< begins the labels of media tags
constexpr const char* kHighlightWord = "mouseover";   ///< the picture that follows the selection
constexpr const char* kEntryWord = "listentry";       ///< the picture of the selected entry
constexpr const char* kMessageWord = "word_message";  ///< a message in the user's language
constexpr const char* kDvdWord = "dvdmenu";           ///< the button of a DVD page

extern const FunctionRole kCommandRole;        ///< what a press or a page does
extern const FunctionRole kCaptionRole;        ///< what a label shows
extern const FunctionRole kStateRole;          ///< when a picture on a button is shown
extern const FunctionRole kPictureRole;        ///< when an image is shown
extern const FunctionRole kValueRole;          ///< the number of a slider, bargraph, gauge or chart
extern const FunctionRole kListRole;           ///< which list a list shows
extern const FunctionRole kTextboxRole;        ///< which text a text box edits
extern const FunctionRole kAnswerRole;         ///< which answer a button of a message box gives
extern const FunctionRole kAnswerCaptionRole;  ///< what such a button says
extern const FunctionRole kMessageRole;        ///< how a message box shows its message

using SkinField = std::variant<int SkinElement::*, std::string SkinElement::*>;

struct SkinKey {
    const char* Name;
    Read How;
    SkinField Field;
    const char* Sample;     ///< a value for the example
    const char* Meaning;    ///< for the reference of skin authors
    bool Deferred = false;  ///< on a page, read by the deferred pass and not by the first build
    const FunctionRole* Role = nullptr;  ///< of a key that holds a function text
};

/// What is wrong with a skin, and where.
struct SkinError {
    std::string File;
    std::string Section;
    std::string Key;
    std::string Description;

    /// "night.ini [mainmenu] Gauge0Color"; what stands outside the sections has none.
    std::string Context() const;
};

/// A text that an element shows at a place of its own.
struct TextPlace {
    const char* Key;       ///< that names the text
    std::string Function;  ///< what it shows
    std::string Caption;   ///< the text itself, with the function `text`
    std::string Decimals;  ///< of a number, see kSensorPlaces; empty: the general number format
    std::string Font;
    int Points = 0;
    bool Bold = false;
    bool Italic = false;
    int X = 0;      ///< left edge on the page, or in the picture of the element
    int Width = 0;  ///< 0: to the edge of the page or the picture
    int Lines = 0;  ///< that it may be wrapped into, 0: it is not wrapped
    bool InPicture = false;
};

/// Tells the skin checker what is wrong with one key of an element.
using Complain = std::function<void(const char* key, const std::string& text)>;

/// All that an element kind is, one row each; the row stands in the file of the kind's name in
/// skin/kinds/, which is where the functions below are, too.
struct SkinKind {
    // What skin files say of it.
    const char* Word;
    const char* Meaning;
    std::span<const SkinKey> Keys;
    const FunctionRole* Role;    ///< of the key Function
    const char* FunctionSample;  ///< its value in the example
    int Limit = kMostElements;   ///< most elements of the kind on a page
    bool Centred = false;        ///< X and Y are its centre, and the radii tell its size

    // Its place among the kinds.
    int Depth;                ///< from back to front; within a depth the elements lie by index
    int Turn;                 ///< its turn in a refresh, from the lowest
    bool Selectable = false;  ///< its control takes part in the tab order and the arrow keys

    /// Puts the element, as its keys describe it, onto the screen: sets its Control or its Item.
    /// @return what went wrong, if anything did; the element is then not in use
    std::optional<SkinError> (*Build)(SkinScreen& screen, ScreenElement& element, int index);
    /// The deferred pass, for kinds with deferred keys. @param keys  holds those keys
    std::optional<SkinError> (*Finish)(SkinScreen& screen, ScreenElement& element,
                                       const SkinElement& keys) = nullptr;
    /// One refresh of one element; null for a kind that belongs to the user.
    void (*Refresh)(SkinScreen& screen, ScreenElement& element, int index) = nullptr;
    /// What the element shows, as the console reports it; null where that is what the last refresh
    /// gave it.
    std::string (*Shown)(const ScreenElement& element) = nullptr;
    /// What the skin checker asks of a well-read element; null for nothing.
    void (*Check)(const SkinElement& element, const Complain& complain) = nullptr;
    /// Where a well-read element shows which text, for the skin checker; null for a kind that makes
    /// its texts fit, or shows none.
    TextPlace (*Text)(const SkinElement& element) = nullptr;
};

/// The kinds, in the order in which the loader builds them: that of skin/kinds/CMakeLists.txt.
std::span<const SkinKind* const> SkinKinds();

// The kinds that others ask for by name.
extern const SkinKind kButtonKind, kSliderKind, kListKind, kLabelKind, kTextboxKind, kChartKind;

/// Where the value of a section's key goes; nowhere when a lower room reads the key for itself.
using SectionField = std::variant<std::monostate, int SkinElement::*, std::string SkinElement::*>;

/// A key that belongs to no element. "#" in its name stands for a number from 0 to Last.
struct SectionKey {
    const char* Name;
    Read How;
    SectionField Field;
    const char* Sample;
    const char* Meaning;
    int Last = 0;
    const FunctionRole* Role = nullptr;
};

std::span<const SectionKey> GeneralKeys();  ///< of the section General
std::span<const SectionKey> PageKeys();     ///< of the section of a page or a box
std::span<const SectionKey> MessageKeys();  ///< of the sections of the message box

constexpr int kLastAnswer = 2;  ///< highest number of a button of the message box

/// The sections of the message box, by its kind: "warning", "info" and "query".
std::span<const char* const> MessageSections();
const char* MessageSection(int kind);  ///< one of them

}  // namespace dravik
