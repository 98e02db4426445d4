#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

SensorRecord* FindSensor(std::string_view name) {
    // The skin and the sensor file may be encoded differently; the table is UTF-8.
    if (!IsUtf8(name)) return FindSensor(ToUtf8(name));
    for (SensorRecord& sensor : SensorsInUse()) {
        if (sensor.Function == name) return &sensor;
    }
    return nullptr;
}

}  // namespace dravik
