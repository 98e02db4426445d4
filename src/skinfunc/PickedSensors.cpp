#include <cstdio>

#include "core/UpCalls.h"
#include "core/basGlobal.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr const char* kValuePage = "value";
constexpr const char* kPanelPage = "panel";
constexpr const char* kChoicePage = "choose";

constexpr std::string_view kPicked = "picked";
constexpr std::array<std::string_view, kPanelTiles> kTiles = {"panel1", "panel2", "panel3",
                                                              "panel4"};

/// The sensor's own name, where the text stands for one.
std::string OwnName(const std::string& name) {
    const SensorRecord* sensor = FindSensor(name);
    return sensor != nullptr ? sensor->Function : std::string{};
}

}  // namespace

std::vector<std::string_view> SensorStandIns() {
    std::vector<std::string_view> names(kTiles.begin(), kTiles.end());
    names.push_back(kPicked);
    return names;
}

const std::string* SensorStoodFor(std::string_view name) {
    if (name == kPicked) return &basGlobal.PickedSensor;
    for (std::size_t i = 0; i < kTiles.size(); ++i) {
        if (kTiles[i] == name) return &basGlobal.PanelSensors[i];
    }
    return nullptr;
}

void ShowSensorLarge(const std::string& name) {
    basGlobal.PickedSensor = OwnName(name);
    if (!basGlobal.PickedSensor.empty()) upCalls.LoadSkinPage(kValuePage, false);
}

void ChooseForTile(const std::string& tile) {
    const double number = LeadingNumber(tile);
    if (!(number >= 1 && number <= kPanelTiles)) return;
    basGlobal.PanelTile = static_cast<int>(number);
    upCalls.LoadSkinPage(kChoicePage, false);
}

void PutIntoTile(const std::string& name) {
    GlobalState& g = basGlobal;
    const std::string sensor = OwnName(name);
    if (sensor.empty()) return;
    g.PanelSensors[static_cast<std::size_t>(g.PanelTile - 1)] = sensor;
    const std::string key = PanelKey(g.PanelTile);
    if (!KeepSettings({{"Options", key, sensor}}))
        std::fprintf(stderr, "%s: %s could not be written\n", g.IniFile.c_str(), key.c_str());
    upCalls.LoadSkinPage(kPanelPage, false);
}

}  // namespace dravik
