#include "app/DemoVehicle.h"

#include <QDir>
#include <QTemporaryDir>
#include <utility>

#include "vehicle/VehicleServer.h"

namespace dravik {

/// Its terminal stands behind a link in a folder that only this user enters: after an unplug it
/// comes back under another number, and the old one may be another program's.
struct DemoVehicle::Running {
    QTemporaryDir Folder{QDir::tempPath() + QStringLiteral("/dravik-XXXXXX")};
    vehicle::VehicleServer Server;  ///< goes first, and takes the link away
};

DemoVehicle::DemoVehicle() = default;
DemoVehicle::~DemoVehicle() = default;

std::string DemoVehicle::Start(const std::string& scenario) {
    if (running_ != nullptr) return {};
    auto started = std::make_unique<Running>();
    if (std::string error = started->Server.LoadScenario(scenario); !error.empty()) return error;
    if (!started->Folder.isValid())
        return "no temporary folder: " + started->Folder.errorString().toStdString();
    std::string error = started->Server.ServeSerialLine(
        started->Folder.filePath(QStringLiteral("interface")).toStdString());
    if (error.empty()) running_ = std::move(started);
    return error;
}

std::string DemoVehicle::Device() const {
    return running_ == nullptr ? std::string{} : running_->Server.Device();
}

}  // namespace dravik
