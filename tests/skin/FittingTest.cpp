#include <QDir>
#include <QLinearGradient>
#include <QProcess>
#include <QProcessEnvironment>
#include <map>

#include "SkinFixture.h"
#include "controls/ChartTrace.h"
#include "controls/SkinText.h"
#include "lists/basFunctions.h"

namespace dravik {
namespace {

using ::testing::IsEmpty;

class FittingTest : public SkinTest {
 protected:
    QRect ButtonRect() const {
        return {Button(0).mapTo(window.get(), QPoint(0, 0)), Button(0).size()};
    }
};

TEST_F(FittingTest, DesignIsScaledUniformlyAndCentredOnBlack) {
    Picture("b64@2x.png", 128, 128, Qt::green);
    Picture("ground.png", 800, 480, Qt::gray);
    Start("Width=800\nHeight=480\n[mainmenu]\nImage0Function=x\nImage0Picture=ground.png\n" +
          ButtonKeys({{"a", 101, 40}}));
    const struct {
        QSize Window;
        double Scale;
        QPoint Corner;
    } rows[] = {{{800, 480}, 1, {0, 0}},     {{1024, 600}, 1.25, {12, 0}},
                {{1280, 720}, 1.5, {40, 0}}, {{1920, 1080}, 2.25, {60, 0}},
                {{480, 800}, 0.6, {0, 256}}, {{800, 480}, 1, {0, 0}}};
    for (const auto& row : rows) {
        window->resize(row.Window);
        ASSERT_TRUE(Until([&] { return Screen().Scale() == row.Scale; })) << row.Scale;
        const QPoint at(qRound(101 * row.Scale), qRound(40 * row.Scale));
        const QPoint end(qRound(165 * row.Scale), qRound(104 * row.Scale));
        EXPECT_EQ(ButtonRect(), QRect(row.Corner + at, row.Corner + end - QPoint(1, 1)));
        const QImage shown = window->grab().toImage();
        const QPoint corner = row.Corner;
        EXPECT_EQ(shown.pixelColor(corner), QColor(Qt::gray));
        const QPoint last(row.Window.width() - 1 - corner.x(),
                          row.Window.height() - 1 - corner.y());
        EXPECT_EQ(shown.pixelColor(last), QColor(Qt::gray)) << row.Scale;
        for (const QPoint beside : {corner - QPoint(1, 0), corner - QPoint(0, 1)}) {
            if (shown.rect().contains(beside)) {
                EXPECT_EQ(shown.pixelColor(beside), QColor(Qt::black));
            }
        }
        EXPECT_EQ(shown.pixelColor(ButtonRect().center()),
                  QColor(row.Scale > 1 ? Qt::green : Qt::blue))
            << "the @2x picture is for scales above 1";
    }
}

TEST_F(FittingTest, StatedScaleAndNoDesignSize) {
    const std::string page = "[mainmenu]\n" + ButtonKeys({{"a", 100, 40}});
    Start("Width=400\nHeight=240\n" + page, {800, 480}, "ScaleImageWidth=150\n");
    EXPECT_EQ(ButtonRect(), QRect(100 + 150, 60 + 60, 96, 96));
    for (const char* keys :
         {"", "Width=800\n", "Width=-1\nHeight=480\n", "Width=99999999\nHeight=9\n"}) {
        window.reset();
        Start(keys + page);
        EXPECT_EQ(ButtonRect(), QRect(100, 40, 64, 64)) << keys;
        EXPECT_EQ(Screen().Page()->size(), window->size());
    }
}

/// Stripes of one pixel each survive only where a picture's pixels are those of the display.
QImage Stripes(int size) {
    QImage image(size, size, QImage::Format_ARGB32);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x)
            image.setPixelColor(x, y, x % 2 == 0 ? QColor(Qt::white) : QColor(Qt::red));
    }
    return image;
}

TEST_F(FittingTest, DISABLED_CrispOnADisplayOfDoubleDensity) {
    Start(
        "[mainmenu]\n[page]\nButton0Function=a\nButton0Up=s.png\nButton0X=10\nButton0Y=10\n"
        "Slider0Function=x\nSlider0Background=s.png\nSlider0X=110\nSlider0Y=10\n"
        "Image0Function=x\nImage0Picture=s.png\nImage0X=210\nImage0Y=10\n"
        "Chart0Function=x\nChart0Background=s.png\nChart0X=310\nChart0Y=10\n"
        "List0Function=media\nList0X=410\nList0Y=10\nList0Width=200\nList0Height=100\n"
        "List0FontSize=40\n");
    folder.Write(PictureName("s.png"), "");
    ASSERT_TRUE(Stripes(64).save(QString::fromStdString(folder / PictureName("s.png"))));
    ASSERT_TRUE(Stripes(128).save(QString::fromStdString(folder / PictureName("s@2x.png"))));
    ASSERT_TRUE(Stripes(64).save(QString::fromStdString(folder / PictureName("key@2x.png"))));
    ASSERT_TRUE(Stripes(32).save(QString::fromStdString(folder / PictureName("key.png"))));
    AddListEntry(*FindList(ListSlotByName("media")), {"text", "key", ""});
    EXPECT_THAT(Load("page"), IsEmpty());
    ASSERT_EQ(window->devicePixelRatioF(), 2.0);
    EXPECT_EQ(ButtonRect(), QRect(10, 10, 64, 64)) << "the page is not larger, only finer";
    const QImage shown = window->grab().toImage();
    for (const int left : {10, 110, 210, 310}) {
        int crisp = 0;
        for (int x = 2 * left; x < 2 * left + 128; ++x)
            crisp += shown.pixelColor(x, 24) == QColor(x % 2 == 0 ? Qt::white : Qt::red);
        EXPECT_EQ(crisp, 128) << left;
    }
    int stripes = 0;
    for (int x = 2 * 410; x < 2 * 500; ++x)
        stripes += shown.pixelColor(x, 60) == QColor(Qt::red) &&
                   shown.pixelColor(x + 1, 60) == QColor(Qt::white);
    EXPECT_GT(stripes, 25) << "the picture of a list entry";
}

TEST(FittingToDensity, PicturesAreCrispWhereAWindowPixelHasFour) {
    QProcess copy;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    copy.setProcessEnvironment(environment);
    copy.setProcessChannelMode(QProcess::MergedChannels);
    copy.start(QCoreApplication::applicationFilePath(),
               {QStringLiteral("--gtest_also_run_disabled_tests"),
                QStringLiteral("--gtest_filter=*CrispOnADisplayOfDoubleDensity")});
    ASSERT_TRUE(copy.waitForFinished(120000));
    const QByteArray said = copy.readAll();
    EXPECT_EQ(copy.exitCode(), 0) << said.toStdString();
    EXPECT_TRUE(said.contains("[  PASSED  ] 1 test")) << said.toStdString();
}

// The page with every kind and every key ----------------------------------------------------------

/// How two pictures of the same page differ.
struct Difference {
    double Average = 0;  ///< per pixel and channel, of 255
    double Worst = 0;    ///< the same within the worst square of 16 x 16 pixels
};

Difference Compare(const QImage& a, const QImage& b) {
    constexpr int kSquare = 16;
    std::map<std::pair<int, int>, double> squares;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int difference = std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
                                   std::abs(qBlue(p) - qBlue(q));
            sum += difference;
            squares[{x / kSquare, y / kSquare}] += difference;
        }
    }
    double worst = 0;
    for (const auto& [place, total] : squares) worst = std::max(worst, total);
    return {sum / (3.0 * a.width() * a.height()), worst / (3.0 * kSquare * kSquare)};
}

class ReferenceTest : public FittingTest {
 protected:
    /// A picture with an edge and a slope, so that a shift, a stretch or a blend is seen.
    void Shaded(const std::string& name, int width, int height, QColor top, QColor bottom,
                int radius = 0) const {
        QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QLinearGradient slope(0, 0, 0, height);
        slope.setColorAt(0, top);
        slope.setColorAt(1, bottom);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(top.lighter(160), 2));
        painter.setBrush(slope);
        painter.drawRoundedRect(QRectF(image.rect()).adjusted(1, 1, -1, -1), radius, radius);
        painter.end();
        folder.Write(PictureName(name), "");
        ASSERT_TRUE(image.save(QString::fromStdString(folder / PictureName(name)), "PNG"));
    }

    void PaintPictures() const {
        Shaded("ground.png", 800, 480, QColor(26, 32, 44), QColor(10, 12, 18));
        Shaded("button.png", 150, 64, QColor(60, 80, 110, 200), QColor(30, 40, 60, 200), 12);
        Shaded("button-over.png", 150, 64, QColor(90, 130, 180), QColor(50, 70, 110), 12);
        Shaded("button-down.png", 150, 64, QColor(20, 26, 40), QColor(50, 70, 110), 12);
        Shaded("lamp.png", 20, 20, QColor(90, 230, 120), QColor(20, 120, 50), 10);
        Shaded("glow.png", 170, 84, QColor(250, 200, 60), QColor(250, 120, 30), 20);
        Shaded("track.png", 220, 28, QColor(50, 54, 64), QColor(24, 26, 32), 8);
        Shaded("fill.png", 220, 28, QColor(240, 160, 50), QColor(180, 90, 20), 8);
        Shaded("knob.png", 24, 28, QColor(230, 230, 240), QColor(120, 120, 140), 6);
        Shaded("knob-over.png", 24, 28, QColor(255, 255, 200), QColor(180, 180, 90), 6);
        Shaded("knob-down.png", 24, 28, QColor(255, 160, 160), QColor(180, 60, 60), 6);
        Shaded("bar.png", 30, 150, QColor(50, 54, 64), QColor(24, 26, 32), 4);
        Shaded("bar-fill.png", 30, 150, QColor(70, 200, 240), QColor(20, 90, 140), 4);
        Shaded("bar-end.png", 30, 4, QColor(255, 255, 255), QColor(255, 255, 255));
        Shaded("dial.png", 200, 200, QColor(40, 44, 56), QColor(16, 18, 24), 100);
        Shaded("chart.png", 260, 140, QColor(16, 24, 20), QColor(8, 12, 10), 4);
        Shaded("folder.png", 24, 18, QColor(240, 200, 90), QColor(180, 130, 30), 3);
    }

    static void SetValues() {
        basGlobal.SensorCount = 1;
        basGlobal.Sensors[0] = {"rpm",          "obd_0C", 0.25F, 0,  0,    8000,
                                "Engine speed", "rpm",    {},    {}, true, 0};
        basGlobal.LiveRaw[12] = 14600;  // 3650 per minute
        basGlobal.LiveRaw[5] = 62;
        basGlobal.MilOn = true;
        ListSlot& list = *FindList(ListSlotByName("media"));
        for (const char* text :
             {"..", "Road songs", "News", "Stories of the sea and the coast", "Zebra"})
            AddListEntry(list, {text, "folder", ""});
        SelectListEntry(list, 2);
        basGlobal.EditedTexts["searchstring"] = "Gr\xC3\xBC\xC3\x9F";
    }

    static void FillChart() {
        for (int i = 0; i <= 600; ++i)
            AddSample(basGlobal.Charts[0],
                      static_cast<float>(3000 + 1500 * std::sin(i * 0.05) + (i % 97) * 4), i * 0.1,
                      30);
        basGlobal.Charts[0].Paused = true;
    }
};

TEST_F(ReferenceTest, EveryKindAndKeyLooksAsItDid) {
    std::ifstream file(SKIN_DATA "/every.ini", std::ios::binary);
    const std::string skin{std::istreambuf_iterator<char>(file), {}};
    Start("[mainmenu]\n");
    folder.Write("skins/test.ini", skin);
    PaintPictures();
    SetValues();
    ASSERT_THAT(Load("page"), IsEmpty());
    Finish();
    for (const SkinKind* kind : SkinKinds()) {
        for (const SkinKey& key : kind->Keys)
            EXPECT_NE(ReadSkinValue("page", ElementKey(*kind, 0, key.Name)), "")
                << kind->Word << key.Name << " is not shown";
    }
    FillChart();
    Button(1).setFocus();
    Refresh();
    for (const QSize size : {QSize(800, 480), QSize(1280, 720)}) {
        window->resize(size);
        QTest::qWait(20);
        Textbox(0).setReadOnly(true);  // no cursor
        Refresh();
        const QImage shown = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QString name = QStringLiteral(SKIN_DATA "/every-%1x%2.png");
        const QString reference = name.arg(size.width()).arg(size.height());
        if (qEnvironmentVariableIsSet("DRAVIK_WRITE_REFERENCES")) shown.save(reference);
        const QImage expected = QImage(reference).convertToFormat(QImage::Format_RGB32);
        ASSERT_EQ(expected.size(), shown.size()) << reference.toStdString();
        const Difference difference = Compare(expected, shown);
        EXPECT_LT(difference.Average, 0.5);
        EXPECT_LT(difference.Worst, 25);
        if (HasFailure())
            shown.save(QDir::temp().filePath(QStringLiteral("every-%1.png").arg(size.width())));
    }
}

TEST_F(FittingTest, ALabelWithLinesIsWrappedAtWordsAndCutBehindTheLast) {
    const QFont font = SkinFont({"DejaVu Sans", 12, 0, 0, false, false}, 1);
    const QFontMetrics metrics(font);
    const QString text = QStringLiteral("System too lean, bank 1, control at its limit");
    const int width = metrics.horizontalAdvance(QStringLiteral("System too lean, "));
    for (const int lines : {1, 2, 3, 9}) {
        const QStringList wrapped = WrapText(text, width, lines, font).split(QLatin1Char('\n'));
        EXPECT_EQ(wrapped.size(), std::min(lines, 3));
        for (const QString& line : wrapped) EXPECT_LE(metrics.horizontalAdvance(line), width);
        if (lines >= 3)
            EXPECT_EQ(wrapped.join(QLatin1Char(' ')), text) << "no word is cut or lost";
        else
            EXPECT_TRUE(wrapped.back().endsWith(QChar(0x2026)));
    }
}

}  // namespace
}  // namespace dravik
