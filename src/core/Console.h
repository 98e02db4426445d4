#pragma once

#include <deque>
#include <optional>
#include <string>
#include <thread>

namespace dravik {

/// Reads requests from standard input, a line each, while the program runs normally, and answers
/// them on standard output: one line, or lines closed by a line that is a single ".". End of input
/// is a normal end of the program.
///
/// Requests are taken one after the other, from the event loop. Only a request that waits for the
/// user (a "do" with an open question) lets later ones overtake it; its own answer follows when it
/// returns.
class Console {
 public:
    /// Starts reading. Requests are answered from the time the first page has been built, or, when
    /// a message is shown before that, from then on.
    Console();
    ~Console();

    /// Answers what can be answered now. Called whenever something has come in or was finished.
    void Process();

 private:
    void ReadInput();
    void Answer(const std::string& request);

    std::deque<std::optional<std::string>> waiting_;  ///< nothing stands for the end of the input
    bool paused_ = false;                             ///< a "wait" is running
    bool processing_ = false;
    std::thread reader_;
};

}  // namespace dravik
