#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <string>

namespace dravik {

/// Writes a picture of one colour in the format that the name ends with.
inline void SavePicture(const std::string& path, int width, int height,
                        const QColor& color = Qt::darkCyan) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    EXPECT_TRUE(image.save(QString::fromStdString(path))) << path;
}

}  // namespace dravik
