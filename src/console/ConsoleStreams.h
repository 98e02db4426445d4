#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace dravik {

/// Lines from standard input and texts to standard output. A thread each reads and writes, so that
/// no far end holds up the program, however much it sends and however little it takes; neither can
/// make the program store more than a bounded amount.
class ConsoleStreams {
 public:
    /// Longest line that is read whole; of a longer one only a beginning that is longer than this
    /// is kept.
    static constexpr std::size_t kLongestLine = std::size_t{16} * 1024;

    /// Starts reading.
    /// @param changed  called on the user-interface thread when a line has come in where none
    ///                 waited, the input has ended, or the output has become ready (see there)
    explicit ConsoleStreams(std::function<void()> changed);

    /// Waits for the far end to take what has been written, half a second at the most.
    ~ConsoleStreams();

    ConsoleStreams(const ConsoleStreams&) = delete;
    ConsoleStreams& operator=(const ConsoleStreams&) = delete;

    /// True while a line waits, or when the input has ended.
    bool HasInput() const;

    /// The next line without its line end; nothing when the input has ended, or none waits.
    std::optional<std::string> TakeLine();

    /// Hands a text over for writing. Never waits.
    void Write(std::string_view text);

    /// How far the far end has to have come with the output.
    enum class Ready {
        ForMore,   ///< what waits is little enough to add to it
        ToTheEnd,  ///< all of it is taken
    };

    /// Whether the output is that far; if it is not, `changed` is called as soon as it is.
    bool OutputReady(Ready wanted);

    /// True once nobody reads the output any more.
    bool OutputLost() const;

 private:
    struct Shared;
    static void ReadLines(const std::shared_ptr<Shared>& shared);
    static void WriteTexts(const std::shared_ptr<Shared>& shared);

    std::shared_ptr<Shared> shared_;  ///< the threads may sit in a call that nothing ends
};

}  // namespace dravik
