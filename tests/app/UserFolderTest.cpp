#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "support/ConsoleProgram.h"
#include "support/TestSkin.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

using FolderContent = std::map<std::string, std::string>;  // file's path within the folder, content

FolderContent ContentOf(const std::string& folder) {
    FolderContent content;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        if (entry.is_regular_file())
            content[fs::relative(entry.path(), folder)] = {std::istreambuf_iterator<char>(file),
                                                           {}};
    }
    return content;
}

/// An installed program, and a user who starts it. German and Dutch have a language file of their
/// own, everybody else has the one that is set.
class UserFolder : public ::testing::Test {
 protected:
    UserFolder() {
        const ProgramFolderWithSkin source;
        for (const char* folder : {"bin", "share"}) fs::create_directories(machine_ / folder);
        fs::copy(DRAVIK_PROGRAM, machine_ / "bin/dravik");
        fs::copy(source.Folder.Path(), installed_, fs::copy_options::recursive);
        for (const auto& [name, locales] : {std::pair("Deutsch", "de,nl"), {"Wiener", "de_AT"}})
            machine_.Write("share/dravik/languages/" + std::string(name) + ".ini",
                           "[General]\nLocales=" + std::string(locales) +
                               "\n[Sensors]\nFilename=test.sensors\n[DTC]\nFilename=codes\n");
        atFirst_ = ContentOf(installed_);
    }

    ~UserFolder() override { EXPECT_EQ(ContentOf(installed_), atFirst_) << "it is not ours"; }

    std::unique_ptr<ConsoleProgram> Start(const std::vector<std::string>& arguments = {}) {
        environment_["XDG_CONFIG_HOME"] = machine_ / "config";
        const ConsoleProgram::Variables variables(environment_.begin(), environment_.end());
        return std::make_unique<ConsoleProgram>(arguments, machine_ / "bin/dravik", variables);
    }

    /// A first start that shows nothing; what the user's folder then says about the language.
    std::string FirstLanguage(const std::map<std::string, std::string>& locale) {
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"})
            environment_[name] = locale.contains(name) ? locale.at(name) : "";
        fs::remove_all(machine_ / "config");
        Start({"--check-skin"})->Finish();
        const std::string settings = machine_.Read("config/dravik/Dravik.ini");
        const std::size_t value = settings.find("Language=") + 9;
        return settings.substr(value, settings.find('\n', value) - value);
    }

    const TemporaryFolder machine_;
    const std::string installed_ = machine_ / "share/dravik";
    const std::string user_ = machine_ / "config/dravik";
    std::map<std::string, std::string> environment_ = {{"LC_ALL", "nl_BE.UTF-8"}};
    FolderContent atFirst_;
};

TEST_F(UserFolder, IsFilledOnFirstUseWithFilesThatCanBeWritten) {
    const auto changeAll = [&](fs::perm_options options) {
        constexpr fs::perms kWrite = fs::perms::owner_write;
        for (const auto& entry : fs::recursive_directory_iterator(installed_))
            fs::permissions(entry.path(), kWrite, options);
        fs::permissions(installed_, kWrite, options);
    };
    changeAll(fs::perm_options::remove);
    const auto dravik = Start();
    EXPECT_EQ(dravik->State("SensorCount"), "3");
    EXPECT_EQ(dravik->Finish(), 0);
    changeAll(fs::perm_options::add);  // so that they can be removed

    FolderContent expected = atFirst_;
    std::string& settings = expected["Dravik.ini"];
    settings.replace(settings.find("Language=test"), 13, "Language=Deutsch");
    settings += "[Resume]\nSensorActive=\n";
    EXPECT_EQ(ContentOf(user_), expected);
    for (const auto& entry : fs::recursive_directory_iterator(user_)) {
        const bool writable =
            (entry.status().permissions() & fs::perms::owner_write) != fs::perms::none;
        EXPECT_TRUE(writable) << entry.path();
    }
}

TEST_F(UserFolder, StartsInTheFirstLanguageOfTheSystemThatHasAFile) {
    using Locale = std::map<std::string, std::string>;
    const std::pair<Locale, std::string> cases[] = {
        {{{"LANG", "de_AT.UTF-8"}}, "Wiener"},
        {{{"LANG", "de_CH@euro"}}, "Deutsch"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "en_US"}}, "test"},
        {{{"LC_MESSAGES", "en_US"}, {"LC_ALL", "nl"}}, "Deutsch"},
        {{{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "sv:de_AT:de"}}, "Wiener"},
        {{{"LANG", "de_AT"}, {"LANGUAGE", "de:en"}}, "Deutsch"},
        {{{"LANG", "de_AT"}, {"LANGUAGE", "sv"}}, "Wiener"},
        {{{"LANG", "C.UTF-8"}, {"LANGUAGE", "de"}}, "test"},
        {{{"LANG", "de_DE"}, {"LC_ALL", "POSIX"}, {"LANGUAGE", "de"}}, "test"},
    };
    for (const auto& [locale, language] : cases)
        EXPECT_EQ(FirstLanguage(locale), language) << ::testing::PrintToString(locale);
}

TEST_F(UserFolder, OnlyPartlyFilledIsCompletedAndKeepsWhatIsTheUsers) {
    // A copy that was cut short, a folder copied without its permission to write, and the settings
    // of a program that ran all the same.
    const std::string sensors = "config/dravik/languages/test.sensors";
    const std::string mine = "[Resume]\nMenu=codes\n[OBD]\nComPort=9\nMine=1\n";
    machine_.Write(sensors, atFirst_["languages/test.sensors"].substr(0, 40));
    machine_.Write("config/dravik/languages/codes", "[errorcodes]\nP0133=Mine\n");
    machine_.Write("config/dravik/skins/own.ini", "[mainmenu]\n");
    machine_.Write("config/dravik/Dravik.ini", mine);
    fs::permissions(machine_ / sensors, fs::perms::owner_read);
    fs::permissions(user_ + "/skins", fs::perms::owner_read | fs::perms::owner_exec);

    const auto dravik = Start();
    EXPECT_EQ(dravik->State("SensorCount"), "3");
    EXPECT_EQ(dravik->Finish(), 0);
    EXPECT_EQ(dravik->ErrorOutput().find("dravik:"), std::string::npos);

    FolderContent expected = atFirst_;
    expected["languages/codes"] = "[errorcodes]\nP0133=Mine\n";
    expected["skins/own.ini"] = "[mainmenu]\n";
    expected["Dravik.ini"] =
        "[Resume]\nMenu=codes\nSensorActive=\n"
        "[OBD]\nComPort=9\nMine=1\nUpdateIntervall=10\nRefreshRate=20\n"
        "[Options]\nSkin=test\nLanguage=Deutsch\nMisc=0\n";
    EXPECT_EQ(ContentOf(user_), expected);
}

TEST_F(UserFolder, ThatCannotBeFilledLeavesTheInstalledDataToRunOn) {
    for (const std::string obstacle : {"config", "config/dravik", "config/dravik/languages"}) {
        machine_.Write(obstacle, "a file where a folder should be");
        const auto dravik = Start();
        EXPECT_EQ(dravik->State("SensorCount"), "3") << obstacle;
        EXPECT_EQ(dravik->Ask("text sensor_rpm"), "0");
        EXPECT_EQ(dravik->Ask("do config"), "ok");
        EXPECT_EQ(dravik->Ask("key Ctrl+S"), "ok");
        EXPECT_THAT(dravik->AskLines("elements"),
                    Contains(AllOf(StartsWith("Label"), HasSubstr("could not be written"))));
        EXPECT_EQ(dravik->Finish(), 0);
        EXPECT_THAT(dravik->ErrorOutput(),
                    AllOf(HasSubstr("could not be made; Dravik runs from " + installed_),
                          Not(HasSubstr("resume state"))));
        EXPECT_FALSE(fs::exists(user_ + "/Dravik.ini")) << "it would count as filled";
        fs::remove(machine_ / obstacle);
    }
    EXPECT_EQ(Start()->State("SensorCount"), "3");
    EXPECT_EQ(ContentOf(user_ + "/skins"), ContentOf(installed_ + "/skins"));
    EXPECT_EQ(ContentOf(user_ + "/languages"), ContentOf(installed_ + "/languages"));
}

}  // namespace
}  // namespace dravik
