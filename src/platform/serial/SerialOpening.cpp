#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/Events.h"
#include "platform/serial/SerialChannel.h"

namespace dravik {
namespace {

// A driver that never returns from open() keeps its thread. Retrying it must not collect threads.
constexpr int kMaxWorkers = 4;

struct Attempt {
    std::mutex Mutex;
    bool Finished = false;
    bool Abandoned = false;
    NativeHandle Handle = kNoHandle;
    OpenFailure Failure = OpenFailure::None;
};

std::mutex workerMutex;
int workerCount = 0;

bool ClaimWorker() {
    const std::lock_guard lock(workerMutex);
    if (workerCount >= kMaxWorkers) return false;
    ++workerCount;
    return true;
}

void ReleaseWorker() {
    const std::lock_guard lock(workerMutex);
    --workerCount;
}

void RunAttempt(Attempt& attempt, const std::string& device, int baudrate) {
    OpenFailure failure = OpenFailure::None;
    const NativeHandle handle = OpenNative(device, baudrate, failure);
    // The wake-up is posted under the lock: once abandoned, the event loop may be gone.
    const std::lock_guard lock(attempt.Mutex);
    if (attempt.Abandoned) {
        if (handle != kNoHandle) CloseNative(handle);
        return;
    }
    attempt.Handle = handle;
    attempt.Failure = failure;
    attempt.Finished = true;
    PostToUserInterface([] {});
}

/// The system's open() in a thread of its own, since a radio link may take seconds to answer.
class WorkerOpening : public SerialOpening {
 public:
    explicit WorkerOpening(std::shared_ptr<Attempt> attempt) : attempt_(std::move(attempt)) {}
    WorkerOpening(const WorkerOpening&) = delete;
    WorkerOpening& operator=(const WorkerOpening&) = delete;

    ~WorkerOpening() override {
        const std::lock_guard lock(attempt_->Mutex);
        attempt_->Abandoned = true;
        if (attempt_->Handle != kNoHandle) CloseNative(attempt_->Handle);
    }

    bool Finished() const override {
        const std::lock_guard lock(attempt_->Mutex);
        return attempt_->Finished;
    }

    std::unique_ptr<SerialChannel> Take(std::weak_ptr<SerialListener> listener) override {
        const std::lock_guard lock(attempt_->Mutex);
        const NativeHandle handle = std::exchange(attempt_->Handle, kNoHandle);
        if (handle == kNoHandle) return nullptr;
        return MakeNativeChannel(handle, std::move(listener));
    }

    OpenFailure Failure() const override {
        const std::lock_guard lock(attempt_->Mutex);
        return attempt_->Failure;
    }

 private:
    std::shared_ptr<Attempt> attempt_;
};

}  // namespace

std::unique_ptr<SerialOpening> StartNativeOpening(std::string device, int baudrate) {
    if (!ClaimWorker()) return nullptr;
    auto attempt = std::make_shared<Attempt>();
    try {
        std::thread([attempt, device = std::move(device), baudrate] {
            RunAttempt(*attempt, device, baudrate);
            ReleaseWorker();
        }).detach();
    } catch (const std::system_error&) {  // no thread to be had
        ReleaseWorker();
        return nullptr;
    }
    return std::make_unique<WorkerOpening>(std::move(attempt));
}

}  // namespace dravik
