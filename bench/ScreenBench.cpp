#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QImage>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>

#include "app/frMain.h"
#include "lists/basFunctions.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "support/TemporaryFolder.h"

using namespace dravik;

namespace {

constexpr double kIdleBar = 0.5e-3;  // seconds of processor time, as the design sets them
constexpr double kChangedBar = 5e-3;
constexpr double kPageBar = 16e-3;

double ProcessorSeconds() {
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The main window on the fullest page: 100 buttons, 41 labels, 17 gauges, 7 charts, 20 bargraphs
/// and 20 sliders, which show 78 live values.
class FullPage {
 public:
    /// @param layers  2: the skin is installed, and the user has laid a picture over one of it
    explicit FullPage(std::int64_t layers = 1) {
        const TemporaryFolder& skin = layers == 1 ? folder_ : installed_;
        SavePicture("ground.png", 1024, 600, QColor(20, 24, 32));
        SavePicture("button.png", 60, 40, QColor(60, 80, 110, 200));
        SavePicture("lamp.png", 12, 12, Qt::green);
        SavePicture("track.png", 120, 14, Qt::darkGray);
        SavePicture("fill.png", 120, 14, Qt::yellow);
        SavePicture("knob.png", 10, 14, Qt::white);
        SavePicture("bar.png", 14, 80, Qt::darkGray);
        SavePicture("barfill.png", 14, 80, Qt::cyan);
        SavePicture("chart.png", 140, 80, Qt::black);
        folder_.Write("Dravik.ini", "[Options]\nSkin=full\n");
        if (layers == 2) {
            std::filesystem::rename(folder_ / "skins", installed_ / "skins");
            SavePicture("button.png", 60, 40, QColor(110, 80, 60, 200));
        }
        skin.Write("skins/full.ini",
                   "[General]\nImagefolder=pics\nWidth=1024\nHeight=600\n[other]\n" + Page(1) +
                       "[mainmenu]\n" + Page(0));
        basGlobal = GlobalState{};
        window_ = std::make_unique<frMain>();
        basGlobal.tiStartup.SetInterval(1);
        frMain::Options options{folder_.Path(), {}, true, QSize(1024, 600)};
        if (layers == 2) options.Launch.InstalledData = installed_.Path();
        window_->Start(options);
        for (FormTimer* timer : {&basGlobal.tiMain, &basGlobal.tiAux, &basGlobal.tiHardware})
            timer->SetEnabled(false);
        basGlobal.SensorCount = kSensors;
        for (std::size_t i = 0; i < kSensors; ++i) {
            char source[8];
            std::snprintf(source, sizeof source, "obd_%02X", static_cast<unsigned>(i));
            basGlobal.Sensors[i] = {"s" + std::to_string(i),
                                    source,
                                    0.5F,
                                    1,
                                    0,
                                    100,
                                    "Caption",
                                    "unit",
                                    {},
                                    {},
                                    true,
                                    0};
        }
        Refresh();
        Drain();
    }
    ~FullPage() {
        window_.reset();
        basGlobal = GlobalState{};
    }

    void Refresh() { RefreshScreen(window_->Screen()); }

    /// Everything that waits, repaints above all.
    static void Drain() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }

    void ChangeAllValues() {
        ++round_;
        for (std::size_t i = 0; i < kSensors; ++i)
            basGlobal.LiveRaw[i] = static_cast<std::int32_t>((i * 7 + round_ * 13) % 100);
        basGlobal.MilOn = !basGlobal.MilOn;
    }
    void Load(bool other) { LoadSkinPage(other ? "other" : "mainmenu", false); }

 private:
    static constexpr std::size_t kSensors = 78;

    void SavePicture(const std::string& name, int width, int height, const QColor& color) {
        QImage image(width, height, QImage::Format_ARGB32);
        image.fill(color);
        image.save(QString::fromStdString(folder_.Write("skins/pics/" + name, "")), "PNG");
    }

    std::string Sensor() { return "sensor_s" + std::to_string(nextSensor_++ % kSensors); }

    /// An element whose places run along rows.
    std::string Element(const char* kind, int n, const std::string& function, int columns,
                        QPoint first, QPoint step) {
        const std::string prefix = kind + std::to_string(n);
        const QPoint at(first.x() + n % columns * step.x(), first.y() + n / columns * step.y());
        return prefix + "Function=" + function + "\n" + prefix + "X=" + std::to_string(at.x()) +
               "\n" + prefix + "Y=" + std::to_string(at.y()) + "\n";
    }
    static std::string Keys(const char* kind, int n, std::initializer_list<const char*> keys) {
        std::string text;
        for (const char* key : keys) text += kind + std::to_string(n) + key + "\n";
        return text;
    }

    std::string Page(int shift) {
        std::string text = Element("Image", 0, "ground", 1, {0, 0}, {0, 0}) +
                           Keys("Image", 0, {"Picture=ground.png"});
        for (int n = 0; n < 100; ++n)
            text +=
                Element("Button", n, "openmenu_x", 20, {2 + shift, 2}, {51, 42}) +
                Keys("Button", n,
                     {"Up=button.png", "Over=button.png", "Down=button.png", "Image=lamp.png",
                      "ImageFunction=obd_malfunction", "LabelX=14", "LabelY=10", "LabelWidth=44",
                      "LabelHeight=20", "LabelFontSize=9", "LabelColor=&HFFFFFF"}) +
                "Button" + std::to_string(n) + "LabelFunction=" + Sensor() + "\n";
        for (int n = 0; n < 41; ++n)
            text += Element("Label", n, Sensor(), 14, {2 + shift, 215}, {73, 20}) +
                    Keys("Label", n, {"Width=72", "Height=20", "FontSize=10", "Color=&HFFFFFF"});
        for (int n = 0; n < 17; ++n)
            text += Element("Gauge", n, Sensor(), 17, {30 + shift, 305}, {60, 0}) +
                    Keys("Gauge", n,
                         {"Width=3", "Max=51", "AngleStart=45", "AngleEnd=315", "RadiusEnd=26",
                          "StretchY=100", "Color=255"});
        for (int n = 0; n < 7; ++n)
            text +=
                Element("Chart", n, Sensor(), 7, {5 + shift, 340}, {145, 0}) +
                Keys("Chart", n,
                     {"Background=chart.png", "Time=1", "Color=&H60FF60", "GridColor=&H405040"});
        for (int n = 0; n < 20; ++n) {
            text += Element("Bargraph", n, Sensor(), 20, {10 + shift, 425}, {50, 0}) +
                    Keys("Bargraph", n,
                         {"Background=bar.png", "Progress=barfill.png", "Max=51", "Direction=0"});
            text +=
                Element("Slider", n, Sensor(), 7, {10 + shift, 510}, {140, 25}) +
                Keys("Slider", n,
                     {"Background=track.png", "Progress=fill.png", "Bar=knob.png", "Direction=1"});
        }
        return text;
    }

    TemporaryFolder folder_;
    TemporaryFolder installed_;
    std::unique_ptr<frMain> window_;
    std::size_t nextSensor_ = 0;
    std::size_t round_ = 0;
};

/// Measures processor time and tells it as a share of its bar.
template <typename Prepare, typename Work>
void AgainstBar(benchmark::State& state, double bar, Prepare prepare, Work work) {
    double total = 0;
    for (auto _ : state) {
        prepare();
        const double start = ProcessorSeconds();
        work();
        const double spent = ProcessorSeconds() - start;
        total += spent;
        state.SetIterationTime(spent);
    }
    state.counters["of_bar"] = total / static_cast<double>(state.iterations()) / bar;
}

/// Without the charts: they scroll with the clock, so theirs is never a page on which nothing
/// changes.
void RefreshNothingChanged(benchmark::State& state) {
    FullPage page;
    for (ChartRecord& chart : basGlobal.Charts) chart.Paused = state.range(0) == 0;
    page.Refresh();
    page.Drain();
    AgainstBar(
        state, kIdleBar, [&] { page.Drain(); }, [&] { page.Refresh(); });
}
BENCHMARK(RefreshNothingChanged)->ArgName("charts")->Arg(0)->Arg(1)->UseManualTime();

void RefreshEveryValueChangedPainted(benchmark::State& state) {
    FullPage page;
    for (int i = 0; i < 600; ++i) {  // charts full of samples
        page.ChangeAllValues();
        page.Refresh();
    }
    page.Drain();
    AgainstBar(
        state, kChangedBar, [&] { page.ChangeAllValues(); },
        [&] {
            page.Refresh();
            page.Drain();
        });
}
BENCHMARK(RefreshEveryValueChangedPainted)->UseManualTime()->Unit(benchmark::kMillisecond);

void ChangePagePainted(benchmark::State& state) {
    FullPage page(state.range(0));
    bool other = false;
    page.Load(true);
    page.Load(false);
    AgainstBar(
        state, kPageBar, [&] { page.Drain(); },
        [&] {
            page.Load(other = !other);
            page.Drain();
        });
}
BENCHMARK(ChangePagePainted)
    ->ArgName("layers")
    ->DenseRange(1, 2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
