#include "controls/PictureCheck.h"

#include <QImageReader>

#include "controls/PictureCache.h"
#include "controls/WholePicture.h"

namespace dravik {

namespace {

PictureFacts Inspect(const QString& file) {
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    if (IsTooLarge(reader))
        return {0, 0,
                "the picture has more than " + std::to_string(kPictureLimit) +
                    " pixels a side, or takes more than " +
                    std::to_string(QImageReader::allocationLimit()) + " MB"};
    const QByteArray format = reader.format();
    const QImage image = reader.read();
    if (IsCutOff(reader.fileName(), format)) return {0, 0, "the picture is cut off"};
    if (image.isNull()) return {0, 0, "not a picture (" + reader.errorString().toStdString() + ")"};
    return {image.width(), image.height(), {}};
}

}  // namespace

PictureFacts InspectPicture(const std::string& path) {
    const PictureFile picture = FindPicture(path, false);
    if (!picture.File.isFile()) return {0, 0, "there is no such picture"};
    return Inspect(picture.File.filePath());
}

PictureFacts InspectDoublePicture(const std::string& path) {
    const PictureFile picture = FindPicture(path, true);
    return picture.DoubleSize ? Inspect(picture.File.filePath()) : PictureFacts{};
}

}  // namespace dravik
