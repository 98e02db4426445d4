#include "vehicle/VehicleServer.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "vehicle/InterfaceProtocol.h"
#include "vehicle/Transport.h"

namespace dravik::vehicle {
namespace {

constexpr double kReopenPause = 0.2;  // seconds, when the device cannot come back at once

}  // namespace

struct VehicleServer::Impl {
    Scenario Wanted;
    std::unique_ptr<Transport> Wire;
    std::thread Thread;
    std::atomic<bool> Stopping = false;

    std::string Serve(std::unique_ptr<Transport> wire);
    void Run();
};

std::string VehicleServer::Impl::Serve(std::unique_ptr<Transport> wire) {
    if (Thread.joinable()) return "the vehicle is being served already";
    std::string problem = wire->Open();
    if (!problem.empty()) return problem;
    Wire = std::move(wire);
    Stopping = false;
    Thread = std::thread([this] { Run(); });
    return {};
}

void VehicleServer::Impl::Run() {
    InterfaceProtocol interface(Wanted);
    const auto begin = std::chrono::steady_clock::now();
    const auto clock = [begin] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    while (!Stopping) {
        const double now = clock();
        double next = interface.Trouble().NextPlugChange(now);
        if (interface.Trouble().Unplugged(now)) {
            Wire->Close();
        } else if (!Wire->IsOpen()) {
            interface.PowerUp();
            if (!Wire->Open().empty()) next = std::min(next, now + kReopenPause);
        }
        if (Wire->IsOpen()) {
            const std::string output = interface.TakeOutput(now);
            if (!output.empty()) Wire->Send(output);
            if (interface.Trouble().Unplugged(now)) continue;  // that very command pulled the plug
            next = std::min(next, interface.NextEvent().value_or(kForever));
        }
        const std::string input =
            Wire->Wait(next < kForever ? std::max(0.0, next - clock()) : -1.0);
        if (!input.empty()) interface.Receive(clock(), input);
    }
    Wire->Close();
}

VehicleServer::VehicleServer() : impl_(std::make_unique<Impl>()) {
    // The built-in default is part of the program: that it can be read is tested.
    LoadScenario({});
}

VehicleServer::~VehicleServer() {
    Stop();
}

std::string VehicleServer::LoadScenario(const std::string& fileOrName) {
    return vehicle::LoadScenario(fileOrName, impl_->Wanted);
}

std::string VehicleServer::ServeSerialLine(const std::string& link) {
    return impl_->Serve(MakeSerialLine(link));
}

std::string VehicleServer::ServeTcp(int port) {
    return impl_->Serve(MakeTcp(port));
}

std::string VehicleServer::Device() const {
    return impl_->Wire == nullptr ? std::string() : impl_->Wire->Device();
}

void VehicleServer::Stop() {
    if (!impl_->Thread.joinable()) return;
    impl_->Stopping = true;
    impl_->Wire->Wake();
    impl_->Thread.join();
    impl_->Wire.reset();
}

}  // namespace dravik::vehicle
