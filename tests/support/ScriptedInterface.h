#pragma once

#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/FormTimer.h"
#include "platform/serial/PseudoTerminal.h"
#include "support/TestClock.h"

namespace dravik {

/// A diagnostic interface on a real pseudo-terminal that answers from a table. It is served by the
/// event loop, as the program is, so a test needs no second thread.
class ScriptedInterface {
 public:
    /// One answer: text, cut into pieces at "|", or something to do instead. A piece goes out only
    /// after the one before it was read. The piece "~" is a silence of 51 seconds on the program's
    /// clock, longer than any command waits; with the piece "^" the device vanishes.
    struct Answer {
        Answer(const char* text) : Text(text) {}                             // NOLINT
        Answer(std::string text) : Text(std::move(text)) {}                  // NOLINT
        Answer(std::function<void()> action) : Action(std::move(action)) {}  // NOLINT
        std::string Text;
        std::function<void()> Action;
    };

    ScriptedInterface() {
        clock_.OnTick([this] { Serve(); });
    }

    /// What a command is answered with, one after the other; the last answer repeats.
    void On(const std::string& command, std::initializer_list<Answer> answers) {
        answers_[command] = answers;
    }

    /// Answers of a vehicle with three stored codes and the lamp on.
    void OnAllCommands() {
        On("ATZ", {"ATZ\r\r\rIFX 1.5\r\r>"});
        On("ATE0", {"ATE0\rOK\r\r>"});
        On("ATL0", {"OK\r\r>"});
        On("ATH0", {"OK\r\r>"});
        On("AT!01", {"?\r\r>"});
        On("ATI", {"IFX 1.5\r\r>"});
        On("0101", {"41 01 83 07 65 04\r\r>"});
        On("ATDP", {"AUTO, ISO 15765-4 (CAN 11/500)\r\r>"});
    }

    /// Sends without being asked.
    void Say(const std::string& text) {
        std::size_t start = 0;
        for (std::size_t bar; (bar = text.find('|', start)) != std::string::npos; start = bar + 1)
            pieces_.push_back(text.substr(start, bar - start));
        pieces_.push_back(text.substr(start));
    }

    void Vanish() {
        vanished_ = true;
        pieces_.clear();
        terminal_.Vanish();
    }

    const std::string& Device() const { return terminal_.Path(); }

    std::vector<std::string> Commands;  ///< received so far, without their carriage returns
    std::string Bytes;                  ///< received so far, as they came

 private:
    void Serve() {
        if (vanished_) return;
        if (!pieces_.empty() && terminal_.HeldByDriver() == 0) SendPiece();
        if (vanished_) return;
        const std::string bytes = terminal_.Receive();
        Bytes += bytes;
        line_ += bytes;
        for (std::size_t end; (end = line_.find('\r')) != std::string::npos;) {
            const std::string command = line_.substr(0, end);
            line_.erase(0, end + 1);
            Commands.push_back(command);
            Reply(command);
        }
    }

    void SendPiece() {
        const std::string piece = pieces_.front();
        pieces_.pop_front();
        if (piece == "~")
            AdvanceHighResTimer(51);
        else if (piece == "^")
            Vanish();
        else
            terminal_.Send(piece);
    }

    void Reply(const std::string& command) {
        const auto found = answers_.find(command);
        if (found == answers_.end()) return;
        const Answer answer = found->second.front();
        if (found->second.size() > 1) found->second.pop_front();
        if (answer.Action)
            answer.Action();
        else
            Say(answer.Text);
    }

    PseudoTerminal terminal_;
    std::map<std::string, std::deque<Answer>> answers_;
    std::deque<std::string> pieces_;
    std::string line_;
    bool vanished_ = false;
    FormTimer clock_{1, true};
};

}  // namespace dravik
