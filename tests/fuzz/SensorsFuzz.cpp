#include "FuzzTarget.h"
#include "platform/Text.h"
#include "settings/basSettings.h"
#include "skinfunc/basValueProc.h"

namespace dravik::fuzz {
namespace {}  // namespace

/// The sensor table, and the settings file in the second part.
void Run(std::string_view input) {
    basGlobal = GlobalState{};
    WriteFile("languages/a.sensors", TakePart(input));
    WriteFile("languages/a.ini", "[Sensors]\nFilename=a.sensors\n");
    WriteFile("Dravik.ini", "[Options]\nLanguage=a\n" + std::string(input));
    InitGlobals(Folder().Path());
    LoadSettings();
    LoadResumeState();
    Require(basGlobal.SensorCount >= 0 && basGlobal.SensorCount <= kSensorLimit,
            "the table holds the sensors");
    for (const std::int32_t raw : {0, 1, 0xFFFF, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        basGlobal.LiveRaw.fill(raw);
        int i = 0;
        for (SensorRecord& sensor : SensorsInUse()) {
            sensor.Active = !sensor.Active;
            UpdatePidWanted(sensor);
            SensorValue(sensor);
            const SensorRecord* found = FindSensor(sensor.Function);
            Require(found != nullptr && found <= &sensor, "a sensor is found by its name",
                    sensor.Function);
            for (const char* word : {"sensor_", "sensorunit_", "sensorcaption_", "sensoron_"}) {
                std::string function = word + sensor.Function;
                LabelText(function, i % 8);
            }
            ++i;
        }
    }
    SaveResumeState();
}

}  // namespace dravik::fuzz
