#include "settings/SensorEditor.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "core/basGlobal.h"
#include "platform/At.h"
#include "settings/basSettings.h"

namespace dravik {

namespace {

constexpr const char* kSection = "SensorConfig";
constexpr std::size_t kOptInBytes = 255;
constexpr int kLastRead = 1000;  // the highest sensor number that is looked for

}  // namespace

void SensorEditor::Load(const std::string& file) {
    rows_.clear();
    for (int n = 0; n <= kLastRead; ++n) {
        const std::string prefix = "Sensor" + std::to_string(n);
        SensorRow row;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string key = prefix + kSensorFields[i];
            row[i] = i < kSensorColumns ? ReadIniString(file, kSection, key)
                                        : ReadProfileString(file, kSection, key, "", kOptInBytes);
        }
        if (At(row, SensorField::Function) == "0") break;
        rows_.push_back(std::move(row));
    }
    selected_ = rows_.empty() ? -1 : 0;
}

void SensorEditor::Select(int row) {
    if (row >= 0 && row < Count()) selected_ = row;
}

const std::string& SensorEditor::Text(SensorField field) const {
    static const std::string kNone;
    return selected_ < 0 ? kNone : At(At(rows_, selected_), field);
}

void SensorEditor::SetText(SensorField field, std::string text) {
    if (selected_ >= 0) At(At(rows_, selected_), field) = std::move(text);
}

std::string SensorEditor::Title() const {
    if (selected_ < 0) return "PID";
    char text[16];
    std::snprintf(text, sizeof text, "PID %02X", static_cast<unsigned>(selected_));
    return text;
}

bool SensorEditor::Full() const {
    return Count() >= kSensorLimit;
}

void SensorEditor::Append(SensorRow row) {
    rows_.push_back(std::move(row));
    selected_ = Count() - 1;
}

bool SensorEditor::Add() {
    if (Full()) return false;
    // A new sensor's range starts at 1.
    Append({"", "", "1", "0", "1", "100", "Sensor " + std::to_string(Count()), "", "", ""});
    return true;
}

bool SensorEditor::Copy() {
    if (Full() || selected_ < 0) return false;
    Append(SensorRow(At(rows_, selected_)));
    return true;
}

void SensorEditor::Delete() {
    if (selected_ < 0) return;
    rows_.erase(rows_.begin() + selected_);
    selected_ = std::min(selected_, Count() - 1);
}

}  // namespace dravik
