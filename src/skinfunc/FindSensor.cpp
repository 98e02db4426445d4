#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

SensorRecord* FindSensor(std::string_view name) {
    // The skin and the sensor file may be encoded differently; the table is UTF-8.
    if (!IsUtf8(name)) return FindSensor(ToUtf8(name));
    for (SensorRecord& sensor : SensorsInUse()) {
        if (sensor.Function == name) return &sensor;
    }
    const std::string* stoodFor = SensorStoodFor(name);
    // What it stands for is a sensor of its own name, so this looks no further than once.
    return stoodFor == nullptr || SensorStoodFor(*stoodFor) != nullptr ? nullptr
                                                                       : FindSensor(*stoodFor);
}

}  // namespace dravik
