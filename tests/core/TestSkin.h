#pragma once

#include <QImage>
#include <string>

#include "support/TemporaryFolder.h"

namespace dravik {

/// A program folder with a small skin: 200 x 60 buttons below each other on the main page, a page
/// of trouble codes and a freeze page.
struct ProgramFolderWithSkin {
    TemporaryFolder Folder;

    ProgramFolderWithSkin() {
        Folder.Write("Dravik.ini",
                     "; kept\n[Options]\nSkin=test\nLanguage=test\nMisc=0\n"
                     "[OBD]\nComPort=1\nUpdateIntervall=10\nRefreshRate=20\n");
        Folder.Write("languages/test.ini",
                     "[Sensors]\nFilename=test.sensors\n[DTC]\nFilename=codes\n");
        Folder.Write("languages/test.sensors",
                     "[SensorConfig]\n"
                     "Sensor0Function=rpm\nSensor0Source=obd_0C\nSensor0Factor=0,25\n"
                     "Sensor1Function=speed\nSensor1Source=obd_0D\nSensor1Factor=1\n"
                     "Sensor2Function=coolant\nSensor2Source=obd_05\nSensor2Factor=1\n"
                     "Sensor2Offset=-40\nSensor3Function=0\n");
        Folder.Write("languages/codes", "[errorcodes]\nP0133=Sensor slow\nP0301=Misfire 1\n");
        Folder.Write("skins/test.ini",
                     "[General]\nImagefolder=test\n"
                     "[mainmenu]\n" +
                         Button(0, "openmenu_codes") + Button(1, "obd_connect") +
                         Label(0, "obd_status") + Label(1, "sensor_rpm") +
                         Label(2, "sensor_speed") + Label(3, "sensor_coolant") + "[codes]\n" +
                         Button(0, "obd_gettroublecodes") + Button(1, "obd_cleartroublecodes") +
                         Button(2, "value_-") + Button(3, "openmenu_freezeframe") +
                         Button(4, "exit") +
                         "List0Function=troublecodes\nList0X=300\nList0Y=0\nList0Width=400\n"
                         "List0Height=200\nList0FontSize=12\nList0FontColor=&HFFFFFF\n" +
                         Label(0, "obd_troublecodescount") + "[freezeframe]\n" +
                         Button(0, "openmenu_codes") + Label(0, "sensor_rpm"));
        QImage picture(200, 60, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        Folder.Write("skins/test/folder", "");
        picture.save(QString::fromStdString(Folder / "skins/test/up.png"));
    }

    static std::string Button(int number, const std::string& function) {
        const std::string name = "Button" + std::to_string(number);
        return name + "Function=" + function + "\n" + name + "X=10\n" + name +
               "Y=" + std::to_string(10 + 80 * number) + "\n" + name + "Up=up.png\n";
    }

    static std::string Label(int number, const std::string& function) {
        const std::string name = "Label" + std::to_string(number);
        return name + "Function=" + function + "\n" + name + "X=300\n" + name +
               "Y=" + std::to_string(220 + 40 * number) + "\n" + name + "Width=400\n" + name +
               "Height=40\n" + name + "FontSize=14\n" + name + "Color=&HFFFFFF\n";
    }

    /// The request that clicks on a button.
    static std::string ClickOn(int number) {
        return "click 110 " + std::to_string(40 + 80 * number);
    }
};

}  // namespace dravik
