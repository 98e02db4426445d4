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

// Words of label functions that give the value of a sensor.
constexpr std::string_view kSensorWord = "sensor";
constexpr std::string_view kLiveWord = "live";

/// What the key Decimals of a label says where its sensor is to tell how many.
constexpr std::string_view kSensorPlaces = "sensor";

// Evaluators --------------------------------------------------------------------------------------

/// The state of an image function ("obd_connected", "sensoron_rpm", ...): on or off; anything
/// unknown is off. The text is replaced by its lower-cased form.
bool ImageState(std::string& function);

/// The raw value that a source names ("obd_0C", "can_1"), 0 when it names nothing. Reading an OBD
/// value marks its PID as wanted, so that it is polled.
std::int32_t SourceValue(std::string_view source);

/// The raw number of a sensor: that of its source, or of the bytes of its reply where it names
/// them; nothing while the reply has no such bytes. Polled as SourceValue does.
std::optional<std::int64_t> RawNumber(std::string_view source,
                                      const std::optional<ByteRange>& bytes);

/// The scaled value of a sensor: Factor * raw + Offset. An inactive sensor reads as its offset
/// without being polled, except on freeze-frame pages.
float SensorValue(const SensorRecord& sensor);

/// The PID that a source names, if it names one.
std::optional<int> SourcePid(std::string_view source);

/// True while a sensor shows more than its offset: it is active, or the page shows freeze-frame
/// data.
bool SensorShows(const SensorRecord& sensor);

/// True while the sensor shows a value that was really received, see PidKnown. Asks for it as
/// SensorValue does.
bool SensorKnown(const SensorRecord& sensor);

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

/// The least or the greatest value of a sensor since the connect; nothing while none came.
std::optional<float> SensorExtreme(const SensorRecord& sensor, bool greatest);

/// How many decimals the value of a sensor is worth; one where it does not say.
int SensorDecimals(const SensorRecord& sensor);

/// The same of the sensor that a function names, as in "live_NAME".
std::optional<int> SensorDecimals(const std::string& function);

/// False while the value that ElementValue gives was not received. What does not come from the
/// vehicle is always known.
bool ElementKnown(const std::string& function);

/// Index of the first sensor in use whose name is the text `name`, whatever its encoding, or that
/// this name stands for; null for none.
SensorRecord* FindSensor(std::string_view name);

// Sensors that the user picks ---------------------------------------------------------------------

/// Names that stand for a sensor that the user has picked: "picked", and "panel1" to "panel4".
std::vector<std::string_view> SensorStandIns();

/// The name of the sensor that such a name stands for, empty while none is picked; null for any
/// other name.
const std::string* SensorStoodFor(std::string_view name);

/// Shows one sensor large: it becomes "picked", and the page "value" opens. Unknown ones: nothing.
void ShowSensorLarge(const std::string& name);

/// Opens the page "choose" for a tile of the page "panel".
/// @param tile  a number from 1 to 4; any other text does nothing
void ChooseForTile(const std::string& tile);

/// Puts a sensor into the tile that was asked for last, keeps that in the settings and opens the
/// page "panel".
void PutIntoTile(const std::string& name);

// Commands ----------------------------------------------------------------------------------------

/// Carries out a command text such as "openmenu_mainmenu". Unknown commands do nothing; a step that
/// fails is passed over. A command that leads to itself ends after a bounded number of rounds.
void ExecuteCommand(const std::string& command);

/// Shows the current page in a skin that was just chosen; its first page where the skin has none of
/// that name.
void ShowInNewSkin();

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
