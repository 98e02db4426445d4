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
struct SerialPort::Impl final : SerialListener, std::enable_shared_from_this<SerialPort::Impl> {
    explicit Impl(int rate) : Baudrate(rate) {}

    bool Open();
    void Close();
    void Abandon();
    bool Write(std::string_view bytes);
    std::size_t InputCount();
    std::string ReadAll();
    void DiscardInput();
    void ChannelReady() override;

    std::string Device;
    int Baudrate;
    OpenFailure Failure = OpenFailure::None;  // of the last Open
    std::unique_ptr<SerialChannel> Channel;
    std::function<void(int)> OnReceive;
    std::function<void()> OnLost;

 private:
    // What the handlers have not been told yet.
    struct News {
        bool Data = false;
        bool Overflow = false;
        bool Lost = false;
        bool Any() const { return Data || Overflow || Lost; }
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
    Failure = OpenFailure::GivenUp;
    std::unique_ptr<SerialOpening> opening = StartOpening(Device, Baudrate);
    if (!opening && Device.starts_with(kTcpPrefix)) Failure = OpenFailure::UnknownHost;
    const Clock::time_point deadline = Clock::now() + kOpenLimit;
    while (opening && !opening->Finished()) {
        const std::chrono::duration<double> left = deadline - Clock::now();
        if (left.count() <= 0) {
            Failure = OpenFailure::NoAnswer;
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
    Failure = opening->Failure();
    Channel = opening->Take(weak_from_this());
    CollectForCaller();
    if (Channel) return true;
    Close();  // lost already: there is no open device to report as lost
    if (Failure == OpenFailure::None) Failure = OpenFailure::NoSuchDevice;
    return false;
}

void SerialPort::Impl::Close() {
    ++session_;
    Channel.reset();
    buffer_.clear();
    news_ = {};
    overflowed_ = false;
}

void SerialPort::Impl::Abandon() {
    Close();
    OnReceive = nullptr;
    OnLost = nullptr;
}

bool SerialPort::Impl::Write(std::string_view bytes) {
    if (!Channel) return false;
    if (Channel->Write(bytes)) return true;
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
    if (Channel) Channel->FlushInput();
    CollectForCaller();
    buffer_.clear();
    overflowed_ = false;
    news_.Data = false;
    news_.Overflow = false;
}

void SerialPort::Impl::ChannelReady() {
    Collect();
    Deliver();
}

// Takes over everything that the driver holds, so that an event which the handler ignores does not
// come back before the next character does.
void SerialPort::Impl::Collect() {
    if (!Channel) return;
    std::string characters;
    const bool alive = Channel->Read(characters);
    Store(characters);
    if (Channel->TakeOverrun()) news_.Overflow = true;
    if (alive) return;
    Channel.reset();
    news_.Lost = true;
}

void SerialPort::Impl::Store(std::string_view characters) {
    if (characters.empty()) return;
    news_.Data = true;
    const std::size_t taken = std::min(characters.size(), kBufferSize - buffer_.size());
    buffer_.append(characters.substr(0, taken));
    if (taken == characters.size() || overflowed_) return;
    overflowed_ = true;
    news_.Overflow = true;
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
    if (std::exchange(news_.Overflow, false)) {
        if (const auto handler = OnReceive) handler(kBufferOverflow);
    }
    if (std::exchange(news_.Data, false) && !buffer_.empty()) {
        if (const auto handler = OnReceive) handler(kDataReceived);
    }
    if (std::exchange(news_.Lost, false)) {
        if (const auto handler = OnLost) handler();
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
    impl_->Device = std::move(device);
}

const std::string& SerialPort::Device() const {
    return impl_->Device;
}

void SerialPort::SetBaudrate(int baudrate) {
    impl_->Baudrate = baudrate;
}

int SerialPort::Baudrate() const {
    return impl_->Baudrate;
}

bool SerialPort::Open() {
    const std::shared_ptr<Impl> self = impl_;
    return self->Open();
}

OpenFailure SerialPort::LastFailure() const {
    return impl_->Failure;
}

void SerialPort::AbortWaits() {
    ++abortCount;
    PostToUserInterface([] {});
}

bool SerialPort::IsOpen() const {
    return impl_->Channel != nullptr;
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
    impl_->OnReceive = std::move(handler);
}

void SerialPort::OnLost(std::function<void()> handler) {
    impl_->OnLost = std::move(handler);
}

}  // namespace dravik
