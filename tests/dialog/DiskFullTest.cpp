#include <sys/resource.h>

#include <csignal>

#include "dialog/DialogFixture.h"

namespace dravik {
namespace {

/// A limit on the size of files stops a write half-way, as a full disk does.
class FullDisk {
 public:
    FullDisk() {
        before_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &limit_);
        rlimit small = limit_;
        small.rlim_cur = 4096;
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, before_);
    }

 private:
    rlimit limit_{};
    void (*before_)(int);
};

class DiskFull : public DialogTest {
 protected:
    void SaveWithoutRoom() {
        const FullDisk full;
        Click("bSave");
    }
};

TEST_F(DiskFull, LeavesBothFilesWholeAndTellsTheUser) {
    const std::string sensors = kSensors + std::string(8000, ';') + "\n";
    folder_.Write("languages/english.sensors", sensors);
    Open();
    Type("tRefreshRate", QStringLiteral("77"));
    ShowTab(1);
    Type("txtSensorCaption", QStringLiteral("New"));
    SaveWithoutRoom();
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_TRUE(Dialog()->isVisible());
    EXPECT_NE(Message().find("english.sensors"), std::string::npos) << Message();
    EXPECT_EQ(folder_.Read("languages/english.sensors"), sensors);
    EXPECT_EQ(folder_.Read("Dravik.ini"), kSettings);
    EXPECT_EQ(basGlobal.CurrentMenu, "other");

    Click("bSave");  // there is room again, and nothing that was typed is lost
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(basGlobal.Sensors[0].Caption, "New");
    EXPECT_EQ(basGlobal.tiMain.Interval(), 77);
}

TEST_F(DiskFull, LeavesTheSensorsTooWhenOnlyTheSettingsHaveNoRoom) {
    const std::string settings = kSettings + std::string(8000, ';') + "\n";
    folder_.Write("Dravik.ini", settings);
    Open();
    Type("tRefreshRate", QStringLiteral("77"));
    ShowTab(1);
    Type("txtSensorCaption", QStringLiteral("New"));
    SaveWithoutRoom();
    ASSERT_NE(Dialog(), nullptr);
    EXPECT_NE(Message().find("Dravik.ini"), std::string::npos) << Message();
    EXPECT_EQ(folder_.Read("Dravik.ini"), settings);
    EXPECT_EQ(folder_.Read("languages/english.sensors"), kSensors);
}

}  // namespace
}  // namespace dravik
