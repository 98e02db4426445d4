#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <string>
#include <vector>

#include "platform/Paths.h"
#include "platform/Profile.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

constexpr int kKills = 400;
constexpr int kKeys = 60;

// Values of changing length, so that a mixture of two generations could not line up by chance.
std::string ValueOf(int generation, int key) {
    return std::to_string(generation) + '/' +
           std::string(static_cast<std::size_t>((generation * 7 + key) % 50), 'x');
}

std::vector<ProfileEntry> EntriesOf(int generation) {
    std::vector<ProfileEntry> entries;
    for (int key = 0; key < kKeys; ++key)
        entries.push_back({"Sensors", "Key" + std::to_string(key), ValueOf(generation, key)});
    return entries;
}

std::string ContentOf(int generation) {
    std::string text = "; written by hand\n[Sensors]\n";
    for (const ProfileEntry& entry : EntriesOf(generation))
        text += entry.Key + "=" + *entry.Value + "\n";
    return text + "; the last word\n[Unknown]\nKept=yes";
}

/// Writes generation after generation and reports each before its write.
void WriteForEver(const std::string& file, int generation, int reports) {
    for (;; ++generation) {
        const bool told = ::write(reports, "b", 1) == 1;
        if (!told || !WriteProfileEntries(file, EntriesOf(generation))) ::_exit(1);
    }
}

TEST(ProfileKill, KilledWhileWritingLeavesOldOrNewFileNeverHalf) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("Dravik.ini", ContentOf(1));
    std::mt19937 random(1);
    int generation = 1;
    int interrupted = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        int reports[2];
        ASSERT_EQ(::pipe(reports), 0);
        const pid_t writer = StartChild([&] { WriteForEver(file, generation + 1, reports[1]); });
        ASSERT_GT(writer, 0);
        char report;
        // The first kills meet the first write, the others one after it.
        for (int i = 0; i <= kill % 3; ++i) ASSERT_EQ(::read(reports[0], &report, 1), 1);
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 4000)(random));
        ASSERT_EQ(::kill(writer, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(writer, &status, 0), writer);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer failed by itself";
        ::close(reports[0]);
        ::close(reports[1]);

        const int found = ReadProfileInt(file, "Sensors", "Key0", 0);
        ASSERT_GE(found, generation);
        ASSERT_EQ(folder.Read("Dravik.ini"), ContentOf(found));
        ASSERT_LE(folder.FileCount(), 2) << "the file and one unfinished one";
        if (folder.FileCount() == 2) ++interrupted;
        generation = found;
    }
    EXPECT_GT(generation, kKills / 3) << "hardly any write was ever finished";
    EXPECT_GT(interrupted, kKills / 20) << "hardly any kill met a write";

    ASSERT_TRUE(WriteProfileEntries(file, EntriesOf(generation + 1)));
    EXPECT_EQ(folder.Read("Dravik.ini"), ContentOf(generation + 1));
    EXPECT_EQ(folder.FileCount(), 1) << "what the killed ones left is gone";
}

}  // namespace
}  // namespace dravik
