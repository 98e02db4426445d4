#pragma once

#include <QTimer>
#include <chrono>
#include <functional>
#include <string>

#include "console/ConsoleStreams.h"

namespace dravik {

/// Reads requests from standard input, a line each, while the program runs normally, and answers
/// them on standard output: one line, or lines closed by a line that is a single ".". End of input
/// is a normal end of the program, and so is the loss of everybody who reads the answers.
///
/// Requests are taken one after the other, one in each pass of the event loop, so that the link and
/// the screen have their turn however many come; whoever asks without end gets a quarter of the
/// program's time. Only a request that waits for the user (a "do"
/// with an open question) lets later ones overtake it; its own answer follows when it returns.
class Console {
 public:
    /// Starts reading. Requests are answered from the time the first page has been built, or, when
    /// a message is shown before that, from then on.
    ///
    /// @param started  tells that the first page has been built
    explicit Console(std::function<bool()> started);

    /// Looks whether something can be answered. Called whenever something has come in or was
    /// finished.
    void LookAgain() { LookIn(0); }

 private:
    void LookIn(int milliseconds);
    void Process();
    bool TimeLeft();
    void AnswerNext();
    void Answer(const std::string& request);
    void Wait(const std::string& argument);
    void Print(const std::string& answer);

    using Clock = std::chrono::steady_clock;

    std::function<bool()> started_;
    ConsoleStreams streams_;
    QTimer look_;              ///< the next look for something to answer
    bool paused_ = false;      ///< a "wait" is running
    bool processing_ = false;  ///< a request is being answered
    bool ending_ = false;      ///< there was a "quit", or the input has ended
    Clock::time_point credited_ = Clock::now();
    Clock::duration credit_;  ///< time that may still be spent on requests
};

}  // namespace dravik
