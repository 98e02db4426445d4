#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontInfo>
#include <algorithm>

#include "controls/FontFiles.h"
#include "controls/SkinText.h"
#include "platform/Paths.h"
#include "support/TemporaryFolder.h"
#include "support/TestFont.h"

namespace dravik {
namespace {

bool IsKnown(const char* font) {
    return QFontDatabase::hasFamily(QString::fromUtf8(font));
}

/// The system counts the files that it is given.
int LoadedSoFar(const TemporaryFolder& folder) {
    return QFontDatabase::addApplicationFont(
        QString::fromStdString(folder.Write("counted.ttf", TestFont("Test Counted", 500))));
}

TEST(FontFiles, OfAFolderAreLoadedOnceAndTheBrokenOnesNamed) {
    const TemporaryFolder folder;
    folder.Write("fonts/one.ttf", TestFont("Test One", 500));
    folder.Write("fonts/TWO.OTF", TestFont("Test Two", 500));
    folder.Write("fonts/three.Ttc", TestFont("Test Three", 500));
    folder.Write("fonts/broken.ttf", "no font");
    folder.Write("fonts/LICENCE.txt", "no font either, and none by its name");
    folder.Write("fonts/folder.ttf/four.ttf", TestFont("Test Four", 500));
    const TextLook look{"Test One", 12};
    EXPECT_NE(QFontInfo(SkinFont(look, 1)).family(), QStringLiteral("Test One"));

    const int before = LoadedSoFar(folder);
    ::testing::internal::CaptureStderr();
    for (const char* name : {"fonts", "fonts", "FONTS", "none"}) LoadFontFiles(folder / name);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "dravik: " + ResolvePath(folder / "fonts/broken.ttf") +
                  " holds no font that can be read\n");
    EXPECT_EQ(LoadedSoFar(folder), before + 3 + 1);
    for (const char* font : {"Test One", "Test Two", "Test Three"})
        EXPECT_TRUE(IsKnown(font)) << font;
    EXPECT_FALSE(IsKnown("Test Four"));
    EXPECT_EQ(QFontInfo(SkinFont(look, 1)).family(), QStringLiteral("Test One"))
        << "what stood in for it is forgotten";
}

}  // namespace
}  // namespace dravik
