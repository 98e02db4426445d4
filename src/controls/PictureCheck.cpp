#include "controls/PictureCheck.h"

#include <QImageReader>

#include "controls/PictureCache.h"
#include "controls/WholePicture.h"
#include "platform/Paths.h"

namespace dravik {

PictureFacts InspectPicture(const std::string& path) {
    if (!FileExists(path)) return {0, 0, "there is no such picture"};
    QImageReader reader(QString::fromUtf8(ResolvePath(path)));
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

PictureFacts InspectDoublePicture(const std::string& path) {
    const std::string name = DoubleSizeName(path);
    return FileExists(name) ? InspectPicture(name) : PictureFacts{};
}

}  // namespace dravik
