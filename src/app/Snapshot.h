#pragma once

#include <vector>

#include "core/ChartPicture.h"

namespace dravik {

class SkinScreen;

/// Writes pictures of the screen's charts into the save folder and says so.
/// @param charts  their numbers; none: nothing happens
void TakeSnapshot(const SkinScreen& screen, const std::vector<int>& charts);

/// Pictures of the screen's charts that hold a value, with the caption of what they show.
std::vector<ChartPicture> ChartPictures(const SkinScreen& screen);

}  // namespace dravik
