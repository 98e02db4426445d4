#include "obd/diagnosis/DiagnosisRun.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "obd/LinkFaults.h"
#include "obd/LinkStep.h"
#include "obd/basOBD.h"
#include "obd/diagnosis/Decoders.h"
#include "obd/diagnosis/VehicleQuery.h"
#include "platform/At.h"

namespace dravik {

namespace {

using Part = DiagnosisPart;

// The services of the standard that a diagnosis uses.
constexpr std::uint8_t kLiveData = 0x01;
constexpr std::uint8_t kFrameData = 0x02;
constexpr std::uint8_t kTestData = 0x06;
constexpr std::uint8_t kVehicleData = 0x09;

constexpr int kMaskSpan = 32;

using ByUnit = std::map<std::uint32_t, std::vector<MessageBytes>>;

/// One run: asks part by part and puts down what comes, so that whatever ends it leaves what it
/// has found so far.
class Run {
 public:
    explicit Run(Diagnosis& found) : found_(found) {}

    /// @param refresh  what a vehicle always is has been read already and stays
    void ReadAll(bool refresh);
    /// @return whether the link can be used again
    bool Finish() { return query_.Finish(); }
    std::optional<Lack> Over() const { return query_.Over(); }

 private:
    struct Step {
        Part What;
        void (Run::*Read)();
        bool StaysSo = false;  ///< as long as it is the same vehicle
    };
    static const Step kSteps[];

    void Miss(Part part, Lack why);
    void MissIfOver(Part part);
    ControlUnit& UnitOf(std::uint32_t address);
    std::vector<UnitMessage> Take(Part part, const Bytes& request, Promise promise);
    void Progress(std::size_t done, std::size_t of);

    /// What is lacking of a part that depends on a mask; nothing when the mask has it.
    std::optional<Lack> LackByMask(const SupportMask& mask, std::uint8_t bit,
                                   const std::optional<Lack>& maskFault) const;
    std::optional<Lack> ReadMask(std::uint8_t service, SupportMask& mask);
    SupportMask FrameMask(std::uint8_t frame);

    void ReadProtocol();
    void ReadVoltage();
    void ReadSupported();
    void ReadReadiness();
    void ReadThisDrive();
    void ReadMonitors(Part part, std::uint8_t pid, std::optional<MonitorStatus>& status);
    std::optional<ByUnit> ReadVehicleData(Part part, std::uint8_t item);
    void ReadVin();
    void ReadCalibrations();
    void ReadUnitNames();
    template <CodeKind kKind, Part kPart, std::uint8_t kService>
    void ReadCodes();
    void ReadFrames();
    bool FindFrames(std::uint8_t number);
    void ReadFrameValues(std::uint8_t number);
    template <std::optional<int> Diagnosis::*kField, Part kPart, std::uint8_t kPid>
    void ReadCounter();
    void ReadOdometer();
    void ReadTests();

    Diagnosis& found_;
    VehicleQuery query_;
    std::optional<Lack> liveFault_, vehicleDataFault_, testFault_;
};

constexpr Run::Step Run::kSteps[] = {
    {Part::Protocol, &Run::ReadProtocol},
    {Part::Voltage, &Run::ReadVoltage},
    {Part::Supported, &Run::ReadSupported},
    {Part::Readiness, &Run::ReadReadiness},
    {Part::ThisDrive, &Run::ReadThisDrive},
    {Part::Vin, &Run::ReadVin, true},
    {Part::Calibrations, &Run::ReadCalibrations, true},
    {Part::UnitNames, &Run::ReadUnitNames, true},
    {Part::StoredCodes, &Run::ReadCodes<CodeKind::Stored, Part::StoredCodes, 0x03>},
    {Part::PendingCodes, &Run::ReadCodes<CodeKind::Pending, Part::PendingCodes, 0x07>},
    {Part::PermanentCodes, &Run::ReadCodes<CodeKind::Permanent, Part::PermanentCodes, 0x0A>},
    {Part::FreezeFrames, &Run::ReadFrames},
    {Part::DistanceWithLamp,
     &Run::ReadCounter<&Diagnosis::DistanceWithLamp, Part::DistanceWithLamp, 0x21>},
    {Part::TimeWithLamp, &Run::ReadCounter<&Diagnosis::TimeWithLamp, Part::TimeWithLamp, 0x4D>},
    {Part::DistanceSinceClear,
     &Run::ReadCounter<&Diagnosis::DistanceSinceClear, Part::DistanceSinceClear, 0x31>},
    {Part::TimeSinceClear,
     &Run::ReadCounter<&Diagnosis::TimeSinceClear, Part::TimeSinceClear, 0x4E>},
    {Part::Odometer, &Run::ReadOdometer},
    {Part::Tests, &Run::ReadTests},
};

void Run::ReadAll(bool refresh) {
    static_assert(std::size(kSteps) == kDiagnosisParts);
    DiagnosisState& state = basGlobal.Diagnosing;
    for (const Step& step : kSteps) {
        if (refresh && step.StaysSo) continue;
        if (const auto over = query_.Over()) {
            Miss(step.What, *over);
            continue;
        }
        state.Step = static_cast<int>(step.What) + 1;
        state.StepDone = 0;
        (this->*step.Read)();
        RenewDiagnosisList();
    }
    if (query_.Over()) return;
    state.Step = kDiagnosisParts;
    state.StepDone = 1;
}

/// The first reason that is met counts.
void Run::Miss(Part part, Lack why) {
    if (!LackOf(found_, part)) found_.Missing.push_back({part, why});
}

void Run::MissIfOver(Part part) {
    if (const auto over = query_.Over()) Miss(part, *over);
}

ControlUnit& Run::UnitOf(std::uint32_t address) {
    auto place = std::lower_bound(
        found_.Units.begin(), found_.Units.end(), address,
        [](const ControlUnit& unit, std::uint32_t wanted) { return unit.Address < wanted; });
    if (place == found_.Units.end() || place->Address != address)
        place = found_.Units.insert(place, ControlUnit{address, {}, {}, {}});
    return *place;
}

/// The messages that answer, with what is lacking put down for the part.
std::vector<UnitMessage> Run::Take(Part part, const Bytes& request, Promise promise) {
    Findings findings = query_.Ask(request, promise);
    for (const UnitMessage& message : findings.Messages) UnitOf(message.Unit);
    if (findings.Fault) Miss(part, *findings.Fault);
    return std::move(findings.Messages);
}

void Run::Progress(std::size_t done, std::size_t of) {
    basGlobal.Diagnosing.StepDone = static_cast<double>(done) / static_cast<double>(of);
}

// The interface -----------------------------------------------------------------------------------

void Run::ReadProtocol() {
    found_.Protocol = basGlobal.ProtocolText;
}

void Run::ReadVoltage() {
    const auto reply = query_.Command("ATRV");
    found_.Voltage = reply ? VoltsIn(*reply) : std::nullopt;
    if (found_.Voltage) return;
    Miss(Part::Voltage, reply ? Lack::Unreadable : query_.Over().value_or(Lack::NoAnswer));
}

// What there is -----------------------------------------------------------------------------------

std::optional<Lack> Run::ReadMask(std::uint8_t service, SupportMask& mask) {
    std::optional<std::uint8_t> first = 0;
    Promise promise = service == kLiveData ? Promise::Given : Promise::None;
    while (first) {
        Findings findings = query_.Ask({service, *first}, promise);
        bool any = false;
        for (const UnitMessage& message : findings.Messages) {
            UnitOf(message.Unit);
            any |= AddSupported(message.Data, mask);
        }
        if (!any && !findings.Fault) findings.Fault = Lack::Unreadable;
        if (findings.Fault) return findings.Fault;
        first = NextMask(mask, *first);
        promise = Promise::Given;
    }
    return std::nullopt;
}

void Run::ReadSupported() {
    struct Service {
        std::uint8_t Number;
        SupportMask Diagnosis::*Mask;
        std::optional<Lack> Run::*Fault;
    };
    constexpr Service kServices[] = {
        {kLiveData, &Diagnosis::LiveData, &Run::liveFault_},
        {kVehicleData, &Diagnosis::Information, &Run::vehicleDataFault_},
        {kTestData, &Diagnosis::TestMonitors, &Run::testFault_},
    };
    std::size_t done = 0;
    for (const auto& [number, mask, fault] : kServices) {
        (found_.*mask).reset();
        this->*fault = ReadMask(number, found_.*mask);
        // That a service is not there is told by the parts that need it.
        if (this->*fault && *(this->*fault) != Lack::NotSupported)
            Miss(Part::Supported, *(this->*fault));
        Progress(++done, std::size(kServices));
    }
}

std::optional<Lack> Run::LackByMask(const SupportMask& mask, std::uint8_t bit,
                                    const std::optional<Lack>& maskFault) const {
    if (mask.test(bit)) return std::nullopt;
    return maskFault.value_or(Lack::NotSupported);
}

// Monitors and counters ---------------------------------------------------------------------------

void Run::ReadReadiness() {
    ReadMonitors(Part::Readiness, 0x01, found_.SinceClear);
}

void Run::ReadThisDrive() {
    ReadMonitors(Part::ThisDrive, 0x41, found_.ThisDrive);
}

void Run::ReadMonitors(Part part, std::uint8_t pid, std::optional<MonitorStatus>& status) {
    if (const auto why = LackByMask(found_.LiveData, pid, liveFault_)) return Miss(part, *why);
    for (const UnitMessage& message : Take(part, {kLiveData, pid}, Promise::Given)) {
        if (auto monitors = MonitorsIn(message.Data))
            AddMonitors(status, std::move(*monitors));
        else
            Miss(part, Lack::Unreadable);
    }
}

template <std::optional<int> Diagnosis::*kField, Part kPart, std::uint8_t kPid>
void Run::ReadCounter() {
    constexpr std::size_t kLength = 4;
    if (const auto why = LackByMask(found_.LiveData, kPid, liveFault_)) return Miss(kPart, *why);
    for (const UnitMessage& message : Take(kPart, {kLiveData, kPid}, Promise::Given)) {
        if (message.Data.size() < kLength)
            Miss(kPart, Lack::Unreadable);
        else if (!(found_.*kField))  // the engine's, which has the lowest address
            found_.*kField = message.Data[2] << 8 | message.Data[3];
    }
}

void Run::ReadOdometer() {
    constexpr std::uint8_t kPid = 0xA6;
    constexpr std::size_t kLength = 6;
    constexpr double kKilometres = 0.1;
    if (const auto why = LackByMask(found_.LiveData, kPid, liveFault_))
        return Miss(Part::Odometer, *why);
    for (const UnitMessage& message : Take(Part::Odometer, {kLiveData, kPid}, Promise::Given)) {
        if (message.Data.size() < kLength) {
            Miss(Part::Odometer, Lack::Unreadable);
            continue;
        }
        double count = 0;
        for (std::size_t i = 2; i < kLength; ++i) count = count * 256 + message.Data[i];
        if (!found_.Odometer) found_.Odometer = count * kKilometres;
    }
}

// What vehicle it is ------------------------------------------------------------------------------

std::optional<ByUnit> Run::ReadVehicleData(Part part, std::uint8_t item) {
    if (const auto why = LackByMask(found_.Information, item, vehicleDataFault_)) {
        Miss(part, *why);
        return std::nullopt;
    }
    ByUnit units;
    for (UnitMessage& message : Take(part, {kVehicleData, item}, Promise::Given))
        units[message.Unit].push_back(std::move(message.Data));
    return units;
}

void Run::ReadVin() {
    constexpr std::uint8_t kVin = 0x02;
    constexpr std::size_t kLength = 17;
    const auto units = ReadVehicleData(Part::Vin, kVin);
    if (!units) return;
    for (const auto& [unit, messages] : *units) {
        const auto texts = TextsIn(messages, kLength);
        if (!texts || texts->size() != 1 || texts->front().size() != kLength) continue;
        found_.Vin = texts->front();
        found_.Check = CheckVin(*found_.Vin);
        // Another unit's may be of the car that it was built for first.
        if (found_.Check != VinCheck::NotANumber) return;
    }
    if (!found_.Vin) Miss(Part::Vin, Lack::Unreadable);
}

void Run::ReadCalibrations() {
    constexpr std::uint8_t kIdentifications = 0x04;
    constexpr std::uint8_t kNumbers = 0x06;
    constexpr std::size_t kLength = 16;
    const auto units = ReadVehicleData(Part::Calibrations, kIdentifications);
    if (!units) return;
    for (const auto& [unit, messages] : *units) {
        if (auto texts = TextsIn(messages, kLength))
            UnitOf(unit).Calibrations = std::move(*texts);
        else
            Miss(Part::Calibrations, Lack::Unreadable);
    }
    if (!found_.Information.test(kNumbers)) return;
    for (const auto& [unit, messages] :
         ReadVehicleData(Part::Calibrations, kNumbers).value_or(ByUnit())) {
        if (auto numbers = NumbersIn(messages))
            UnitOf(unit).Verifications = std::move(*numbers);
        else
            Miss(Part::Calibrations, Lack::Unreadable);
    }
}

void Run::ReadUnitNames() {
    constexpr std::uint8_t kName = 0x0A;
    constexpr std::size_t kLength = 20;
    const auto units = ReadVehicleData(Part::UnitNames, kName);
    if (!units) return;
    for (const auto& [unit, messages] : *units) {
        const auto texts = TextsIn(messages, kLength);
        if (texts && !texts->empty())
            UnitOf(unit).Name = UnitNameIn(texts->front());
        else
            Miss(Part::UnitNames, Lack::Unreadable);
    }
}

// Trouble codes and their frames ------------------------------------------------------------------

template <CodeKind kKind, Part kPart, std::uint8_t kService>
void Run::ReadCodes() {
    // A unit without codes need not answer on the older buses; one that counts some has them.
    const bool counted = kKind == CodeKind::Stored && found_.SinceClear.has_value();
    const bool none = counted && found_.SinceClear->Codes == 0;
    Findings findings = query_.Ask({kService}, counted && !none ? Promise::Given : Promise::None);
    if (findings.Fault && !(none && *findings.Fault == Lack::NotSupported))
        Miss(kPart, *findings.Fault);
    for (const UnitMessage& message : findings.Messages) {
        UnitOf(message.Unit);
        const auto codes = CodesIn(message.Data, query_.Bus());
        if (!codes) Miss(kPart, Lack::Unreadable);
        for (const std::string& code : codes.value_or(std::vector<std::string>()))
            found_.Codes.push_back({code, kKind, message.Unit, std::nullopt});
    }
}

/// Frames are numbered per unit; how many there are nobody tells.
void Run::ReadFrames() {
    std::map<std::uint32_t, std::size_t> stored;
    bool pending = false;
    for (const FoundCode& code : found_.Codes) {
        if (code.Kind == CodeKind::Stored) ++stored[code.Unit];
        pending |= code.Kind == CodeKind::Pending;
    }
    std::size_t most = pending ? 1 : 0;
    for (const auto& [unit, count] : stored) most = std::max(most, count);
    constexpr std::size_t kMostFrames = 256;
    most = std::min(most, kMostFrames);
    for (std::size_t number = 0; number < most && !query_.Over(); ++number) {
        const auto frame = static_cast<std::uint8_t>(number);
        if (!FindFrames(frame)) return;
        Progress(number, most);
        ReadFrameValues(frame);
    }
    MissIfOver(Part::FreezeFrames);
}

/// Which units have a frame of that number, and for which codes.
/// @return false when there is none, and none behind it
bool Run::FindFrames(std::uint8_t number) {
    constexpr std::uint8_t kCausePid = 0x02;
    constexpr std::size_t kLength = 5;
    const Findings findings = query_.Ask({kFrameData, kCausePid, number}, Promise::None);
    const bool ends = findings.Fault == Lack::NotSupported;
    // The first is missed; that there is none behind it only says that there are no more.
    if (findings.Fault && (!ends || number == 0)) Miss(Part::FreezeFrames, *findings.Fault);
    for (const UnitMessage& message : findings.Messages) {
        if (message.Data.size() < kLength) {
            Miss(Part::FreezeFrames, Lack::Unreadable);
            continue;
        }
        const std::uint8_t high = message.Data[3];
        const std::uint8_t low = message.Data[4];
        if (high == 0 && low == 0) continue;
        FreezeFrame& frame = found_.Frames.emplace_back();
        frame.Code = CodeText(high, low);
        frame.Unit = message.Unit;
        frame.Number = number;
        const auto code = std::find_if(
            found_.Codes.begin(), found_.Codes.end(), [&frame](const FoundCode& candidate) {
                return candidate.Kind == CodeKind::Stored && candidate.Unit == frame.Unit &&
                       candidate.Code == frame.Code && !candidate.Frame;
            });
        if (code != found_.Codes.end()) code->Frame = number;
    }
    return !ends;
}

/// What any of the units has in its frame of that number.
SupportMask Run::FrameMask(std::uint8_t frame) {
    SupportMask mask;
    std::optional<std::uint8_t> first = 0;
    while (first) {
        for (const UnitMessage& message :
             Take(Part::FreezeFrames, {kFrameData, *first, frame}, Promise::Given))
            AddSupported(message.Data, mask);
        first = NextMask(mask, *first);
    }
    return mask;
}

void Run::ReadFrameValues(std::uint8_t number) {
    constexpr std::uint8_t kCausePid = 0x02;
    constexpr std::size_t kHead = 3;
    const auto frameOf = [&](std::uint32_t unit) {
        return std::find_if(found_.Frames.begin(), found_.Frames.end(), [&](const auto& frame) {
            return frame.Unit == unit && frame.Number == number;
        });
    };
    const bool any = std::any_of(found_.Frames.begin(), found_.Frames.end(),
                                 [number](const auto& frame) { return frame.Number == number; });
    if (!any) return;
    const SupportMask mask = FrameMask(number);
    for (std::size_t pid = 1; pid < mask.size() && !query_.Over(); ++pid) {
        if (!mask.test(pid) || pid == kCausePid || pid % kMaskSpan == 0) continue;
        const auto byte = static_cast<std::uint8_t>(pid);
        for (const UnitMessage& message :
             Take(Part::FreezeFrames, {kFrameData, byte, number}, Promise::Given)) {
            const auto frame = frameOf(message.Unit);
            if (frame == found_.Frames.end() || message.Data.size() <= kHead) continue;
            frame->Values[byte].assign(message.Data.begin() + kHead, message.Data.end());
        }
    }
}

// Tests -------------------------------------------------------------------------------------------

void Run::ReadTests() {
    const bool can = query_.Bus() == Bus::Can11 || query_.Bus() == Bus::Can29;
    const SupportMask& mask = found_.TestMonitors;
    if (mask.none()) return Miss(Part::Tests, testFault_.value_or(Lack::NotSupported));
    if (testFault_) Miss(Part::Tests, *testFault_);
    std::size_t done = 0;
    for (std::size_t id = 1; id < mask.size() && !query_.Over(); ++id) {
        if (!mask.test(id) || id % kMaskSpan == 0) continue;
        const auto byte = static_cast<std::uint8_t>(id);
        for (const UnitMessage& message : Take(Part::Tests, {kTestData, byte}, Promise::Given)) {
            const auto tests = TestsIn(message.Data, can);
            if (!tests) Miss(Part::Tests, Lack::Unreadable);
            for (TestResult test : tests.value_or(std::vector<TestResult>())) {
                test.Unit = message.Unit;
                found_.Tests.push_back(test);
            }
        }
        Progress(++done, mask.count());
    }
    MissIfOver(Part::Tests);
}

// The step of the link ----------------------------------------------------------------------------

/// A PID of two units' frames of one number is not asked for live: nobody could tell whose it is.
CodeOrigin OriginOf(const FoundCode& code, const Diagnosis& found) {
    CodeOrigin origin{code.Unit, code.Frame};
    const FreezeFrame* own = nullptr;
    bool shared = false;
    for (const FreezeFrame& frame : found.Frames) {
        if (frame.Number != code.Frame) continue;
        if (frame.Unit == code.Unit)
            own = &frame;
        else
            shared = true;
    }
    if (!shared || own == nullptr) return origin;
    auto& kept = origin.Kept.emplace();
    for (const auto& [pid, bytes] : own->Values) {
        const auto number = HexNumber(TextToHex(std::string(bytes.begin(), bytes.end())));
        if (number) kept[pid] = {*number, static_cast<std::uint8_t>(bytes.size())};
    }
    return origin;
}

/// What is shown as the vehicle's trouble codes: with the codes of the setting's own reading those
/// of a diagnosis would not agree, so they are left alone then.
void ShowStoredCodes(const Diagnosis& found) {
    GlobalState& g = basGlobal;
    if (!g.StandardDecoding || LackOf(found, Part::StoredCodes) || !found.SinceClear) return;
    std::size_t count = 0;
    for (const FoundCode& code : found.Codes) {
        if (code.Kind != CodeKind::Stored || count == kCodeLimit) continue;
        g.DtcList[count] = code.Code;
        g.CodeOrigins[count] = OriginOf(code, found);
        ++count;
    }
    g.DtcCount = static_cast<std::int16_t>(count);
    g.MilOn = found.SinceClear->Lamp;
    g.CodesRead = true;
    ShowTroubleCodes();
}

/// What does not change with the codes, of the diagnosis before.
Diagnosis KeptOf(const Diagnosis& before) {
    Diagnosis kept;
    kept.Vin = before.Vin;
    kept.Check = before.Check;
    kept.Units = before.Units;
    for (const Part part : {Part::Vin, Part::Calibrations, Part::UnitNames}) {
        if (const auto why = LackOf(before, part)) kept.Missing.push_back({part, *why});
    }
    return kept;
}

/// The state that the run leads to, unless something else was asked of the link meanwhile.
void Leave(bool usable) {
    GlobalState& g = basGlobal;
    if (g.ConnState != kDiagnosing) return;
    if (usable) {
        g.AwaitingReply = false;  // what was outstanding before was cut short by the first command
        g.RxBuffer.clear();
        return EndStep(kConnected);
    }
    NoteSilentInterface({});
    EndStep(kNotConnected);
}

}  // namespace

void StartDiagnosis() {
    GlobalState& g = basGlobal;
    if (g.ConnState != kConnected && g.ConnState != kReceivingData) return;
    g.Diagnosing.Cancelled = false;
    g.ConnState = kDiagnosing;
}

void CancelDiagnosis() {
    if (Diagnosing()) basGlobal.Diagnosing.Cancelled = true;
}

void RunDiagnosis() {
    DiagnosisState& state = basGlobal.Diagnosing;
    const bool refresh = std::exchange(state.Stale, false) && state.Found != nullptr;
    // Held here, too: it is shown meanwhile, and somebody may put another in its place.
    const auto found = std::make_shared<Diagnosis>(refresh ? KeptOf(*state.Found) : Diagnosis());
    found->Started = SystemTime();
    found->Interface = basGlobal.InterfaceId;
    state.Found = found;
    state.Step = 0;
    state.StepDone = 0;
    state.OfThisVehicle = true;
    RenewDiagnosisList();

    bool usable = false;
    {
        Run run(*found);
        run.ReadAll(refresh);
        const std::optional<Lack> over = run.Over();
        found->Cancelled = over == Lack::Cancelled;
        // Whatever ends behind the last answer has cost nothing.
        found->EndedEarly = over && !found->Cancelled &&
                            std::any_of(found->Missing.begin(), found->Missing.end(),
                                        [&over](const auto& part) { return part.Why == *over; });
        usable = run.Finish();
    }
    std::stable_sort(found->Missing.begin(), found->Missing.end(),
                     [](const auto& a, const auto& b) { return a.Part < b.Part; });
    ShowStoredCodes(*found);
    Leave(usable);
    RenewDiagnosisList();
}

void NoteCleared() {
    DiagnosisState& state = basGlobal.Diagnosing;
    if (!state.Found || !state.OfThisVehicle) return;
    state.Found->Cleared = true;
    state.Stale = true;
}

void NoteOtherVehicle() {
    basGlobal.Diagnosing.OfThisVehicle = basGlobal.Diagnosing.Stale = false;
}

bool DiagnosisStale() {
    return basGlobal.Diagnosing.Stale;
}

}  // namespace dravik
