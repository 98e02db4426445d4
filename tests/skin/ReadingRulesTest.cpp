#include <gtest/gtest.h>

#include <climits>

#include "core/basGlobal.h"
#include "skin/PageControl.h"
#include "skin/SkinFile.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using Number = std::optional<std::int32_t>;

TEST(ReadingRules, NumbersOfTheLenientAndTheStrictKeys) {
    const struct {
        const char* Text;
        Number Lenient, Strict;
    } rows[] = {
        {"", 0, {}},
        {"   ", 0, {}},
        {"17", 17, 17},
        {"  17", 17, 17},
        {"-17", -17, -17},
        {"+5", 5, 5},
        {"17px", 17, {}},
        {"px17", 0, {}},
        {"2.5", 2, 2},  // halves to even
        {"3.5", 4, 4},
        {"&HFF", 255, 255},
        {"&hff00", 65280, 65280},
        {"&HFF8000 orange", 0xFF8000, {}},
        {"&H", 0, {}},
        {"&HG", 0, {}},
        {"&HFFFFFFFF", -1, -1},
        {"2147483647", INT_MAX, INT_MAX},
        {"-2147483648", INT_MIN, INT_MIN},
        {"2147483648", {}, {}},
        {"99999999999999999999", {}, {}},
        {"&H1FFFFFFFF", {}, {}},
        {"1e300", {}, {}},
        {"nan", 0, {}},
        {"inf", 0, {}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LenientNumber(row.Text), row.Lenient) << '"' << row.Text << '"';
        EXPECT_EQ(StrictNumber(row.Text), row.Strict) << '"' << row.Text << '"';
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
    // A text behind the digits tells the rules apart: the lenient and the integer rule pass over
    // it, the strict one fails; "&H" is no integer.
    for (const SkinKind& kind : SkinKinds()) {
        for (const SkinKey& key : kind.Keys) {
            const TemporaryFolder folder;
            const std::string name = ElementKey(kind, 3, key.Name);
            const auto read = [&](const std::string& value) {
                std::string text = "[P]\n";
                for (const SkinKey& other : kind.Keys) {
                    if (other.How == Read::Strict && other.Name != key.Name)
                        text += ElementKey(kind, 3, other.Name) + "=0\n";
                }
                basGlobal.SkinFile = folder.Write("s.ini", text + name + "=" + value + "\n");
                SkinElement element;
                element.Kind = kind.Kind;
                element.Section = "P";
                element.Number = 3;
                const auto error = ReadElement(element, KeySet::All);
                if (error) return "error " + error->Context();
                if (const auto* field = std::get_if<int SkinElement::*>(&key.Field))
                    return std::to_string(element.**field);
                return element.*std::get<std::string SkinElement::*>(key.Field);
            };
            const std::string fault = "error s.ini [P] " + name;
            switch (key.How) {
                case Read::Integer:
                    EXPECT_EQ(read("12x"), "12") << name;
                    EXPECT_EQ(read("&H10"), "0") << name;
                    break;
                case Read::Lenient:
                    EXPECT_EQ(read("12x"), "12") << name;
                    EXPECT_EQ(read("&H10x"), "16") << name;
                    EXPECT_EQ(read("4294967296"), fault);
                    break;
                case Read::Strict:
                    EXPECT_EQ(read("&H10"), "16") << name;
                    EXPECT_EQ(read("12x"), fault);
                    EXPECT_EQ(read(""), fault);
                    break;
                case Read::Text:
                case Read::Picture:
                    EXPECT_EQ(read("12x"), "12x") << name;
            }
        }
    }
}

}  // namespace
}  // namespace dravik
