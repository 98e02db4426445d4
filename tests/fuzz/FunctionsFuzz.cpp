#include <cmath>

#include "FuzzTarget.h"
#include "lists/basFunctions.h"
#include "platform/Text.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"
#include "support/FakeScreen.h"

namespace dravik::fuzz {
namespace {

constexpr int kMostLines = 100;

void LoadSensors() {
    static const auto shipped = [] {
        basGlobal.SensorFile = DRAVIK_SOURCE "languages/english-metric.sensors";
        LoadSensorConfig();
        return std::pair(basGlobal.Sensors, basGlobal.SensorCount);
    }();
    std::tie(basGlobal.Sensors, basGlobal.SensorCount) = shipped;
}

/// A skin with a menu list.
const std::string& MenuSkin() {
    static const std::string file =
        Folder().Write("menus.ini", "[General]\nMenu0=mainmenu\nMenu1=engine\nMenu2=codes\n");
    return file;
}

void TakeApart(const std::string& line) {
    std::string text = line;
    ImageState(text);
    Require(text == LowerCased(line), "the caller's text is in lower case", line);
    Require(LabelTextFunction(text) == LabelTextFunction(text) || text.starts_with("function"),
            "reading a text does not change it", line);
    Require(std::isfinite(LabelNumber(text)), "a number is one", line);
    Require(LabelText(text, static_cast<int>(line.size())) != kNoText ||
                line.find('_') != std::string::npos,
            "a label shows no mark", line);
    ElementValue(line);
    SourceValue(line);
}

}  // namespace

void Run(std::string_view input) {
    basGlobal = GlobalState{};
    InstallFakeScreen();
    fakeScreen.Answer = [] { return 6; };
    InitGlobals(Folder().Path());
    basGlobal.SkinFile = MenuSkin();
    LoadSensors();
    basGlobal.CurrentMenu = "mainmenu";
    basGlobal.ChartCount = 3;
    basGlobal.CurrentList = 3;
    for (int i = 0; i < 30; ++i)
        AddListEntry(basGlobal.Lists[3], {"entry", "b", "folder/music/" + std::to_string(i)});
    for (int count = 0; !input.empty() && count < kMostLines; ++count) {
        const std::string line(TakeLine(input));
        TakeApart(line);
        basGlobal.ButtonTag = {line, "exit"};
        basGlobal.SliderTag = {line, "listview"};
        basGlobal.FocusedButton = count % 3 == 0 ? std::uint16_t{0} : kNoFocus;
        basGlobal.FocusedSlider = count % 4 == 1 ? std::uint16_t{0} : kNoFocus;
        ExecuteCommand(line);
        StepList(line);
        for (const ListSlot& list : basGlobal.Lists)
            Require(list.Selected >= 0 && list.Selected <= static_cast<int>(list.Entries.size()),
                    "the selection is an entry", line);
        fakeScreen.Calls.clear();
    }
}

}  // namespace dravik::fuzz
