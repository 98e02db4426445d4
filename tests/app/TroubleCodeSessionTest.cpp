#include <gmock/gmock.h>

#include "support/ConsoleProgram.h"
#include "support/TestSkin.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// What a driver does about a lit lamp, by clicks, over the virtual vehicle with three codes.
TEST(TroubleCodeSession, ReadsShowsAFreezeFrameAndClears) {
    const ProgramFolderWithSkin program;
    ConsoleProgram dravik({"--folder", program.Folder.Path(), "--demo", "faults"});
    const auto status = [&] { return dravik.Ask("text obd_status"); };
    const auto idle = [&] { return dravik.Ask("image obd_connected"); };
    const auto message = [&] { return dravik.Ask("message"); };
    EXPECT_EQ(dravik.Until(status, "Receiving Data."), "Receiving Data.");
    EXPECT_EQ(dravik.State("MilOn"), "1");
    EXPECT_EQ(dravik.Ask("number obd_troublecodescount"), "3");
    EXPECT_EQ(dravik.State("DtcList"), ",,") << "not read yet";

    EXPECT_EQ(dravik.Ask(program.ClickOn(0)), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "codes");
    EXPECT_EQ(dravik.Ask(program.ClickOn(0)), "ok");
    const auto codes = [&] { return dravik.State("DtcList"); };
    EXPECT_EQ(dravik.Until(codes, "P0133,P0301,P0420"), "P0133,P0301,P0420");
    EXPECT_EQ(dravik.Until(idle, "on"), "on");
    const std::vector<std::string> list = dravik.AskLines("list");
    ASSERT_EQ(list.size(), 4U);
    EXPECT_EQ(list[0], "troublecodes\t1");
    EXPECT_THAT(list[2], HasSubstr("\tP0301: Misfire 1. "));
    EXPECT_THAT(list[3], HasSubstr("\tP0420: 0. "));

    // The second code's freeze frame: the program asks for frame 1.
    EXPECT_EQ(dravik.Ask(program.ClickOn(2)), "ok");
    EXPECT_EQ(dravik.AskLines("list").front(), "troublecodes\t2");
    EXPECT_EQ(dravik.Ask(program.ClickOn(3)), "ok");
    EXPECT_EQ(dravik.State("CurrentMenu"), "freezeframe");
    const auto frame = [&] {
        return dravik.State("FreezeRaw").starts_with("0C=") ? "shown" : "waiting";
    };
    EXPECT_EQ(dravik.Until(frame, "shown"), "shown");
    EXPECT_EQ(dravik.State("FreezeFrameNo"), "1");
    EXPECT_EQ(dravik.Ask(program.ClickOn(0)), "ok");

    // Asked to clear: no, then yes.
    for (const char* answer : {"no", "yes"}) {
        EXPECT_EQ(dravik.Until(idle, "on"), "on");
        dravik.Send(program.ClickOn(1) + "\nmessage\nclick " + answer + "\n");
        EXPECT_EQ(dravik.ReadLine(), "query\tClear troublecodes and all stored data?");
        EXPECT_EQ(dravik.ReadLine(), "ok");
        EXPECT_EQ(dravik.ReadLine(), "ok");
        if (std::string(answer) == "no") {
            EXPECT_EQ(dravik.State("DtcCount"), "3");
        }
    }
    EXPECT_EQ(dravik.Until(message, "info\tTroublecodes cleared"), "info\tTroublecodes cleared");
    EXPECT_EQ(dravik.Ask("click ok"), "ok");
    const auto entry = [&] { return dravik.Ask("text listentry_0"); };
    EXPECT_EQ(dravik.Until(entry, "No Errors"), "No Errors");
    EXPECT_EQ(dravik.Ask("image obd_malfunction"), "off");
    EXPECT_EQ(dravik.Until(status, "Connected."), "Connected.")
        << "the code page shows no live value, so nothing is polled";
    EXPECT_EQ(dravik.Finish(), 0);
}

}  // namespace
}  // namespace dravik
