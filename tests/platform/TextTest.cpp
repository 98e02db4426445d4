#include "platform/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "platform/Number.h"

namespace dravik {
namespace {

TEST(Text, OnlyWellFormedUtf8IsUtf8) {
    for (const char* good :
         {"", "plain text, long enough", "\xC3\xA4", "\xE2\x82\xAC", "\xED\x9F\xBF",
          "\xF0\x9F\x9A\x97", "\xF4\x8F\xBF\xBF", "12345678\xC3\xA4"})
        EXPECT_TRUE(IsUtf8(good)) << good;
    for (const char* bad : {"\xE4", "a\xC3", "\xC3(", "\x80", "\xC0\x80", "\xC1\xBF",
                            "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
                            "\xF5\x80\x80\x80", "\xE2\x82", "\xFF", "1234567\xE4 and more"}) {
        EXPECT_FALSE(IsUtf8(bad)) << bad;
    }
}

TEST(Text, OtherBytesAreWindows1252) {
    EXPECT_EQ(ToUtf8("\xC3\xA4"), "\xC3\xA4");
    EXPECT_EQ(ToUtf8("20 \xB0\x43"), "20 \xC2\xB0\x43");
    EXPECT_EQ(ToUtf8("\x80\xE4\x9F"), "\xE2\x82\xAC\xC3\xA4\xC5\xB8");
    EXPECT_TRUE(IsUtf8(ToUtf8("\x81\x8D\x8F\x90\x9D\xFF")));
}

TEST(Text, CuttingKeepsSequencesOfUtf8Whole) {
    const std::string_view text = "a\xE2\x82\xAC\xC3\xA4";
    const std::size_t lengths[] = {0, 1, 1, 1, 4, 4, 6, 6};
    for (std::size_t limit = 0; limit < std::size(lengths); ++limit)
        EXPECT_EQ(CutBytes(text, limit), text.substr(0, lengths[limit])) << limit;
    // These continuation bytes belong to no sequence: they are letters.
    EXPECT_EQ(CutBytes("\xE4\x80\x80 \xE4", 2), "\xE4\x80");
}

TEST(Text, LowerCaseKeepsTheEncoding) {
    EXPECT_EQ(LowerCased("OpenMenu_DVD[@Z]"), "openmenu_dvd[@z]");
    EXPECT_EQ(LowerCased("\xC3\x84\xCE\xA3\xD0\x96 A"), "\xC3\xA4\xCF\x83\xD0\xB6 a");
    EXPECT_EQ(LowerCased("\xC4\xD6\xDE\x8A\x9F\xD7 A"), "\xE4\xF6\xFE\x9A\xFF\xD7 a");
}

TEST(Text, NamesCompareWithoutCaseInAsciiOnly) {
    EXPECT_TRUE(EqualsNoCase("Button0Function", "BUTTON0fUNCTION"));
    EXPECT_FALSE(EqualsNoCase("key", "keys"));
    EXPECT_FALSE(EqualsNoCase("[", "{"));
    EXPECT_FALSE(EqualsNoCase("@", "`"));
}

TEST(Text, ReplacementsAreNotSearchedAgain) {
    EXPECT_EQ(ReplaceAll("a,b,,c", ",", "."), "a.b..c");
    EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(Trimmed(" \ta b\t "), "a b");
    EXPECT_EQ(Trimmed(" \t "), "");
}

TEST(Text, LeadingNumberTakesTheLongestDecimalPrefix) {
    const std::pair<const char*, double> rows[] = {
        {"1.5", 1.5},   {" \t-0.25x", -0.25}, {"+3", 3},     {".5", 0.5},     {"5.", 5},
        {"1.5.2", 1.5}, {"1,5", 1},           {"1e3", 1000}, {"1E-2x", 0.01}, {"2e", 2},
        {"2e+", 2},     {"0x10", 0},          {"inf", 0},    {"-nan", 0},     {"", 0},
        {"-", 0},       {"+-5", 0},           {"--5", 0},    {"- 5", 0},      {".", 0},
        {"abc1", 0},    {"1e-999", 0},        {"\n5", 0},    {"007.50", 7.5}, {"-.5e1", -5}};
    for (const auto& [text, value] : rows) EXPECT_EQ(LeadingNumber(text), value) << text;
    EXPECT_EQ(LeadingNumber("-1e999"), -std::numeric_limits<double>::infinity());
}

TEST(Text, WholeNumberTakesNothingBesideTheNumber) {
    EXPECT_EQ(WholeNumber("-012"), -12);
    EXPECT_EQ(WholeNumber<std::uint8_t>("fF", 16), 255);
    for (const char* text : {"", " 1", "1 ", "+1", "1.5", "0x1", "--1", "2147483648"})
        EXPECT_EQ(WholeNumber(text), std::nullopt) << text;
    for (const char* text : {"-1", "256"})
        EXPECT_EQ(WholeNumber<std::uint8_t>(text), std::nullopt) << text;
}

TEST(Text, GeneralNumberHasSevenDigitsAndNoTrailingZeros) {
    const std::pair<float, const char*> rows[] = {{12.5F, "12.5"},
                                                  {-40, "-40"},
                                                  {10.0F / 3, "3.333333"},
                                                  {1.5e8F, "1.5E+08"},
                                                  {1e-5F, "1E-05"},
                                                  {0, "0"},
                                                  {-0.0F, "0"},
                                                  {9999999, "9999999"},
                                                  {1e7F, "1E+07"},
                                                  {1e-4F, "0.0001"},
                                                  {0.1F, "0.1"},
                                                  {-1.5e-10F, "-1.5E-10"},
                                                  {100, "100"},
                                                  {16777216, "1.677722E+07"},
                                                  {INFINITY, "INF"},
                                                  {-INFINITY, "-INF"},
                                                  {NAN, "NAN"}};
    for (const auto& [value, text] : rows) EXPECT_EQ(GeneralNumber(value), text);
}

TEST(Text, FixedNumberRoundsAndHasNoMinusZero) {
    struct Row {
        float Value;
        int Decimals;
        const char* Text;
    };
    const Row rows[] = {
        {38.03922F, 1, "38.0"}, {38.96F, 0, "39"},     {-0.04F, 1, "0.0"},
        {-0.05F, 1, "-0.1"},    {-0.4F, 0, "0"},       {1726.25F, -3, "1726"},
        {0.5F, 99, "0.500000"}, {1e7F, 2, "1E+07"},    {9999999, 6, "9999999.000000"},
        {NAN, 1, "NAN"},        {-INFINITY, 1, "-INF"}};
    for (const Row& row : rows) EXPECT_EQ(FixedNumber(row.Value, row.Decimals), row.Text);
}

}  // namespace
}  // namespace dravik
