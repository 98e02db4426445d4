#pragma once

#include <string>

namespace dravik {

/// Name of the menu that follows the current one in the skin's menu list (General/Menu0, Menu1,
/// ...). From the last it goes on at the first; a menu that is not in the list leads to
/// "mediaplayer".
std::string NextMenu();

/// Name of the menu that precedes the current one in the list; from the first it goes on at the
/// last. With an empty list "mainmenu".
std::string PreviousMenuInList();

}  // namespace dravik
