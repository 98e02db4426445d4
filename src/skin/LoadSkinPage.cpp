#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

#include "controls/ChartTrace.h"
#include "controls/SkinList.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "settings/Words.h"
#include "skin/PageCanvas.h"
#include "skin/SkinFile.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "skin/message/ShowMessage.h"
#include "skin/message/frWarning.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr const char* kFirstPage = "mainmenu";

SkinScreen* skinScreen = nullptr;

/// A freeze page is only shown while there is a freeze frame to show.
bool MayBuild(const std::string& name) {
    const bool freezePage = name.find("freeze") != std::string::npos;
    return !freezePage || basGlobal.DtcCount > 0 || FreezeFrameMode();
}

/// Builds under way. One may wait for the user, who reads a message that it shows.
int buildsUnderWay = 0;

/// A fault that the deferred pass found during that time: its message would hide the one that is
/// open, so it follows it.
std::optional<SkinError> faultToFollow;

void ReportError(const SkinError& error) {
    const std::string text = "Skin Config Error " + error.Context() + "\r\n" + error.Description;
    std::fprintf(stderr, "Skin Config Error %s: %s\n", error.Context().c_str(),
                 error.Description.c_str());
    ShowPlainMessage(text, kMessageCritical, "Dravik");
}

std::optional<SkinError> LoadKind(const std::string& section, const SkinKind& kind, bool box) {
    for (int n = 0; n <= kLastElement; ++n) {
        SkinElement element;
        element.Kind = &kind;
        element.Section = section;
        element.Number = n;
        element.InBox = box;
        element.Function = ReadSkinValue(section, ElementKey(kind, n, "Function"));
        if (element.Function.empty()) break;
        // The charts of a box take the table over; a box without any leaves it to the page.
        if (box && &kind == &kChartKind && n == 0) basGlobal.Charts = {};
        if (auto error = ReadElement(element, box ? KeySet::All : KeySet::First)) return error;
        if (auto error = skinScreen->Build(std::move(element))) return error;
    }
    return std::nullopt;
}

std::optional<SkinError> LoadSection(const std::string& section, bool box) {
    for (const SkinKind* kind : SkinKinds()) {
        if (auto error = LoadKind(section, *kind, box)) return error;
    }
    return std::nullopt;
}

std::optional<SkinError> LoadSections(const std::string& page, bool box) {
    for (const std::string& section : PageSections(page)) {
        if (auto error = LoadSection(section, box)) return error;
    }
    return std::nullopt;
}

void BeginBox(const std::string& name) {
    basGlobal.CurrentBox = name;
    const SkinElement corner = ReadSectionKeys(name, PageKeys());
    skinScreen->BeginBox(corner.X, corner.Y);
    skinScreen->ShowBox(true);
}

void BeginPage(const std::string& name) {
    GlobalState& g = basGlobal;
    g.CurrentBox.clear();
    skinScreen->ShowBox(false);  // a box whose button opens a page goes with the page beneath
    skinScreen->BeginPage();
    if (name != g.CurrentMenu) {
        g.PreviousMenu = g.CurrentMenu;
        g.CurrentMenu = name;
    }
    if (g.Welcoming && !name.starts_with(kWelcomePage)) EndWelcome();
    ClearPidWanted();  // the new page polls only what it shows
    skinScreen->ReadDesignSize();
}

bool PageIsEmpty() {
    const auto kinds = SkinKinds();
    return std::all_of(kinds.begin(), kinds.end(),
                       [](const SkinKind* kind) { return skinScreen->Count(*kind) == 0; });
}

/// Why there is nothing to show, where the skin is at fault.
std::string WhyNothing(const std::optional<SkinError>& error) {
    if (!FileExists(basGlobal.SkinFile))
        return Word("The skin file was not found:") + "\n" + basGlobal.SkinFile;
    if (ProfileTooLarge(basGlobal.SkinFile))
        return Word("The skin file is larger than 16 MB:") + "\n" + basGlobal.SkinFile;
    if (!PageIsEmpty()) return {};
    if (!HasSkinSection(kFirstPage))
        return Word("The skin file has no page \"%1\":", {kFirstPage}) + "\n" + basGlobal.SkinFile;
    if (error) return Word("A fault in the skin leaves nothing to show:") + "\n" + error->Context();
    return {};
}

/// Without a page that could lead on, the background leads to the settings.
void TellWhyNothing(const std::optional<SkinError>& error) {
    const std::string reason = WhyNothing(error);
    if (reason.empty()) return;
    skinScreen->Page()->SetNotice(ShownText(
        reason + "\n\n" +
        Word("Touch the screen to choose another skin, or set Skin in the section Options "
             "of") +
        "\n" + basGlobal.IniFile + "\n\n" + Word("Ctrl+Q ends the program.")));
}

/// The lists of the page and the box.
std::vector<SkinList*> ShownLists() {
    std::vector<SkinList*> lists;
    for (const ScreenElement& element : skinScreen->Elements(kListKind))
        lists.push_back(static_cast<SkinList*>(element.Control));
    return lists;
}

/// Filling may show a message, and while that waits another page may be loaded.
void FillShownLists() {
    std::vector<int> slots;
    for (const ScreenElement& element : skinScreen->Elements(kListKind)) {
        const int slot = ListSlotByName(element.Evaluated);
        if (slot == kDiagnosisSlot) ShowDiagnosis(SplitAtFirst(element.Evaluated).Argument);
        slots.push_back(slot);
    }
    for (const int slot : slots) FillMediaList(slot);
    if (skinScreen == nullptr) return;
    for (SkinList* list : ShownLists()) list->Refresh();
}

/// The deferred pass for the elements of one kind.
std::optional<SkinError> FinishKind(const SkinKind& kind) {
    int index = 0;
    for (const std::string& section : PageSections(basGlobal.CurrentMenu)) {
        for (int n = 0; n <= kLastElement; ++n) {
            if (ReadSkinValue(section, ElementKey(kind, n, "Function")).empty()) break;
            SkinElement keys;
            keys.Kind = &kind;
            keys.Section = section;
            keys.Number = n;
            auto error = ReadElement(keys, KeySet::Deferred);
            if (!error) error = skinScreen->Finish(keys, index++);
            if (error) return error;
        }
    }
    return std::nullopt;
}

void BuildPage(const std::string& name, bool box) {
    LoadSkinFonts();  // the settings may have brought another skin
    PageCanvas* page = skinScreen->Page();
    page->setUpdatesEnabled(false);  // the page is not seen while it is being rebuilt
    if (!box) faultToFollow.reset();
    ++buildsUnderWay;
    if (box)
        BeginBox(name);
    else
        BeginPage(name);
    const std::optional<SkinError> error = LoadSections(name, box);
    skinScreen->HideSurplus();
    skinScreen->StackControls();
    if (!box) TellWhyNothing(error);
    skinScreen->Events.PageBuilt();
    page->setUpdatesEnabled(true);

    basGlobal.tiSkinReload.SetEnabled(true);
    skinScreen->ApplyTabOrder();
    if (frWarning* dialog = MessageDialog(); dialog != nullptr && dialog->IsOpen())
        dialog->ForgetFocus();  // until it is answered, the keys are meant for it
    else
        skinScreen->SetInitialFocus();
    SwitchCodeTicker();
    FillShownLists();
    if (error) ReportError(*error);
    if (--buildsUnderWay > 0 || !faultToFollow) return;
    ReportError(*std::exchange(faultToFollow, std::nullopt));
}

}  // namespace

void InitSkin(SkinScreen* screen) {
    skinScreen = screen;
    upCalls.LoadSkinPage = LoadSkinPage;
    upCalls.ToggleBox = ToggleBox;
    upCalls.CloseBox = CloseBox;
    upCalls.BoxOpen = BoxOpen;
    upCalls.ListPageSize = ListPageSize;
    upCalls.SwitchCodeTicker = SwitchCodeTicker;
    upCalls.ClearChart = [](int index) { ClearChart(index); };
    basGlobal.tiSkinReload.OnTick(FinishPage);
}

SkinScreen* CurrentScreen() {
    return skinScreen;
}

void LoadSkinPage(const std::string& name, bool box) {
    if (skinScreen == nullptr || !MayBuild(name)) return;
    const std::string command = ReadSectionKeys(name, PageKeys()).Function;
    if (!command.empty()) ExecuteCommand(command);
    BuildPage(name, box);
}

void RebuildPage() {
    if (skinScreen == nullptr) return;
    const std::string box = BoxOpen() ? basGlobal.CurrentBox : "";
    const std::string page = basGlobal.CurrentMenu;
    BuildPage(page, false);
    // While a message of the page was open the user may have gone elsewhere.
    if (!box.empty() && !BoxOpen() && basGlobal.CurrentMenu == page) BuildPage(box, true);
}

void FinishPage() {
    basGlobal.tiSkinReload.SetEnabled(false);  // one pass per load
    if (skinScreen == nullptr) return;
    std::optional<SkinError> error;
    for (const SkinKind* kind : SkinKinds()) {
        if (kind->Finish != nullptr && !error) error = FinishKind(*kind);
    }
    skinScreen->ApplyTabOrder();
    if (!error) return;
    if (buildsUnderWay > 0)
        faultToFollow = error;
    else
        ReportError(*error);
}

bool BoxOpen() {
    return skinScreen != nullptr && skinScreen->BoxShown();
}

void CloseBox() {
    if (skinScreen == nullptr) return;
    skinScreen->ShowBox(false);
    LoadSkinPage(std::string(basGlobal.CurrentMenu), false);
}

void ToggleBox(const std::string& name) {
    if (BoxOpen())
        CloseBox();
    else
        LoadSkinPage(name, true);
}

int ListPageSize() {
    if (skinScreen == nullptr) return 0;
    const std::vector<SkinList*> lists = ShownLists();
    return lists.empty() ? 0 : lists.back()->PageSize();
}

void SwitchCodeTicker() {
    bool shown = false;
    if (skinScreen != nullptr) {
        for (const SkinList* list : ShownLists())
            shown |= !list->isHidden() && list->Slot() == &basGlobal.Lists[kCodeListSlot];
    }
    basGlobal.tiDTCScroll.SetEnabled(shown && CodesListed());
}

void ClearChart(int index) {
    if (index < 0 || index >= basGlobal.ChartCount) return;
    ClearChart(At(basGlobal.Charts, index));
    if (skinScreen == nullptr) return;
    if (const ScreenElement* chart = FindAt(skinScreen->Elements(kChartKind), index))
        chart->Item->Repaint();
}

}  // namespace dravik
