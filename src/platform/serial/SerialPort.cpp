#include "platform/serial/SerialPort.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/Events.h"
#include "platform/serial/SerialChannel.h"

namespace dravik {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kOpenLimit{5};

// Counts the calls of AbortWaits; an Open that sees it change gives up.
unsigned abortCount = 0;

std::unique_ptr<SerialOpening> StartOpening(const std::string& device, int baudrate) {
    if (device.starts_with(kTcpPrefix)) return StartTcpOpening(device);
    return StartNativeOpening(device, baudrate);
}

}  // namespace

// Shared, so that it outlives a SerialPort that is destroyed or moved while one of its handlers or
// a pending Open is still on the stack.
struct SerialPort::Impl : SerialListener, std::enable_shared_from_this<SerialPort::Impl> {
    explicit Impl(int rate) : baudrate(rate) {}

    bool Open();
    void Close();
    void Abandon();
    bool Write(std::string_view bytes);
    std::size_t InputCount();
    std::string ReadAll();
    void DiscardInput();
    void ChannelReady() override;

    std::string device;
    int baudrate;
    OpenFailure failure = OpenFailure::None;  // of the last Open
    std::unique_ptr<SerialChannel> channel;
    std::function<void(int)> onReceive;
    std::function<void()> onLost;

 private:
    // What the handlers have not been told yet.
    struct News {
        bool data = false;
        bool overflow = false;
        bool lost = false;
        bool Any() const { return data || overflow || lost; }
    };

    std::unique_ptr<SerialOpening> WaitForOpening();
    void Collect();
    void Store(std::string_view characters);
    void CollectForCaller();
    void Deliver();

    std::string buffer_;
    News news_;
    bool overflowed_ = false;         // the buffer has dropped characters since it was last emptied
    bool deliveryScheduled_ = false;  // Deliver is on its way through the event loop
    unsigned session_ = 0;            // changes with every Open and Close
};

// Waits until the device is open or has failed; nothing when it took too long, or when the wait was
// overtaken by another Open, a Close or the end of the program.
std::unique_ptr<SerialOpening> SerialPort::Impl::WaitForOpening() {
    const unsigned session = session_;
    const unsigned aborts = abortCount;
    failure = OpenFailure::GivenUp;
    std::unique_ptr<SerialOpening> opening = StartOpening(device, baudrate);
    if (!opening && device.starts_with(kTcpPrefix)) failure = OpenFailure::UnknownHost;
    const Clock::time_point deadline = Clock::now() + kOpenLimit;
    while (opening && !opening->Finished()) {
        const std::chrono::duration<double> left = deadline - Clock::now();
        if (left.count() <= 0) {
            failure = OpenFailure::NoAnswer;
            return nullptr;
        }
        WaitForEvents(left.count());
        if (session != session_ || aborts != abortCount) return nullptr;
    }
    return opening;
}

bool SerialPort::Impl::Open() {
    Close();
    const std::unique_ptr<SerialOpening> opening = WaitForOpening();
    if (!opening) return false;
    failure = opening->Failure();
    channel = opening->Take(weak_from_this());
    CollectForCaller();
    if (channel) return true;
    Close();  // lost already: there is no open device to report as lost
    if (failure == OpenFailure::None) failure = OpenFailure::NoSuchDevice;
    return false;
}

void SerialPort::Impl::Close() {
    ++session_;
    channel.reset();
    buffer_.clear();
    news_ = {};
    overflowed_ = false;
}

void SerialPort::Impl::Abandon() {
    Close();
    onReceive = nullptr;
    onLost = nullptr;
}

bool SerialPort::Impl::Write(std::string_view bytes) {
    if (!channel) return false;
    if (channel->Write(bytes)) return true;
    CollectForCaller();  // closes the port if the device is gone
    return false;
}

std::size_t SerialPort::Impl::InputCount() {
    CollectForCaller();
    return buffer_.size();
}

std::string SerialPort::Impl::ReadAll() {
    CollectForCaller();
    overflowed_ = false;
    return std::exchange(buffer_, {});
}

void SerialPort::Impl::DiscardInput() {
    if (channel) channel->FlushInput();
    CollectForCaller();
    buffer_.clear();
    overflowed_ = false;
    news_.data = false;
    news_.overflow = false;
}

void SerialPort::Impl::ChannelReady() {
    Collect();
    Deliver();
}

// Takes over everything that the driver holds, so that an event which the handler ignores does not
// come back before the next character does.
void SerialPort::Impl::Collect() {
    if (!channel) return;
    std::string characters;
    const bool alive = channel->Read(characters);
    Store(characters);
    if (channel->TakeOverrun()) news_.overflow = true;
    if (alive) return;
    channel.reset();
    news_.lost = true;
}

void SerialPort::Impl::Store(std::string_view characters) {
    if (characters.empty()) return;
    news_.data = true;
    const std::size_t taken = std::min(characters.size(), kBufferSize - buffer_.size());
    buffer_.append(characters.substr(0, taken));
    if (taken == characters.size() || overflowed_) return;
    overflowed_ = true;
    news_.overflow = true;
}

// Collect for a caller that is in the middle of something: the handlers hear of it later.
void SerialPort::Impl::CollectForCaller() {
    Collect();
    if (!news_.Any() || deliveryScheduled_) return;
    deliveryScheduled_ = true;
    PostToUserInterface([weak = weak_from_this()] {
        const std::shared_ptr<Impl> self = weak.lock();
        if (!self) return;
        self->deliveryScheduled_ = false;
        self->Deliver();
    });
}

// Overflow comes before data: a handler that reconnects on overflow does not want the torn text.
// Every handler may close, open or destroy the port, which takes back the news still to come.
void SerialPort::Impl::Deliver() {
    const std::shared_ptr<Impl> self = shared_from_this();
    if (std::exchange(news_.overflow, false)) {
        if (const auto handler = onReceive) handler(kBufferOverflow);
    }
    if (std::exchange(news_.data, false) && !buffer_.empty()) {
        if (const auto handler = onReceive) handler(kDataReceived);
    }
    if (std::exchange(news_.lost, false)) {
        if (const auto handler = onLost) handler();
    }
}

SerialPort::SerialPort(int baudrate) : impl_(std::make_shared<Impl>(baudrate)) {}

SerialPort::~SerialPort() {
    if (impl_) impl_->Abandon();
}

SerialPort::SerialPort(SerialPort&&) noexcept = default;

SerialPort& SerialPort::operator=(SerialPort&& other) noexcept {
    if (this == &other) return *this;
    if (impl_) impl_->Abandon();
    impl_ = std::move(other.impl_);
    return *this;
}

void SerialPort::SetDevice(std::string device) {
    impl_->device = std::move(device);
}

const std::string& SerialPort::Device() const {
    return impl_->device;
}

void SerialPort::SetBaudrate(int baudrate) {
    impl_->baudrate = baudrate;
}

int SerialPort::Baudrate() const {
    return impl_->baudrate;
}

bool SerialPort::Open() {
    const std::shared_ptr<Impl> self = impl_;
    return self->Open();
}

OpenFailure SerialPort::LastFailure() const {
    return impl_->failure;
}

void SerialPort::AbortWaits() {
    ++abortCount;
    PostToUserInterface([] {});
}

bool SerialPort::IsOpen() const {
    return impl_->channel != nullptr;
}

void SerialPort::Close() {
    impl_->Close();
}

bool SerialPort::Write(std::string_view bytes) {
    return impl_->Write(bytes);
}

std::size_t SerialPort::InputCount() const {
    return impl_->InputCount();
}

std::string SerialPort::ReadAll() {
    return impl_->ReadAll();
}

void SerialPort::DiscardInput() {
    impl_->DiscardInput();
}

void SerialPort::OnReceive(std::function<void(int code)> handler) {
    impl_->onReceive = std::move(handler);
}

void SerialPort::OnLost(std::function<void()> handler) {
    impl_->onLost = std::move(handler);
}

}  // namespace dravik
