#include "controls/WholePicture.h"

#include <QFile>
#include <QtEndian>

namespace dravik {

namespace {

/// Writers may leave some padding behind the end mark.
bool HasJpegEnd(QFile& file) {
    constexpr qint64 kTail = 256;
    file.seek(std::max<qint64>(0, file.size() - kTail));
    return file.read(kTail).contains("\xFF\xD9");
}

/// The header states the size of the file at offset 2; some writers leave it 0.
bool HasBmpSize(QFile& file) {
    constexpr qint64 kSizeOffset = 2;
    file.seek(kSizeOffset);
    const QByteArray stated = file.read(sizeof(quint32));
    return stated.size() == sizeof(quint32) &&
           qFromLittleEndian<quint32>(stated.constData()) <= file.size();
}

}  // namespace

bool IsCutOff(const QString& name, const QByteArray& format) {
    const bool jpeg = format == "jpeg" || format == "jpg";
    if (!jpeg && format != "bmp") return false;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return true;
    return jpeg ? !HasJpegEnd(file) : !HasBmpSize(file);
}

}  // namespace dravik
