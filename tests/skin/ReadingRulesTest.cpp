#include <gtest/gtest.h>

#include <climits>
#include <map>

#include "core/basGlobal.h"
#include "platform/Number.h"
#include "skin/SkinFile.h"
#include "skin/basSkin.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using Number = std::optional<std::int32_t>;

TEST(ReadingRules, NumbersOfTheLenientAndTheStrictKeys) {
    const std::pair<const char*, Number> numbers[] = {
        {"17", 17}, {"  17", 17},  {"-17", -17},      {"+5", 5},    {"2.5", 2},
        {"3.5", 4}, {"&HFF", 255}, {"&hff00", 65280}, {"1e300", {}}};
    const std::pair<const char*, Number> limits[] = {
        {"2147483647", INT_MAX},      {"-2147483648", INT_MIN}, {"2147483648", {}},
        {"99999999999999999999", {}}, {"&HFFFFFFFF", -1},       {"&H1FFFFFFFF", {}}};
    const auto check = [](const auto& rows) {
        for (const auto& [text, number] : rows) {
            EXPECT_EQ(LenientNumber(text), number) << text;
            EXPECT_EQ(StrictNumber(text), number) << text;
        }
    };
    check(numbers);
    check(limits);
    const std::pair<const char*, int> lenient[] = {
        {"", 0},    {"   ", 0}, {"17px", 17}, {"px17", 0}, {"&HFF red", 255}, {"&H", 0},
        {"&HG", 0}, {"nan", 0}, {"inf", 0},   {"+-5", 0},  {"-+5", 0}};
    for (const auto& [text, number] : lenient) {
        EXPECT_EQ(LenientNumber(text), number) << '"' << text << '"';
        EXPECT_EQ(StrictNumber(text), std::nullopt) << '"' << text << '"';
    }
}

TEST(ReadingRules, TextAndIntegerKeys) {
    const std::string long70(70, 'x');
    const std::string umlauts = std::string(62, 'x') + "\xC3\xA4" + "b";
    const TemporaryFolder folder;
    basGlobal.SkinFile = folder.Write("s.ini", "[Page]\nLong=" + long70 + "\nSplit=" + umlauts +
                                                   "\nEmpty=\nDigits= 12abc\nHex=&HFF\nNone=abc\n"
                                                   "DOUBLE=1\ndouble=2\n");
    EXPECT_EQ(ReadSkinValue("Page", "Long"), std::string(63, 'x'));
    EXPECT_EQ(ReadSkinValue("Page", "Split"), std::string(62, 'x')) << "half a letter is left out";
    EXPECT_EQ(ReadSkinValue("Page", "Empty"), ReadSkinValue("Page", "Missing"));
    EXPECT_EQ(ReadSkinValue("NoPage", "Long"), "");
    EXPECT_EQ(ReadSkinValue("pAGE", "Double"), "1");
    const std::pair<const char*, int> integers[] = {
        {"Digits", 12}, {"Hex", 0}, {"None", 0}, {"Empty", 0}, {"Missing", 0}};
    for (const auto& [key, value] : integers) EXPECT_EQ(ReadSkinInteger("Page", key), value) << key;
}

TEST(ReadingRules, EveryKeyIsReadByItsOwnRule) {
    const std::string values[] = {"12x", "&H10", "4294967296", "-32769", ""};
    const std::map<Read, std::vector<std::string>> expected = {
        {Read::Integer, {"12", "0", "0", "-32769", "0"}},
        {Read::Lenient, {"12", "16", "fault", "-32769", "0"}},
        {Read::Short, {"12", "16", "fault", "fault", "0"}},
        {Read::Strict, {"fault", "16", "fault", "-32769", "fault"}},
        {Read::Text, {"12x", "&H10", "4294967296", "-32769", ""}},
        {Read::Picture, {"12x", "&H10", "4294967296", "-32769", ""}},
        {Read::Font, {"12x", "&H10", "4294967296", "-32769", ""}}};
    const TemporaryFolder folder;
    for (const SkinKind* kind : SkinKinds()) {
        std::string strictKeys;
        for (const SkinKey& key : kind->Keys) {
            if (key.How == Read::Strict) strictKeys += ElementKey(*kind, 3, key.Name) + "=0\n";
        }
        for (const SkinKey& key : kind->Keys) {
            const std::string name = ElementKey(*kind, 3, key.Name);
            std::vector<std::string> read;
            for (const std::string& value : values) {
                basGlobal.SkinFile =
                    folder.Write("s.ini", "[P]\n" + name + "=" + value + "\n" + strictKeys);
                SkinElement element;
                element.Kind = kind;
                element.Section = "P";
                element.Number = 3;
                if (const auto error = ReadElement(element, KeySet::All)) {
                    EXPECT_EQ(error->Context(), "s.ini [P] " + name);
                    read.push_back("fault");
                } else if (const auto* field = std::get_if<int SkinElement::*>(&key.Field)) {
                    read.push_back(std::to_string(element.**field));
                } else {
                    read.push_back(element.*std::get<std::string SkinElement::*>(key.Field));
                }
            }
            EXPECT_EQ(read, expected.at(key.How)) << name;
        }
    }
}

}  // namespace
}  // namespace dravik
