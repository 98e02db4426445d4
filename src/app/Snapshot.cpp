#include "app/Snapshot.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QImage>
#include <QPainter>

#include "core/basGlobal.h"
#include "platform/At.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "settings/Words.h"
#include "skin/PageCanvas.h"
#include "skin/SkinScreen.h"
#include "skin/message/ShowMessage.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

/// What the canvas paints of a chart; null when no chart has that number.
const PaintedItem* FindChart(const SkinScreen& screen, int index) {
    const ScreenElement* chart = FindAt(screen.Elements(kChartKind), index);
    return chart == nullptr ? nullptr : chart->Item;
}

QImage DrawChart(const PaintedItem& chart) {
    QImage image(chart.Place().size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.translate(-chart.Place().topLeft());
    chart.Paint(painter);
    return image;
}

/// A name that no file has yet: date, time and the chart's number, counted on where that is taken.
QString FreeName(const QDir& folder, int chart) {
    const QString stem =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH-mm-ss"));
    for (int copy = 0;; ++copy) {
        QString name = stem + QStringLiteral(" %1").arg(chart);
        if (copy > 0) name += QStringLiteral("-%1").arg(copy);
        name += QStringLiteral(".bmp");
        if (!folder.exists(name)) return name;
    }
}

/// The message for one chart.
QString SaveChart(const SkinScreen& screen, const QDir& folder, int index) {
    const PaintedItem* chart = FindChart(screen, index);
    if (chart == nullptr) return {};
    const QString name = FreeName(folder, index);
    const QString path = folder.filePath(name);
    if (DrawChart(*chart).save(path, "BMP")) return QString::fromUtf8(kChartSavedText).arg(name);
    QFile::remove(path);  // what a full disk has left of it
    return {};
}

std::string PngOf(const QImage& image) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data().toStdString();
}

/// What a chart shows; its function where that names no sensor.
std::string CaptionOf(const ScreenElement& chart) {
    const SensorRecord* sensor = FindSensor(SplitAtLast(chart.Evaluated).Argument);
    if (sensor == nullptr) return chart.Evaluated;
    return sensor->Unit.empty() ? sensor->Caption : sensor->Caption + " (" + sensor->Unit + ")";
}

}  // namespace

std::vector<ChartPicture> ChartPictures(const SkinScreen& screen) {
    std::vector<ChartPicture> pictures;
    int index = 0;
    for (const ScreenElement& chart : screen.Elements(kChartKind)) {
        const bool drawn = At(basGlobal.Charts, index++).Filled > 0;
        if (drawn) pictures.push_back({CaptionOf(chart), PngOf(DrawChart(*chart.Item))});
    }
    return pictures;
}

void TakeSnapshot(const SkinScreen& screen, const std::vector<int>& charts) {
    if (charts.empty()) return;
    const QString path = QString::fromStdString(ResolvePath(basGlobal.SaveFolder));
    const bool folderMade = QDir().mkpath(path);
    QStringList messages;
    for (const int index : charts) {
        const QString message = folderMade ? SaveChart(screen, QDir(path), index) : QString();
        if (message.isEmpty()) {
            ShowPlainMessage(
                Word("The chart could not be saved in") + "\r\n" + basGlobal.SaveFolder,
                kMessageCritical, "Dravik");
            return;
        }
        messages.append(message);
    }
    ShowPlainMessage(messages.join(QStringLiteral("\r\n")).toStdString(), kMessageInformation,
                     "Dravik");
}

}  // namespace dravik
