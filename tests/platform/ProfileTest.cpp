#include "platform/Profile.h"

#include <gmock/gmock.h>

#include <chrono>
#include <climits>
#include <filesystem>
#include <set>
#include <thread>

#include "platform/NameHash.h"
#include "platform/Paths.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::size_t kPlenty = 255;

struct ReadCase {
    const char* What;
    std::string_view File;
    const char* Value;  // of section "main", key "key"; "none" when it is missing
};

void PrintTo(const ReadCase& row, std::ostream* out) {
    *out << row.What;
}

class ProfileReading : public ::testing::TestWithParam<ReadCase> {};

using namespace std::string_view_literals;

// clang-format off
constexpr ReadCase kReadCases[] = {
    {"plain",                         "[main]\nkey=value\n",                    "value"},
    {"carriage returns",              "[main]\r\nkey=value\r\n",                "value"},
    {"no final line end",             "[main]\nkey=value",                      "value"},
    {"any case",                      "[MAIN]\nKey=Value\n",                    "Value"},
    {"blanks around everything",      "\t[main] \n \tkey \t= value \t\n",       "value"},
    {"blanks inside a value stay",    "[main]\nkey=a \t b\n",                   "a \t b"},
    {"one pair of double quotes",     "[main]\nkey=\" \"a\" \"\n",              " \"a\" "},
    {"one pair of single quotes",     "[main]\nkey=' a '\n",                    " a "},
    {"quotes that do not match",      "[main]\nkey=\"a'\n",                     "\"a'"},
    {"a lone quote",                  "[main]\nkey=\"\n",                       "\""},
    {"empty value is not missing",    "[main]\nkey=\n",                         ""},
    {"equals sign in the value",      "[main]\nkey=a=b\n",                      "a=b"},
    {"semicolon in the value",        "[main]\nkey=a ; b\n",                    "a ; b"},
    {"first key wins",                "[main]\nkey=1\nKEY=2\n",                 "1"},
    {"first section wins",            "[main]\nkey=1\n[Main]\nkey=2\n",         "1"},
    {"only the first section counts", "[main]\na=1\n[main]\nkey=2\n",           "none"},
    {"another section's key",         "[other]\nkey=1\n[main]\na=1\n",          "none"},
    {"key before any section",        "key=1\n[main]\n",                        "none"},
    {"commented out",                 "[main]\n;key=1\n ; key=1\n",             "none"},
    {"key that only begins so",       "[main]\nkeys=1\nke=2\n",                 "none"},
    {"line without a key",            "[main]\n=1\nkey=2\n",                    "2"},
    {"empty file",                    "",                                       "none"},
    // What files hold by accident.
    {"line without equals sign",      "[main]\nkey\nkey=1\n",                   "1"},
    {"byte order mark",               "\xEF\xBB\xBF[main]\nkey=1\n",            "1"},
    {"junk behind a section name",    "[main] ] x [other]\nkey=1\n",            "1"},
    {"blanks in a section name",      "[ main ]\nkey=1\n",                      "1"},
    {"section that does not close",   "[main]\n[oth\nkey=1\n",                  "1"},
    {"binary junk between lines",     "\xFE\x01=\0\x02\n[main]\n\x80\0=\xFF\nkey=1\n"sv, "1"},
    {"zero byte in the value",        "[main]\nkey=a\0b\n"sv,                   "a"},
    {"little-endian UTF-16",
     "\xFF\xFE[\0m\0a\0i\0n\0]\0\r\0\n\0k\0e\0y\0=\0\xE4\0\x3D\xD8\x97\xDE"sv,    "ä🚗"},
    {"big-endian UTF-16",
     "\xFE\xFF\0[\0m\0a\0i\0n\0]\0\n\0k\0e\0y\0=\x20\xAC\0\n"sv,                   "€"},
    {"carriage returns in a row",     "[main]\r\r\nkey=1\r\r\n",                "1"},
    {"UTF-8 and other bytes",         "[main]\nkey=\xC3\xA4\xB0\x81\n",          "\xC3\xA4\xB0\x81"},
};
// clang-format on

TEST_P(ProfileReading, GivesTheValue) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a.ini", GetParam().File);
    EXPECT_EQ(ReadProfileString(file, "main", "key", "none", kPlenty), GetParam().Value);
}

INSTANTIATE_TEST_SUITE_P(Cases, ProfileReading, ::testing::ValuesIn(kReadCases));

TEST(Profile, IntegersAreTheLeadingDigitsAfterASign) {
    const TemporaryFolder folder;
    const auto read = [&folder](const std::string& text) {
        return ReadProfileInt(folder.Write("a.ini", "[s]\nk=" + text + "\n"), "S", "K", 42);
    };
    const std::pair<const char*, int> rows[] = {{"12abc", 12}, {"-5", -5}, {"+5", 5},  {"0x10", 0},
                                                {"\" 7\"", 7}, {"- 5", 0}, {"--5", 0}, {"007", 7},
                                                {"1.9", 1},    {"abc", 0}, {"3,5", 3}, {"", 0}};
    for (const auto& [text, value] : rows) EXPECT_EQ(read(text), value) << text;
    EXPECT_EQ(read("2147483647"), INT_MAX);
    EXPECT_EQ(read("-2147483648"), INT_MIN);
    EXPECT_EQ(read("4294967297"), 1);
    EXPECT_EQ(ReadProfileInt(folder / "a.ini", "s", "other", 42), 42);
    EXPECT_EQ(ReadProfileInt(folder / "missing.ini", "s", "k", -1), -1);
}

TEST(Profile, LongValuesAreCutButNeverInsideAUtf8Sequence) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a.ini", "[s]\nk=aä€\n");
    EXPECT_EQ(ReadProfileString(file, "s", "k", "default", 6), "aä€");
    EXPECT_EQ(ReadProfileString(file, "s", "k", "default", 5), "aä");
    EXPECT_EQ(ReadProfileString(file, "s", "missing", "default", 3), "def");
}

TEST(Profile, NamesAreListedInFileOrderAsWritten) {
    const TemporaryFolder folder;
    const std::string file =
        folder.Write("a.ini", "[Zeta]\nB=1\n;c=2\na=3\n\n[alpha]\nx=1\n[zeta]\nlate=1\n");
    EXPECT_THAT(ProfileSections(file), ElementsAre("Zeta", "alpha", "zeta"));
    EXPECT_THAT(ProfileKeys(file, "ZETA"), ElementsAre("B", "a"));
    EXPECT_THAT(ProfileKeys(file, "none"), IsEmpty());
    EXPECT_THAT(ProfileSections(folder / "missing.ini"), IsEmpty());
}

struct WriteCase {
    const char* What;
    std::string_view Before;
    std::vector<ProfileEntry> Entries;
    std::string_view After;
};

TEST(Profile, WritingChangesOnlyWhatItWrites) {
    // clang-format off
    const WriteCase rows[] = {
        {"value in place, its layout kept", "; top\n[A]\n  Key =  1  \nother=2\n",
         {{"a", "KEY", "3"}},               "; top\n[A]\n  Key =  3\nother=2\n"},
        {"behind the last key of its section", "[a]\nx=1\n; y is off\n\n; about b\n[b]\nz=1\n",
         {{"a", "new", "2"}},               "[a]\nx=1\n; y is off\nnew=2\n\n; about b\n[b]\nz=1\n"},
        {"new key in an empty section",     "[a]\n; about a\n\n[b]\n",
         {{"a", "k", "1"}},                 "[a]\n; about a\nk=1\n\n[b]\n"},
        {"new section at the end",          "[a]\nx=1\n",
         {{"b", "k", "v"}},                 "[a]\nx=1\n[b]\nk=v\n"},
        {"the file's own line ends",        "[a]\r\nx=1\r\n",
         {{"a", "k", "v"}},                 "[a]\r\nx=1\r\nk=v\r\n"},
        {"a lone carriage return at the end", "[a]\nx=1\r",
         {{"a", "y", "2"}},                 "[a]\nx=1\r\ny=2"},
        {"no final line end",               "[a]\nx=1",
         {{"a", "x", "2"}, {"b", "y", "3"}}, "[a]\nx=2\n[b]\ny=3"},
        {"only the first section and key",  "[a]\nk=1\nk=2\n[a]\nk=3\n",
         {{"a", "k", "9"}},                 "[a]\nk=9\nk=2\n[a]\nk=3\n"},
        {"deleting takes repeated keys too", "[a]\nk=1\n;k=0\nx=1\nK=2\n[b]\nk=3\n",
         {{"a", "k", std::nullopt}},        "[a]\n;k=0\nx=1\n[b]\nk=3\n"},
        {"byte order mark and junk",        "\xEF\xBB\xBF[a]\njunk\n\xE4=\x80\n=\nk=1\n",
         {{"a", "k", "2"}},                 "\xEF\xBB\xBF[a]\njunk\n\xE4=\x80\n=\nk=2\n"},
        {"little-endian UTF-16",            "\xFF\xFE[\0a\0]\0\n\0k\0=\0\x3D\xD8\n\0"sv,
         {{"a", "x", "\xE4"}},
         "\xFF\xFE[\0a\0]\0\n\0k\0=\0\x3D\xD8\n\0x\0=\0\xE4\0\n\0"sv},
        {"big-endian UTF-16",               "\xFE\xFF\0[\0a\0]\0\r\0\n\0k\0=\0\x31"sv,
         {{"a", "k", "ä🚗"}},                "\xFE\xFF\0[\0a\0]\0\r\0\n\0k\0=\0\xE4\xD8\x3D\xDE\x97"sv},
        {"line breaks become blanks",       "[a]\nk=1\n",
         {{"a", "k", "x\r\n[b]\ny"}},       "[a]\nk=x  [b] y\n"},
        {"deleting what is not there",      "[a]\nk=1",
         {{"a", "x", {}}, {"b", "k", {}}},  "[a]\nk=1"},
        {"emptied value",                   "[a]\nk = 1\n",
         {{"a", "k", ""}},                  "[a]\nk = \n"},
    };
    // clang-format on
    for (const WriteCase& row : rows) {
        const TemporaryFolder folder;
        const std::string file = folder.Write("a.ini", row.Before);
        EXPECT_TRUE(WriteProfileEntries(file, row.Entries)) << row.What;
        EXPECT_EQ(folder.Read("a.ini"), row.After) << row.What;
        EXPECT_EQ(folder.FileCount(), 1) << row.What;
    }
}

TEST(Profile, EveryWrittenValueReadsBackTheSame) {
    const TemporaryFolder folder;
    const std::string file = folder / "new.ini";
    for (const std::string value :
         {"",    " ",   " a", "a ",       "\ta\t", "\"",     "\"\"",   "\"a\"",
          "'a'", "''",  "'",  "\"a",      "a\"",   "'\"",    "\"'\"'", ";a",
          "[a]", "a=b", "=",  "\xC3\xA4", "\xE4",  " \"a\" "}) {
        ASSERT_TRUE(WriteProfileString(file, "s", "k", value)) << value;
        EXPECT_EQ(ReadProfileString(file, "s", "k", "none", kPlenty), value);
    }
}

TEST(Profile, NamesThatCouldNotBeReadBackAreRefused) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("a.ini", "[s]\nk=1\n");
    for (const auto& [section, key] : {std::pair{"s", ""},
                                       {"s", "a=b"},
                                       {"s", "[a]"},
                                       {"s", ";a"},
                                       {"s", "a\nb"},
                                       {"a]b", "k"},
                                       {"a\nb", "k"}})
        EXPECT_FALSE(WriteProfileEntries(file, {{"s", "k", "2"}, {section, key, "1"}})) << key;
    EXPECT_EQ(folder.Read("a.ini"), "[s]\nk=1\n");
    EXPECT_FALSE(WriteProfileString(folder / "no such folder/a.ini", "s", "k", "1"));
}

// The stamp and the size of the file may be the same before and after.
TEST(Profile, EveryChangeIsSeenAtOnce) {
    const TemporaryFolder folder;
    const std::string file = folder / "a.ini";
    for (int i = 100; i < 400; ++i) {
        if (i % 10 == 0)
            ASSERT_TRUE(WriteProfileString(file, "s", "k", std::to_string(i)));
        else
            folder.Write("a.ini", "[s]\nk=" + std::to_string(i) + "\n");
        ASSERT_EQ(ReadProfileInt(file, "s", "k", 0), i);
    }
    std::filesystem::remove(file);
    EXPECT_EQ(ReadProfileInt(file, "s", "k", 0), 0);
}

TEST(Profile, ManyFilesAndKeysAreKeptApart) {
    const TemporaryFolder folder;
    const auto value = [](int file, int section, int key) {
        return (file * 20 + section) * 30 + key;
    };
    for (int file = 0; file < 100; ++file) {
        std::string text;
        for (int section = 0; section < 20; ++section) {
            text += "[Page" + std::to_string(section) + "]\n";
            for (int key = 0; key < 30; ++key)
                text += "Key" + std::to_string(key) + "=" +
                        std::to_string(value(file, section, key)) + "\n";
        }
        folder.Write(std::to_string(file), text);
    }
    for (int key = 0; key < 30; key += 7) {
        for (int section = 0; section < 20; ++section) {
            for (int file = 0; file < 100; ++file)
                ASSERT_EQ(
                    ReadProfileInt(folder / std::to_string(file), "page" + std::to_string(section),
                                   "key" + std::to_string(key), -1),
                    value(file, section, key));
        }
    }
}

// Names that share a hash would make the reading of a file take the square of its length.
TEST(Profile, NamesShareAHashOnlyWhenTheyDifferInCaseAlone) {
    const auto hashOf = [](std::string_view section, std::string_view key) {
        NameHash hash;
        hash.Add(section);
        hash.Add(key);
        return hash.Result();
    };
    EXPECT_EQ(hashOf("MainMenu", "Button0LabelFunction"),
              hashOf("mainMENU", "BUTTON0labelFunction"));
    std::set<std::uint32_t> hashes = {hashOf("ab", "c"), hashOf("a", "bc"), hashOf("", "abc")};
    for (unsigned name = 0; name < 1024; ++name) {
        std::string key;
        for (unsigned bit = 0; bit < 10; ++bit)
            key += "@`[{]}^~\\|"[2 * (bit % 5) + (name >> bit & 1U)];
        hashes.insert(hashOf("page", key));
    }
    EXPECT_GE(hashes.size(), 1020U);
}

TEST(Profile, GarbageIsPassedOverAndKeptAndTooMuchOfItRefused) {
    std::string garbage(std::size_t{15} << 20, '\0');
    std::uint32_t state = 1;
    for (char& c : garbage) {
        state = state * 1664525 + 1013904223;
        c = static_cast<char>(state >> 24);
    }
    const TemporaryFolder folder;
    const std::string file = folder.Write("a.ini", "[s]\nk=1\n[rest]\n" + garbage);
    EXPECT_EQ(ReadProfileInt(file, "s", "k", 0), 1);
    ASSERT_TRUE(WriteProfileString(file, "s", "k", "2"));
    EXPECT_EQ(ReadProfileInt(file, "s", "k", 0), 2);
    EXPECT_TRUE(folder.Read("a.ini") == "[s]\nk=2\n[rest]\n" + garbage);

    const std::string larger = folder.Write("b.ini", "[s]\nk=1\n[rest]\n" + garbage + garbage);
    ::testing::internal::CaptureStderr();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(ReadProfileInt(larger, "s", "k", 0), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              ResolvePath(larger) + ": larger than 16 MB; it is not read\n");
    EXPECT_FALSE(WriteProfileString(larger, "s", "k", "2"));
}

#ifndef _WIN32
TEST(Profile, NamesOfFilesAreResolvedAndFollowedWhenTheyChange) {
    const TemporaryFolder folder;
    folder.Write("Skins/My.ini", "[s]\nk=1\n");
    const std::string asWritten = folder / "skins\\my.INI";
    EXPECT_EQ(ReadProfileInt(asWritten, "s", "k", 0), 1);
    ASSERT_TRUE(WriteProfileString(asWritten, "s", "k", "2"));
    EXPECT_EQ(folder.Read("Skins/My.ini"), "[s]\nk=2\n");
    // Time enough for the file to count as unchanged, so that the next reads are cached ones.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    for (int i = 0; i < 2; ++i) EXPECT_EQ(ReadProfileInt(asWritten, "s", "k", 0), 2);
    folder.Write("skins/my.INI", "[s]\nk=3\n");
    EXPECT_EQ(ReadProfileInt(asWritten, "s", "k", 0), 3) << "the exact name has appeared";
}
#endif

}  // namespace
}  // namespace dravik
