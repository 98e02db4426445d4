#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "obd/Diagnosis.h"

/// What the files of this folder share. Only they include this.
namespace dravik {

/// "7E8": an address, or another number, in so many hex digits at least.
std::string HexText(std::uint32_t number, int digits);

/// A number as it is shown, with the region's decimal sign.
std::string ShownDecimal(double number, int decimals);

/// The code whose entry is selected in the list, or whose frame that shows; null for none.
const FoundCode* SelectedCodeOfDiagnosis();

/// The whole text of the selected entry.
std::string SelectedOfDiagnosis();

// The words of each file, for DiagnosisWords.
std::vector<std::string_view> MonitorWords();
std::vector<std::string_view> TestWords();
std::vector<std::string_view> ListWords();

}  // namespace dravik
