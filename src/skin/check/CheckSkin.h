#pragma once

#include <vector>

#include "skin/SkinFile.h"

namespace dravik {

/// Everything that is wrong with the current skin file: its pages, boxes, shared sections and
/// message boxes, in the order of the file. Sensor names are looked up in the loaded sensor table.
/// Nothing is shown and nothing is changed.
std::vector<SkinError> CheckSkin();

}  // namespace dravik
