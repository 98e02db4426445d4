#include "controls/PictureCache.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "core/basGlobal.h"
#include "support/SavePicture.h"
#include "support/TemporaryFolder.h"

namespace dravik {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class PictureCacheTest : public ::testing::Test {
 protected:
    PictureCacheTest() { ClearPictureCache(); }

    std::string Save(const std::string& name, int width, int height,
                     const QColor& color = Qt::red) {
        SavePicture(folder_ / name, width, height, color);
        return folder_ / name;
    }

    const TemporaryFolder folder_;
};

TEST_F(PictureCacheTest, ScalesToWholePixelsAndKeepsTheDesignSize) {
    const std::string path = Save("button.png", 101, 33);
    const SkinPicture picture = LoadSkinPicture(path, 1.5);
    EXPECT_EQ(picture.Error(), "");
    EXPECT_EQ(picture.DesignSize(), QSizeF(101, 33));
    EXPECT_EQ(picture.Pixmap().size(), QSize(152, 50));
    EXPECT_EQ(picture.AtScale(1), LoadSkinPicture(path, 1));
}

TEST_F(PictureCacheTest, DecodesAFileOncePerScale) {
    const std::string path = Save("button.png", 100, 50);
    const SkinPicture first = LoadSkinPicture(path, 1);
    const std::size_t size = PictureCacheSize();
    EXPECT_EQ(size, 100u * 50u * 4u);
    EXPECT_EQ(LoadSkinPicture(path, 1), first);
    EXPECT_EQ(PictureCacheSize(), size);
    EXPECT_NE(LoadSkinPicture(path, 2), first);
    EXPECT_EQ(PictureCacheSize(), 5 * size);
}

TEST_F(PictureCacheTest, NoticesAChangedFile) {
    const std::string path = Save("button.png", 10, 10);
    const SkinPicture before = LoadSkinPicture(path, 1);
    Save("button.png", 40, 20, Qt::blue);
    const SkinPicture after = LoadSkinPicture(path, 1);
    EXPECT_EQ(after.DesignSize(), QSizeF(40, 20));
    EXPECT_EQ(before.DesignSize(), QSizeF(10, 10)) << "a handle never changes";
    EXPECT_EQ(PictureCacheSize(), 40u * 20u * 4u);
}

TEST_F(PictureCacheTest, TakesTheUsersPictureBeforeTheInstalledOneOfDoubleSize) {
    const TemporaryFolder installed;
    basGlobal.ProgramFolder = folder_.Path();
    basGlobal.Launch.InstalledData = installed.Path();
    for (const char* name : {"both.png", "both@2x.png", "double.png", "double@2x.png"})
        SavePicture(installed / name, 80, 80, Qt::blue);
    Save("both.png", 100, 100);
    Save("double@2x.png", 200, 200);
    const auto width = [&](const char* name, double scale) {
        return LoadSkinPicture(folder_ / name, scale).DesignSize().width();
    };
    EXPECT_EQ(width("both.png", 1), 100);
    EXPECT_EQ(width("both.png", 2), 100);
    EXPECT_EQ(width("double.png", 1), 80);
    EXPECT_EQ(width("double.png", 2), 100);
    std::filesystem::remove(folder_ / "both.png");
    EXPECT_EQ(width("both.png", 1), 80);
    EXPECT_EQ(width("both.png", 2), 40);
    basGlobal = GlobalState{};
}

TEST_F(PictureCacheTest, TakesTheDoubleSizeFileOnlyAboveScaleOne) {
    const std::string path = Save("dial.png", 100, 50, Qt::red);
    Save("dial@2x.png", 200, 100, Qt::blue);
    const auto colour = [](const SkinPicture& picture) {
        return picture.Pixmap().toImage().pixelColor(5, 5);
    };
    EXPECT_EQ(colour(LoadSkinPicture(path, 1)), QColor(Qt::red));
    const SkinPicture larger = LoadSkinPicture(path, 1.5);
    EXPECT_EQ(colour(larger), QColor(Qt::blue));
    EXPECT_EQ(larger.DesignSize(), QSizeF(100, 50));
    EXPECT_EQ(larger.Pixmap().size(), QSize(150, 75));
    EXPECT_EQ(larger.Pixmap().devicePixelRatio(), 1) << "or it is painted half as large";
}

TEST_F(PictureCacheTest, ScalesPicturesWithAPalette) {
    QImage image(200, 100, QImage::Format_Indexed8);
    image.setColorTable({qRgb(255, 0, 0), qRgba(0, 0, 255, 0)});
    image.fill(0);
    const QString file = QString::fromStdString(folder_ / "key@2x.png");
    ASSERT_TRUE(image.save(file));
    ASSERT_EQ(QImage(file).format(), QImage::Format_Indexed8);
    const SkinPicture picture = LoadSkinPicture(folder_ / "key.png", 1.5);
    EXPECT_EQ(picture.Pixmap().size(), QSize(150, 75));
    EXPECT_EQ(picture.Pixmap().toImage().pixelColor(140, 70), QColor(Qt::red));
}

TEST_F(PictureCacheTest, SaysWhyThereIsNoPicture) {
    folder_.Write("text.png", "this is not a picture");
    Save("wide.png", kPictureLimit + 1, 1);
    using namespace std::string_literals;
    // 8192 by 8192 pixels of 24 bits, by its header.
    folder_.Write("heavy.bmp", "BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0"s +
                                   "\0\x20\0\0\0\x20\0\0\x01\0\x18\0"s + std::string(24, '\0'));
    const std::string gif = "GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF!\xF9\4\0\0\0\0\0"s +
                            ",\0\0\0\0\1\0\1\0\0\2\2D\1\0;"s;
    folder_.Write("whole.gif", gif);
    folder_.Write("cut.gif", gif.substr(0, gif.size() - 2));
    EXPECT_EQ(LoadSkinPicture(folder_ / "whole.gif", 1).Error(), "");
    Save("widest.png", kPictureLimit, 1);
    for (const auto& [name, error] : {std::pair{"nowhere.png", "file not found: "},
                                      {"text.png", "not a picture: "},
                                      {"cut.gif", "not a picture: "},
                                      {"heavy.bmp", "picture too large: "},
                                      {"wide.png", "picture too large: "}}) {
        const SkinPicture picture = LoadSkinPicture(folder_ / name, 1);
        EXPECT_TRUE(picture.IsNull());
        EXPECT_THAT(picture.Error(), AllOf(StartsWith(error), HasSubstr(name)));
    }
    // The picture that is read at this scale is the one that is named.
    Save("half.png", 10, 10);
    folder_.Write("half@2x.png", "this is not a picture");
    EXPECT_THAT(LoadSkinPicture(folder_ / "half.png", 2).Error(), HasSubstr("half@2x.png"));
    EXPECT_FALSE(LoadSkinPicture(folder_ / "half.png", 1).IsNull());
    EXPECT_FALSE(LoadSkinPicture(folder_ / "widest.png", 1).IsNull());
    EXPECT_TRUE(LoadSkinPicture(folder_ / "widest.png", 3).IsNull());
    EXPECT_TRUE(LoadSkinPicture("", 1).IsNull());
    EXPECT_EQ(LoadSkinPicture("", 1).Error(), "");
}

TEST_F(PictureCacheTest, KeepsWithinItsBytesAndForgetsTheLeastRecentlyUsed) {
    const std::string path = Save("tile.png", 100, 100);
    const SkinPicture kept = LoadSkinPicture(path, 1);
    const SkinPicture old = LoadSkinPicture(path, 19);
    for (int scale = 20; scale < 28; ++scale) {  // 16 million bytes and more each
        LoadSkinPicture(path, scale);
        EXPECT_EQ(LoadSkinPicture(path, 1), kept) << "in use all the time";
        EXPECT_LE(PictureCacheSize(), kPictureCacheBytes);
    }
    EXPECT_NE(LoadSkinPicture(path, 19), old);
    EXPECT_FALSE(old.IsNull());
}

}  // namespace
}  // namespace dravik
