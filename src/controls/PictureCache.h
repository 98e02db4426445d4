#pragma once

#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <QSizeF>
#include <cstddef>
#include <memory>
#include <string>

class QPainter;

namespace dravik {

/// A picture of the skin, decoded and brought to one scale. A shared, immutable handle: copies cost
/// nothing, and two handles are equal when they stand for the same decoded picture.
class SkinPicture {
 public:
    /// No picture.
    SkinPicture() = default;

    /// True when there is nothing to draw.
    bool IsNull() const;

    /// The picture at its scale, with all the pixels that the display has for it: the design size
    /// times the scale times the display's device pixels per window pixel, rounded.
    const QPixmap& Pixmap() const;

    /// The size in the skin's own pixels: that of the file, half of it for an "@2x" file.
    QSizeF DesignSize() const;

    /// What its pixels take of the memory.
    std::size_t Bytes() const;

    /// Why there is nothing to draw: "file not found: PATH", "not a picture: PATH" or
    /// "picture too large: PATH", with the path of the file that was read ("@2x" or not). Empty
    /// when all is well and when no picture was asked for.
    const std::string& Error() const;

    /// The same picture for another scale, on the display as it is now.
    SkinPicture AtScale(double scale) const;

    friend bool operator==(const SkinPicture& a, const SkinPicture& b) {
        return a.data_ == b.data_;
    }
    friend bool operator!=(const SkinPicture& a, const SkinPicture& b) { return !(a == b); }

    struct Data;  ///< defined in the source file

 private:
    friend SkinPicture LoadSkinPicture(const std::string& path, double scale);
    friend SkinPicture MakeSkinPicture(const QImage& image, double scale);
    explicit SkinPicture(std::shared_ptr<const Data> data) : data_(std::move(data)) {}

    std::shared_ptr<const Data> data_;
};

/// The picture of a file for a page that is shown at `scale`.
///
/// @param path   as in a skin: "\" or "/", case does not matter; empty gives no picture, no error
/// @param scale  window pixels per design pixel; where that makes more than one pixel of the
///               display, a file with "@2x" before the extension is taken instead if there is one
///
/// A file is decoded once per scale and kept while it is among those used last (kPictureCacheBytes
/// in all); pictures that are still shown stay alive in any case. A file that has changed on the
/// disk is read again. More than kPictureLimit pixels a side, or kPicturePixels
/// in all, are refused, as is a file that decodes to more than 128 MB.
SkinPicture LoadSkinPicture(const std::string& path, double scale);

/// Tells how many pixels of the display lie along one window pixel: 1, or more on a display of high
/// density. Pictures loaded or brought to a scale from then on have that many.
void SetPictureDensity(double pixelsPerWindowPixel);

/// A picture made from pixels, one image pixel per design pixel.
SkinPicture MakeSkinPicture(const QImage& image, double scale);

/// Draws the picture into `target` (window pixels), pixel by pixel where the sizes agree and
/// smoothly stretched where they do not. Draws nothing for a null picture.
void PaintPicture(QPainter& painter, const QRect& target, const SkinPicture& picture);

constexpr std::size_t kPictureCacheBytes = 64u << 20;
constexpr int kPictureLimit = 8192;         ///< pixels a side, in the file and on the screen
constexpr double kPicturePixels = 1 << 25;  ///< of one picture on the screen

/// Bytes that the cache holds now.
std::size_t PictureCacheSize();

/// Empties the cache.
void ClearPictureCache();

/// The name of the picture of double size: "dir/name.png" becomes "dir/name@2x.png".
std::string DoubleSizeName(const std::string& path);

/// The file that a picture is read from.
struct PictureFile {
    std::string Name;  ///< before it was resolved
    QFileInfo File;    ///< no file when there is none
    bool DoubleSize = false;
};

/// @param sharp  the picture of double size is taken where there is one
///
/// A picture that the user has put over an installed one also stands for its double size, so that
/// it is seen on every screen.
PictureFile FindPicture(const std::string& path, bool sharp);

}  // namespace dravik
