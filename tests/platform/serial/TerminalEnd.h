#pragma once

#include "platform/serial/FarEnd.h"
#include "platform/serial/PseudoTerminal.h"

namespace dravik {

class TerminalEnd : public FarEnd {
 public:
    ~TerminalEnd() override { close(name_); }
    std::string Device() const override { return terminal_.Path(); }
    void Send(std::string_view bytes) override { terminal_.Send(bytes); }
    std::string Receive() override { return terminal_.Receive(); }
    void Vanish() override {
        // Held open, so that no other program is given a terminal of this name meanwhile.
        name_ = open(terminal_.Path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        terminal_.Vanish();
    }

 private:
    PseudoTerminal terminal_;
    int name_ = -1;
};

}  // namespace dravik
