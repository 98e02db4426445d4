#include <QWidget>
#include <cstdio>
#include <string>
#include <utility>

#include "console/ConsoleRequests.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "skin/PageCanvas.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"

namespace dravik {

namespace {

/// Joins the parts with commas.
class CommaList {
 public:
    void Add(const std::string& part) {
        if (std::exchange(begun_, true)) text_ += ',';
        text_ += part;
    }
    const std::string& Text() const { return text_; }

 private:
    std::string text_;
    bool begun_ = false;  ///< with a part that may be empty
};

std::string HexPid(std::size_t pid) {
    char text[8];
    std::snprintf(text, sizeof text, "%02X", static_cast<unsigned>(pid));
    return text;
}

std::string WantedPids() {
    CommaList list;
    for (std::size_t pid = 0; pid < kPidCount; ++pid) {
        if (basGlobal.PidWanted[pid]) list.Add(HexPid(pid));
    }
    return list.Text();
}

std::string RawValues(const std::array<std::int32_t, kPidCount>& table) {
    CommaList list;
    for (std::size_t pid = 0; pid < kPidCount; ++pid) {
        if (table[pid] != 0) list.Add(HexPid(pid) + "=" + std::to_string(table[pid]));
    }
    return list.Text();
}

std::string Codes() {
    CommaList list;
    for (const std::string& code : CodesInUse()) list.Add(code);
    return list.Text();
}

std::string ActiveSensors() {
    std::string flags;
    for (const SensorRecord& sensor : SensorsInUse()) flags += sensor.Active ? '1' : '0';
    return flags;
}

std::string Flag(bool value) {
    return value ? "1" : "0";
}

// Elements ----------------------------------------------------------------------------------------

struct Placed {
    QRect Rect;  ///< within its container
    bool Visible = true;
};

Placed PlaceOf(const ScreenElement& element) {
    if (const QWidget* control = element.Control)
        return {control->geometry(), !control->isHidden()};
    return {element.Item->Place(), element.Item->Visible()};
}

std::string ShownBy(const ScreenElement& element) {
    return element.Kind->Shown != nullptr ? element.Kind->Shown(element) : element.Shown;
}

std::string ElementLine(const SkinScreen& screen, const ScreenElement& element, int index) {
    const PageCanvas* canvas = screen.ContainerOf(element);
    const auto [rect, shown] = PlaceOf(element);
    const QPoint corner = canvas->mapTo(canvas->window(), rect.topLeft());
    const bool visible = shown && (!element.InBox || screen.BoxShown());
    std::string line = element.Kind->Word;
    for (const int number : {index, corner.x(), corner.y(), rect.width(), rect.height()})
        line += "\t" + std::to_string(number);
    line += "\t" + Flag(visible) + "\t" + OneLine(ToUtf8(element.Function)) + "\t" +
            OneLine(ToUtf8(ShownBy(element))) + "\n";
    return line;
}

}  // namespace

std::string ReportState() {
    const GlobalState& g = basGlobal;
    const std::pair<const char*, std::string> rows[] = {
        {"ConnState", std::to_string(g.ConnState)},
        {"StatusText", CurrentStatusText()},
        {"CurrentMenu", g.CurrentMenu},
        {"PreviousMenu", g.PreviousMenu},
        {"CurrentBox", g.CurrentBox},
        {"Misc", std::to_string(g.Misc)},
        {"DtcCount", std::to_string(g.DtcCount)},
        {"MilOn", Flag(g.MilOn)},
        {"DtcList", Codes()},
        {"InterfaceId", g.InterfaceId},
        {"ProtocolText", g.ProtocolText},
        {"PidWanted", WantedPids()},
        {"PidCursor", std::to_string(g.PidCursor)},
        {"AwaitingReply", Flag(g.AwaitingReply)},
        {"FreezeFrameNo", g.FreezeFrameNo},
        {"LiveRaw", RawValues(g.LiveRaw)},
        {"FreezeRaw", RawValues(g.FreezeRaw)},
        {"FocusedButton", std::to_string(g.FocusedButton)},
        {"FocusedSlider", std::to_string(g.FocusedSlider)},
        {"LastCommand", g.LastCommand},
        {"SensorCount", std::to_string(g.SensorCount)},
        {"SensorActive", ActiveSensors()},
    };
    std::string report;
    for (const auto& [name, value] : rows)
        report += std::string(name) + " " + OneLine(ToUtf8(value)) + "\n";
    return report + ".";
}

std::string ReportElements() {
    SkinScreen& screen = *CurrentScreen();
    std::string report;
    for (const SkinKind* kind : SkinKinds()) {
        const auto& elements = screen.Elements(*kind);
        for (std::size_t i = 0; i < elements.size(); ++i)
            report += ElementLine(screen, elements[i], static_cast<int>(i));
    }
    return report + ".";
}

std::string ReportList() {
    const ListSlot* list = CurrentList();
    if (list == nullptr) return "none\t0\n.";
    const int slot = basGlobal.CurrentList;
    const std::string* name = FindAt(basGlobal.FolderName, slot);
    std::string report = (name == nullptr ? std::to_string(slot) : *name) + "\t" +
                         std::to_string(list->Selected) + "\n";
    for (const ListEntry& entry : list->Entries)
        report += OneLine(ToUtf8(entry.Text)) + "\t" + OneLine(ToUtf8(entry.Picture)) + "\t" +
                  OneLine(ToUtf8(entry.Tag)) + "\n";
    return report + ".";
}

}  // namespace dravik
