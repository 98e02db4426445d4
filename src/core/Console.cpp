#include "core/Console.h"

#include <QTimer>
#include <charconv>
#include <cstdio>
#include <iostream>

#include "core/ConsoleRequests.h"
#include "core/basGlobal.h"
#include "core/frMain.h"
#include "platform/Events.h"
#include "platform/Text.h"
#include "skin/frWarning.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// The console that the reader thread reports to; null once it is gone. The thread may sit in a
/// read that nothing ends, so it is left behind at the end and must not touch the object.
Console* activeConsole = nullptr;

void Print(const std::string& answer) {
    std::fwrite(answer.data(), 1, answer.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

bool MessageOpen() {
    return MessageDialog() != nullptr && MessageDialog()->IsOpen();
}

std::optional<int> Milliseconds(std::string_view text) {
    text = Trimmed(text);
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < 0) return std::nullopt;
    return value;
}

}  // namespace

Console::Console() {
    activeConsole = this;
    reader_ = std::thread([this] { ReadInput(); });
}

Console::~Console() {
    activeConsole = nullptr;
    reader_.detach();
}

void Console::ReadInput() {
    const auto deliver = [](std::optional<std::string> line) {
        PostToUserInterface([line = std::move(line)]() mutable {
            if (activeConsole == nullptr) return;
            activeConsole->waiting_.push_back(std::move(line));
            activeConsole->Process();
        });
    };
    std::string line;
    while (std::getline(std::cin, line)) {
        if (line.ends_with('\r')) line.pop_back();
        deliver(line);
    }
    deliver(std::nullopt);
}

void Console::Process() {
    const bool ready = MainWindow() != nullptr && (MainWindow()->Started() || MessageOpen());
    if (waiting_.empty() || paused_ || basGlobal.Closing) return;
    if (!ready) {
        // A message may open while the program is still starting; nothing else tells of it.
        constexpr int kLookAgain = 50;  // milliseconds
        QTimer::singleShot(kLookAgain, [] {
            if (activeConsole != nullptr) activeConsole->Process();
        });
        return;
    }
    // Inside a request only an open question lets the next one in.
    if (processing_ && !MessageOpen()) return;

    const std::optional<std::string> request = std::move(waiting_.front());
    waiting_.pop_front();
    const bool outer = processing_;
    processing_ = true;
    // While this request waits for the user, the next ones come from the event loop.
    PostToUserInterface([] {
        if (activeConsole != nullptr) activeConsole->Process();
    });
    if (request)
        Answer(*request);
    else
        ExecuteCommand("quit");
    processing_ = outer;
    PostToUserInterface([] {
        if (activeConsole != nullptr) activeConsole->Process();
    });
}

void Console::Answer(const std::string& request) {
    const std::size_t blank = request.find(' ');
    const std::string word = request.substr(0, blank);
    if (word == "quit") {
        Print("ok");
        ExecuteCommand("quit");
    } else if (word == "wait") {
        const auto time = Milliseconds(blank == std::string::npos ? "" : request.substr(blank));
        if (!time) {
            Print("error: wait takes a number of milliseconds");
            return;
        }
        paused_ = true;
        QTimer::singleShot(*time, MainWindow(), [] {
            if (activeConsole == nullptr) return;
            Print("ok");
            activeConsole->paused_ = false;
            activeConsole->Process();
        });
    } else {
        Print(AnswerRequest(request));
    }
}

}  // namespace dravik
