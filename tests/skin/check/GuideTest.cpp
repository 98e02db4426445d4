#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "settings/basSettings.h"
#include "skin/check/CheckSkin.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using ::testing::HasSubstr;

/// What stands between the marks behind `from`, which is moved on.
std::string Block(const std::string& text, std::size_t& from) {
    const std::string begin = "```ini\n";
    const std::size_t start = text.find(begin, from) + begin.size();
    from = text.find("```", start);
    return text.substr(start, from - start);
}

/// The reader copies these texts, so they must work: on our pictures and in every language.
TEST(Guide, FirstPageBringsTheFindingThatItShowsAndTheSecondPageSettlesIt) {
    const std::string guide = ReadWholeFile(DRAVIK_SOURCE "docs/skin-authors.md").value_or("");
    std::size_t place = 0;
    const std::string firstPage = Block(guide, place);
    const std::string secondPage = Block(guide, place);
    ASSERT_THAT(firstPage, HasSubstr("[mainmenu]"));
    ASSERT_THAT(secondPage, HasSubstr("[codes]"));

    const TemporaryFolder folder;
    folder.Write("Dravik.ini", "[Options]\nSkin=first\nLanguage=English\n");
    const std::filesystem::path source = DRAVIK_SOURCE;
    std::filesystem::create_directory_symlink(source / "languages", folder / "languages");
    std::filesystem::create_directory(folder / "skins");
    std::filesystem::create_directory_symlink(source / "skins/night", folder / "skins/night");
    const auto check = [&folder](const std::string& text) {
        folder.Write("skins/first.ini", text);
        basGlobal = GlobalState{};
        InitGlobals(folder.Path());
        LoadSettings();
        std::string lines;
        for (const SkinError& finding : CheckSkin())
            lines += finding.Context() + ": " + finding.Description + "\n";
        return lines;
    };
    const std::string finding = check(firstPage);
    EXPECT_EQ(std::count(finding.begin(), finding.end(), '\n'), 1);
    EXPECT_THAT(guide, HasSubstr("    " + finding));
    EXPECT_EQ(check(firstPage + secondPage), "");
    basGlobal = GlobalState{};
}

}  // namespace
}  // namespace dravik
