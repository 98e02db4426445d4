#pragma once

#include <QImage>
#include <string>
#include <vector>

#include "core/basGlobal.h"
#include "settings/basSettings.h"
#include "skin/SkinFile.h"
#include "skin/check/CheckSkin.h"
#include "support/TemporaryFolder.h"

namespace dravik {

/// A program folder with a skin that has no mistakes, for tests that put one in.
class SoundSkin {
 public:
    SoundSkin() {
        folder_.Write("Dravik.ini", "[Options]\nSkin=test\nLanguage=test\n");
        folder_.Write("languages/test.ini", "[Sensors]\nFilename=test.sensors\n");
        folder_.Write("languages/German.ini", "[Sensors]\nFilename=test.sensors\n");
        folder_.Write("languages/test.sensors",
                      "[SensorConfig]\nSensor0Function=rpm.engine\nSensor0Source=obd_0C\n"
                      "Sensor1Function=speed\nSensor1Source=can_1\n");
        folder_.Write("skins/test/broken.png", "this is no picture");
        folder_.Write("skins/test/half@2x.png", "neither is this");
        SavePicture("key.png", 40);
        SavePicture("half.png", 40);
        SavePicture("odd.png", 40);
        SavePicture("odd@2x.png", 79);
        SavePicture("pair.png", 40);
        SavePicture("pair@2x.png", 80);
    }
    ~SoundSkin() { basGlobal = GlobalState{}; }

    static std::string Text() {
        return R"(; a comment
[General]
Imagefolder=test
Width=800
Height=480
Menu0=mainmenu
Menu1=engine

[status]
Label0Function=time
Label0Color=&HFFFFFF
Image0Function=obd_connected
Image0Picture=pair.png

[mainmenu]
CommonObjects0=status
Command=obd_connect
Button0Function=openmenu_+
Button0X= 10
Button0Up=Key.PNG
Button0LabelX=
Button0LabelFunction=sensorunit_rpm.engine
Button0LabelColor=&HFF
Button1Function=openbox_keys
Button1Up=key.png
Gauge0Function=sensor_rpm.engine
Gauge0Max=8000
Gauge0RadiusEnd=100
Gauge0StretchY=100
Gauge0Color=255
Bargraph0Function=obd_05
Bargraph0Background=key.png
Bargraph0Max=100
Bargraph0Direction=1
Label0Function=text
Label0Caption=Welcome
Label0Color=&HFF00&

[engine]
CommonObjects0=status
Button0Function=showquery_Go back?:exit
Button0Up=key.png
Button1Function=openmenu_codes
Button1Up=key.png
Chart0Function=sensor_speed
List0Function=media
List0Width=100
List0Height=100
Slider0Function=listview
Slider0Background=key.png

[codes]
Button0Function=exit
Button0Up=key.png

[keys]
BackgroundX=40
Button0Function=closebox
Button0Up=key.png

[query]
Background=key.png
Button0Function=yes
Button0Up=key.png
Button1Function=no
Button1Up=key.png
)";
    }

    /// What the checker finds in a skin file of that text.
    std::vector<SkinError> Check(const std::string& text) const {
        folder_.Write("skins/test.ini", text);
        folder_.Write("skins/night.ini", "");
        basGlobal = GlobalState{};
        InitGlobals(folder_.Path());
        LoadSettings();
        LoadSkinFonts();
        return CheckSkin();
    }

    const TemporaryFolder& Folder() const { return folder_; }

 private:
    void SavePicture(const std::string& name, int side) const {
        QImage picture(side, side, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        picture.save(QString::fromStdString(folder_ / ("skins/test/" + name)));
    }

    TemporaryFolder folder_;
};

}  // namespace dravik
