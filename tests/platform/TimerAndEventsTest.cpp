#include <gmock/gmock.h>

#include <thread>
#include <vector>

#include "platform/Clock.h"
#include "platform/Events.h"
#include "platform/FormTimer.h"
#include "support/Waiting.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;

// Enabled before the application object exists, like the timers of the main window.
int earlyTicks = 0;
FormTimer earlyTimer(1, true);
const bool earlyHandlerSet = (earlyTimer.OnTick([] { ++earlyTicks; }), true);

TEST(FormTimer, EnabledBeforeTheApplicationItStartsWithIt) {
    EXPECT_TRUE(Until([] { return earlyTicks >= 3; }));
    earlyTimer.SetEnabled(false);
}

TEST(FormTimer, TicksOnlyWhileEnabledAndWithAnInterval) {
    int ticks = 0;
    FormTimer timer(1);
    timer.OnTick([&] { ++ticks; });
    Settle();
    EXPECT_EQ(ticks, 0);
    EXPECT_FALSE(timer.Enabled());
    timer.SetEnabled(true);
    EXPECT_TRUE(Until([&] { return ticks >= 3; }));
    timer.SetEnabled(false);
    ticks = 0;
    Settle();
    EXPECT_EQ(ticks, 0);

    FormTimer silent(0, true);
    silent.OnTick([&] { ++ticks; });
    Settle();
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(silent.Enabled());
    silent.SetInterval(1);
    EXPECT_TRUE(Until([&] { return ticks >= 1; }));
    silent.SetInterval(0);
    ticks = 0;
    Settle();
    EXPECT_EQ(ticks, 0);
}

// The short timer gives the rhythm: in each of its ticks the long one starts its interval anew, or
// is only told once more that it is enabled.
TEST(FormTimer, RestartingBeginsTheIntervalAnewEnablingTwiceDoesNot) {
    int longTicks = 0;
    FormTimer longTimer(300, true);
    longTimer.OnTick([&] { ++longTicks; });
    int beats = 0;
    FormTimer beat(5, true);

    beat.OnTick([&] {
        ++beats;
        longTimer.Restart();
    });
    EXPECT_TRUE(Until([&] { return beats >= 100; }));
    EXPECT_EQ(longTicks, 0);

    beat.OnTick([&] {
        longTimer.SetEnabled(false);
        longTimer.SetEnabled(true);
        ++beats;
    });
    EXPECT_TRUE(Until([&] { return beats >= 200; }));
    EXPECT_EQ(longTicks, 0);

    beat.OnTick([&] { longTimer.SetEnabled(true); });
    EXPECT_TRUE(Until([&] { return longTicks >= 2; }));
}

TEST(FormTimer, OthersAndItselfTickWhileAHandlerPumpsEvents) {
    int depth = 0;
    int deepest = 0;
    int otherTicks = 0;
    FormTimer other(1, true);
    other.OnTick([&] { ++otherTicks; });
    int entered = 0;
    FormTimer timer(1, true);
    timer.OnTick([&] {
        ++entered;
        deepest = std::max(deepest, ++depth);
        if (depth == 3) timer.SetEnabled(false);
        const int before = otherTicks;
        EXPECT_TRUE(Until([&] { return !timer.Enabled() && otherTicks > before; }));
        --depth;
    });
    EXPECT_TRUE(Until([&] { return deepest == 3 && depth == 0; }));
    Settle();
    EXPECT_EQ(entered, 3) << "switched off by its own tick";

    // Switched off for the length of a step, it is never entered twice.
    deepest = 0;
    int steps = 0;
    timer.OnTick([&] {
        timer.SetEnabled(false);
        deepest = std::max(deepest, ++depth);
        const int before = otherTicks;
        EXPECT_TRUE(Until([&] { return otherTicks >= before + 3; }));
        --depth;
        ++steps;
        timer.SetEnabled(true);
    });
    timer.SetEnabled(true);
    EXPECT_TRUE(Until([&] { return steps >= 3; }));
    EXPECT_EQ(deepest, 1);
}

TEST(FormTimer, MovesWithItsTicks) {
    int ticks = 0;
    std::vector<FormTimer> timers;
    timers.emplace_back(1, true);
    timers.front().OnTick([&] { ++ticks; });
    for (int i = 0; i < 10; ++i) timers.emplace_back(1000);
    EXPECT_TRUE(Until([&] { return ticks >= 2; }));
    timers.clear();
    ticks = 0;
    Settle();
    EXPECT_EQ(ticks, 0);
}

TEST(Events, PostedWorkRunsLaterInOrder) {
    std::vector<int> order;
    PostToUserInterface([&] {
        order.push_back(1);
        PostToUserInterface([&] { order.push_back(3); });
    });
    PostToUserInterface([&] { order.push_back(2); });
    EXPECT_TRUE(order.empty());
    EXPECT_TRUE(Until([&] { return order.size() == 3; }));
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(Events, WorkPostedByAnotherThreadEndsAWaitOnThisOne) {
    const std::thread::id here = std::this_thread::get_id();
    std::thread::id there;
    std::thread worker([&] { PostToUserInterface([&] { there = std::this_thread::get_id(); }); });
    EXPECT_TRUE(Until([&] { return there != std::thread::id(); }));
    EXPECT_EQ(there, here);
    worker.join();
}

TEST(Events, AWaitWithoutEventsEnds) {
    PumpEvents();
    WaitForEvents(0.001);
    WaitForEvents(0);
    WaitForEvents(-1);
}

TEST(Clock, CountsForwardsAndNamesTheTime) {
    const std::int64_t before = PerformanceCounter();
    EXPECT_GE(PerformanceCounter(), before);
    EXPECT_GE(PerformanceFrequency(), 10'000) << "four decimals of a second";

    const LocalTime now = SystemTime();
    EXPECT_GE(now.Year, 2024);
    EXPECT_TRUE(now.Month >= 1 && now.Month <= 12 && now.Day >= 1 && now.Day <= 31);
#ifndef _WIN32
    const LocalTime time{.Year = 2026, .Month = 1, .Day = 5, .Hour = 7, .Minute = 8, .Second = 9};
    EXPECT_EQ(TimeText(time), "07:08:09");
    EXPECT_EQ(ShortDateText(time), "01/05/2026");
#endif
}

}  // namespace
}  // namespace dravik
