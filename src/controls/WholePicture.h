#pragma once

#include <QByteArray>
#include <QString>

class QImageReader;

namespace dravik {

/// True when a picture is too large to be decoded: by the size that the file states, so that a huge
/// picture costs no memory.
bool IsTooLarge(const QImageReader& reader);

/// True when a BMP, GIF, JPEG or XBM file ends before its picture does. Their readers fill up what
/// is missing without a word; those of the other formats report it themselves.
///
/// @param format  as QImageReader names it
bool IsCutOff(const QString& file, const QByteArray& format);

}  // namespace dravik
