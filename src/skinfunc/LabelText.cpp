#include <algorithm>
#include <utility>

#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "platform/At.h"
#include "platform/Clock.h"
#include "platform/Text.h"
#include "report/Report.h"
#include "settings/Words.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// A text, or nothing where the function turns out not to be a text function after all.
using Text = std::optional<std::string>;

int EntryCount(const ListSlot& list) {
    return static_cast<int>(list.Entries.size());
}

Text ListEntryText(std::string_view argument) {
    const ListSlot* list = CurrentList();
    if (list == nullptr || list->Entries.empty()) return "";
    const double entry = list->Selected + LeadingNumber(argument);
    if (!(entry >= 1 && entry <= EntryCount(*list))) return "";
    return At(list->Entries, static_cast<int>(entry) - 1).Text;
}

/// Day and month change places, whatever the system's date looks like.
Text Date(std::string_view) {
    const std::string date = ShortDateText(SystemTime());
    const auto part = [&date](std::size_t position, std::size_t length) {
        return position < date.size() ? date.substr(position, length) : std::string{};
    };
    const std::size_t yearLength = std::min<std::size_t>(4, date.size());
    return part(3, 2) + "." + part(0, 2) + "." + date.substr(date.size() - yearLength);
}

Text Time(std::string_view argument) {
    if (!argument.empty()) return std::nullopt;  // "time_hour" and the like are numbers
    return TimeText(SystemTime());
}

Text TimeAndDate(std::string_view) {
    return TimeText(SystemTime()) + " , " + *Date({});
}

/// The first entry of a list is the way up, so it is not counted.
Text IndexLabel(std::string_view) {
    const ListSlot* list = CurrentList();
    if (list == nullptr || list->Entries.empty()) return std::nullopt;
    return std::to_string(list->Selected - 1) + "/" + std::to_string(EntryCount(*list) - 1);
}

Text CurrentFolder(std::string_view) {
    constexpr std::size_t kPrefixLength = 6;  // "plspar" of a playlist's way up
    const ListSlot* list = CurrentList();
    if (list == nullptr || list->Entries.empty()) return std::nullopt;
    const std::string& tag = list->Entries.front().Tag;
    const std::size_t separator = tag.find_last_of("\\/");
    if (separator != std::string::npos) return tag.substr(separator + 1);
    return tag.substr(std::min(kPrefixLength, tag.size()));
}

/// A fixed caption is the page's business.
Text Caption(std::string_view) {
    return std::nullopt;
}

Text LinkStatus(std::string_view) {
    return CurrentStatusText();
}

Text LinkReason(std::string_view) {
    return ReasonText();
}

Text LinkSearch(std::string_view) {
    return FindingText();
}

Text SelectedCode(std::string_view) {
    return SelectedTroubleCode();
}

Text InterfaceName(std::string_view) {
    return basGlobal.InterfaceId;
}

Text ProtocolName(std::string_view) {
    return basGlobal.ProtocolText;
}

Text SensorText(std::string_view name, std::string SensorRecord::*field) {
    if (const SensorRecord* sensor = FindSensor(name)) return sensor->*field;
    // A tile may hold a sensor that is gone since, or none yet; a page's own mistake is shown.
    return SensorStoodFor(name) != nullptr ? Text("") : std::nullopt;
}

Text SensorCaption(std::string_view name) {
    return SensorText(name, &SensorRecord::Caption);
}

Text SensorUnit(std::string_view name) {
    return SensorText(name, &SensorRecord::Unit);
}

constexpr const char* kUnknown = "\u2013";

/// Only a value that was received is a number.
Text LiveText(std::string_view name) {
    const SensorRecord* sensor = FindSensor(name);
    if (sensor == nullptr) return kUnknown;
    if (!SensorShows(*sensor)) return "Off";
    if (!SensorKnown(*sensor)) return kUnknown;
    return std::nullopt;
}

template <bool Greatest>
Text ExtremeText(std::string_view name) {
    const SensorRecord* sensor = FindSensor(name);
    if (sensor == nullptr || !SensorExtreme(*sensor, Greatest)) return kUnknown;
    return std::nullopt;
}

Text OfReport(std::string_view) {
    return ReportStatus();
}

Text OfDiagnosis(std::string_view name) {
    return DiagnosisText(name);
}

/// Shown once: the next refresh finds it empty.
Text LastCommandOnce(std::string_view) {
    return std::exchange(basGlobal.LastCommand, {});
}

Text LanguageName(std::string_view) {
    return CurrentLanguage();
}

Text UnitsName(std::string_view) {
    return CurrentUnits();
}

Text WordText(std::string_view name);

struct TextWord {
    FunctionWord Name;
    Text (*Evaluate)(std::string_view argument);
};

using enum Takes;

// The words of a text function, in the order in which they are tested.
constexpr TextWord kTextWords[] = {
    {{"listentry", Number, "0",
      "an entry of the list, counted from the selected one: `listentry_1` is the one below it"},
     ListEntryText},
    {{"timedate", Nothing, "", "time and date: `14:05:33 , 15.11.2026`"}, TimeAndDate},
    {{"time", Nothing, "", "the time: `14:05:33`"}, Time},
    {{"date", Nothing, "", "the date: `15.11.2026`"}, Date},
    {{"indexlabel", Nothing, "", "place of the selected entry in a media list: `3/12`"},
     IndexLabel},
    {{"currentfolder", Nothing, "", "the folder that a media list shows"}, CurrentFolder},
    {{"caption", Nothing, "", "always `Off`"}, Caption},
    {{"obd", Fixed, "status", "the state of the link: `Receiving Data.`"}, LinkStatus},
    {{"obd", Fixed, "reason", "why the link is down or brings no values; empty while all is well"},
     LinkReason},
    {{"obd", Fixed, "finding",
      "where the search for the interface is, and what came of it, in up to several lines"},
     LinkSearch},
    {{"obd", Fixed, "code", "the selected trouble code with its whole text, which stands still"},
     SelectedCode},
    {{"obd", Fixed, "interface", "what the interface calls itself"}, InterfaceName},
    {{"obd", Fixed, "protocol", "the protocol of the vehicle's bus"}, ProtocolName},
    {{"diagnosis", Fixed, "progress",
      "where the diagnosis is: `Stored codes  9/18`; afterwards how it ended"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "vin",
      "the vehicle identification number; like most of these why it is missing, or a dash"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "vincheck", "whether its check digit holds"}, OfDiagnosis},
    {{"diagnosis", Fixed, "protocol",
      "the protocol of the vehicle's bus, when the diagnosis was made"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "interface", "what the interface called itself then"}, OfDiagnosis},
    {{"diagnosis", Fixed, "units", "the control units that answered"}, OfDiagnosis},
    {{"diagnosis", Fixed, "voltage", "the battery's voltage, as the interface measured it"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "ready",
      "whether the vehicle is ready for inspection, and what is in the way"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "lamp", "`On` or `Off`: the malfunction lamp"}, OfDiagnosis},
    {{"diagnosis", Fixed, "stored", "number of stored codes, of all control units"}, OfDiagnosis},
    {{"diagnosis", Fixed, "pending", "number of pending codes"}, OfDiagnosis},
    {{"diagnosis", Fixed, "permanent", "number of permanent codes, which clearing leaves"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "distanceclear", "distance since the codes were cleared"}, OfDiagnosis},
    {{"diagnosis", Fixed, "timeclear", "running time since then"}, OfDiagnosis},
    {{"diagnosis", Fixed, "distancelamp", "distance with the lamp on"}, OfDiagnosis},
    {{"diagnosis", Fixed, "timelamp", "running time with the lamp on"}, OfDiagnosis},
    {{"diagnosis", Fixed, "odometer", "what the odometer shows"}, OfDiagnosis},
    {{"diagnosis", Fixed, "missing", "what the diagnosis lacks and why, a line each"}, OfDiagnosis},
    {{"diagnosis", Fixed, "time", "when the diagnosis was made: `14:05:33 , 15.11.2026`"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "selected", "the whole text of the selected entry of a list `diagnosis`"},
     OfDiagnosis},
    {{"diagnosis", Fixed, "severity",
      "what the selected code means to the driver: `Have it seen soon`"},
     OfDiagnosis},
    {{"report", Fixed, "file",
      "the file name of the last report; how far it is, or why there is none"},
     OfReport},
    {{"sensorcaption", Sensor, "rpm.engine", "the caption of a sensor, in the user's language"},
     SensorCaption},
    {{"sensorunit", Sensor, "rpm.engine", "the unit of a sensor"}, SensorUnit},
    {{"live", Sensor, "rpm.engine",
      "the value of a sensor, in its unit; a dash while it is not known, `Off` while it is off"},
     LiveText},
    {{"lowest", Sensor, "rpm.engine",
      "the least value of a sensor since the connect; a dash while there is none"},
     ExtremeText<false>},
    {{"highest", Sensor, "rpm.engine", "its greatest value since the connect"}, ExtremeText<true>},
    {{"setting", Fixed, "language", "name of the language"}, LanguageName},
    {{"setting", Fixed, "units", "the units: `metric` or `imperial`"}, UnitsName},
    {{"word", WordName, "Trouble codes",
      "a text in the user's language, by its English wording; with a label function behind it, "
      "what "
      "that one shows: `word_obd_status`"},
     WordText},
    {{"function", Nothing, "", "the command that ran last, shown once"}, LastCommandOnce},
};

/// The text of the row that answers.
template <typename Condition>
Text Evaluate(const FunctionText& text, Condition allowed) {
    for (const TextWord& row : kTextWords) {
        if (allowed(row.Name) && Names(row.Name, text)) return row.Evaluate(text.Argument);
    }
    return std::nullopt;
}

std::string ShownNumber(float number, std::optional<int> decimals) {
    return ReplaceAll(decimals ? FixedNumber(number, *decimals) : GeneralNumber(number), ".",
                      basGlobal.DecimalSign);
}

/// What a function behind "word_" shows. Only one with an argument is taken for a function:
/// "word_Time" is a word, not the clock.
Text BehindWord(std::string_view name, std::optional<int> decimals) {
    if (name.find('_') == std::string_view::npos) return std::nullopt;
    std::string function = EvaluatedForm(std::string(name));
    Text text = Evaluate(SplitAtFirst(function),
                         [](const FunctionWord& row) { return row.Argument != Nothing; });
    if (text) return text;
    const float number = LabelNumber(function);
    return number != kNoNumber ? Text(ShownNumber(number, decimals)) : std::nullopt;
}

std::string Translated(std::string_view name, std::optional<int> decimals) {
    const Text shown = BehindWord(name, decimals);
    return Word(shown ? *shown : name);
}

Text WordText(std::string_view name) {
    return Translated(name, std::nullopt);
}

constexpr std::string_view kWordPrefix = "word_";

}  // namespace

std::string EvaluatedForm(std::string function) {
    const std::size_t length = kWordPrefix.size();
    if (EqualsNoCase(std::string_view(function).substr(0, length), kWordPrefix))
        function.replace(0, length, kWordPrefix);
    else
        LowerCase(function);
    return function;
}

std::string LabelTextFunction(std::string& function) {
    function = EvaluatedForm(std::move(function));
    return Evaluate(SplitAtFirst(function), [](const FunctionWord&) { return true; })
        .value_or(kNoText);
}

std::string LabelText(std::string& function, std::optional<int> decimals) {
    std::string text = LabelTextFunction(function);
    if (decimals && function.starts_with(kWordPrefix))
        return Translated(std::string_view(function).substr(kWordPrefix.size()), decimals);
    if (text != kNoText) return text;
    const float number = LabelNumber(function);
    if (number != kNoNumber) return ShownNumber(number, decimals);
    return ImageState(function) ? "On" : "Off";
}

std::vector<FunctionWord> TextFunctionRows() {
    return NamesOf(kTextWords);
}

}  // namespace dravik
