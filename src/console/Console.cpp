#include "console/Console.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "console/ConsoleRequests.h"
#include "core/basGlobal.h"
#include "platform/Number.h"
#include "platform/Text.h"
#include "skin/basSkin.h"
#include "skin/message/frWarning.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr int kSoon = 50;   // milliseconds
constexpr int kPause = 20;  // milliseconds

// What the requests may take of the program's time: enough at once for a long script, but no more
// than a share of it for ever.
constexpr std::chrono::seconds kMostCredit{2};
constexpr int kShare = 4;
constexpr std::chrono::milliseconds kLongestWork{50};  ///< a longer one has waited for something

bool MessageOpen() {
    return MessageDialog() != nullptr && MessageDialog()->IsOpen();
}

std::optional<int> Milliseconds(std::string_view text) {
    const std::optional<int> value = WholeNumber(Trimmed(text));
    return value >= 0 ? value : std::nullopt;
}

}  // namespace

Console::Console(std::function<bool()> started)
    : started_(std::move(started)), streams_([this] { LookAgain(); }), credit_(kMostCredit) {
    look_.setSingleShot(true);
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] { Process(); });
}

void Console::LookIn(int milliseconds) {
    if (!look_.isActive() || look_.interval() > milliseconds) look_.start(milliseconds);
}

void Console::Process() {
    if (CurrentScreen() == nullptr || basGlobal.Closing) return;
    if (streams_.OutputLost()) {
        ExecuteCommand("quit");
        return;
    }
    if (paused_ || (!ending_ && !streams_.HasInput())) return;
    // Before the first page, and inside a request, only an open message lets the next one in.
    // Nothing else tells that one has opened.
    if ((processing_ || !started_()) && !MessageOpen()) {
        LookIn(kSoon);
        return;
    }
    if (!streams_.OutputReady(ending_ ? ConsoleStreams::Ready::ToTheEnd
                                      : ConsoleStreams::Ready::ForMore))
        return;
    if (ending_) {
        ExecuteCommand("quit");
        return;
    }
    if (TimeLeft())
        AnswerNext();
    else
        LookIn(kPause);
}

bool Console::TimeLeft() {
    const Clock::time_point now = Clock::now();
    credit_ = std::min<Clock::duration>(credit_ + (now - credited_) / kShare, kMostCredit);
    credited_ = now;
    return credit_ > Clock::duration::zero();
}

void Console::AnswerNext() {
    const std::optional<std::string> request = streams_.TakeLine();
    if (!request) {
        ending_ = true;
        LookAgain();
        return;
    }
    LookAgain();  // while this request waits for the user, the next ones are taken
    const Clock::time_point start = Clock::now();
    const bool outer = std::exchange(processing_, true);
    Answer(*request);
    processing_ = outer;
    credit_ -= std::min<Clock::duration>(Clock::now() - start, kLongestWork);
    LookAgain();
}

void Console::Answer(const std::string& request) {
    const std::size_t blank = request.find(' ');
    const std::string word = request.substr(0, blank);
    if (request.size() > ConsoleStreams::kLongestLine) {
        Print("error: the request is too long");
    } else if (word == "quit") {
        Print("ok");
        ending_ = true;
    } else if (word == "wait") {
        Wait(blank == std::string::npos ? "" : request.substr(blank));
    } else {
        Print(AnswerRequest(request));
    }
}

void Console::Wait(const std::string& argument) {
    const auto time = Milliseconds(argument);
    if (!time) {
        Print("error: wait takes a number of milliseconds");
        return;
    }
    paused_ = true;
    QTimer::singleShot(*time, &look_, [this] {
        Print("ok");
        paused_ = false;
        LookAgain();
    });
}

void Console::Print(const std::string& answer) {
    streams_.Write(answer + "\n");
}

}  // namespace dravik
