#include <algorithm>

#include "obd/Diagnosis.h"
#include "platform/Number.h"

namespace dravik {

namespace {

struct Family {
    char System;          ///< the letter in front
    std::uint16_t First;  ///< the four digits of a code, which are hexadecimal
    std::uint16_t Last;
    Severity Meaning;
};

using enum Severity;

// The first row that holds a code counts. What the standard leaves to the maker comes first, then
// what may destroy the engine or hurt somebody, then what only the exhaust suffers from.
constexpr Family kFamilies[] = {
    {'P', 0x1000, 0x1FFF, Manufacturer},
    {'P', 0x3000, 0x33FF, Manufacturer},
    {'C', 0x1000, 0x2FFF, Manufacturer},
    {'B', 0x1000, 0x2FFF, Manufacturer},
    {'U', 0x1000, 0x2FFF, Manufacturer},

    {'P', 0x0093, 0x0093, Stop},  // large leak of fuel
    {'P', 0x0217, 0x0218, Stop},  // engine or gearbox too hot
    {'P', 0x0298, 0x0298, Stop},  // oil too hot
    {'P', 0x0524, 0x0524, Stop},  // oil pressure too low
    {'P', 0x0AA6, 0x0AA6, Stop},  // insulation of the drive battery
    {'P', 0x2428, 0x2429, Stop},  // exhaust gas too hot
    {'C', 0x0021, 0x0021, Stop},  // brake booster
    {'C', 0x0049, 0x0049, Stop},  // brake fluid
    {'C', 0x0072, 0x0072, Stop},  // brakes too hot

    {'P', 0x0030, 0x0032, DriveOn},  // heaters of the oxygen sensors
    {'P', 0x0036, 0x0038, DriveOn},
    {'P', 0x0040, 0x0044, DriveOn},
    {'P', 0x0050, 0x0064, DriveOn},
    {'P', 0x0095, 0x0099, DriveOn},  // temperature of the intake air
    {'P', 0x0110, 0x0114, DriveOn},
    {'P', 0x0128, 0x0128, DriveOn},  // thermostat: the engine stays too cool
    {'P', 0x0130, 0x0167, DriveOn},  // oxygen sensors
    {'P', 0x0195, 0x0199, DriveOn},  // sensor of the oil's temperature
    {'P', 0x0400, 0x046F, DriveOn},  // recirculation, air, catalysts, tank and its ventilation
    {'P', 0x0491, 0x0492, DriveOn},  // secondary air
    {'P', 0x0496, 0x0499, DriveOn},  // tank ventilation
    {'P', 0x0530, 0x0539, DriveOn},  // air conditioning
    {'P', 0x2195, 0x2198, DriveOn},  // oxygen sensors
    {'P', 0x2231, 0x2259, DriveOn},  // oxygen sensors, secondary air
    {'P', 0x2400, 0x2427, DriveOn},  // tank ventilation
};

constexpr std::size_t kCodeLength = 5;

}  // namespace

Severity SeverityOf(std::string_view code) {
    if (code.size() != kCodeLength) return SeeSoon;
    const auto digits = WholeNumber<std::uint16_t>(code.substr(1), 16);
    const auto* const family =
        std::find_if(std::begin(kFamilies), std::end(kFamilies), [&](const Family& row) {
            return row.System == code[0] && digits && *digits >= row.First && *digits <= row.Last;
        });
    // A code without a row, such as a misfire, a network or an airbag, is nothing to put off.
    return family == std::end(kFamilies) ? SeeSoon : family->Meaning;
}

std::string_view SeverityText(Severity severity) {
    switch (severity) {
        case DriveOn:
            return "You can drive on";
        case SeeSoon:
            return "Have it seen soon";
        case Stop:
            return "Stop the car safely";
        case Manufacturer:
            break;
    }
    return "Manufacturer's own code";
}

}  // namespace dravik
