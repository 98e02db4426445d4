#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

FunctionText SplitAt(std::string_view text, std::size_t position) {
    if (position == std::string_view::npos) return {text, {}};
    return {text.substr(0, position), text.substr(position + 1)};
}

}  // namespace

FunctionText SplitAtFirst(std::string_view text) {
    return SplitAt(text, text.find('_'));
}

FunctionText SplitAtLast(std::string_view text) {
    return SplitAt(text, text.rfind('_'));
}

std::optional<int> FindSensor(std::string_view name) {
    for (int i = 0; i < basGlobal.SensorCount; ++i) {
        if (basGlobal.Sensors[static_cast<std::size_t>(i)].Function == name) return i;
    }
    return std::nullopt;
}

}  // namespace dravik
