#pragma once

#include <string>

namespace dravik {

/// What became of the copies of the installed data in a user's folder.
struct OldCopies {
    int Differing = 0;  ///< files that are kept, since they are not as they are installed
    bool AllGone = true;
};

/// Takes away the copies of the installed data with which a user's folder was once filled: files
/// that are byte by byte as they are installed, so that nothing is lost. Links are left alone, and
/// so is everything that could be the user's own: other files, and those that differ.
///
/// @param cutShort  the folder was never filled whole; files that break off are copies as well
OldCopies RemoveOldCopies(const std::string& folder, const std::string& installed, bool cutShort);

}  // namespace dravik
