#include "controls/WholePicture.h"

#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include "controls/PictureCache.h"

namespace dravik {

namespace {

/// Writers may leave some padding behind the end mark.
bool HasEnd(QFile& file, const char* mark) {
    constexpr qint64 kTail = 256;
    file.seek(std::max<qint64>(0, file.size() - kTail));
    return file.read(kTail).contains(mark);
}

bool HasJpegEnd(QFile& file) {
    return HasEnd(file, "\xFF\xD9");
}

bool HasXbmEnd(QFile& file) {
    return HasEnd(file, "}");
}

/// The header states the size of the file at offset 2; some writers leave it 0.
bool HasBmpSize(QFile& file) {
    constexpr qint64 kSizeOffset = 2;
    file.seek(kSizeOffset);
    const QByteArray stated = file.read(sizeof(quint32));
    return stated.size() == sizeof(quint32) &&
           qFromLittleEndian<quint32>(stated.constData()) <= file.size();
}

/// Bytes of the colour table that the flags announce; none without the bit for it.
qint64 GifTableBytes(quint8 flags) {
    return (flags & 0x80) != 0 ? 3 << ((flags & 7) + 1) : 0;
}

/// Steps over a row of blocks, each behind its length, up to the empty one that ends it.
bool SkipGifBlocks(QFile& file) {
    char length = 0;
    while (file.getChar(&length)) {
        if (length == 0) return true;
        const qint64 bytes = static_cast<quint8>(length);
        if (file.skip(bytes) != bytes) return false;
    }
    return false;
}

/// Whether the first frame, the only one that is shown, is there to its last block.
bool HasGifFrame(QFile& file) {
    constexpr qint64 kScreenBytes = 13;  // signature, size of the screen, flags and two more
    constexpr qint64 kFrameBytes = 9;    // place, size and flags
    const QByteArray screen = file.read(kScreenBytes);
    if (screen.size() < kScreenBytes) return false;
    file.skip(GifTableBytes(static_cast<quint8>(screen[10])));
    char kind = 0;
    while (file.getChar(&kind)) {
        if (kind == '!') {  // an extension: its label, then blocks
            file.skip(1);
        } else if (kind == ',') {
            const QByteArray frame = file.read(kFrameBytes);
            if (frame.size() < kFrameBytes) return false;
            file.skip(GifTableBytes(static_cast<quint8>(frame[kFrameBytes - 1])));
            file.skip(1);  // width of the codes
            return SkipGifBlocks(file);
        } else {
            return false;
        }
        if (!SkipGifBlocks(file)) return false;
    }
    return false;
}

struct EndOfFormat {
    const char* Format;
    bool (*IsThere)(QFile& file);
};

constexpr EndOfFormat kEnds[] = {{"bmp", HasBmpSize},
                                 {"gif", HasGifFrame},
                                 {"jpeg", HasJpegEnd},
                                 {"jpg", HasJpegEnd},
                                 {"xbm", HasXbmEnd}};

}  // namespace

bool IsTooLarge(const QImageReader& reader) {
    const QSize size = reader.size();
    if (size.width() > kPictureLimit || size.height() > kPictureLimit) return true;
    constexpr qint64 kMegabyte = 1 << 20;
    const qint64 limit = QImageReader::allocationLimit() * kMegabyte;
    constexpr int kUsualBits = 32;  // per pixel, where the reader does not tell beforehand
    const QImage::Format format = reader.imageFormat();
    const int bits = format == QImage::Format_Invalid
                         ? kUsualBits
                         : QImage::toPixelFormat(format).bitsPerPixel();
    return limit > 0 && qint64{size.width()} * size.height() * bits / 8 > limit;
}

bool IsCutOff(const QString& name, const QByteArray& format) {
    for (const EndOfFormat& row : kEnds) {
        if (format != row.Format) continue;
        QFile file(name);
        return !file.open(QIODevice::ReadOnly) || !row.IsThere(file);
    }
    return false;
}

}  // namespace dravik
