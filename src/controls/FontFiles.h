#pragma once

#include <string>

namespace dravik {

/// Makes the font files (.ttf, .otf, .ttc) of a folder known to the program, in the order of their
/// names. They stay known until the program ends, each once, and a folder that was asked for before
/// is not looked at again. A file that holds no font is passed over and named on standard error; a
/// folder that does not exist holds none.
void LoadFontFiles(const std::string& folder);

}  // namespace dravik
