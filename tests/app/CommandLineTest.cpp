#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace dravik {
namespace {

TEST(CommandLine, TakesEveryOptionAndItsOptionalValue) {
    const CommandLine line =
        ParseCommandLine({"--folder", "/data", "--demo", "faults", "--windowed", "1280x720",
                          "--skin", "day", "--language", "German", "--console", "--check-skin"});
    EXPECT_EQ(line.Error, "");
    EXPECT_EQ(line.Folder, "/data");
    EXPECT_TRUE(line.Demo);
    EXPECT_EQ(line.Scenario, "faults");
    EXPECT_EQ(line.WindowSize, QSize(1280, 720));
    EXPECT_EQ(line.Skin, "day");
    EXPECT_EQ(line.Language, "German");
    EXPECT_TRUE(line.Console);
    EXPECT_TRUE(line.CheckSkin);

    const CommandLine bare = ParseCommandLine({"--demo", "--windowed"});
    EXPECT_EQ(bare.Error, "");
    EXPECT_EQ(bare.Scenario, "");
    EXPECT_TRUE(bare.Windowed);
    EXPECT_TRUE(bare.WindowSize.isEmpty());
}

TEST(CommandLine, NamesTheArgumentThatIsWrong) {
    const struct {
        std::vector<std::string> Arguments;
        const char* Named;
    } rows[] = {
        {{"--fodler", "x"}, "--fodler"},
        {{"--folder"}, "--folder"},
        {{"--skin", "--demo"}, "--skin"},
        {{"--windowed", "big"}, "big"},
        {{"--windowed", "0x480"}, "0x480"},
        {{"night"}, "night"},
        {{"--port", "x"}, "--report"},
        {{"--report", "--demo"}, "--report"},
        {{"--report", "x", "--port", "y", "--demo"}, "--port"},
    };
    for (const auto& row : rows) {
        const std::string error = ParseCommandLine(row.Arguments).Error;
        EXPECT_NE(error.find(row.Named), std::string::npos) << row.Named << ": " << error;
    }
}

}  // namespace
}  // namespace dravik
