#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <fstream>
#include <string>

#include "core/basGlobal.h"
#include "obd/Reply.h"
#include "obd/basOBD.h"
#include "platform/Events.h"
#include "platform/serial/PseudoTerminal.h"

namespace dravik {
namespace {

double ProcessorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

long ResidentKilobytes() {
    std::ifstream file("/proc/self/statm");
    long whole = 0;
    long resident = 0;
    file >> whole >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/// A connected link that polls twelve PIDs, and the far end of its pseudo-terminal.
class PolledLink {
 public:
    PolledLink() {
        GlobalState& g = basGlobal;
        g = GlobalState{};
        g.comOBD.OnReceive(HandleReceiveEvent);
        g.comOBD.SetDevice(terminal_.Path());
        g.comOBD.Open();
        g.ConnState = kConnected;
        for (std::size_t pid = 4; pid < 64; pid += 5) g.PidWanted[pid] = true;
        probe_ = open(terminal_.Path().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    }
    ~PolledLink() {
        close(probe_);
        basGlobal = GlobalState{};
    }
    PolledLink(const PolledLink&) = delete;
    PolledLink& operator=(const PolledLink&) = delete;

    /// One live request and its reply; the processor time of the program's own part of it.
    double Exchange() {
        double start = ProcessorSeconds();
        RequestNextPid();
        double work = ProcessorSeconds() - start;

        Answer();

        start = ProcessorSeconds();
        PumpEvents();
        work += ProcessorSeconds() - start;
        return work;
    }

    bool Alive() const { return basGlobal.comOBD.IsOpen() && !basGlobal.AwaitingReply; }

 private:
    void Answer() {
        std::string request;
        while (request.find('\r') == std::string::npos) request += terminal_.Receive();
        const std::string reply = "41 " + request.substr(2, 2) + " 1A F8 \r\r>";
        terminal_.Send(reply);
        for (int waiting = 0; waiting < static_cast<int>(reply.size());)
            ioctl(probe_, FIONREAD, &waiting);
    }

    PseudoTerminal terminal_;
    int probe_ = -1;
};

void LiveRequest(benchmark::State& state) {
    PolledLink link;
    for (auto _ : state) {
        state.SetIterationTime(link.Exchange());
        if (!link.Alive()) return state.SkipWithError("a reply was not taken");
    }
}
BENCHMARK(LiveRequest)->UseManualTime()->Unit(benchmark::kMicrosecond);

void MemoryOverAMillionRequests(benchmark::State& state) {
    constexpr int kWarmUp = 100000;
    PolledLink link;
    for (int i = 0; i < kWarmUp; ++i) link.Exchange();
    const long before = ResidentKilobytes();
    for (auto _ : state) {
        state.SetIterationTime(link.Exchange());
        if (!link.Alive()) return state.SkipWithError("a reply was not taken");
    }
    state.SetLabel("resident " + std::to_string(before) + " -> " +
                   std::to_string(ResidentKilobytes()) + " kB");
}
BENCHMARK(MemoryOverAMillionRequests)
    ->UseManualTime()
    ->Iterations(1000000)
    ->Unit(benchmark::kMicrosecond);

/// Forty codes of two control units, their frames in turns, from the reply to the texts.
void DecodesFortyCodes(benchmark::State& state) {
    std::string reply;
    for (int frame = 0; frame < 7; ++frame) {
        for (int unit = 0; unit < 2; ++unit) {
            char line[40];
            if (frame == 0)
                std::snprintf(line, sizeof line, "7E%d 10 2A 43 14 01 01 01 02 \r", 8 + unit);
            else
                std::snprintf(line, sizeof line, "7E%d 2%d 01 %d1 01 %d2 01 %d3 01 \r", 8 + unit,
                              frame, frame, frame, frame);
            reply += line;
        }
    }
    reply += "\r>";
    for (auto _ : state) {
        const Reply taken = TakeApart(reply, {3}, Bus::Can11, true);
        std::size_t codes = 0;
        for (const UnitMessage& message : taken.Messages)
            codes += CodesIn(message.Data, Bus::Can11).value().size();
        if (codes != 40) state.SkipWithError("not forty codes");
    }
}
BENCHMARK(DecodesFortyCodes)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace dravik
