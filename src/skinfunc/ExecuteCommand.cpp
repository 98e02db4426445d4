#include <algorithm>
#include <cmath>

#include "core/MainWindow.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/basOBD.h"
#include "platform/Paths.h"
#include "platform/ProcessStart.h"
#include "platform/Text.h"
#include "skin/PageControl.h"
#include "skin/ShowMessage.h"
#include "skinfunc/MenuList.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// One command, taken apart for the procedure that carries it out.
struct Command {
    std::string Received;  ///< as given, case kept, for the texts that are shown
    std::string Argument;  ///< lower case
};

/// Everything behind the word and its underscore, as received.
std::string ShownText(const Command& command, std::size_t firstCharacter) {
    const std::size_t start = firstCharacter - 1;
    return start < command.Received.size() ? command.Received.substr(start) : std::string{};
}

// Charts ------------------------------------------------------------------------------------------

/// The number behind "chart", to the nearest whole number (halves to even).
int ChartNumber(const std::string& argument) {
    constexpr std::size_t kNameLength = 5;
    if (argument.size() <= kNameLength) return 0;
    const double number = LeadingNumber(std::string_view(argument).substr(kNameLength));
    return std::abs(number) < kChartLimit ? static_cast<int>(std::nearbyint(number)) : kChartLimit;
}

bool NamesAllCharts(const std::string& argument) {
    constexpr std::size_t kNameLength = 5;
    return argument.size() > kNameLength && argument.substr(kNameLength) == "all";
}

bool IsChart(int index) {
    return index >= 0 && index < basGlobal.ChartCount;
}

void ClearCharts(const Command& command) {
    if (!command.Argument.starts_with("chart")) return;
    if (NamesAllCharts(command.Argument)) {
        for (int i = 0; i < basGlobal.ChartCount; ++i) ClearChart(i);
    } else if (const int index = ChartNumber(command.Argument); IsChart(index)) {
        ClearChart(index);
    }
}

/// The first five characters of the argument are passed over unchecked.
void PauseCharts(const Command& command) {
    const auto begin = basGlobal.Charts.begin();
    const auto end = begin + basGlobal.ChartCount;
    if (NamesAllCharts(command.Argument)) {
        const bool pause =
            std::any_of(begin, end, [](const ChartRecord& chart) { return !chart.Paused; });
        std::for_each(begin, end, [pause](ChartRecord& chart) { chart.Paused = pause; });
    } else if (const int index = ChartNumber(command.Argument); IsChart(index)) {
        begin[index].Paused = !begin[index].Paused;
    }
}

// Selection ---------------------------------------------------------------------------------------

/// The function text of a selected element; nothing while none is selected.
std::optional<std::string> SelectedTag(const std::vector<std::string>& tags, std::uint16_t index) {
    if (index == kNoFocus || index >= tags.size()) return std::nullopt;
    return tags[index];
}

void StepValue(const Command& command) {
    const std::string& step = command.Argument;
    if (const auto tag = SelectedTag(basGlobal.SliderTag, basGlobal.FocusedSlider)) {
        const std::string distance = step == "+" ? "+5" : step == "-" ? "-5" : step;
        StepList(*tag + "_" + distance);
    } else {
        StepList(step.starts_with('+') ? "listview_+" : "listview_-");
    }
}

void SelectObject() {
    if (const auto tag = SelectedTag(basGlobal.ButtonTag, basGlobal.FocusedButton)) {
        ExecuteCommand(*tag);
        StepList(*tag);
    } else if (basGlobal.FocusedSlider == kNoFocus) {
        ActivateListEntry(basGlobal.FocusedList);
    }
}

void MoveSelection(const Command& command) {
    if (command.Argument == "+")
        SendTabKey(false);
    else if (command.Argument == "-")
        SendTabKey(true);
    else if (command.Argument == "select")
        SelectObject();
    else
        MoveFocus(command.Argument);
}

void GoFolder(const Command& command) {
    if (command.Argument == "parent") OpenParentFolder(basGlobal.CurrentList);
}

// Pages and boxes ---------------------------------------------------------------------------------

void OpenMenu(const Command& command) {
    const std::string& name = command.Argument;
    if (name == "previous")
        LoadSkinPage(std::string(basGlobal.PreviousMenu), false);
    else if (name == "+")
        LoadSkinPage(NextMenu(), false);
    else if (name == "-")
        LoadSkinPage(PreviousMenuInList(), false);
    else
        LoadSkinPage(name, false);
}

void OpenBox(const Command& command) {
    ToggleBox(command.Argument);
}

void CloseOpenBox(const Command&) {
    CloseBox();
}

void LeavePage(const Command&) {
    if (BoxOpen())
        CloseBox();
    else
        LoadSkinPage("mainmenu", false);
}

// Link --------------------------------------------------------------------------------------------

bool LinkIdle() {
    return basGlobal.ConnState == kConnected || basGlobal.ConnState == kReceivingData;
}

void AskToClearCodes() {
    if (!LinkIdle()) return;
    const int answer =
        ShowMessage("Clear troublecodes and all stored data?", kMessageQuestion, "Dravik");
    if (answer == kAnswerYes && basGlobal.comOBD.IsOpen()) basGlobal.ConnState = kClearingCodes;
}

void LinkCommand(const Command& command) {
    if (command.Argument == "connect") {
        basGlobal.ConnState = kConnecting;
    } else if (command.Argument == "gettroublecodes") {
        if (LinkIdle()) basGlobal.ConnState = kReadingCodes;
    } else if (command.Argument == "cleartroublecodes") {
        AskToClearCodes();
    }
}

// Sensors -----------------------------------------------------------------------------------------

SensorRecord& Sensor(int index) {
    return basGlobal.Sensors[static_cast<std::size_t>(index)];
}

void SwitchSensor(int index, bool active) {
    Sensor(index).Active = active;
    UpdatePidWanted(Sensor(index));
}

void SwitchSensors(const std::string& name, bool active) {
    if (name == "all") {
        for (int i = 0; i < basGlobal.SensorCount; ++i) SwitchSensor(i, active);
    } else if (const auto index = FindSensor(name)) {
        SwitchSensor(*index, active);
    }
}

/// All of them: on when at least one is off, otherwise off.
void ToggleSensors(const Command& command) {
    if (command.Argument == "all") {
        bool anyInactive = false;
        for (int i = 0; i < basGlobal.SensorCount; ++i) anyInactive |= !Sensor(i).Active;
        SwitchSensors("all", anyInactive);
    } else if (const auto index = FindSensor(command.Argument)) {
        SwitchSensor(*index, !Sensor(*index).Active);
    }
}

void SensorsOn(const Command& command) {
    SwitchSensors(command.Argument, true);
}

void SensorsOff(const Command& command) {
    SwitchSensors(command.Argument, false);
}

// Messages ----------------------------------------------------------------------------------------

void ShowInfo(const Command& command) {
    ShowPopup(ShownText(command, 10), 1);
}

void ShowWarning(const Command& command) {
    ShowPopup(ShownText(command, 13), 0);
}

void ShowQuery(const Command& command) {
    constexpr int kQueryStyle = 2;
    ShowMessage(ShownText(command, 11), kQueryStyle, "");
}

// The program -------------------------------------------------------------------------------------

void Snapshot(const Command& command) {
    TakeSnapshot(command.Argument);
}

void StartKeyboard(const Command&) {
    if (FileExists(basGlobal.OSKPath)) StartMinimised(ResolvePath(basGlobal.OSKPath));
}

void ShowSettings(const Command&) {
    ShowSettingsDialog();
}

void Minimize(const Command&) {
    MinimizeMainWindow();
}

void Quit(const Command&) {
    UnloadMainWindow();
}

enum class Argument { Needed, Optional };

struct CommandWord {
    std::string_view Word;
    void (*Run)(const Command& command);
    Argument Presence = Argument::Needed;  ///< without a needed argument the word does nothing
};

// The words of the dispatcher, in the order in which they are tested.
constexpr CommandWord kCommandWords[] = {
    {"clr", ClearCharts},
    {"pause", PauseCharts},
    {"value", StepValue, Argument::Optional},
    {"object", MoveSelection},
    {"gofolder", GoFolder},
    {"openmenu", OpenMenu},
    {"openbox", OpenBox},
    {"closebox", CloseOpenBox, Argument::Optional},
    {"exit", LeavePage, Argument::Optional},
    {"obd", LinkCommand},
    {"snapshot", Snapshot, Argument::Optional},
    {"osk", StartKeyboard, Argument::Optional},
    {"sensortoggle", ToggleSensors},
    {"sensoron", SensorsOn},
    {"sensoroff", SensorsOff},
    {"showinfo", ShowInfo},
    {"showwarning", ShowWarning},
    {"showquery", ShowQuery},
    {"config", ShowSettings, Argument::Optional},
    {"minimize", Minimize, Argument::Optional},
    {"quit", Quit, Argument::Optional},
    {"poweroff", Quit, Argument::Optional},
};

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
    const std::string received = command;  // the caller's text may belong to an element that goes
    const std::string lowered = LowerCased(received);
    basGlobal.LastCommand = lowered;
    const auto [word, argument] = SplitAtLast(lowered);
    for (const CommandWord& row : kCommandWords) {
        if (row.Word == word) {
            if (argument.empty() && row.Presence == Argument::Needed) return;
            row.Run({received, std::string(argument)});
            return;
        }
    }
}

void UpdatePidWanted(const SensorRecord& sensor) {
    constexpr std::size_t kPidDigits = 2;
    if (!sensor.Source.starts_with("obd")) return;
    const std::size_t start = sensor.Source.size() - kPidDigits;
    const std::optional<std::int32_t> pid = HexNumber(sensor.Source.substr(start));
    if (pid && *pid < kPidCount)
        basGlobal.PidWanted[static_cast<std::size_t>(*pid)] = sensor.Active;
}

std::vector<std::string_view> CommandWords() {
    std::vector<std::string_view> words;
    for (const CommandWord& row : kCommandWords) words.push_back(row.Word);
    return words;
}

}  // namespace dravik
