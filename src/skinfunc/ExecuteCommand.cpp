#include <algorithm>
#include <cmath>

#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "report/Report.h"
#include "settings/basSettings.h"
#include "skinfunc/MenuList.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// One command, taken apart for the procedure that carries it out.
struct Command {
    std::string Shown;     ///< the argument as received, case kept, for the texts that are shown
    std::string Argument;  ///< lower case
};

// Charts ------------------------------------------------------------------------------------------

constexpr std::string_view kChartName = "chart";

/// What stands behind "chart", or behind any other word of that length.
std::string_view BehindChartName(std::string_view argument) {
    return argument.substr(std::min(kChartName.size(), argument.size()));
}

/// A chart by its number, to the nearest whole number (halves to even); nothing when there is none.
std::optional<int> FindChart(std::string_view number) {
    const double nearest = std::nearbyint(LeadingNumber(number));
    if (!(nearest >= 0 && nearest < basGlobal.ChartCount)) return std::nullopt;
    return static_cast<int>(nearest);
}

void ClearAllCharts(const Command&) {
    for (int i = 0; i < basGlobal.ChartCount; ++i) upCalls.ClearChart(i);
}

void ClearOneChart(const Command& command) {
    if (!command.Argument.starts_with(kChartName)) return;
    if (const auto index = FindChart(BehindChartName(command.Argument))) upCalls.ClearChart(*index);
}

void PauseAllCharts(const Command&) {
    const auto charts = ChartsInUse();
    const bool pause = std::any_of(charts.begin(), charts.end(),
                                   [](const ChartRecord& chart) { return !chart.Paused; });
    for (ChartRecord& chart : charts) chart.Paused = pause;
}

/// The first five characters of the argument are passed over unchecked, in front of "all", too.
void PauseOneChart(const Command& command) {
    const std::string_view number = BehindChartName(command.Argument);
    if (number == "all") return PauseAllCharts(command);
    if (const auto index = FindChart(number)) {
        bool& paused = At(basGlobal.Charts, *index).Paused;
        paused = !paused;
    }
}

// Selection ---------------------------------------------------------------------------------------

/// The function text of a selected element; nothing while none is selected.
std::optional<std::string> SelectedTag(const std::vector<std::string>& tags, std::uint16_t index) {
    if (index == kNoFocus || index >= tags.size()) return std::nullopt;
    return tags[index];
}

/// Steps what the selected slider names; the list, by one entry, while none is selected.
void StepSelected(const std::string& distance) {
    if (const auto tag = SelectedTag(basGlobal.SliderTag, basGlobal.FocusedSlider))
        StepList(*tag + "_" + distance);
    else
        StepList(distance.starts_with('+') ? "listview_+" : "listview_-");
}

void StepUp(const Command&) {
    StepSelected("+5");
}

void StepDown(const Command&) {
    StepSelected("-5");
}

void StepBy(const Command& command) {
    StepSelected(command.Argument);
}

void SelectObject(const Command&) {
    if (const auto tag = SelectedTag(basGlobal.ButtonTag, basGlobal.FocusedButton)) {
        ExecuteCommand(*tag);
        StepList(*tag);
    } else if (basGlobal.FocusedSlider == kNoFocus) {
        ActivateListEntry(basGlobal.FocusedList);
    }
}

void NextControl(const Command&) {
    upCalls.SendTabKey(false);
}

void PreviousControl(const Command&) {
    upCalls.SendTabKey(true);
}

template <Direction kDirection>
void MoveSelection(const Command&) {
    upCalls.MoveFocus(kDirection);
}

void GoFolder(const Command&) {
    OpenParentFolder(basGlobal.CurrentList);
}

// Pages and boxes ---------------------------------------------------------------------------------

void OpenLastMenu(const Command&) {
    upCalls.LoadSkinPage(std::string(basGlobal.PreviousMenu), false);
}

void OpenNextMenu(const Command&) {
    upCalls.LoadSkinPage(NextMenu(), false);
}

void OpenMenuBefore(const Command&) {
    upCalls.LoadSkinPage(PreviousMenuInList(), false);
}

void OpenMenu(const Command& command) {
    upCalls.LoadSkinPage(command.Argument, false);
}

void OpenBox(const Command& command) {
    upCalls.ToggleBox(command.Argument);
}

void CloseOpenBox(const Command&) {
    upCalls.CloseBox();
}

/// Any page but those of the welcome ends that.
void OpenFirstMenu(const Command&) {
    upCalls.LoadSkinPage("mainmenu", false);
}

void LeavePage(const Command&) {
    if (upCalls.BoxOpen())
        upCalls.CloseBox();
    else
        upCalls.LoadSkinPage("mainmenu", false);
}

// Link --------------------------------------------------------------------------------------------

bool LinkIdle() {
    return basGlobal.ConnState == kConnected || basGlobal.ConnState == kReceivingData;
}

void Connect(const Command&) {
    basGlobal.ConnState = kConnecting;
}

void LetGoOfLink(const Command&) {
    Disconnect();
}

void TryDemo(const Command& command) {
    const std::string fault = upCalls.StartDemo();
    if (fault.empty())
        Connect(command);
    else
        upCalls.ShowPopup(fault, 1);
}

void FindLink(const Command&) {
    FindAndConnect();
}

void ReadCodes(const Command&) {
    if (LinkIdle()) basGlobal.ConnState = kReadingCodes;
}

void AskToClearCodes(const Command&) {
    if (!LinkIdle()) return;
    const int answer =
        upCalls.ShowMessage("Clear troublecodes and all stored data?", kMessageQuestion, "Dravik");
    if (answer == kAnswerYes && basGlobal.comOBD.IsOpen()) basGlobal.ConnState = kClearingCodes;
}

void Diagnose(const Command&) {
    StartDiagnosis();
}

void StopDiagnosis(const Command&) {
    CancelDiagnosis();
}

// Reports -----------------------------------------------------------------------------------------

template <ReportFormat kFormat>
void Report(const Command&) {
    RequestReport(kFormat);
}

void OpenChosenReport(const Command&) {
    OpenReport();
}

// Skins -------------------------------------------------------------------------------------------

void UseSkin(const Command& command) {
    if (ChooseSkin(command.Argument)) ShowInNewSkin();
}

void UseNextSkin(const Command&) {
    if (ChooseNextSkin()) ShowInNewSkin();
}

// Sensors -----------------------------------------------------------------------------------------

void SwitchSensor(SensorRecord& sensor, bool active) {
    sensor.Active = active;
    UpdatePidWanted(sensor);
}

template <bool kActive>
void SwitchOneSensor(const Command& command) {
    if (SensorRecord* sensor = FindSensor(command.Argument)) SwitchSensor(*sensor, kActive);
}

template <bool kActive>
void SwitchAllSensors(const Command&) {
    for (SensorRecord& sensor : SensorsInUse()) SwitchSensor(sensor, kActive);
}

void ToggleOneSensor(const Command& command) {
    if (SensorRecord* sensor = FindSensor(command.Argument)) SwitchSensor(*sensor, !sensor->Active);
}

/// On when at least one is off, otherwise off.
void ToggleAllSensors(const Command& command) {
    const auto sensors = SensorsInUse();
    const bool allActive = std::all_of(sensors.begin(), sensors.end(),
                                       [](const SensorRecord& sensor) { return sensor.Active; });
    (allActive ? SwitchAllSensors<false> : SwitchAllSensors<true>)(command);
}

void OpenValue(const Command& command) {
    ShowSensorLarge(command.Argument);
}

void OpenChoice(const Command& command) {
    ChooseForTile(command.Argument);
}

void Choose(const Command& command) {
    PutIntoTile(command.Argument);
}

// Language ----------------------------------------------------------------------------------------

/// What stands on the page in the language or the units before. Labels find out by themselves.
void RenewTexts() {
    for (int i = 0; i < basGlobal.ChartCount; ++i) upCalls.ClearChart(i);
    RenewDiagnosisList();
    if (!CodesListed()) return;
    ListSlot& codes = *FindList(kCodeListSlot);
    const int selected = codes.Selected;
    ShowTroubleCodes();
    SelectListEntry(codes, selected);
}

void SetLanguage(const Command& command) {
    if (ChooseLanguage(command.Argument)) RenewTexts();
}

void SetUnits(const Command& command) {
    ChooseUnits(command.Argument);
    RenewTexts();
}

// Messages ----------------------------------------------------------------------------------------

void ShowInfo(const Command& command) {
    upCalls.ShowPopup(command.Shown, 1);
}

void ShowWarning(const Command& command) {
    upCalls.ShowPopup(command.Shown, 0);
}

void ShowQuery(const Command& command) {
    constexpr int kQueryStyle = 2;
    upCalls.ShowMessage(command.Shown, kQueryStyle, "");
}

// The program -------------------------------------------------------------------------------------

void SnapshotAll(const Command&) {
    std::vector<int> charts;
    for (int i = 0; i < basGlobal.ChartCount; ++i) charts.push_back(i);
    upCalls.TakeSnapshot(charts);
}

/// Without a number, of chart 0.
void SnapshotOne(const Command& command) {
    if (const auto index = FindChart(command.Argument)) upCalls.TakeSnapshot({*index});
}

/// Skins may carry the word for systems that have a keyboard of their own: without a program it is
/// silent.
void StartSetKeyboard(const Command&) {
    StartKeyboard();
}

void ShowKeyboard(const Command&) {
    const std::string missing = StartKeyboard();
    if (!missing.empty()) upCalls.ShowPopup(missing, 1);
}

void ShowSettings(const Command&) {
    upCalls.ShowSettingsDialog();
}

void Minimize(const Command&) {
    upCalls.MinimizeMainWindow();
}

void Quit(const Command&) {
    upCalls.UnloadMainWindow();
}

struct CommandWord {
    FunctionWord Name;
    void (*Run)(const Command& command);
};

using enum Takes;

// The words of the dispatcher, in the order in which they are tested.
constexpr CommandWord kCommandWords[] = {
    {{"clr", Fixed, "chartall", "clears every chart"}, ClearAllCharts},
    {{"clr", Chart, "chart0", "clears one chart"}, ClearOneChart},
    {{"pause", Fixed, "chartall", "pauses every chart; lets all run again when all are paused"},
     PauseAllCharts},
    {{"pause", Chart, "chart0", "pauses one chart, or lets it run again"}, PauseOneChart},
    {{"value", Fixed, "+",
      "one entry up in the list; five down while a slider `listview` is selected"},
     StepUp},
    {{"value", Fixed, "-",
      "one entry down in the list; five up while a slider `listview` is selected"},
     StepDown},
    {{"value", Step, "pagedown",
      "steps the list while a slider `listview` is selected; else one entry down"},
     StepBy},
    {{"value", Nothing, "", "one entry down in the list while no slider is selected"}, StepBy},
    {{"object", Fixed, "+", "selects the next control, by `Tabindex`"}, NextControl},
    {{"object", Fixed, "-", "selects the control before"}, PreviousControl},
    {{"object", Fixed, "select",
      "runs the command of the selected button; opens the selected entry of a selected list"},
     SelectObject},
    {{"object", Fixed, "left", "selects the neighbour on the left"},
     MoveSelection<Direction::Left>},
    {{"object", Fixed, "right", "selects the neighbour on the right"},
     MoveSelection<Direction::Right>},
    {{"object", Fixed, "up", "selects the neighbour above"}, MoveSelection<Direction::Up>},
    {{"object", Fixed, "down", "selects the neighbour below"}, MoveSelection<Direction::Down>},
    {{"gofolder", Fixed, "parent", "goes one folder up in a media list"}, GoFolder},
    {{"openmenu", Fixed, "previous", "opens the page that was shown before this one"},
     OpenLastMenu},
    {{"openmenu", Fixed, "+", "opens the next page of the menu list"}, OpenNextMenu},
    {{"openmenu", Fixed, "-", "opens the page before in the menu list"}, OpenMenuBefore},
    {{"openmenu", Page, "mainmenu", "opens a page"}, OpenMenu},
    {{"openbox", Box, "shortcuts",
      "opens a page as a box over this one; closes the box that is open"},
     OpenBox},
    {{"closebox", Nothing, "", "closes the box"}, CloseOpenBox},
    {{"exit", Nothing, "", "closes the box; without one, opens `mainmenu`"}, LeavePage},
    {{"obd", Fixed, "connect", "connects to the interface, anew if need be"}, Connect},
    {{"obd", Fixed, "disconnect",
      "lets go of the interface, also while it is being connected; nothing but `obd_connect` or "
      "new "
      "settings connect again"},
     LetGoOfLink},
    {{"demo", Nothing, "", "connects to the virtual vehicle, until the program ends"}, TryDemo},
    {{"welcomedone", Nothing, "",
      "leaves the page `welcome`, which a new user is shown at the start, and opens `mainmenu`"},
     OpenFirstMenu},
    {{"obd", Fixed, "find",
      "looks for the interface on every port at every speed, saves what it finds and connects; "
      "ends "
      "the search that runs"},
     FindLink},
    {{"obd", Fixed, "gettroublecodes", "reads the trouble codes, while connected"}, ReadCodes},
    {{"obd", Fixed, "cleartroublecodes", "asks, then clears the trouble codes, while connected"},
     AskToClearCodes},
    {{"obd", Fixed, "diagnose",
      "diagnoses the whole vehicle, while connected: what it is, its codes with their freeze "
      "frames, monitors and tests"},
     Diagnose},
    {{"obd", Fixed, "diagnosecancel", "ends the diagnosis; what was read stays"}, StopDiagnosis},
    {{"report", Fixed, "text", "writes the report as a plain text"}, Report<ReportFormat::Text>},
    {{"report", Fixed, "open",
      "opens the report that is selected in the list `diagnosis_reports`, else the last one"},
     OpenChosenReport},
    {{"report", Nothing, "",
      "writes a report on the vehicle into the folder `reports`, after a diagnosis where there is "
      "none"},
     Report<ReportFormat::Html>},
    {{"snapshot", Fixed, "all", "saves a picture of every chart"}, SnapshotAll},
    {{"snapshot", Number, "0", "saves a picture of one chart"}, SnapshotOne},
    {{"snapshot", Nothing, "", "saves a picture of chart 0"}, SnapshotOne},
    {{"osk", Nothing, "",
      "starts the on-screen keyboard that the settings name; nothing while there is none"},
     StartSetKeyboard},
    {{"keyboard", Nothing, "",
      "the same as `osk`, but says so when none is set or its file is missing"},
     ShowKeyboard},
    {{"sensortoggle", Fixed, "all", "switches every sensor on; off when all are on"},
     ToggleAllSensors},
    {{"sensortoggle", Sensor, "rpm.engine", "switches a sensor on or off"}, ToggleOneSensor},
    {{"sensoron", Fixed, "all", "switches every sensor on"}, SwitchAllSensors<true>},
    {{"sensoron", Sensor, "rpm.engine", "switches a sensor on"}, SwitchOneSensor<true>},
    {{"sensoroff", Fixed, "all", "switches every sensor off"}, SwitchAllSensors<false>},
    {{"sensoroff", Sensor, "rpm.engine", "switches a sensor off"}, SwitchOneSensor<false>},
    {{"skin", Fixed, "next",
      "shows the next skin for screens of the same shape, on the same page, and keeps it in the "
      "settings"},
     UseNextSkin},
    {{"skin", Skin, "night", "shows another skin, on the same page, and keeps it in the settings"},
     UseSkin},
    {{"openvalue", Sensor, "rpm.engine",
      "shows a sensor large: opens the page `value`, on which `picked` is the name of that sensor"},
     OpenValue},
    {{"panel", Number, "1",
      "opens the page `choose` for tile 1 to 4 of the page `panel`; the sensors in the tiles have "
      "the "
      "names `panel1` to `panel4` there"},
     OpenChoice},
    {{"choose", Sensor, "rpm.engine",
      "puts a sensor into that tile, keeps it in the settings and opens the page `panel`"},
     Choose},
    {{"language", Language, "German", "shows that language at once and keeps it in the settings"},
     SetLanguage},
    {{"units", Fixed, kMetric, "shows metric units, whatever the language; kept in the settings"},
     SetUnits},
    {{"units", Fixed, kImperial, "shows imperial units"}, SetUnits},
    {{"showinfo", Message, "Engine warm", "shows a text in the message box `info`"}, ShowInfo},
    {{"showwarning", Message, "Oil low", "shows a text in the message box `warning`"}, ShowWarning},
    {{"showquery", Question, "End the program?:quit",
      "asks in the message box `query`; runs what follows the last `:` on yes"},
     ShowQuery},
    {{"config", Nothing, "", "shows the settings"}, ShowSettings},
    {{"minimize", Nothing, "", "minimises the window"}, Minimize},
    {{"quit", Nothing, "", "ends the program"}, Quit},
    {{"poweroff", Nothing, "", "the same as `quit`"}, Quit},
};

/// The command that a text, in lower case, stands for; null when there is none.
const CommandWord* FindCommand(std::string_view lowered) {
    const FunctionText text = SplitAtLast(lowered);
    for (const CommandWord& row : kCommandWords) {
        if (!Names(row.Name, text)) continue;
        if (text.Argument.empty() && row.Name.Argument != Nothing)
            continue;  // without it: no effect
        return &row;
    }
    return nullptr;
}

/// A page whose Command opens the page itself, or a button that selects itself, ends here.
constexpr int kMostRounds = 16;

class Round {
 public:
    Round() { ++depth_; }
    ~Round() { --depth_; }
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;
    static bool Allowed() { return depth_ < kMostRounds; }

 private:
    static inline int depth_ = 0;
};

}  // namespace

void ExecuteCommand(const std::string& command) {
    if (!Round::Allowed()) return;
    const Round round;
    const std::string lowered = LowerCased(command);
    // A copy, since the caller's text may belong to an element that goes.
    const Command received{std::string(SplitAtLast(command).Argument),
                           std::string(SplitAtLast(lowered).Argument)};
    basGlobal.LastCommand = lowered;
    if (const CommandWord* row = FindCommand(lowered)) row->Run(received);
}

void ShowInNewSkin() {
    const std::string page = basGlobal.CurrentMenu;
    const auto sections = ProfileSections(basGlobal.SkinFile);
    const bool there =
        std::any_of(sections.begin(), sections.end(),
                    [&page](const std::string& section) { return EqualsNoCase(section, page); });
    upCalls.LoadSkinPage(there ? page : "mainmenu", false);
}

bool LeavesBox(const std::string& command) {
    constexpr decltype(CommandWord::Run) kWaysOut[] = {
        OpenLastMenu, OpenNextMenu, OpenMenuBefore, OpenMenu, OpenBox,     CloseOpenBox, LeavePage,
        OpenValue,    OpenChoice,   Choose,         UseSkin,  UseNextSkin, OpenFirstMenu};
    const CommandWord* row = FindCommand(LowerCased(command));
    if (row == nullptr) return false;
    if (row->Run == ShowQuery) {
        const std::size_t colon = command.rfind(':');
        return colon != std::string::npos && LeavesBox(command.substr(colon + 1));
    }
    return std::find(std::begin(kWaysOut), std::end(kWaysOut), row->Run) != std::end(kWaysOut);
}

void UpdatePidWanted(const SensorRecord& sensor) {
    constexpr std::size_t kPidDigits = 2;
    if (!sensor.Source.starts_with("obd")) return;
    const std::size_t start = sensor.Source.size() - kPidDigits;
    const std::optional<std::int32_t> pid = HexNumber(sensor.Source.substr(start));
    if (pid && *pid < kPidCount) At(basGlobal.PidWanted, *pid) = sensor.Active;
}

std::vector<FunctionWord> CommandRows() {
    return NamesOf(kCommandWords);
}

}  // namespace dravik
