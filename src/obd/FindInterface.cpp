#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <utility>

#include "core/basGlobal.h"
#include "obd/AwaitPrompt.h"
#include "obd/LinkFaults.h"
#include "obd/LinkStep.h"
#include "obd/PortSearch.h"
#include "obd/basOBD.h"
#include "platform/Events.h"
#include "platform/Text.h"
#include "settings/SettingsWriter.h"

namespace dravik {

namespace {

/// The speeds that interfaces are set to, the usual ones first.
constexpr int kSpeeds[] = {38400, 9600, 115200, 57600, 230400, 500000};

/// An interface answers this at once. A silent one is asked twice.
constexpr const char* kIdentify = "ATI";
constexpr double kAnswerSeconds = 0.6;
constexpr int kMostAsks = 3;

/// A device whose name takes the system longer to look up is not waited for.
constexpr double kListingSeconds = 5;

constexpr std::size_t kMostReply = 4096;  // of what talks without end
constexpr std::size_t kMostName = 40;

constexpr const char* kBegins = "Looking for ports";
constexpr const char* kFound = "Found: %1 on %2";
constexpr const char* kNothing = "No interface was found";
constexpr const char* kCancelled = "The search was cancelled";
constexpr const char* kNoPermission = "%1: no permission";
constexpr const char* kJoinGroup = "%1: no permission; join the group %2";
constexpr const char* kInUse = "%1: used by another program";

constexpr const char* kNotSaved = "The settings could not be saved";

constexpr const char* kFindingTexts[] = {kBegins,       kFound,     kNothing, kCancelled,
                                         kNoPermission, kJoinGroup, kInUse,   kNotSaved};

/// The search goes on until it is told not to, or anything else is asked of the link.
bool GoesOn() {
    const GlobalState& g = basGlobal;
    return !g.Search.Cancelled && !g.Closing && g.ConnState == kNotConnected;
}

bool IsNetwork(const PortCandidate& port) {
    return port.Device.starts_with("tcp://");
}

/// "COM1 /dev/ttyUSB0 38400"; a part that says nothing is left out.
std::string Place(const PortCandidate& port, int baudrate) {
    std::string text;
    const auto add = [&text](const std::string& part) {
        if (!text.empty()) text += ' ';
        text += part;
    };
    const std::string name = "COM" + std::to_string(port.Number);
    if (port.Number > 0) add(name);
    if (!port.Device.ends_with("\\" + name)) add(port.Device);
    if (!IsNetwork(port)) add(std::to_string(baudrate));
    return text;
}

// Identification ----------------------------------------------------------------------------------

bool IsReadable(std::string_view reply) {
    return std::all_of(reply.begin(), reply.end(), [](char c) {
        // Interfaces let a zero slip in now and then.
        return c == '\r' || c == '\n' || c == '\t' || c == '\0' || (c >= ' ' && c < '\x7F');
    });
}

/// Readable text with a prompt at the beginning of a line: at a wrong speed it is neither, and what
/// is no interface may be readable, but has another prompt.
bool IsAnswer(std::string_view reply) {
    while (reply.ends_with(' ')) reply.remove_suffix(1);
    return (reply.ends_with("\r>") || reply.ends_with("\n>")) && IsReadable(reply);
}

/// The first line that is neither empty nor the echo; empty where it says nothing.
std::string NameIn(std::string_view reply) {
    while (!reply.empty()) {
        const std::size_t end = reply.find_first_of("\r\n>");
        std::string line(reply.substr(0, end));
        std::erase(line, '\0');
        const std::string name(Trimmed(line));
        reply.remove_prefix(end == std::string_view::npos ? reply.size() : end + 1);
        if (name.empty() || name == kIdentify) continue;
        return name == "?" ? std::string() : name.substr(0, kMostName);
    }
    return {};
}

/// What arrives until a prompt, or for as long as an answer may take.
std::string Listen() {
    const double deadline = HighResTimer() + kAnswerSeconds;
    std::string reply;
    const auto timeLeft = [&]() -> std::optional<double> {
        const double left = deadline - HighResTimer();
        if (left <= 0 || !GoesOn() || reply.size() > kMostReply) return std::nullopt;
        return left;
    };
    AwaitPrompt(timeLeft, [&reply](const std::string& received) { reply += received; });
    return reply;
}

/// The name of the interface at the open port; empty when there is none. The first answer may still
/// be one to what went before, so a second one is asked for.
std::string Identify() {
    bool answered = false;
    for (int ask = 0; ask < kMostAsks; ++ask) {
        basGlobal.comOBD.DiscardInput();
        if (!basGlobal.comOBD.Write(std::string(kIdentify) + "\r")) return {};
        const std::string reply = Listen();
        const bool answers = IsAnswer(reply);
        if (!GoesOn() || (!answers && ask > 0)) return {};
        if (answers && answered) return NameIn(reply);
        answered = answers;
    }
    return {};
}

// Ports -------------------------------------------------------------------------------------------

/// One run of the search.
class Search {
 public:
    std::optional<FoundInterface> Run();

    /// What could not be asked, a line each.
    const std::string& Notes() const { return notes_; }

 private:
    struct Listing {
        std::vector<PortCandidate> Ports;
        bool Complete = false;
    };

    std::optional<FoundInterface> Try(const PortCandidate& port);
    std::optional<FoundInterface> Try(const PortCandidate& port, int baudrate);
    void Note(const char* pattern, const std::string& device, const std::string& value = {}) {
        notes_ += "\n" + Worded(pattern, {device, value});
    }
    void NoteState(const PortCandidate& port, PortState state);

    std::shared_ptr<Listing> listing_ = std::make_shared<Listing>();
    std::set<std::string> tried_;  ///< devices; several numbers may stand for one
    bool done_ = false;            ///< with the port that is being tried
    std::string notes_;
};

void Search::NoteState(const PortCandidate& port, PortState state) {
    done_ = true;
    if (state == PortState::InUse) return Note(kInUse, port.Device);
    if (state != PortState::NoPermission) return;
    const std::string group = PortGroup(port.Device);
    Note(group.empty() ? kNoPermission : kJoinGroup, port.Device, group);
}

std::optional<FoundInterface> Search::Try(const PortCandidate& port, int baudrate) {
    SerialPort& line = basGlobal.comOBD;
    basGlobal.Search.Text = Place(port, baudrate) + " ...";
    line.SetDevice(port.Device);
    line.SetBaudrate(baudrate);
    if (!line.Open()) {
        const OpenFailure failure = line.LastFailure();
        if (failure == OpenFailure::NoSuchSpeed) return std::nullopt;
        NoteState(port, failure == OpenFailure::InUse          ? PortState::InUse
                        : failure == OpenFailure::NoPermission ? PortState::NoPermission
                                                               : PortState::Absent);
        return std::nullopt;
    }
    const std::string name = Identify();
    line.Close();
    if (name.empty()) return std::nullopt;
    return FoundInterface{port.Number, port.Device, IsNetwork(port) ? 0 : baudrate, name};
}

std::optional<FoundInterface> Search::Try(const PortCandidate& port) {
    done_ = !tried_.insert(port.Device).second;
    if (!done_ && port.State != PortState::Present) NoteState(port, port.State);
    for (const int speed : kSpeeds) {
        if (done_ || !GoesOn()) break;
        if (auto found = Try(port, speed)) return found;
        done_ = done_ || IsNetwork(port);
    }
    return std::nullopt;
}

/// Ports are tried as they are found, so that one which is slow to look up holds up none before it.
std::optional<FoundInterface> Search::Run() {
    SearchPorts(
        std::exchange(basGlobal.Search.Ports, {}),
        [listing = listing_](const PortCandidate& port) { listing->Ports.push_back(port); },
        LookAtPort, [listing = listing_] { listing->Complete = true; });
    double deadline = HighResTimer() + kListingSeconds;
    for (std::size_t next = 0; GoesOn();) {
        if (next < listing_->Ports.size()) {
            const PortCandidate port = listing_->Ports[next++];
            if (auto found = Try(port)) return found;
            deadline = HighResTimer() + kListingSeconds;
        } else {
            const double left = deadline - HighResTimer();
            if (listing_->Complete || left <= 0) break;
            WaitForEvents(left);
        }
    }
    return std::nullopt;
}

bool LinkInUse() {
    return basGlobal.ConnState > kPortNotFound;
}

std::string Outcome(const std::optional<FoundInterface>& found, const std::string& notes) {
    if (found) {
        const PortCandidate port{found->Port, found->Device, false, PortState::Present};
        return Worded(kFound, {found->Name, Place(port, found->Baudrate)});
    }
    if (!GoesOn()) return Worded(kCancelled, {});
    return Worded(kNothing, {}) + notes;
}

void TakeOver(const std::optional<FoundInterface>& found) {
    GlobalState& g = basGlobal;
    if (!found) return;
    g.Report.Fault = LinkFault::None;  // it was another port's
    if (SavePort(found->Port, found->Baudrate))
        g.ConnState = kConnecting;
    else
        g.Search.Text += "\n" + Worded(kNotSaved, {});
}

}  // namespace

void RunSearch() {
    GlobalState& g = basGlobal;
    g.Search.Wanted = false;
    g.Search.Running = true;
    g.Search.Text = Worded(kBegins, {});
    Search search;
    const std::optional<FoundInterface> found = search.Run();
    g.Search.Text = Outcome(found, search.Notes());
    g.Search.Running = false;
    if (g.Search.Reconnects && g.ConnState == kNotConnected) g.ConnState = kConnecting;
    const auto finished = std::exchange(g.Search.Finished, {});
    if (finished && !g.Closing) finished(found);
}

void FindInterface(std::vector<PortCandidate> ports,
                   std::function<void(const std::optional<FoundInterface>&)> finished) {
    InterfaceSearch& search = basGlobal.Search;
    if (Searching()) return;
    search.Wanted = true;
    search.Cancelled = false;
    search.Reconnects = LinkInUse();
    search.Ports = std::move(ports);
    search.Finished = std::move(finished);
    search.Text = Worded(kBegins, {});
    CloseLink();
}

void FindAndConnect() {
    if (Searching()) return CancelSearch();
    const std::string& demo = basGlobal.Launch.DemoDevice;
    std::vector<PortCandidate> ports;
    if (demo.empty())
        ports = PortCandidates();
    else
        ports.push_back({0, demo});
    FindInterface(std::move(ports), TakeOver);
}

void CancelSearch() {
    if (!Searching()) return;
    basGlobal.Search.Cancelled = true;
    if (basGlobal.Search.Running) basGlobal.comOBD.Close();  // which ends the wait for it to open
}

bool Searching() {
    return basGlobal.Search.Wanted || basGlobal.Search.Running;
}

const std::string& FindingText() {
    return basGlobal.Search.Text;
}

std::vector<std::string_view> FindingTexts() {
    return {std::begin(kFindingTexts), std::end(kFindingTexts)};
}

}  // namespace dravik
