#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/ChartPicture.h"
#include "platform/FormTimer.h"
#include "platform/serial/PortPresence.h"
#include "platform/serial/SerialPort.h"

/// The state that all modules share. It is created at start-up and lives until the program ends;
/// everything runs on the user-interface thread, so it is read and written directly.
namespace dravik {

/// Link states: `ConnState` is also the index of its status text.
enum : std::uint8_t {
    kNotConnected = 1,
    kPortNotFound = 2,
    kConnected = 3,
    kConnecting = 4,
    kInitializing = 8,
    kReceivingData = 9,
    kReadingCodes = 16,
    kClearingCodes = 18,
    kDiagnosing = 20,
};

/// Bits of the Options/Misc setting.
enum : std::int16_t {
    kMiscResumeSensors = 1,
    kMiscResumeMenu = 2,
    kMiscAutoConnect = 4,
    kMiscHidePointer = 8,
    kMiscMouseWheel = 16,
};

constexpr int kPidCount = 80;       ///< PIDs 00 to 4F
constexpr int kDataBytes = 4;       ///< that the number of a reply holds
constexpr int kSensorLimit = 91;    ///< sensors 0 to 90
constexpr int kPanelTiles = 4;      ///< values that the user chooses for the page "panel"
constexpr int kCodeLimit = 129;     ///< trouble codes 0 to 128
constexpr int kChartLimit = 7;      ///< charts 0 to 6
constexpr int kGaugeLimit = 17;     ///< gauges 0 to 16
constexpr int kLabelLimit = 41;     ///< labels 0 to 40
constexpr int kChartSamples = 520;  ///< of which the last two are the scale labels
constexpr int kListSlots = 9;       ///< skin lists 0 to 8
constexpr int kCodeListSlot = 7;    ///< the list of trouble codes
constexpr int kDiagnosisSlot = 8;   ///< the list that shows a section of the diagnosis
/// The lists that show folders: gallery, playlist, media, newfiles.
inline constexpr std::array kFolderSlots = {1, 2, 3, 6};
constexpr std::uint16_t kNoFocus = 65535;

/// Some of the data bytes of a reply, counted from 0.
struct ByteRange {
    int First = 0;
    int Last = 0;
    std::optional<std::uint32_t> Absent{};  ///< the number of them that says that there is no value
};

/// The least and the greatest of some numbers; of none while Least is above Greatest.
struct Extremes {
    std::uint32_t Least = UINT32_MAX;
    std::uint32_t Greatest = 0;
};
/// Those of each range of data bytes, by its first and its last byte.
using RangeExtremes = std::array<std::array<Extremes, kDataBytes>, kDataBytes>;

/// One live quantity that a skin can show: display value = Factor * raw + Offset.
struct SensorRecord {
    std::string Function;  ///< name used by skins, lower case, UTF-8
    std::string Source;    ///< kind ("obd" or "can"), "_", PID in two hex digits
    float Factor = 0;
    float Offset = 0;
    float Min = 0;
    float Max = 0;
    std::string Caption;
    std::string Unit;
    std::optional<ByteRange> Bytes;  ///< of the reply that are the raw number; nothing: all
    std::optional<int> Decimals;     ///< that its value is worth; nothing: it does not say
    bool Active = false;
    std::int32_t Raw = 0;  ///< last value received for a "can" source
};

/// The samples and settings of one chart.
struct ChartRecord {
    std::array<float, kChartSamples> Samples{};  ///< not a number where no value was known
    bool Paused = false;
    int Filled = 0;           ///< columns that hold a value, counted from the newest
    std::int64_t Column = 0;  ///< number of the newest column, counted from the clock's zero
    double LastTime = 0;      ///< seconds of the clock at the last value
    float LastValue = 0;      ///< not a number while none is known
    int TimeSpan = 0;         ///< seconds across that the columns stand for
    int Changes = 0;          ///< counted up whenever the samples change, for whoever draws them
};

/// One entry of a skin list.
struct ListEntry {
    std::string Text;
    std::string Picture;  ///< picture key, such as "folder" or "mp3"
    std::string Tag;      ///< what the entry stands for
};

/// A skin list: its entries exist whether or not the page shows them.
struct ListSlot {
    std::vector<ListEntry> Entries;
    int Selected = 0;    ///< 1-based, 0 = none
    std::string Folder;  ///< folder being shown, empty when none
    int Changes = 0;     ///< counted up whenever the entries change, for whoever shows them
};

/// What the command line asked for, and what was found when the program was launched.
struct LaunchOptions {
    std::string DemoDevice;  ///< device of the built-in virtual vehicle; empty without --demo
    std::string Skin;        ///< overrides Options/Skin when not empty
    std::string Language;    ///< overrides Options/Language when not empty
    /// The installed skins and languages, which the program folder lies over (see DataFiles.h);
    /// empty when it is not the user's own.
    std::string InstalledData{};
    /// The user's folder could not be given its settings: those installed are read, none are kept.
    bool KeepsNothing = false;
    std::string Commit{};  ///< that the program was built from; empty when not known
};

/// What went wrong with the link last, or stands in its way; `ReasonText` says it in words.
enum class LinkFault : std::uint8_t {
    None,
    NotYet,        ///< nobody has asked for a connection since the start
    LetGo,         ///< the driver has disconnected
    NoPortChosen,  ///< the settings name no port
    NoSuchPort,    ///< nothing of that name is there
    NoPermission,
    PortInUse,
    NoSuchSpeed,
    Refused,
    UnknownHost,
    NoWayToHost,
    NotOpened,        ///< for a reason that the system does not tell
    InterfaceSilent,  ///< opened, but no answer to the first commands
    InterfaceUnread,  ///< opened, but what it sends cannot be read
    VehicleSilent,    ///< the interface is there and does not answer for the vehicle
    VehicleUnread,
    VehicleRefuses,
    VehicleBusy,  ///< it puts off its answer again and again
    NotReached,   ///< the interface says why it does not reach the vehicle
    NoData,       ///< the vehicle's bus is there, but nobody on it answers
    LineLost,     ///< the device disappeared
};

/// A port that may be offered or searched, and the device that it stands for.
struct PortCandidate {
    int Number = 0;
    std::string Device;
    bool Ours = false;  ///< the interface is connected through it, so it is there
    PortState State = PortState::Present;
};

/// What `ReasonText` is made from.
struct LinkReport {
    LinkFault Fault = LinkFault::NotYet;
    std::array<std::string, 2> Values;  ///< what its text names: the device, seconds, words
    std::string Awaited;                ///< command whose answer is waited for; empty = the bus
    double AwaitedSince = 0;            ///< HighResTimer, 0 = nothing is waited for
    int AwaitedSeconds = 0;             ///< how long the wait may take
    double NoValueSince = 0;            ///< HighResTimer when replies began to bring no value
    std::string NoValueWords;           ///< what the interface says instead
};

/// How the messages of the vehicle's bus look.
enum class Bus : std::uint8_t { Unknown, J1850, Iso9141, Keyword, Can11, Can29 };

/// Where a trouble code comes from, as far as the read has found out.
struct CodeOrigin {
    std::uint32_t Unit = 0;    ///< address of the control unit; 0 = not known
    std::optional<int> Frame;  ///< freeze frame that this code caused
    /// Replies to live requests do not tell the units apart: of a frame whose number another unit
    /// has, too, the numbers were read with the codes, by PID.
    std::optional<std::map<int, std::int32_t>> Kept{};
};

/// An interface that a search has found.
struct FoundInterface {
    int Port = 0;  ///< its COM number; 0 for the vehicle of the demo
    std::string Device;
    int Baudrate = 0;  ///< 0 where the device has no speed
    std::string Name;  ///< what it calls itself
};

/// The search for an interface, see `FindInterface`.
struct InterfaceSearch {
    bool Wanted = false;  ///< the next step of the link begins it
    bool Running = false;
    bool Cancelled = false;
    bool Reconnects = false;  ///< the link was up or on its way before
    std::vector<PortCandidate> Ports;
    std::function<void(const std::optional<FoundInterface>& found)> Finished;
    std::string Text;  ///< where it is, or what came of it
};

struct Diagnosis;  // obd/Diagnosis.h

/// The diagnosis of the vehicle, see `StartDiagnosis`.
struct DiagnosisState {
    std::shared_ptr<Diagnosis> Found;  ///< by the last run, or by the one under way; null before
    bool Cancelled = false;            ///< the run is to end
    bool OfThisVehicle = false;        ///< it was made since the last connect
    bool Stale = false;                ///< the codes were cleared since
    int Step = 0;                      ///< of the run, from 1; 0 before the first
    double StepDone = 0;               ///< share of the step that is done, 0 to 1
    std::string Section;               ///< that the list shows; empty before a page has shown one
    int ShownCode = -1;                ///< index of the code whose frame was opened last
};

/// How far a report is.
enum class ReportStage : std::uint8_t { None, Diagnosing, ReadingValues };

/// What has come of a report.
enum class ReportOutcome : std::uint8_t { None, Written, NoDiagnosis, Cancelled, NotWritten };

/// The report that is being made, or was made last, see `RequestReport`.
struct ReportJob {
    ReportStage Stage = ReportStage::None;
    ReportOutcome Outcome = ReportOutcome::None;
    bool AsText = false;
    std::string File;                   ///< asked for; empty: the report finds a name of its own
    std::string Status;                 ///< how far it is, or what came of it
    std::vector<ChartPicture> Charts;   ///< as they were when it was asked for
    std::shared_ptr<Diagnosis> Before;  ///< the diagnosis that was there then
    std::vector<int> Borrowed;          ///< PIDs that are polled only for it
    double ReadingSince = 0;            ///< HighResTimer
    double RoundBegan = 0;              ///< the round of requests that was under way last
    int Rounds = 0;                     ///< that have begun since ReadingSince
};

struct GlobalState {
    // Paths.
    std::string ProgramFolder;  ///< without a separator at its end
    std::string IniFile;        ///< the settings file
    std::string SkinPath;       ///< skins of the program folder, with a separator at its end
    std::string LanguagePath;   ///< languages of the program folder, with a separator at its end
    std::string LanguageFile;   ///< names the sensor files and the description file
    std::string SensorFile;
    std::string DescriptionFile;  ///< trouble code texts
    std::string SkinFile;
    std::string ImageFolder;     ///< with a separator at its end; may lie over an installed one
    std::string SaveFolder;      ///< where snapshots go
    std::string OSKPath;         ///< on-screen keyboard program
    bool OSKFound = false;       ///< it was there when the settings were loaded
    bool ImperialUnits = false;  ///< those of the sensor file
    std::string Units;  ///< "metric" or "imperial"; anything else: as the language has them
    LaunchOptions Launch;

    // Fixed texts.
    std::array<std::string, kListSlots> FolderName;
    std::array<std::string, 24> StatusText;

    std::string DecimalSign = ".";  ///< of the numbers on the screen; the main window sets it

    // Settings.
    std::int16_t Misc = 0;
    float ImageScale = 0;  ///< ScaleImageWidth / 100
    bool HidePointer = false;
    bool NightNow = false;   ///< the clock says that the skin for the night is to be shown
    std::string ChosenSkin;  ///< by a command, until day or night begins; empty when none was

    // Life of the program.
    bool StartupFlag = false;
    bool ResumeFlag = false;
    bool Welcoming = false;  ///< a new user has not left the pages of the welcome yet
    bool Closing = false;    ///< the program is ending: every wait ends at once

    // Link.
    std::uint8_t ConnState = 0;
    std::array<bool, kPidCount> PidWanted{};
    std::int16_t PidCursor = 0;
    bool AwaitingReply = false;
    bool StepOwed = false;  ///< a step found a reply outstanding and had to pass
    std::array<std::int32_t, kPidCount> LiveRaw{};
    std::array<std::int32_t, kPidCount> FreezeRaw{};
    /// How many data bytes these numbers were made of; 0 where that cannot be told.
    std::array<std::uint8_t, kPidCount> LiveSize{};
    std::array<std::uint8_t, kPidCount> FreezeSize{};
    std::string FreezeFrameNo;
    std::int16_t DtcCount = 0;
    bool MilOn = false;
    std::array<std::string, kCodeLimit> DtcList;
    /// By the standard: where the codes of DtcList come from.
    std::array<CodeOrigin, kCodeLimit> CodeOrigins;
    bool StandardDecoding = false;  ///< OBD/Decoding: replies are taken apart by the standard
    Bus VehicleBus = Bus::Unknown;  ///< by the standard: asked when the link is connected
    std::string InterfaceId;
    std::string ProtocolText;
    std::string CommTrace;
    std::string RxBuffer;       ///< received by the event path since the last whole reply
    int ReconnectSeconds = 0;   ///< OBD/Reconnect; 0 = a lost link stays lost
    bool ConnectTried = false;  ///< a connect has run since start-up
    bool LetGo = false;         ///< the driver has disconnected: nothing connects but a new request
    bool CutShort = false;      ///< a command was under way when the link was closed
    bool StepCancelled = false;  ///< meanwhile, so that the step that runs sets no state any more
    LinkReport Report;
    InterfaceSearch Search;
    DiagnosisState Diagnosing;
    ReportJob Reporting;
    bool CodesRead = false;  ///< the trouble codes were read since the last connect
    double FailedSince = 0;  ///< HighResTimer when the link was first found failed, 0 = it is not
    double RequestedAt = 0;  ///< HighResTimer of the last live request
    /// The last live request: mode, PID and, of mode 2, the freeze frame.
    std::vector<std::uint8_t> Requested;
    /// HighResTimer of each PID's last value, 0 = none since the connect or for this frame.
    std::array<double, kPidCount> LiveAt{};
    std::array<double, kPidCount> FreezeAt{};
    /// The least and the greatest live number of each PID since the connect, where LiveAt is not 0.
    std::array<std::int32_t, kPidCount> LiveLeast{};
    std::array<std::int32_t, kPidCount> LiveGreatest{};
    std::array<RangeExtremes, kPidCount> LiveRanges{};  ///< the same of their data bytes
    double RoundBegan = 0;      ///< HighResTimer when the requests began at the first PID again
    double RoundSeconds = 0;    ///< how long the last whole round of requests took
    bool ValuesCame = false;    ///< a live reply since the last connect brought a value
    double ValuelessSince = 0;  ///< HighResTimer when replies began to bring no value, 0 = they do
    SerialPort comOBD{9600};
    SerialPort comCAN{57600};  ///< never opened

    // Pages and selection.
    std::string CurrentMenu;
    std::string PreviousMenu;
    std::string CurrentBox;
    std::string LastCommand;
    std::vector<std::string> ButtonTag;  ///< function text of each button in use
    std::vector<std::string> SliderTag;  ///< function text of each slider in use
    std::uint16_t FocusedButton = kNoFocus;
    std::uint16_t FocusedSlider = kNoFocus;
    int FocusedList = -1;  ///< slot of the list that has the focus, -1 = none

    // Sensors, charts and lists.
    std::array<SensorRecord, kSensorLimit> Sensors;
    std::int16_t SensorCount = 0;
    std::string PickedSensor;                           ///< shown large on the page "value"
    std::array<std::string, kPanelTiles> PanelSensors;  ///< of the page "panel", tiles 1 to 4
    int PanelTile = 1;                                  ///< whose sensor is being chosen
    std::array<ChartRecord, kChartLimit> Charts;
    int ChartCount = 0;
    std::array<ListSlot, kListSlots> Lists;
    std::map<std::string, std::string>
        EditedTexts;       ///< text box contents by function, kept all run
    int CurrentList = -1;  ///< slot of the list built last on the page, -1 = none

    // Form timers.
    FormTimer tiStartup{1000, true};
    FormTimer tiMain{100};
    FormTimer tiAux{1000};
    FormTimer tiHardware{50};
    FormTimer tiTimeout{1000};
    FormTimer tiSkinReload{50};
    FormTimer tiDTCScroll{500};
    FormTimer tiKeyrepeat{0};
    FormTimer tiNight{5000};
    FormTimer tiReport{200};
};

/// The one instance. A test puts all of it back with `basGlobal = GlobalState{}` and InitGlobals.
inline GlobalState basGlobal;

// The parts of the tables that are in use.
inline std::span<SensorRecord> SensorsInUse() {
    return std::span(basGlobal.Sensors).first(static_cast<std::size_t>(basGlobal.SensorCount));
}
inline std::span<ChartRecord> ChartsInUse() {
    return std::span(basGlobal.Charts).first(static_cast<std::size_t>(basGlobal.ChartCount));
}
/// The stored trouble codes, no more than the list holds.
inline std::span<std::string> CodesInUse() {
    const auto count = static_cast<std::size_t>(basGlobal.DtcCount);
    return std::span(basGlobal.DtcList).first(std::min<std::size_t>(count, kCodeLimit));
}

/// Fills the paths from the program folder and Launch, FolderName and StatusText, and sets
/// StartupFlag.
void InitGlobals(const std::string& programFolder);

/// Seconds, with four decimal places, of the high-resolution performance counter.
double HighResTimer();

}  // namespace dravik
