#include <array>
#include <memory>

#include "FuzzTarget.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/basOBD.h"
#include "platform/Events.h"
#include "platform/serial/PseudoTerminal.h"
#include "support/FakeScreen.h"
#include "support/TestClock.h"

namespace dravik::fuzz {
namespace {

/// The interface: it gives the parts of the input as replies, one for each command, at every pass
/// of the event loop. A reply without its prompt is followed by a minute of silence.
class Interface : public std::enable_shared_from_this<Interface> {
 public:
    explicit Interface(std::string_view replies) : replies_(replies) {}

    const std::string& Device() const { return terminal_.Path(); }

    void Serve() {
        if (terminal_.Receive().find('\r') != std::string::npos) {
            const std::string_view reply = TakePart(replies_);
            terminal_.Send(reply);
            if (reply.find('>') == std::string_view::npos) AdvanceHighResTimer(60);
        }
        PostToUserInterface([weak = weak_from_this()] {
            if (const auto self = weak.lock()) self->Serve();
        });
    }

 private:
    PseudoTerminal terminal_;
    std::string_view replies_;
};

void ReadCodes() {
    ReadTroubleCodes();
    const ListSlot& list = basGlobal.Lists[kCodeListSlot];
    Require(basGlobal.ConnState == kConnected || basGlobal.ConnState == kNotConnected,
            "reading codes ends connected or not");
    Require(basGlobal.DtcCount >= 0 && basGlobal.DtcCount <= 127, "the count has seven bits");
    if (basGlobal.ConnState != kConnected) return;
    Require(list.Entries.size() ==
                std::max<std::size_t>(1, static_cast<std::size_t>(basGlobal.DtcCount)),
            "the list shows every code");
    for (int index = 1; index <= static_cast<int>(list.Entries.size()); ++index) {
        SelectListEntry(basGlobal.Lists[kCodeListSlot], index);
        const std::size_t length = list.Entries[static_cast<std::size_t>(index) - 1].Text.size();
        for (int step = 0; step < 3; ++step) ScrollTroubleCode();
        const std::string& turned = list.Entries[static_cast<std::size_t>(index) - 1].Text;
        Require(turned.size() == length, "the ticker only turns", turned);
    }
}

}  // namespace

void Run(std::string_view input) {
    basGlobal = GlobalState{};
    InstallFakeScreen();
    InitGlobals(Folder().Path());
    basGlobal.DescriptionFile = DRAVIK_SOURCE "languages/english.codes";
    for (const char* menu : {"mainmenu", "freezeframe"}) {
        basGlobal.CurrentMenu = menu;
        for (std::string_view rest = input; !rest.empty();) {
            const std::string reply(TakePart(rest));
            HandlePidReply(reply);
            ReadMonitorStatus(reply);
        }
    }
    InitLink();
    const auto far = std::make_shared<Interface>(input);
    basGlobal.comOBD.SetDevice(far->Device());
    Require(basGlobal.comOBD.Open(), "a pseudo-terminal opens");
    far->Serve();
    basGlobal.ConnState = kReadingCodes;
    ReadCodes();
    basGlobal.ConnState = kClearingCodes;
    ClearTroubleCodes();
    // What is left over comes as live data.
    basGlobal.ConnState = kConnected;
    basGlobal.PidWanted.fill(true);
    for (int step = 0; step < 3; ++step) {
        RequestNextPid();
        for (int pass = 0; pass < 4; ++pass) PumpEvents();
    }
    basGlobal.comOBD.Close();
}

}  // namespace dravik::fuzz
