#pragma once

#include <cstddef>
#include <string_view>

namespace dravik {

/// Lets what the program prints appear on the terminal that it was started from, and reads standard
/// input from there, where the system does not see to that by itself. Redirected streams stay; one
/// that was closed reads as ended and takes what is written. Called before anything is opened.
void JoinTerminal();

/// From now on a reader of standard output or of the error output that goes away does not end the
/// program. Programs that it starts are as before.
void OutliveReaders();

/// Waits until there is something in standard input and reads it.
///
/// @return how many bytes it was, at most `size`; 0 at the end of the input
std::size_t ReadStandardInput(char* buffer, std::size_t size);

/// Writes to standard output, waiting for its reader where it must.
///
/// @return false when it could not be written: nobody reads any more, or a disk is full
bool WriteStandardOutput(std::string_view text);

}  // namespace dravik
