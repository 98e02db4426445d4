#ifndef NOMINMAX
#define NOMINMAX
#endif

#include <winsock2.h>
// After winsock2.h, which must come first.
#include <ws2tcpip.h>

#include <algorithm>
#include <cmath>
#include <mutex>

#include "vehicle/Transport.h"

namespace dravik::vehicle {
namespace {

std::string SocketError(const std::string& what) {
    return what + ": socket error " + std::to_string(WSAGetLastError());
}

void CloseSocket(SOCKET& socket) {
    if (socket != INVALID_SOCKET) closesocket(socket);
    socket = INVALID_SOCKET;
}

class Tcp : public Transport {
 public:
    explicit Tcp(int port) : port_(port) {
        WSADATA data;
        started_ = WSAStartup(MAKEWORD(2, 2), &data) == 0;
        wake_ = WSACreateEvent();
        ready_ = WSACreateEvent();
    }
    ~Tcp() override {
        Tcp::Close();
        WSACloseEvent(wake_);
        WSACloseEvent(ready_);
        if (started_) WSACleanup();
    }
    Tcp(const Tcp&) = delete;
    Tcp& operator=(const Tcp&) = delete;

    std::string Open() override {
        listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        if (listener_ == INVALID_SOCKET) return SocketError("socket");
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<u_short>(port_));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int size = sizeof address;
        auto* plain = reinterpret_cast<sockaddr*>(&address);
        if (bind(listener_, plain, size) != 0 || listen(listener_, 4) != 0 ||
            getsockname(listener_, plain, &size) != 0) {
            std::string problem = SocketError("port " + std::to_string(port_));
            Close();
            return problem;
        }
        port_ = ntohs(address.sin_port);
        const std::lock_guard lock(mutex_);
        device_ = "tcp://127.0.0.1:" + std::to_string(port_);
        return {};
    }

    void Close() override {
        CloseSocket(client_);
        CloseSocket(listener_);
    }

    bool IsOpen() const override { return listener_ != INVALID_SOCKET; }

    std::string Device() const override {
        const std::lock_guard lock(mutex_);
        return device_;
    }

    /// One client at a time, as on a serial line: a second one waits until the first has gone.
    std::string Wait(double seconds) override {
        const SOCKET waiting = client_ != INVALID_SOCKET ? client_ : listener_;
        if (waiting != INVALID_SOCKET)
            WSAEventSelect(waiting, ready_, FD_ACCEPT | FD_READ | FD_CLOSE);
        const WSAEVENT events[2] = {wake_, ready_};
        const DWORD timeout = seconds < 0
                                  ? WSA_INFINITE
                                  : static_cast<DWORD>(std::min(std::ceil(seconds * 1000), 1e9));
        const DWORD result = WSAWaitForMultipleEvents(2, events, FALSE, timeout, FALSE);
        WSAResetEvent(wake_);
        WSAResetEvent(ready_);
        if (result != WSA_WAIT_EVENT_0 + 1 || waiting == INVALID_SOCKET) return {};
        if (client_ == INVALID_SOCKET) {
            client_ = accept(listener_, nullptr, nullptr);
            if (client_ == INVALID_SOCKET) return {};
            const char on = 1;
            setsockopt(client_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
            // An accepted socket inherits the listener's event; it also makes it non-blocking.
            WSAEventSelect(client_, ready_, FD_READ | FD_CLOSE);
        }
        char buffer[1024];
        const int count = recv(client_, buffer, sizeof buffer, 0);
        if (count > 0) return std::string(buffer, static_cast<std::size_t>(count));
        if (count == 0 || WSAGetLastError() != WSAEWOULDBLOCK) CloseSocket(client_);
        return {};
    }

    void Send(std::string_view bytes) override {
        if (client_ == INVALID_SOCKET) return;
        send(client_, bytes.data(), static_cast<int>(bytes.size()), 0);
    }

    void Wake() override { WSASetEvent(wake_); }

 private:
    int port_;
    bool started_ = false;
    SOCKET listener_ = INVALID_SOCKET, client_ = INVALID_SOCKET;
    WSAEVENT wake_ = WSA_INVALID_EVENT, ready_ = WSA_INVALID_EVENT;
    mutable std::mutex mutex_;
    std::string device_;
};

}  // namespace

std::unique_ptr<Transport> MakeSerialLine(const std::string&) {
    return MakeTcp(0);
}

std::unique_ptr<Transport> MakeTcp(int port) {
    return std::make_unique<Tcp>(port);
}

}  // namespace dravik::vehicle
