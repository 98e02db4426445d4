#pragma once

#include <vector>

#include "obd/Diagnosis.h"

/// The values of now for a report. Only the files of this folder include this.
namespace dravik {

/// PIDs that the vehicle has by its diagnosis and that the sensor table knows.
std::vector<int> ReadablePids(const Diagnosis& diagnosis);

/// Every live value that was received and is not old, of the vehicle as it is now: none while the
/// page shows a freeze frame, since the vehicle is asked for that then.
std::vector<FrameValue> KnownLiveValues();

}  // namespace dravik
