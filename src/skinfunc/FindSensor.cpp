#include "platform/Text.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

std::optional<int> FindSensor(std::string_view name) {
    // The skin and the sensor file may be encoded differently; the table is UTF-8.
    if (!IsUtf8(name)) return FindSensor(ToUtf8(name));
    for (int i = 0; i < basGlobal.SensorCount; ++i) {
        if (basGlobal.Sensors[static_cast<std::size_t>(i)].Function == name) return i;
    }
    const std::string* stoodFor = SensorStoodFor(name);
    // What it stands for is a sensor of its own name, so this looks no further than once.
    return stoodFor == nullptr || SensorStoodFor(*stoodFor) != nullptr ? std::nullopt
                                                                       : FindSensor(*stoodFor);
}

}  // namespace dravik
