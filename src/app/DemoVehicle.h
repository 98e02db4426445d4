#pragma once

#include <memory>
#include <string>

namespace dravik {

/// The virtual vehicle inside the program, from its start to the end of the object.
class DemoVehicle {
 public:
    DemoVehicle();
    ~DemoVehicle();

    /// Starts it, once.
    ///
    /// @param scenario  as in VehicleServer::LoadScenario
    /// @return an empty text, or the reason why it does not start
    std::string Start(const std::string& scenario);

    /// The device to connect to; empty while it does not run.
    std::string Device() const;

 private:
    struct Running;
    std::unique_ptr<Running> running_;
};

}  // namespace dravik
