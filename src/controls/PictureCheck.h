#pragma once

#include <string>

namespace dravik {

/// What a picture file turns out to be.
struct PictureFacts {
    int Width = 0;
    int Height = 0;
    std::string Fault;  ///< why it cannot be shown; empty when it can
};

/// Decodes a picture file without keeping it. Needs no display.
/// @param path  as in a skin: "\" or "/", case does not matter
PictureFacts InspectPicture(const std::string& path);

/// The same for the picture of double size that goes with `path` ("name@2x.png").
/// @return nothing in Width and Fault when there is no such file
PictureFacts InspectDoublePicture(const std::string& path);

}  // namespace dravik
