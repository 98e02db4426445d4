#include <string>
#include <vector>

#include "lists/basFunctions.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

using ::testing::ElementsAre;

class TroubleCodeList : public GlobalsTest {
 protected:
    TroubleCodeList() {
        WriteFile("languages/codes.ini",
                  "[errorcodes]\nP0133=Oxygen sensor slow\nP0200=\xC3\xBC\xE2\x82\xACx\n"
                  "P0300=\xFC\x80x\nU0001=\nP0=x\xC3\xA4yz\n");
        basGlobal.DescriptionFile = (folder_ / "languages/codes.ini").string();
    }

    static void Show(const std::vector<std::string>& codes) {
        basGlobal.DtcCount = static_cast<std::int16_t>(codes.size());
        std::copy(codes.begin(), codes.end(), basGlobal.DtcList.begin());
        ShowTroubleCodes();
    }

    static std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const ListEntry& entry : basGlobal.Lists[7].Entries) texts.push_back(entry.Text);
        return texts;
    }
};

TEST_F(TroubleCodeList, ShowsEachCodeWithItsDescriptionOrZero) {
    Show({"P0133", "P0999", "U0001"});
    EXPECT_THAT(Texts(), ElementsAre("P0133: Oxygen sensor slow. ", "P0999: 0. ", "U0001: . "));
    EXPECT_EQ(basGlobal.Lists[7].Entries[0].Tag, "P0133: Oxygen sensor slow. ");
    EXPECT_EQ(basGlobal.Lists[7].Selected, 1);

    SelectListEntry(basGlobal.Lists[7], 3);
    Show({});
    EXPECT_THAT(Texts(), ElementsAre("No Errors"));
    EXPECT_EQ(basGlobal.Lists[7].Entries[0].Tag, "No Errors");
    EXPECT_EQ(basGlobal.Lists[7].Selected, 1);

    basGlobal.DescriptionFile = (folder_ / "nowhere.ini").string();
    Show({"P0133"});
    EXPECT_THAT(Texts(), ElementsAre("P0133: 0. "));
}

TEST_F(TroubleCodeList, TickerTurnsTheSelectedLineBehindItsCodeByOneCharacter) {
    Show({"P0133", "P0999"});
    SelectListEntry(basGlobal.Lists[7], 2);
    ScrollTroubleCode();
    EXPECT_THAT(Texts(), ElementsAre("P0133: Oxygen sensor slow. ", "P0999: . 0"));
    EXPECT_EQ(basGlobal.Lists[7].Entries[1].Tag, "P0999: 0. ");
    EXPECT_EQ(SelectedTroubleCode(), "P0999") << "its text is not known";
    ScrollTroubleCode();
    EXPECT_EQ(Texts()[1], "P0999:  0.");
    ScrollTroubleCode();
    EXPECT_EQ(Texts()[1], "P0999: 0. ");
    SelectListEntry(basGlobal.Lists[7], 1);
    ScrollTroubleCode();
    EXPECT_EQ(SelectedTroubleCode(), "P0133: Oxygen sensor slow.") << "this one stands still";
    basGlobal.DtcCount = 0;
    EXPECT_EQ(SelectedTroubleCode(), "");
}

TEST_F(TroubleCodeList, TickerMovesWholeCharactersOfAnyText) {
    Show({"P0200", "P0300", "P0"});
    const std::vector<std::string> built = Texts();
    ScrollTroubleCode();
    EXPECT_EQ(Texts()[0], "P0200: \xE2\x82\xACx. \xC3\xBC");
    for (int i = 0; i < 4; ++i) {
        ScrollTroubleCode();
        EXPECT_EQ(Texts()[0].find("P0200: "), 0U);
    }
    EXPECT_EQ(Texts(), built) << "five characters, five steps";

    SelectListEntry(basGlobal.Lists[7], 2);  // the bytes of an older text file
    ScrollTroubleCode();
    EXPECT_EQ(Texts()[1], "P0300: \x80x. \xFC");

    SelectListEntry(basGlobal.Lists[7], 3);  // seven fixed characters are not seven bytes
    ScrollTroubleCode();
    EXPECT_EQ(Texts()[2], "P0: x\xC3\xA4y. z");
}

TEST_F(TroubleCodeList, TickerLeavesShortAndMissingLinesAlone) {
    ScrollTroubleCode();
    EXPECT_TRUE(basGlobal.Lists[7].Entries.empty());
    for (const char* line : {"", "P0133: ", "P0133: a"}) {
        ClearList(basGlobal.Lists[7]);
        AddListEntry(basGlobal.Lists[7], {line, "", line});
        ScrollTroubleCode();
        EXPECT_THAT(Texts(), ElementsAre(line));
    }
}

}  // namespace
}  // namespace dravik
