#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <filesystem>

#include "platform/Paths.h"
#include "skin/check/SoundSkin.h"

namespace dravik {
namespace {

using ::testing::HasSubstr;

struct Outcome {
    int Status = -1;
    std::string Output;
    std::string Errors;
};

/// Runs the real program with --check-skin where there is no display.
Outcome CheckSkinOf(const std::string& folder, const std::vector<std::string>& options = {},
                    const std::string& fontConfig = "") {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!fontConfig.empty())
        environment.insert(QStringLiteral("FONTCONFIG_FILE"), QString::fromStdString(fontConfig));
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromUtf8(name));
    QStringList arguments = {QStringLiteral("--check-skin"), QStringLiteral("--folder"),
                             QString::fromStdString(folder)};
    for (const std::string& option : options) arguments.append(QString::fromStdString(option));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(DRAVIK_PROGRAM), arguments);
    process.waitForFinished(60'000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

TEST(CheckSkinCommand, ExitStatusTellsCleanFindingsAndUnreadable) {
    const SoundSkin skin;
    const TemporaryFolder& folder = skin.Folder();
    folder.Write("skins/test.ini", SoundSkin::Text());
    folder.Write("skins/wrong.ini", SoundSkin::Text() + "[lost]\nButton0X=1\n");
    folder.Write("skins/empty.ini", "no section at all\n");

    const Outcome clean = CheckSkinOf(folder.Path());
    EXPECT_EQ(clean.Status, 0) << clean.Errors;
    EXPECT_EQ(clean.Output, "");
    const Outcome wrong = CheckSkinOf(folder.Path(), {"--skin", "wrong"});
    EXPECT_EQ(wrong.Status, 1) << wrong.Errors;
    EXPECT_EQ(wrong.Output,
              "wrong.ini [lost]: no command opens this page and no page names it\n"
              "wrong.ini [lost] Button0X: there is no such element: Button0Function is missing\n");
    for (const char* name : {"none", "empty"}) {
        const Outcome none = CheckSkinOf(folder.Path(), {"--skin", name});
        EXPECT_EQ(none.Status, 2);
        EXPECT_THAT(none.Errors, HasSubstr(std::string(name) + ".ini"));
    }
    const Outcome noLanguage = CheckSkinOf(folder.Path(), {"--language", "Dutch"});
    EXPECT_EQ(noLanguage.Status, 2);
    EXPECT_THAT(noLanguage.Errors, HasSubstr("Dutch.ini"));
}

/// On a system that has no font at all.
TEST(CheckSkinCommand, OurSkinsAreCleanInEveryLanguageWithTheFontsThatComeWithThem) {
    namespace fs = std::filesystem;
    if (!fs::exists(DRAVIK_FONTS)) GTEST_SKIP() << "built without fonts";
    const TemporaryFolder folder;
    const std::string noFonts = folder.Write(
        "fonts.conf", "<fontconfig><cachedir>" + folder / "cache" + "</cachedir></fontconfig>");
    folder.Write("Dravik.ini", "");
    for (const char* name : {"skins", "languages"})
        fs::create_directory_symlink(std::string(DRAVIK_SOURCE) + name, folder / name);
    EXPECT_THAT(
        CheckSkinOf(folder.Path(), {"--skin", "night", "--language", "English"}, noFonts).Output,
        HasSubstr("there is no font \"DejaVu Sans Condensed\""));
    fs::create_directory_symlink(DRAVIK_FONTS, folder / "fonts");

    const auto languages = FilesMatching(DRAVIK_SOURCE "languages", ".ini");
    ASSERT_GE(languages.size(), 5U);
    for (const char* skin : {"night", "day", "portrait", "portrait-day"}) {
        for (const std::string& file : languages) {
            const std::string language = file.substr(0, file.size() - 4);
            const Outcome outcome =
                CheckSkinOf(folder.Path(), {"--skin", skin, "--language", language}, noFonts);
            EXPECT_EQ(outcome.Status, 0) << outcome.Errors;
            EXPECT_EQ(outcome.Output, "") << skin << ", " << language;
        }
    }
}

}  // namespace
}  // namespace dravik
