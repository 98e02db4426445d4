#include <gtest/gtest.h>

#include <set>

#include "lists/basFunctions.h"
#include "skin/SkinVocabulary.h"
#include "skin/check/CheckSkinParts.h"
#include "skin/check/SoundSkin.h"
#include "skinfunc/basValueProc.h"

namespace dravik {
namespace {

/// The samples stand in the reference, so they must be right themselves.
class Vocabulary : public ::testing::Test {
 protected:
    Vocabulary() { skin_.Check(SoundSkin::Text()); }

    static void ExpectExamplesWork(const FunctionRole& role,
                                   const std::vector<FunctionWord>& rows) {
        for (const FunctionWord& row : rows) {
            const std::string example = ExampleOf(row);
            EXPECT_EQ(CheckFunction(role, example).Fault, "") << example;
            EXPECT_FALSE(row.Meaning.empty()) << example;
            EXPECT_EQ(row.Sample.find('_'), std::string_view::npos) << example;
        }
    }

    SoundSkin skin_;
};

TEST_F(Vocabulary, EveryExampleOfAFunctionWorks) {
    ExpectExamplesWork(kCommandRole, CommandRows());
    ExpectExamplesWork(kCaptionRole, TextFunctionRows());
    ExpectExamplesWork(kCaptionRole, NumberFunctionRows());
    ExpectExamplesWork(kPictureRole, ImageFunctionRows());
    ExpectExamplesWork(kValueRole, SourceRows());
}

TEST_F(Vocabulary, EveryNumberFunctionIsOneToTheEvaluator) {
    basGlobal.CurrentList = 0;
    basGlobal.Lists[0].Entries.resize(2);
    basGlobal.Lists[0].Selected = 1;
    basGlobal.ConnState = kReceivingData;
    basGlobal.LiveAt.fill(HighResTimer());
    basGlobal.Sensors[0].Active = true;
    for (const FunctionWord& row : NumberFunctionRows()) {
        std::string text = ExampleOf(row);
        EXPECT_NE(LabelNumber(text), kNoNumber) << text;
    }
    for (const FunctionWord& row : SourceRows())
        EXPECT_TRUE(ElementValue(ExampleOf(row)).has_value()) << row.Word;
}

/// The list slots are named where all modules see them, the words explained with the others.
TEST_F(Vocabulary, EveryListHasItsSlot) {
    std::set<int> slots;
    for (const FunctionWord& row : kListRole.Own) slots.insert(ListSlotByName(row.Word));
    EXPECT_EQ(slots.size(), basGlobal.FolderName.size());
    EXPECT_FALSE(slots.contains(-1));
}

/// A page with one element of every kind, each key with its sample.
TEST_F(Vocabulary, SamplesOfAllKeysMakeASoundPage) {
    std::string page = "[samples]\n";
    std::string text = SoundSkin::Text();
    for (const SkinKind* kind : SkinKinds()) {
        const std::string prefix = std::string(kind->Word) + "0";
        page += prefix + "Function=" + kind->FunctionSample + "\n";
        for (const SkinKey& key : kind->Keys)
            page += prefix + key.Name + "=" + (key.How == Read::Picture ? "key.png" : key.Sample) +
                    "\n";
    }
    page.replace(page.find("sensor_value.loadcalculated"), 27, "sensor_speed");
    text += page;
    text.replace(text.find("=exit"), 5, "=openmenu_samples");
    std::string findings;
    for (const SkinError& finding : skin_.Check(text))
        findings += finding.Context() + ": " + finding.Description + "\n";
    EXPECT_EQ(findings, "");
}

}  // namespace
}  // namespace dravik
