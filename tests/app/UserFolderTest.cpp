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
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

using FolderContent = std::map<std::string, std::string>;  // file's path within the folder, content

FolderContent ContentOf(const std::string& folder) {
    FolderContent content;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        if (entry.is_regular_file())
            content[entry.path().lexically_relative(folder)] = {
                std::istreambuf_iterator<char>(file), {}};
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

    /// The settings of a new user: those installed, with the comment and the user's language.
    std::string Settings() {
        std::string settings = atFirst_["Dravik.ini"];
        return settings.replace(settings.find("Language=test"), 13, "Language=Deutsch") + kMark;
    }

    /// The lines of `elements` for one kind.
    static std::vector<std::string> ElementsOf(ConsoleProgram& dravik, const std::string& kind) {
        std::vector<std::string> lines = dravik.AskLines("elements");
        std::erase_if(lines,
                      [&](const std::string& line) { return !line.starts_with(kind + "\t"); });
        return lines;
    }

    const std::string kMark = "[Program]\nLayered=1\n";
    const std::string kResume = "[Resume]\nSensorActive=\n";
    const TemporaryFolder machine_;
    const std::string installed_ = machine_ / "share/dravik";
    const std::string user_ = machine_ / "config/dravik";
    std::map<std::string, std::string> environment_ = {{"LC_ALL", "nl_BE.UTF-8"}};
    FolderContent atFirst_;
};

TEST_F(UserFolder, IsGivenSettingsOnFirstUseAndNothingElse) {
    const auto changeAll = [&](fs::perm_options options) {
        constexpr fs::perms kWrite = fs::perms::owner_write;
        for (const auto& entry : fs::recursive_directory_iterator(installed_))
            fs::permissions(entry.path(), kWrite, options);
        fs::permissions(installed_, kWrite, options);
    };
    changeAll(fs::perm_options::remove);
    const auto dravik = Start();
    EXPECT_EQ(dravik->State("SensorCount"), "3");
    EXPECT_EQ(ElementsOf(*dravik, "Button").size(), 2U);
    EXPECT_EQ(dravik->Finish(), 0);
    changeAll(fs::perm_options::add);  // so that they can be removed
    EXPECT_EQ(ContentOf(user_), FolderContent({{"Dravik.ini", Settings() + kResume}}));
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

TEST_F(UserFolder, LiesOverTheInstalledDataFileByFileInAnyCase) {
    machine_.Write("config/dravik/skins/TEST.ini",
                   atFirst_["skins/test.ini"] +
                       "[own]\nImage0Function=picture\nImage0Picture=up.png\n"
                       "Image1Function=picture\nImage1Picture=lamp.png\n");
    machine_.Write("config/dravik/languages/Codes", "[errorcodes]\nP0133=Mine\n");
    SavePicture(machine_ / "share/dravik/skins/test/lamp.png", 30, 30);
    atFirst_ = ContentOf(installed_);
    machine_.Write("config/dravik/skins/Test/UP.png", "");
    SavePicture(machine_ / "config/dravik/skins/Test/UP.png", 40, 20);
    const auto dravik = Start({"--skin", "test"});
    EXPECT_EQ(dravik->Ask("do openmenu_own"), "ok");
    EXPECT_THAT(ElementsOf(*dravik, "Image"), ElementsAre(HasSubstr("\t40\t20\t"),    // the user's
                                                          HasSubstr("\t30\t30\t")));  // installed
    EXPECT_EQ(dravik->State("SensorCount"), "3");
    EXPECT_EQ(dravik->Finish(), 0);
    EXPECT_EQ(machine_.Read("config/dravik/Dravik.ini"), Settings() + kResume);

    // The checker looks at the same files.
    const auto check = Start({"--check-skin"});
    check->Finish();
    EXPECT_THAT(check->Output(), AllOf(HasSubstr("[own]"), Not(HasSubstr("no such"))));
}

TEST_F(UserFolder, OfAnEarlierVersionLosesItsUnchangedCopiesOnce) {
    fs::create_directories(user_);
    fs::copy(installed_, user_, fs::copy_options::recursive);
    const std::string mine = "; mine\n[OBD]\nComPort=9\n[Options]\nSkin=test\nLanguage=test\n";
    const std::string codes = "[errorcodes]\nP0133=Mine\n";
    machine_.Write("config/dravik/Dravik.ini", mine);
    machine_.Write("config/dravik/languages/codes", codes);
    machine_.Write("config/dravik/languages/Wiener.ini", "");
    machine_.Write("config/dravik/skins/own.ini", "[mainmenu]\n");
    // What the user has linked may be the installation itself.
    const std::string linked = user_ + "/languages/test.sensors";
    fs::remove(linked);
    fs::create_symlink(installed_ + "/languages/test.sensors", linked);

    const auto dravik = Start();
    EXPECT_EQ(dravik->State("SensorCount"), "3");
    EXPECT_EQ(dravik->Finish(), 0);
    EXPECT_THAT(dravik->ErrorOutput(),
                HasSubstr(user_ + " that are not as installed, and are used in their place: 2;"));
    FolderContent expected = {{"Dravik.ini", mine + kMark + kResume},
                              {"languages/Wiener.ini", ""},
                              {"languages/codes", codes},
                              {"languages/test.sensors", atFirst_["languages/test.sensors"]},
                              {"skins/own.ini", "[mainmenu]\n"}};
    EXPECT_EQ(ContentOf(user_), expected);
    EXPECT_FALSE(fs::exists(user_ + "/skins/test")) << "it is empty";

    // A copy that the user is about to change.
    expected["skins/test.ini"] = atFirst_["skins/test.ini"];
    machine_.Write("config/dravik/skins/test.ini", expected["skins/test.ini"]);
    Start()->Finish();
    EXPECT_EQ(ContentOf(user_), expected);
}

TEST_F(UserFolder, WhoseFillingWasCutShortIsGivenTheSettingsThatItLacks) {
    const std::string mine = "[Resume]\nMenu=codes\n[OBD]\nComPort=9\nMine=1\n";
    machine_.Write("config/dravik/languages/test.sensors",
                   atFirst_["languages/test.sensors"].substr(0, 40));
    machine_.Write("config/dravik/languages/codes", "[errorcodes]\nP0133=Mine\n");
    machine_.Write("config/dravik/Dravik.ini", mine);
    const auto dravik = Start();
    EXPECT_EQ(dravik->State("SensorCount"), "3");
    EXPECT_EQ(dravik->Finish(), 0);
    EXPECT_EQ(ContentOf(user_),
              FolderContent({{"languages/codes", "[errorcodes]\nP0133=Mine\n"},
                             {"Dravik.ini",
                              "[Resume]\nMenu=codes\nSensorActive=\n"
                              "[OBD]\nComPort=9\nMine=1\nUpdateIntervall=10\nRefreshRate=20\n"
                              "[Options]\nSkin=test\nLanguage=Deutsch\nMisc=0\n" +
                                  kMark}}));
}

TEST_F(UserFolder, ThatCannotBeMadeLeavesTheInstalledDataToRunOn) {
    machine_.Write("share/dravik/skins/second.ini", atFirst_["skins/test.ini"]);
    atFirst_ = ContentOf(installed_);
    for (const std::string obstacle : {"config", "config/dravik"}) {
        machine_.Write(obstacle, "a file where a folder should be");
        const auto dravik = Start();
        EXPECT_EQ(dravik->State("SensorCount"), "3") << obstacle;
        EXPECT_EQ(dravik->Ask("text sensor_rpm"), "0");
        EXPECT_EQ(dravik->Ask("do skin_second"), "ok");
        EXPECT_EQ(dravik->Ask("do config"), "ok");
        EXPECT_EQ(dravik->Ask("key Ctrl+S"), "ok");
        EXPECT_THAT(dravik->AskLines("elements"),
                    Contains(AllOf(StartsWith("Label"), HasSubstr("could not be written"))));
        EXPECT_EQ(dravik->Finish(), 0);
        EXPECT_THAT(dravik->ErrorOutput(),
                    AllOf(HasSubstr("could not be made; Dravik runs from " + installed_),
                          Not(HasSubstr("resume state"))));
        fs::remove(machine_ / obstacle);
    }
    Start()->Finish();
    EXPECT_EQ(machine_.Read("config/dravik/Dravik.ini"), Settings() + kResume);
}

TEST_F(UserFolder, IsWatchedTogetherWithTheInstalledData) {
    const auto dravik = Start();
    const auto button = [&] {
        const std::string line = ElementsOf(*dravik, "Button").front();
        return line.substr(0, line.find("\t60\t"));
    };
    const auto withEdge = [&](const std::string& edge) {
        std::string skin = atFirst_["skins/test.ini"];
        skin.replace(skin.find("Button0X=10"), 11, "Button0X=" + edge);
        machine_.Write("config/dravik/skins/test.ini", skin);
    };
    EXPECT_EQ(button(), "Button\t0\t10\t10\t200");
    withEdge("77");
    EXPECT_EQ(dravik->Until(button, "Button\t0\t77\t10\t200"), "Button\t0\t77\t10\t200");
    machine_.Write("config/dravik/skins/test/note", "");
    SavePicture(machine_ / "config/dravik/skins/test/up.png", 120, 60);
    EXPECT_EQ(dravik->Until(button, "Button\t0\t77\t10\t120"), "Button\t0\t77\t10\t120");
    withEdge("78");
    EXPECT_EQ(dravik->Until(button, "Button\t0\t78\t10\t120"), "Button\t0\t78\t10\t120");
    fs::remove_all(user_ + "/skins");
    EXPECT_EQ(dravik->Until(button, "Button\t0\t10\t10\t200"), "Button\t0\t10\t10\t200");
}

TEST_F(UserFolder, GetsItsFontsFromTheInstallation) {
    machine_.Write("share/dravik/fonts/broken.ttf", "no font");
    atFirst_ = ContentOf(installed_);
    for (int start = 0; start < 2; ++start) {
        const auto dravik = Start();
        EXPECT_EQ(dravik->State("SensorCount"), "3");
        dravik->Finish();
        EXPECT_THAT(dravik->ErrorOutput(), HasSubstr("fonts/broken.ttf holds no font")) << start;
    }
    EXPECT_FALSE(fs::exists(user_ + "/fonts"));
}

}  // namespace
}  // namespace dravik
