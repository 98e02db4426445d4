#pragma once

#include <memory>
#include <string>
#include <vector>

#include "obd/basOBD.h"
#include "support/GlobalsFixture.h"
#include "support/ScriptedInterface.h"
#include "support/TestClock.h"

namespace dravik {

/// The link as the program runs it, with a scripted interface as COM3. Steps are made by the test:
/// tiHardware itself stays silent.
class LinkTest : public GlobalsTest {
 protected:
    LinkTest() {
        InitLink();
        basGlobal.tiHardware.SetInterval(0);
        interface_ = std::make_unique<ScriptedInterface>();
        interface_->OnAllCommands();
        WriteSettings("");
    }

    void WriteSettings(const std::string& linkKeys) {
        WriteFile("Dravik.ini", "[OBD]\nComPort=3\n" + linkKeys +
                                    "\n[Ports]\nCOM3=" + interface_->Device() + "\n");
    }

    static void Connect() {
        basGlobal.ConnState = kConnecting;
        HardwareStep();
    }

    /// An open port in some state, without the connect sequence.
    void OpenIn(std::uint8_t state) {
        basGlobal.comOBD.SetDevice(interface_->Device());
        ASSERT_TRUE(basGlobal.comOBD.Open());
        basGlobal.ConnState = state;
    }

    std::unique_ptr<ScriptedInterface> interface_;
};

}  // namespace dravik
