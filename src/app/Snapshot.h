#pragma once

#include <string>

namespace dravik {

class SkinScreen;

/// Writes pictures of the screen's charts into the save folder and says so: "all", or the number
/// of one.
void TakeSnapshot(const SkinScreen& screen, const std::string& argument);

}  // namespace dravik
