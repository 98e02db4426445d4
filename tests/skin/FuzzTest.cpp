#include <random>

#include "SkinFixture.h"
#include "lists/basFunctions.h"

namespace dravik {
namespace {

/// Makes skins that no author would write, the same ones on every run.
class SkinMaker {
 public:
    explicit SkinMaker(std::uint32_t seed) : random_(seed) {
        for (const auto& words : {CommandWords(), TextFunctionWords(), NumberFunctionWords(),
                                  ImageFunctionWords(), SourceWords()}) {
            for (const std::string_view word : words) {
                // Those that end or hide the program, or start another one, are no load errors.
                if (word != "quit" && word != "poweroff" && word != "minimize" && word != "osk")
                    words_.emplace_back(word);
            }
        }
    }

    int Below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(random_); }
    bool OneIn(int n) { return Below(n) == 0; }

    std::string Skin() {
        std::string text = "[General]\nImagefolder=pics\n";
        if (OneIn(2)) text += "Width=" + Number() + "\nHeight=" + Number() + "\n";
        for (const char* page : kPages) text += Section(page);
        if (OneIn(10)) text.insert(static_cast<std::size_t>(Below(int(text.size()))), 1, '\0');
        if (OneIn(10)) text.resize(static_cast<std::size_t>(Below(int(text.size()))));
        return text;
    }

    static constexpr const char* kPages[] = {"mainmenu", "a", "box", "warning", "query", "freeze"};

 private:
    template <std::size_t N>
    std::string Pick(const char* const (&choices)[N]) {
        return choices[Below(N)];
    }

    std::string Number() {
        static constexpr const char* kNumbers[] = {
            "0",      "1",          "-1",          "2147483647", "-2147483648", "99999999999999999",
            "&HFFFF", "&HZZ",       "&H1FFFFFFFF", "1e308",      "nan",         "",
            "32768",  "4294967296", "0.5",         "abc",        "17"};
        return OneIn(3) ? Pick(kNumbers) : std::to_string(Below(900));
    }
    std::string PictureFile() {
        static constexpr const char* kFiles[] = {"half.png", "gone.png", "..\\..\\x.png",
                                                 "\\",       "tall.png", "pics\\b64.png",
                                                 "%s%n",     ".",        "text.png"};
        return OneIn(4) ? Pick(kFiles) : OneIn(3) ? "" : "b64.png";
    }
    std::string Function() {
        static constexpr const char* kWhole[] = {
            "text",         "mouseover", "listentry", "media",   "playlist",
            "troublecodes", "listview",  "smstext",   "dvdmenu", "openmenu_a",
            "openbox_box",  "obd_0C",    "obd_ZZ",    "___",     "showquery_a:openmenu_mainmenu"};
        if (OneIn(3)) return Pick(kWhole);
        static constexpr const char* kArguments[] = {
            "a", "0C", "+", "-", "all", "chart0", "left", "select", "99999999999", ""};
        return words_[static_cast<std::size_t>(Below(static_cast<int>(words_.size())))] + "_" +
               Pick(kArguments);
    }
    std::string Text() {
        static constexpr const char* kTexts[] = {"BoldItalic", "DejaVu Sans", "APP_Title"};
        if (OneIn(3)) return Function();
        if (OneIn(2)) return Pick(kTexts);
        if (OneIn(2)) return std::string(static_cast<std::size_t>(Below(200)), 'x');
        std::string bytes(20, '\0');
        for (char& byte : bytes) byte = static_cast<char>(128 + Below(128));
        return bytes;
    }

    std::string Section(const std::string& name) {
        std::string text = "[" + name + "]\n";
        if (OneIn(6)) text += "Command=" + Function() + "\n";
        if (OneIn(3)) text += "BackgroundX=" + Number() + "\nBackgroundY=" + Number() + "\n";
        const int shared = OneIn(60) ? 110 : Below(3);
        for (int i = 0; i < shared; ++i) {
            text += "CommonObjects" + std::to_string(i) + "=" +
                    (OneIn(4) ? std::string("no\\where") : kPages[Below(std::size(kPages))]) + "\n";
        }
        for (const SkinKind& kind : SkinKinds()) {
            const int count = OneIn(900) ? 1005 : Below(4);
            for (int n = 0; n < count; ++n) text += Element(kind, n, count > 100);
        }
        return text;
    }
    std::string Element(const SkinKind& kind, int n, bool bare) {
        std::string text = ElementKey(kind, n, "Function") + "=" + Function() + "\n";
        for (const SkinKey& key : kind.Keys) {
            if (key.How != Read::Strict && (bare || OneIn(3))) continue;
            std::string value = key.How == Read::Picture ? PictureFile()
                                : key.How == Read::Text  ? Text()
                                                         : Number();
            if (key.How == Read::Strict && !OneIn(20)) value = std::to_string(Below(99));
            text += ElementKey(kind, n, key.Name) + "=" + value + "\n";
        }
        return text;
    }

    std::mt19937 random_;
    std::vector<std::string> words_;
};

class FuzzTest : public SkinTest {};

/// A number from the environment, for longer campaigns than the one of every test run.
int Wanted(const char* variable, int usual) {
    bool given = false;
    const int number = qEnvironmentVariableIntValue(variable, &given);
    return given ? number : usual;
}

#if defined(NDEBUG)
constexpr int kRounds = 1500;
#else
constexpr int kRounds = 400;
#endif

TEST_F(FuzzTest, MalformedSkinsNeitherCrashNorHangAndTheirFaultsAreNamed) {
    Start("[mainmenu]\n");
    basGlobal.SaveFolder = folder.Path() + "/";
    Picture("tall.png", 3, 700, Qt::red);
    folder.Write(PictureName("half.png"), folder.Read(PictureName("b64.png")).substr(0, 60));
    folder.Write(PictureName("text.png"), "no picture");
    for (int i = 0; i < 30; ++i)
        AddListEntry(*FindList(ListSlotByName("media")), {"entry", "b64", ""});
    SkinMaker maker(static_cast<std::uint32_t>(Wanted("DRAVIK_FUZZ_SEED", 20240607)));
    const int rounds = Wanted("DRAVIK_FUZZ_ROUNDS", kRounds);
    Answers answers(kAnswerYes);
    constexpr int kAhead = 40;
    int written = 0;
    int faults = 0;
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        // A file written just now is parsed on every reading, so each is written some time ahead.
        while (written < round + kAhead)
            folder.Write("skins/" + std::to_string(written++) + ".ini", maker.Skin());
        basGlobal.SkinFile = folder / ("skins/" + std::to_string(round) + ".ini");
        basGlobal.DtcCount = static_cast<std::int16_t>(maker.Below(2));
        basGlobal.Misc = maker.OneIn(2) ? kMiscMouseWheel : 0;
        LoadSkinPage(SkinMaker::kPages[maker.Below(2)], false);
        Refresh();
        FinishPage();
        if (maker.OneIn(3)) ToggleBox("box");
        window->grab();
        for (int i = 0; i < 2; ++i) {
            const int x = maker.Below(window->width());
            const int y = maker.Below(window->height());
            Press(x, y);
            Move(maker.Below(window->width()), maker.Below(window->height()));
            Release(maker.OneIn(3) ? maker.Below(window->width()) : x, y);
            static constexpr Qt::Key kKeys[] = {Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,
                                                Qt::Key_Down,   Qt::Key_Return, Qt::Key_Tab,
                                                Qt::Key_Escape, Qt::Key_X};
            Key(kKeys[maker.Below(std::size(kKeys))]);
        }
        if (maker.OneIn(20)) window->resize(maker.Below(1200) + 1, maker.Below(900) + 1);
        Refresh();
        for (const std::string& text : answers.texts) {
            if (!text.starts_with("Skin Config Error ")) continue;
            ++faults;
            EXPECT_THAT(text,
                        ::testing::ContainsRegex(
                            "^Skin Config Error [0-9]+\\.ini \\[[^]]*\\] [A-Za-z]+[0-9]+[A-Za-z]+"
                            "\r\n.+"))
                << "round " << round;
        }
        answers.texts.clear();
    }
    EXPECT_GT(faults, rounds / 10) << "the skins are worse than that";
}

}  // namespace
}  // namespace dravik
