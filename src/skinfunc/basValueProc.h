#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/basGlobal.h"
#include "skinfunc/FunctionWords.h"

/// What a skinned element shows and does: state pictures, value sources, label texts and the
/// command dispatcher. Every function text is a word, "_" and an argument.
namespace dravik {

/// Marks a text that is no text function, and a number that is no number function.
constexpr const char* kNoText = "error";
constexpr float kNoNumber = 65535;

// Evaluators --------------------------------------------------------------------------------------

/// The state of an image function ("obd_connected", "sensoron_rpm", ...): on or off; anything
/// unknown is off. The text is replaced by its lower-cased form.
bool ImageState(std::string& function);

/// The raw value that a source names ("obd_0C", "can_1"), 0 when it names nothing. Reading an OBD
/// value marks its PID as wanted, so that it is polled.
std::int32_t SourceValue(std::string_view source);

/// The scaled value of a sensor: Factor * raw + Offset. An inactive sensor reads as its offset
/// without being polled, except on freeze-frame pages.
/// @param index  0 to 90
float SensorValue(int index);

/// A function text as the evaluators take it: in lower case, but for the name behind "word_", which
/// is shown as it stands where the language has no such word.
std::string EvaluatedForm(std::string function);

/// The text of a label function. Tried in turn: text function, number function, image function
/// ("On" or "Off"). The text is replaced by its evaluated form.
/// @param decimals  how many a number is rounded to; nothing: the general number format
std::string LabelText(std::string& function, std::optional<int> decimals = std::nullopt);

/// The text of a text function; "error" when it is none. The text is replaced by its evaluated
/// form.
std::string LabelTextFunction(std::string& function);

/// The number of a number function; 65535 when it is none, or when its value is not finite. The
/// text is lower-cased in place.
float LabelNumber(std::string& function);

/// The number that a slider, bargraph, gauge or chart shows: that of its label function, else the
/// raw value of its source; nothing when its function names neither.
std::optional<float> ElementValue(const std::string& function);

/// Index of the first sensor in use whose name is the text `name`, whatever its encoding.
std::optional<int> FindSensor(std::string_view name);

// Commands ----------------------------------------------------------------------------------------

/// Carries out a command text such as "openmenu_mainmenu". Unknown commands do nothing; a step that
/// fails is passed over. A command that leads to itself ends after a bounded number of rounds.
void ExecuteCommand(const std::string& command);

/// True when the command closes an open box or opens a page in its place, if need be after a
/// question.
bool LeavesBox(const std::string& command);

/// Moves the selection of the current list: `text` is "listview_" and an operation. Other targets
/// do nothing.
void StepList(const std::string& text);

/// Sets the wanted flag of a sensor's PID to whether the sensor is active. Sensors with sources
/// other than "obd" are left alone.
void UpdatePidWanted(const SensorRecord& sensor);

}  // namespace dravik
