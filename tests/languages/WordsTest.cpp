#include <gmock/gmock.h>

#include <filesystem>
#include <optional>
#include <set>

#include "languages/LanguageFolder.h"
#include "obd/Diagnosis.h"
#include "obd/basOBD.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "settings/SettingsTable.h"
#include "settings/Words.h"

namespace dravik {
namespace {

/// The text of the string literals that begin at a place of a source file, joined.
std::string LiteralAt(const std::string& source, std::size_t place) {
    std::string text;
    while (place < source.size() && source[place] == '"') {
        for (++place; source[place] != '"'; ++place) {
            if (source[place] == '\\') ++place;
            text += source[place];
        }
        place = source.find_first_not_of(" \n", place + 1);
    }
    return text;
}

/// The texts that the program hands to one of these procedures.
std::set<std::string> TextsOfTheProgram() {
    std::set<std::string> texts;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(DRAVIK_SOURCE "src/")) {
        if (entry.path().extension() != ".cpp") continue;
        const std::string source = ReadWholeFile(entry.path().string()).value_or("");
        for (const std::string call : {"Word(", "Words(", "ShowMessage(", "ShowPlainMessage("}) {
            for (std::size_t at = source.find(call); at != std::string::npos;
                 at = source.find(call, at + 1)) {
                const std::size_t first = source.find_first_not_of(" \n", at + call.size());
                if (source[first] == '"') texts.insert(LiteralAt(source, first));
            }
        }
    }
    return texts;
}

TEST(Words, EveryTextOfTheProgramIsKnownToEveryLanguage) {
    basGlobal = GlobalState();
    InitGlobals("");
    std::set<std::string> texts = TextsOfTheProgram();
    ASSERT_GE(texts.size(), 5U) << "are the sources where they were?";
    for (const std::string& status : basGlobal.StatusText)
        if (!status.empty()) texts.insert(status);
    for (const auto& patterns : {ReasonTexts(), FindingTexts(), DiagnosisWords()})
        texts.insert(patterns.begin(), patterns.end());
    for (const SettingRow& row : kSettingRows) {
        for (const std::string text : {row.Caption, row.WhenEmpty})
            if (text.find_first_not_of("0123456789:") != std::string::npos) texts.insert(text);
    }
    for (const char* language : kLanguages) {
        const WordList words(kLanguageFolder + language + ".ini");
        for (const std::string& text : texts)
            EXPECT_TRUE(words.Find(text)) << language << ": " << text;
    }
}

TEST(Words, AreTheSameInEveryLanguageAndAreTranslated) {
    const std::string english = kLanguageFolder + std::string(kLanguages[0]) + ".ini";
    const auto names = ProfileKeys(english, "Words");
    for (const std::string language : kLanguages) {
        const std::string file = kLanguageFolder + language + ".ini";
        EXPECT_EQ(ProfileKeys(file, "Words"), names) << language;
        const bool foreign = !language.starts_with("English");
        std::size_t same = 0;
        for (const std::string& name : names) {
            const std::string text = ReadProfileString(file, "Words", name, "", 1000);
            EXPECT_TRUE(IsUtf8(text)) << language << ": " << text;
            EXPECT_EQ(ReadIniString(file, "Words", name), text) << "too long to be read";
            if (!foreign)
                EXPECT_EQ(text, name);
            else if (text == name)
                ++same;
        }
        EXPECT_LT(same, names.size() / 8) << language;
    }
}

TEST(Words, TheStateOfTheLinkIsShownInTheLanguage) {
    StartIn("German");
    EXPECT_EQ(Word("Not Connected."), "Nicht verbunden.");
    EXPECT_EQ(Word("Resetting Trouble Codes.."), "Lösche Fehlercodes..");
    EXPECT_EQ(Word("No answer from the interface (%1 of %2 seconds)", {"7", "50"}),
              "Keine Antwort vom Interface (7 von 50 Sekunden)");
}

}  // namespace
}  // namespace dravik
