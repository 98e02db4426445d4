#pragma once

#include <vector>

namespace dravik {

class SkinScreen;

/// Writes pictures of the screen's charts into the save folder and says so.
/// @param charts  their numbers; none: nothing happens
void TakeSnapshot(const SkinScreen& screen, const std::vector<int>& charts);

}  // namespace dravik
