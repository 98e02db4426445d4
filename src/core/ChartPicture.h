#pragma once

#include <string>

namespace dravik {

/// A chart of the page as it looked at one moment.
struct ChartPicture {
    std::string Caption;  ///< in the user's language
    std::string Png;      ///< the bytes of a picture file
};

}  // namespace dravik
