#include "console/ConsoleStreams.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/Events.h"
#include "platform/Terminal.h"

namespace dravik {

namespace {

constexpr std::size_t kMostLines = 1000;  ///< that wait; then the reader waits
constexpr std::size_t kMostOutput =
    std::size_t{256} * 1024;  ///< bytes that wait; then no request is taken
constexpr std::chrono::milliseconds kPatience{500};

}  // namespace

/// What the threads and the program share. Each thread keeps it alive, and tells nobody any more
/// once it is closed.
struct ConsoleStreams::Shared : std::enable_shared_from_this<Shared> {
    std::mutex Mutex;
    std::condition_variable Room;   ///< for lines
    std::condition_variable Work;   ///< for the writer
    std::condition_variable Taken;  ///< by the far end
    std::deque<std::string> Lines;
    bool InputEnded = false;
    std::string Output;  ///< not yet in the writer's hands
    bool Writing = false;
    bool Lost = false;
    std::optional<Ready> Wanted;  ///< how far the output has to be for `Changed`
    bool Closed = false;
    std::function<void()> Changed;

    bool Drained() const { return Lost || (Output.empty() && !Writing); }
    bool IsReady(Ready wanted) const {
        return wanted == Ready::ToTheEnd ? Drained() : Lost || Output.size() < kMostOutput;
    }

    /// With the mutex held, so that nothing is posted to an application that is going away.
    void Tell() {
        if (Closed) return;
        PostToUserInterface([shared = shared_from_this()] {
            if (!shared->Closed) shared->Changed();
        });
    }

    /// Waits for room; false when nobody wants lines any more.
    bool Add(std::string line) {
        std::unique_lock lock(Mutex);
        Room.wait(lock, [this] { return Closed || Lines.size() < kMostLines; });
        if (Closed) return false;
        if (line.ends_with('\r')) line.pop_back();
        Lines.push_back(std::move(line));
        if (Lines.size() == 1) Tell();
        return true;
    }
};

ConsoleStreams::ConsoleStreams(std::function<void()> changed)
    : shared_(std::make_shared<Shared>()) {
    shared_->Changed = std::move(changed);
    std::thread([shared = shared_] { ReadLines(shared); }).detach();
    std::thread([shared = shared_] { WriteTexts(shared); }).detach();
}

ConsoleStreams::~ConsoleStreams() {
    std::unique_lock lock(shared_->Mutex);
    shared_->Taken.wait_for(lock, kPatience, [this] { return shared_->Drained(); });
    shared_->Closed = true;
    shared_->Room.notify_all();
    shared_->Work.notify_all();
}

void ConsoleStreams::ReadLines(const std::shared_ptr<Shared>& shared) {
    char buffer[4096];
    std::string line;
    while (const std::size_t count = ReadStandardInput(buffer, sizeof buffer)) {
        std::string_view text(buffer, count);
        for (;;) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            if (line.size() <= kLongestLine) line.append(text, 0, end);
            if (end == text.size()) break;
            if (!shared->Add(std::exchange(line, {}))) return;
            text.remove_prefix(end + 1);
        }
    }
    if (!line.empty() && !shared->Add(std::move(line))) return;
    const std::lock_guard lock(shared->Mutex);
    shared->InputEnded = true;
    shared->Tell();
}

void ConsoleStreams::WriteTexts(const std::shared_ptr<Shared>& shared) {
    std::unique_lock lock(shared->Mutex);
    for (;;) {
        shared->Work.wait(lock, [&] { return shared->Closed || !shared->Output.empty(); });
        if (shared->Closed) return;
        const std::string text = std::exchange(shared->Output, {});
        shared->Writing = true;
        lock.unlock();
        const bool taken = WriteStandardOutput(text);
        lock.lock();
        shared->Writing = false;
        if (!taken) {
            shared->Lost = true;
            shared->Output.clear();
            shared->Tell();
        } else if (shared->Wanted && shared->IsReady(*shared->Wanted)) {
            shared->Wanted.reset();
            shared->Tell();
        }
        if (shared->Drained()) shared->Taken.notify_all();
    }
}

bool ConsoleStreams::HasInput() const {
    const std::lock_guard lock(shared_->Mutex);
    return shared_->InputEnded || !shared_->Lines.empty();
}

std::optional<std::string> ConsoleStreams::TakeLine() {
    const std::lock_guard lock(shared_->Mutex);
    if (shared_->Lines.empty()) return std::nullopt;
    std::string line = std::move(shared_->Lines.front());
    shared_->Lines.pop_front();
    if (shared_->Lines.size() == kMostLines / 2) shared_->Room.notify_all();
    return line;
}

void ConsoleStreams::Write(std::string_view text) {
    const std::lock_guard lock(shared_->Mutex);
    if (shared_->Lost) return;
    shared_->Output += text;
    if (!shared_->Writing) shared_->Work.notify_all();
}

bool ConsoleStreams::OutputReady(Ready wanted) {
    const std::lock_guard lock(shared_->Mutex);
    const bool ready = shared_->IsReady(wanted);
    if (!ready) shared_->Wanted = wanted;
    return ready;
}

bool ConsoleStreams::OutputLost() const {
    const std::lock_guard lock(shared_->Mutex);
    return shared_->Lost;
}

}  // namespace dravik
