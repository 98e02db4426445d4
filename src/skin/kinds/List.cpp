#include "controls/SkinList.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "skin/kinds/KindParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"FontSize", Integer, &E::FontSize, "16", "size in points"},
    {"X", Integer, &E::X, "24", "left edge"},
    {"Y", Integer, &E::Y, "60", "top edge"},
    {"Width", Integer, &E::Width, "500", "width"},
    {"Height", Integer, &E::Height, "300", "height"},
    {"FontColor", Lenient, &E::FontColor, "&HFFFFFF", "text colour"},
    {"BackColor", Lenient, &E::BackColor, "&H000000", "background colour"},
    {"Tabindex", Lenient, &E::Tabindex, "3", "place in the navigation order"},
    {"Font", Read::Font, &E::Font, "DejaVu Sans", "font"},
    {"FontStyle", Text, &E::FontStyle, "Bold", "Bold, Italic or BoldItalic, else regular"},
    {"RowHeight", Integer, &E::RowHeight, "64",
     "least height of a row, for fingers; a text wraps where a row has room for more lines"},
    {"EmptyText", Text, &E::EmptyText, "No entries",
     "text, or a label function for it, that the list shows while it has no entries; for "
     "`troublecodes` also in place of the entry `No Errors`"},
    {"UnreadText", Text, &E::UnreadText, "Not read yet",
     "the same for `troublecodes` before the codes are read"},
};

void Connect(SkinScreen& screen, SkinList& list, int index) {
    list.Activated = [&screen, index](int) { screen.Events.ListActivated(index); };
}

TextLook Look(const SkinElement& element) {
    TextLook look{element.Font, static_cast<double>(element.FontSize), element.FontColor, 0, false,
                  false};
    SetFontStyle(look, element.FontStyle);
    return look;
}

/// What stands in the place of the entries while there are none.
std::string EmptyTextOf(const SkinElement& element, int slot) {
    const bool unread = slot == kCodeListSlot && !basGlobal.CodesRead;
    const std::string& text =
        unread && !element.UnreadText.empty() ? element.UnreadText : element.EmptyText;
    std::string function = text;
    std::string evaluated = LabelTextFunction(function);
    return evaluated == kNoText ? text : evaluated;
}

/// The slot to show: none while it only says that there is nothing, where the page has its own
/// words.
ListSlot* ShownSlot(const SkinElement& element, int slot) {
    const bool none = slot == kCodeListSlot && !element.EmptyText.empty() && NoCodesListed();
    return none ? nullptr : FindList(slot);
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int index) {
    auto& list = UseControl<SkinList>(screen, element, index, Connect);
    list.SetBox(element.X, element.Y, element.Width, element.Height);
    list.SetLook(Look(element), element.BackColor);
    list.SetLeastRowHeight(element.RowHeight);
    list.SetPictureFolder(basGlobal.ImageFolder);
    const int slot = ListSlotByName(element.Evaluated);
    list.SetListSlot(ShownSlot(element, slot));
    basGlobal.CurrentList = slot;
    list.SetEmptyText({});
    list.Refresh();
    list.show();
    return std::nullopt;
}

void Refresh(SkinScreen&, ScreenElement& element, int) {
    auto& list = ControlOf<SkinList>(element);
    const int number = ListSlotByName(element.Evaluated);
    ListSlot* slot = ShownSlot(element, number);
    if (slot != list.Slot()) list.SetListSlot(slot);
    list.Refresh();
    if (slot == nullptr || slot->Entries.empty()) {
        if (ShowText(element, EmptyTextOf(element, number))) list.SetEmptyText(element.Shown);
    } else if (slot->Selected > 0) {
        ShowText(element, At(slot->Entries, slot->Selected - 1).Text);
    }
}

void Check(const SkinElement& element, const Complain& complain) {
    CheckFontStyle("FontStyle", element.FontStyle, complain);
    CheckSize(element, complain);
}

}  // namespace

extern constinit const SkinKind kListKind{
    .Word = "List",
    .Meaning = "a list of entries",
    .Keys = kKeys,
    .Role = &kListRole,
    .FunctionSample = "troublecodes",
    .Depth = 90,
    .Turn = 80,
    .Selectable = true,
    .Build = Build,
    .Refresh = Refresh,
    .Check = Check,
};

}  // namespace dravik
