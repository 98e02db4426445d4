#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

// A macro of the system's header that would rename a function of ours.
#undef ReplaceFile

#include <string>
#include <string_view>

namespace dravik {

/// Our bytes (UTF-8, else Windows-1252) as the system's wide text, and back to UTF-8.
std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);

}  // namespace dravik
