#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>
#include <string>
#include <string_view>

#include "support/Waiting.h"

namespace dravik {

inline std::string DeviceAt(int port) {
    return "tcp://127.0.0.1:" + std::to_string(port);
}

/// What a port is connected to.
class FarEnd {
 public:
    virtual ~FarEnd() = default;
    virtual std::string Device() const = 0;
    /// Takes the connection that a port has opened.
    virtual bool Accept() { return true; }
    virtual void Send(std::string_view bytes) = 0;
    virtual std::string Receive() = 0;
    virtual void Vanish() = 0;
};

/// A network interface for diagnosis: accepts one connection after the other.
class NetworkEnd : public FarEnd {
 public:
    explicit NetworkEnd(QHostAddress address = QHostAddress::LocalHost) { server_.listen(address); }

    std::string Device() const override { return DeviceAt(Port()); }
    bool Accept() override {
        if (!Until([this] { return server_.hasPendingConnections(); })) return false;
        peer_.reset(server_.nextPendingConnection());
        peer_->setParent(nullptr);
        return true;
    }
    void Send(std::string_view bytes) override {
        peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
        peer_->flush();
    }
    std::string Receive() override { return peer_->readAll().toStdString(); }
    void Vanish() override {
        server_.close();
        peer_->abort();
    }

    int Port() const { return server_.serverPort(); }
    QTcpServer& Server() { return server_; }
    QTcpSocket& Peer() { return *peer_; }

 private:
    QTcpServer server_;
    std::unique_ptr<QTcpSocket> peer_;
};

}  // namespace dravik
