#include "skinfunc/basValueProc.h"

namespace dravik {

std::optional<int> FindSensor(std::string_view name) {
    for (int i = 0; i < basGlobal.SensorCount; ++i) {
        if (basGlobal.Sensors[static_cast<std::size_t>(i)].Function == name) return i;
    }
    return std::nullopt;
}

}  // namespace dravik
