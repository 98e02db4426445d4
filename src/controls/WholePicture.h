#pragma once

#include <QByteArray>
#include <QString>

namespace dravik {

/// True when a JPEG or BMP file ends before its picture does. Their readers fill up what is missing
/// without a word; those of the other formats report it themselves.
///
/// @param format  as QImageReader names it
bool IsCutOff(const QString& file, const QByteArray& format);

}  // namespace dravik
