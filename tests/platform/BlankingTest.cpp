#include "platform/Blanking.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>
#include <filesystem>

#include "support/TemporaryFolder.h"
#include "support/Waiting.h"

namespace dravik {
namespace {

/// A stand-in for the program that holds the session manager's lock while its own child runs.
TEST(Blanking, OneLockOfTheSessionManagerIsHeldUntilItIsGivenBack) {
    const TemporaryFolder folder;
    const std::string holder = folder.Write(
        "bin/systemd-inhibit", "#!/bin/sh\necho \"$$ $*\" >> '" + (folder / "holders") +
                                   "'\nfor last; do :; done\nexec $last\n");
    std::filesystem::permissions(holder, std::filesystem::perms(0755));
    const std::string path = std::getenv("PATH");
    ::setenv("PATH", ((folder / "bin:") + path).c_str(), 1);

    PutOffBlanking();
    ASSERT_TRUE(Until([&] { return folder.Read("holders").ends_with("\n"); }));
    PutOffBlanking();
    Settle();
    const std::string held = folder.Read("holders");
    EXPECT_NE(held.find(" --what=idle "), std::string::npos) << held;
    EXPECT_EQ(held.find('\n'), held.size() - 1) << "one lock is enough: " << held;
    const pid_t process = std::stoi(held);
    EXPECT_EQ(::kill(process, 0), 0) << "it lasts";
    AllowBlanking();
    EXPECT_NE(::kill(process, 0), 0) << "it is given back at once";

    PutOffBlanking();
    EXPECT_TRUE(Until([&] { return folder.Read("holders").size() > held.size(); }))
        << "it can be taken again";
    AllowBlanking();
    ::setenv("PATH", (folder / "nothing").c_str(), 1);
    PutOffBlanking();  // a system without a session manager
    AllowBlanking();
    ::setenv("PATH", path.c_str(), 1);
}

}  // namespace
}  // namespace dravik
