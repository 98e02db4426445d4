#pragma once

#include "vehicle/Scenario.h"
#include "vehicle/ScenarioValues.h"

namespace dravik::vehicle {

/// Readers of the keys of each section: name in lower case, value without blanks around it. Each
/// gives an empty text, or what is wrong.
Problem ReadVehicleKey(const std::string& name, std::string_view value, Scenario& scenario);
Problem ReadInterfaceKey(const std::string& name, std::string_view value, Scenario& scenario);
Problem ReadDriveKey(const std::string& name, std::string_view value, Scenario& scenario);

/// The same for the elements of the numbered sections.
Problem ReadElementKey(const std::string& name, std::string_view value, DrivePhase& phase);
Problem ReadElementKey(const std::string& name, std::string_view value, UnitRule& unit);
Problem ReadElementKey(const std::string& name, std::string_view value, CodeRule& code);
Problem ReadElementKey(const std::string& name, std::string_view value, TestRule& test);
Problem ReadElementKey(const std::string& name, std::string_view value, RefusalRule& refusal);
Problem ReadElementKey(const std::string& name, std::string_view value, FaultRule& fault);

}  // namespace dravik::vehicle
