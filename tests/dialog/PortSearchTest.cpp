#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <future>
#include <memory>

#include "dialog/DialogFixture.h"
#include "obd/PortSearch.h"
#include "obd/basOBD.h"
#include "platform/Profile.h"
#include "platform/serial/PseudoTerminal.h"
#include "support/ScriptedInterface.h"
#include "support/TestClock.h"

namespace dravik {
namespace {

class PortSearch : public DialogTest {
 protected:
    /// No port of this computer takes part.
    PortSearch() {
        for (int number = 1; number <= kPortCount; ++number)
            SetDevice(number, folder_ / "no such device");
    }

    void SetDevice(int number, const std::string& device) {
        WriteProfileString(basGlobal.IniFile, "Ports", "COM" + std::to_string(number), device);
    }

    static std::vector<std::string> Offered() {
        std::vector<std::string> texts;
        const auto* box = Find<QComboBox>("coCommSelect");
        for (int i = 0; i < box->count(); ++i) texts.push_back(box->itemText(i).toStdString());
        return texts;
    }

    static bool WaitForOffers(std::size_t count) {
        return QTest::qWaitFor([count] { return Offered().size() == count; });
    }
};

TEST_F(PortSearch, OffersTheDevicesThatThereAreWithoutTouchingThem) {
    const PseudoTerminal device;
    SetDevice(7, device.Path());
    SetDevice(9, "tcp://127.0.0.1:9");
    const std::string link = folder_ / "renamed";
    ASSERT_EQ(::symlink(device.Path().c_str(), link.c_str()), 0);
    SetDevice(32, link);
    SetDevice(2, folder_.Write("a file", "is no device"));
    Open();
    EXPECT_TRUE(WaitForOffers(3));
    EXPECT_EQ(Offered(), (std::vector<std::string>{"COM7", "COM9", "COM32"}));
    EXPECT_EQ(TextOf("coCommSelect"), "COM3");  // what is set stands, offered or not
    EXPECT_FALSE(device.WasOpened());
    // The check can see an opening.
    ::close(::open(device.Path().c_str(), O_RDWR | O_NOCTTY));
    EXPECT_TRUE(device.WasOpened());
}

TEST_F(PortSearch, AChosenPortIsSavedAsItsNumberAlone) {
    const PseudoTerminal device;
    SetDevice(17, device.Path());
    Open();
    ASSERT_TRUE(WaitForOffers(1));
    Find<QComboBox>("coCommSelect")->setCurrentIndex(0);
    EXPECT_EQ(TextOf("lCommDevice"), device.Path());
    Click("bSave");
    EXPECT_EQ(ReadIniString(basGlobal.IniFile, "OBD", "ComPort"), "17");
}

TEST_F(PortSearch, ThePortInUseIsOfferedEvenIfItsNameIsGone) {
    const PseudoTerminal device;
    const std::string link = folder_ / "interface";
    ASSERT_EQ(::symlink(device.Path().c_str(), link.c_str()), 0);
    SetDevice(4, link);
    basGlobal.comOBD.SetDevice(link);
    ASSERT_TRUE(basGlobal.comOBD.Open());
    ::unlink(link.c_str());
    Open();
    EXPECT_TRUE(WaitForOffers(1));
    EXPECT_EQ(Offered(), std::vector<std::string>{"COM4"});
}

class FindButton : public PortSearch {
 protected:
    FindButton() {
        interface_.OnAllCommands();
        SetDevice(7, interface_.Device());
        clock_.OnTick([this] {
            AdvanceHighResTimer(0.02);  // silent speeds need not be waited for
            if (basGlobal.Search.Running && WhileSearching) WhileSearching();
        });
        basGlobal.tiHardware.SetEnabled(true);
    }
    static bool WaitForTheEnd() {
        return QTest::qWaitFor([] { return TextOf("cmdFind") == "Find"; });
    }

    ScriptedInterface interface_;
    std::function<void()> WhileSearching;

 private:
    FormTimer clock_{1, true};
};

TEST_F(FindButton, FillsInWhatIsFoundAndSavingItConnects) {
    const auto saved = [] { return ReadIniString(basGlobal.IniFile, "OBD", "ComPort"); };
    Open();
    std::string caption;
    WhileSearching = [&caption] { caption = TextOf("cmdFind"); };
    Click("cmdFind");
    ASSERT_TRUE(WaitForTheEnd());
    EXPECT_EQ(caption, "Cancel");
    EXPECT_EQ(Message(), "Found: IFX 1.5 on COM7 " + interface_.Device() + " 38400");
    EXPECT_EQ(TextOf("coCommSelect"), "COM7");
    EXPECT_EQ(TextOf("lCommDevice"), interface_.Device());
    EXPECT_EQ(TextOf("coBaudrate"), "38400");
    EXPECT_EQ(saved(), "3");
    Click("bSave");
    EXPECT_EQ(saved(), "7");
    EXPECT_TRUE(QTest::qWaitFor([] { return basGlobal.ConnState == kConnected; }));
}

TEST_F(FindButton, PressedAgainOrWithTheDialogItEnds) {
    interface_.On("ATI", {""});
    for (const char* button : {"cmdFind", "Command1"}) {
        Open();
        WhileSearching = [this, button] {
            const std::string place = "COM7 " + interface_.Device();
            if (interface_.Commands.empty() || !Message().starts_with(place)) return;
            WhileSearching = nullptr;
            Click(button);
        };
        Click("cmdFind");
        ASSERT_TRUE(QTest::qWaitFor([] { return !Searching(); }));
        EXPECT_EQ(FindingText(), "The search was cancelled");
        if (Dialog() != nullptr) {
            EXPECT_EQ(Message(), "The search was cancelled");
            EXPECT_EQ(TextOf("coCommSelect"), "COM3");
        }
        interface_.Commands.clear();
    }
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(PortSearch, ADeviceThatDoesNotAnswerHoldsUpNothing) {
    std::promise<void> answer;
    auto answered = std::make_shared<std::shared_future<void>>(answer.get_future().share());
    std::vector<int> found;
    SearchPorts(
        {{1, "quick"}, {2, "stuck"}, {3, "ours", true}},
        [&found](const PortCandidate& port) { found.push_back(port.Number); },
        [answered](const std::string& device) {
            if (device == "stuck") answered->wait();
            return PortState::Present;
        });
    // The first port is told while the second one is still being waited for.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !found.empty(); }));
    EXPECT_EQ(found, std::vector<int>{1});
    answer.set_value();
    EXPECT_TRUE(QTest::qWaitFor([&] { return found.size() == 3; }));
    EXPECT_EQ(found, (std::vector<int>{1, 2, 3}));
}

}  // namespace
}  // namespace dravik
