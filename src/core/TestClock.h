#pragma once

/// For tests only.
namespace dravik {

/// Moves HighResTimer forward by so many seconds, so that a long silence need not be waited for.
void AdvanceHighResTimer(double seconds);

}  // namespace dravik
