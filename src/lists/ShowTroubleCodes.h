#pragma once

/// What the trouble-code reader asks of the lists.
namespace dravik {

/// Rebuilds the list of trouble codes (slot 7) from DtcList and DtcCount, with their descriptions;
/// one entry "No Errors" when there are none.
void ShowTroubleCodes();

}  // namespace dravik
