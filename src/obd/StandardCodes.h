#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "obd/Reply.h"

/// Trouble codes and freeze frames by the standard, from every control unit. Only the files of this
/// folder include this.
namespace dravik {

/// ReadTroubleCodes and ClearTroubleCodes with the replies of all control units taken apart by the
/// standard. After a read DtcCount is the number of codes; a read that fails leaves them as they
/// were, tells the reason in a message and ends connected, without a prompt not connected. When it
/// is not sure that the headers are off again, it ends in a new connect.
void ReadStandardCodes();
void ClearStandardCodes();

/// Takes the lamp, on when any unit says so, and the number of codes of all units from the answers
/// to "0101".
void TakeMonitorStatus(const std::vector<UnitMessage>& messages);

/// One trouble code of a control unit.
struct UnitCode {
    std::uint32_t Unit;
    std::string Code;
};

/// Asks for the freeze frames and which code caused each. A frame whose number several units have
/// is read whole; without headers it is nobody's.
/// @return the origin of each of the codes
std::vector<CodeOrigin> AskFrameOrigins(const std::vector<UnitCode>& codes, bool headers);

/// Origin of the selected code, whose freeze frame is to be shown; one without a frame where none
/// is known. While no codes are listed the first frame.
CodeOrigin SelectedOrigin();

}  // namespace dravik
