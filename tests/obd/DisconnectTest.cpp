#include <functional>
#include <string>

#include "core/UpCalls.h"
#include "support/LinkFixture.h"

namespace dravik {
namespace {

class LetGoOfTheLink : public LinkTest {
 protected:
    static ScriptedInterface::Answer AndDo(std::function<void()> action) {
        return ScriptedInterface::Answer(std::move(action));
    }
    static int StateAfterSteps() {
        for (int step = 0; step < 3; ++step) {
            AdvanceHighResTimer(100);
            HardwareStep();
        }
        return basGlobal.ConnState;
    }
};

TEST_F(LetGoOfTheLink, EndsWhateverStepRunsAndTheStepSetsNoStateAnyMore) {
    const struct {
        int State;
        const char* Command;  ///< during whose answer the driver disconnects
    } rows[] = {{4, "ATZ"},  {4, "AT!01"}, {4, "ATI"}, {4, "0101"},
                {4, "ATDP"}, {16, "0101"}, {16, "03"}, {18, "04"}};
    for (const auto& row : rows) {
        for (const bool connectsAgain : {false, true}) {
            SCOPED_TRACE(std::to_string(row.State) + " " + row.Command +
                         (connectsAgain ? " and connects" : ""));
            interface_ = std::make_unique<ScriptedInterface>();
            interface_->OnAllCommands();
            WriteSettings("");
            if (row.State == 4)
                basGlobal.ConnState = kConnecting;
            else
                OpenIn(static_cast<std::uint8_t>(row.State));
            interface_->On(row.Command, {AndDo([connectsAgain] {
                               Disconnect();
                               if (connectsAgain) basGlobal.ConnState = kConnecting;
                           })});
            HardwareStep();
            EXPECT_EQ(basGlobal.ConnState, connectsAgain ? 4 : 1);
            EXPECT_FALSE(basGlobal.comOBD.IsOpen());
            std::erase(interface_->Commands, "");  // a clear ends with two carriage returns
            EXPECT_EQ(interface_->Commands.back(), row.Command);
            EXPECT_TRUE(basGlobal.tiHardware.Enabled());
            interface_->OnAllCommands();
            if (connectsAgain) {
                HardwareStep();
                EXPECT_EQ(basGlobal.ConnState, 3);
            }
        }
    }
}

TEST_F(LetGoOfTheLink, AlsoWhileTheBusIsWaitedForOrTheOutcomeOfAClearIsRead) {
    WriteSettings("BusInitDelay=30");
    FormTimer watch(2, true);
    watch.OnTick([] {
        if (basGlobal.ConnState == kInitializing) Disconnect();
    });
    Connect();
    EXPECT_EQ(basGlobal.ConnState, 1);
    EXPECT_EQ(interface_->Commands.back(), "ATI");

    OpenIn(kClearingCodes);
    interface_->On("04", {"44\r\r>"});
    fakeScreen.Answer = [] {
        Disconnect();
        return static_cast<int>(kAnswerOk);
    };
    HardwareStep();
    EXPECT_EQ(basGlobal.ConnState, 1);
}

TEST_F(LetGoOfTheLink, NothingConnectsAgainBeforeItIsAskedFor) {
    basGlobal.Misc = kMiscAutoConnect;
    basGlobal.ReconnectSeconds = 30;
    for (const bool demo : {false, true}) {
        if (demo) basGlobal.Launch.DemoDevice = interface_->Device();
        basGlobal.ConnState = kNotConnected;
        EXPECT_TRUE(LinkActive()) << "it is about to connect";
        Connect();
        EXPECT_TRUE(LinkActive());
        ASSERT_EQ(basGlobal.ConnState, 3);
        basGlobal.PidWanted[5] = true;
        HardwareStep();
        ASSERT_TRUE(basGlobal.AwaitingReply);
        interface_->Say("41 05 ");  // half a reply, that must not become part of a later one
        ASSERT_TRUE(Until([] { return !basGlobal.RxBuffer.empty(); }));
        Disconnect();
        EXPECT_EQ(basGlobal.RxBuffer, "");
        EXPECT_EQ(StateAfterSteps(), 1);
        EXPECT_FALSE(LinkActive());
        EXPECT_FALSE(basGlobal.comOBD.IsOpen());

        Connect();
        EXPECT_EQ(basGlobal.ConnState, 3);
        EXPECT_FALSE(basGlobal.AwaitingReply);
        interface_->Vanish();
        ASSERT_TRUE(Until([] { return basGlobal.ConnState == 1; }));
        EXPECT_TRUE(LinkActive());
        HardwareStep();
        EXPECT_EQ(basGlobal.ConnState, 4) << "by itself, as the settings say";
        interface_ = std::make_unique<ScriptedInterface>();
        interface_->OnAllCommands();
        WriteSettings("");
    }
}

}  // namespace
}  // namespace dravik
