#include <QFontDatabase>

#include "settings/basSettings.h"
#include "skin/SkinFixture.h"
#include "support/TestFont.h"

namespace dravik {
namespace {

/// Every letter is a box of the font's size: 100 points are 133 pixels.
constexpr int kWhole = 1000;
constexpr int kSide = 133;

std::string PageWithText(const std::string& font) {
    return "[mainmenu]\nLabel0Function=text\nLabel0Caption=X\nLabel0FontSize=100\n"
           "Label0Width=400\nLabel0Height=400\nLabel0Color=&HFFFFFF\nLabel0Font=" +
           font + "\n";
}

class FontsTest : public SkinTest {
 protected:
    /// How many pixels of the row in the middle of the letter are painted.
    int PaintedWidth() const {
        const QImage page = window->grab().toImage();
        int painted = 0;
        for (int x = 0; x < 400; ++x) painted += page.pixelColor(x, kSide / 2) == Qt::white ? 1 : 0;
        return painted;
    }
};

TEST_F(FontsTest, OfTheProgramAndOfEverySkinAreThereOnItsFirstPage) {
    folder.Write("fonts/program.ttf", TestFont("Test Program", kWhole));
    folder.Write("skins/pics/fonts/skin.ttf", TestFont("Test Skin", kWhole * 3 / 2));
    folder.Write("skins/more/fonts/other.ttf", TestFont("Test Other", kWhole * 2));
    folder.Write("skins/other.ini", "[General]\nImagefolder=more\n" + PageWithText("Test Other"));
    Start(PageWithText("Test Program"));
    EXPECT_NEAR(PaintedWidth(), kSide, 2);
    WriteSkin(PageWithText("Test Skin"));
    Load("mainmenu");
    EXPECT_NEAR(PaintedWidth(), kSide * 3 / 2, 2);

    EXPECT_FALSE(QFontDatabase::hasFamily(QStringLiteral("Test Other"))) << "it is not in use";
    basGlobal.Launch.Skin = "other";
    LoadSettings();
    Load("mainmenu");
    EXPECT_NEAR(PaintedWidth(), kSide * 2, 2);
    EXPECT_TRUE(QFontDatabase::hasFamily(QStringLiteral("Test Skin"))) << "it stays";
}

}  // namespace
}  // namespace dravik
