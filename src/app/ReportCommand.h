#pragma once

#include "app/CommandLine.h"

namespace dravik {

/// The whole of "dravik --report": connects, makes a diagnosis and writes the report on it, without
/// a window. How far it is goes to standard error.
/// @return the exit status: 0 when the vehicle has no trouble codes, 1 when it has, 2 when they
///         could not be read or the report not be written
int ReportCommand(int argc, char** argv, const CommandLine& line);

}  // namespace dravik
