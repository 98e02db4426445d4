#include <QNetworkProxy>
#include <QTcpSocket>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/DeleteLater.h"
#include "platform/Number.h"
#include "platform/serial/SerialChannel.h"

namespace dravik {
namespace {

struct Address {
    std::string Host;
    std::uint16_t Port;
};

/// "tcp://host:port", with an IPv6 address in brackets.
std::optional<Address> ParseAddress(std::string_view device) {
    device.remove_prefix(kTcpPrefix.size());
    if (device.ends_with('/')) device.remove_suffix(1);
    const std::size_t colon = device.rfind(':');
    if (colon == std::string_view::npos) return std::nullopt;
    std::string_view host = device.substr(0, colon);
    const std::string_view digits = device.substr(colon + 1);
    if (host.starts_with('[') && host.ends_with(']'))
        host = host.substr(1, host.size() - 2);
    else if (host.find(':') != std::string_view::npos)
        return std::nullopt;
    const auto port = WholeNumber<std::uint16_t>(digits);
    if (host.empty() || port.value_or(0) == 0) return std::nullopt;
    return Address{std::string(host), *port};
}

/// Closes the connection now; deleting a socket inside its own signal is not safe.
struct SocketDeleter {
    void operator()(QTcpSocket* socket) const {
        socket->disconnect();
        socket->abort();
        DeleteLater(socket);
    }
};
using Socket = std::unique_ptr<QTcpSocket, SocketDeleter>;

class TcpChannel : public SerialChannel {
 public:
    TcpChannel(Socket socket, std::weak_ptr<SerialListener> listener)
        : socket_(std::move(socket)), listener_(std::move(listener)) {
        const auto report = [this] { Report(); };
        QObject::connect(socket_.get(), &QTcpSocket::readyRead, report);
        QObject::connect(socket_.get(), &QTcpSocket::disconnected, report);
    }

    bool Read(std::string& characters) override {
        busy_ = true;
        // Fetches what the system holds but the event loop has not delivered.
        if (IsConnected()) socket_->waitForReadyRead(0);
        const QByteArray bytes = socket_->readAll();
        characters.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        busy_ = false;
        return IsConnected();
    }

    bool Write(std::string_view bytes) override {
        const std::size_t waiting = static_cast<std::size_t>(socket_->bytesToWrite());
        if (!IsConnected() || waiting + bytes.size() > kWriteQueueLimit) return false;
        busy_ = true;
        socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
        socket_->flush();
        busy_ = false;
        return IsConnected();
    }

 private:
    bool IsConnected() const { return socket_->state() == QAbstractSocket::ConnectedState; }

    // The socket also signals from inside Read and Write; their caller sees the result anyway.
    void Report() {
        if (busy_) return;
        if (const auto listener = listener_.lock()) listener->ChannelReady();
    }

    Socket socket_;
    std::weak_ptr<SerialListener> listener_;
    bool busy_ = false;
};

class TcpOpening : public SerialOpening {
 public:
    explicit TcpOpening(const Address& address) : socket_(new QTcpSocket) {
        socket_->setProxy(QNetworkProxy::NoProxy);
        socket_->connectToHost(QString::fromStdString(address.Host), address.Port);
    }

    bool Finished() const override {
        const QAbstractSocket::SocketState state = socket_->state();
        return state == QAbstractSocket::ConnectedState ||
               state == QAbstractSocket::UnconnectedState;
    }

    std::unique_ptr<SerialChannel> Take(std::weak_ptr<SerialListener> listener) override {
        if (socket_->state() != QAbstractSocket::ConnectedState) return nullptr;
        // Commands are short and each waits for its reply: collecting them would only delay them.
        socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        socket_->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
        return std::make_unique<TcpChannel>(std::move(socket_), std::move(listener));
    }

    OpenFailure Failure() const override {
        if (!socket_ || socket_->state() == QAbstractSocket::ConnectedState)
            return OpenFailure::None;
        switch (socket_->error()) {
            case QAbstractSocket::ConnectionRefusedError:
                return OpenFailure::Refused;
            case QAbstractSocket::HostNotFoundError:
                return OpenFailure::UnknownHost;
            default:
                return OpenFailure::NoAnswer;
        }
    }

 private:
    Socket socket_;
};

}  // namespace

std::unique_ptr<SerialOpening> StartTcpOpening(std::string_view device) {
    const std::optional<Address> address = ParseAddress(device);
    if (!address) return nullptr;
    return std::make_unique<TcpOpening>(*address);
}

}  // namespace dravik
