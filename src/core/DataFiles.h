#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The files that come with Dravik: skins, languages, fonts, the start-up picture.
///
/// They are named by their place in the program folder. The user's own folder lies over the
/// installed data: a file that the user has is taken from there, any other from the installation,
/// and nothing is ever written into the installation. Beneath any other program folder lies
/// nothing, and neither does beneath a path that leads elsewhere; such a path stands for itself.
namespace dravik {

/// The places of a file or folder, the one that counts first: `path` itself, then the same place in
/// the installation where one lies beneath. Nothing need be there.
std::vector<std::string> PlacesOf(const std::string& path);

/// The file that is to be read for `path`; `path` itself when there is none.
std::string DataFile(const std::string& path);

/// The first place where the folder exists; `path` itself when it exists nowhere. Files of it are
/// looked for by this name: while the user has no such folder, that costs no look at it.
std::string DataFolder(const std::string& path);

/// FilesMatching for all places of a folder. A name that several of them have comes once, spelt as
/// in the first.
std::vector<std::string> DataFilesMatching(const std::string& folder, std::string_view extension);

/// The place in the program folder of a file that DataFile gave: where changes to it are written.
std::string OwnFile(const std::string& file);

}  // namespace dravik
