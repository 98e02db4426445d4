#include "controls/PictureCache.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <list>
#include <unordered_map>
#include <utility>

#include "controls/WholePicture.h"
#include "core/DataFiles.h"
#include "platform/Paths.h"

namespace dravik {

struct SkinPicture::Data {
    std::string Path;
    double Scale = 1;
    double Density = 1;
    QSizeF DesignSize;
    QPixmap Pixmap;
    QImage Pixels;  ///< of a picture that no file stands behind
    std::string Error;
};

namespace {

using PictureData = std::shared_ptr<const SkinPicture::Data>;

double density = 1;  ///< pixels of the display along one window pixel

/// What tells one state of a file from the next.
struct FileStamp {
    QString Name;
    QDateTime Modified;
    qint64 Size = 0;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

std::size_t BytesOf(const SkinPicture::Data& data) {
    return std::size_t{4} * static_cast<std::size_t>(data.Pixmap.width()) *
           static_cast<std::size_t>(data.Pixmap.height());
}

/// The pictures used last, newest first.
class PictureStore {
 public:
    PictureData Find(const std::string& key, const FileStamp& stamp) {
        const auto found = index_.find(key);
        if (found == index_.end()) return nullptr;
        if (found->second->Stamp != stamp) {
            Remove(found->second);
            return nullptr;
        }
        entries_.splice(entries_.begin(), entries_, found->second);
        return found->second->Data;
    }

    void Add(const std::string& key, const FileStamp& stamp, const PictureData& data) {
        entries_.push_front({key, stamp, data});
        index_[key] = entries_.begin();
        bytes_ += BytesOf(*data);
        while (bytes_ > kPictureCacheBytes) Remove(std::prev(entries_.end()));
    }

    void Clear() {
        index_.clear();
        entries_.clear();
        bytes_ = 0;
    }

    std::size_t Bytes() const { return bytes_; }

 private:
    struct Entry {
        std::string Key;
        FileStamp Stamp;
        PictureData Data;
    };
    using Entries = std::list<Entry>;

    void Remove(Entries::iterator entry) {
        bytes_ -= BytesOf(*entry->Data);
        index_.erase(entry->Key);
        entries_.erase(entry);
    }

    Entries entries_;
    std::unordered_map<std::string, Entries::iterator> index_;
    std::size_t bytes_ = 0;
};

/// The one store. Its pixmaps must be gone before the application object is.
PictureStore& Store() {
    static PictureStore store;
    static const bool emptiedAtExit = [] {
        qAddPostRoutine(ClearPictureCache);
        return true;
    }();
    Q_UNUSED(emptiedAtExit);
    return store;
}

/// Brings decoded pixels to the scale. False when the result would be too large to hold.
bool Scale(SkinPicture::Data& data, const QImage& pixels) {
    const QSizeF wanted = data.DesignSize * (data.Scale * data.Density);
    if (!(wanted.width() <= kPictureLimit && wanted.height() <= kPictureLimit &&
          wanted.width() * wanted.height() <= kPicturePixels))
        return false;
    const QSize size = wanted.toSize().expandedTo(QSize(1, 1));
    data.Pixmap =
        QPixmap::fromImage(size == pixels.size() ? pixels
                                                 : pixels.scaled(size, Qt::IgnoreAspectRatio,
                                                                 Qt::SmoothTransformation));
    data.Pixmap.setDevicePixelRatio(data.Density);
    return !data.Pixmap.isNull();
}

/// Decodes the file into `data`, or says in its Error why that failed.
void Decode(SkinPicture::Data& data, const PictureFile& picture) {
    const std::string notAPicture = "not a picture: " + picture.Name;
    const std::string tooLarge = "picture too large: " + picture.Name;

    const QString file = picture.File.filePath();
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    if (!reader.canRead()) {
        data.Error = notAPicture;
        return;
    }
    if (IsTooLarge(reader)) {
        data.Error = tooLarge;
        return;
    }
    const QByteArray format = reader.format();
    QImage pixels = reader.read();
    if (pixels.isNull() || IsCutOff(file, format)) {
        data.Error = notAPicture;
        return;
    }
    // Qt reads a pixel ratio of 2 off a name with @2x. Here the ratio is in DesignSize alone: with
    // both, pictures are painted half as large, and Qt 6.4 crashes on scaling one with a palette.
    pixels.setDevicePixelRatio(1);
    data.DesignSize = QSizeF(pixels.size()) / (picture.DoubleSize ? 2 : 1);
    if (!Scale(data, pixels)) data.Error = tooLarge;
}

}  // namespace

bool SkinPicture::IsNull() const {
    return !data_ || data_->Pixmap.isNull();
}

const QPixmap& SkinPicture::Pixmap() const {
    static const QPixmap none;
    return data_ ? data_->Pixmap : none;
}

QSizeF SkinPicture::DesignSize() const {
    return IsNull() ? QSizeF(0, 0) : data_->DesignSize;
}

std::size_t SkinPicture::Bytes() const {
    return data_ ? BytesOf(*data_) : 0;
}

const std::string& SkinPicture::Error() const {
    static const std::string none;
    return data_ ? data_->Error : none;
}

SkinPicture SkinPicture::AtScale(double scale) const {
    if (!data_ || (data_->Scale == scale && data_->Density == density)) return *this;
    if (!data_->Pixels.isNull()) return MakeSkinPicture(data_->Pixels, scale);
    return LoadSkinPicture(data_->Path, scale);
}

SkinPicture LoadSkinPicture(const std::string& path, double scale) {
    if (path.empty()) return {};

    const PictureFile picture = FindPicture(path, scale * density > 1);
    const QFileInfo& file = picture.File;
    auto data = std::make_shared<SkinPicture::Data>();
    data->Path = path;
    data->Scale = scale;
    data->Density = density;
    if (!file.isFile()) {
        data->Error = "file not found: " + path;
        return SkinPicture(std::move(data));
    }

    const FileStamp stamp{file.filePath(), file.lastModified(), file.size()};
    const std::string key = std::to_string(scale) + ' ' + std::to_string(density) + ' ' + path;
    if (PictureData known = Store().Find(key, stamp)) return SkinPicture(std::move(known));
    Decode(*data, picture);
    if (data->Error.empty()) Store().Add(key, stamp, data);
    return SkinPicture(std::move(data));
}

void SetPictureDensity(double pixelsPerWindowPixel) {
    density = pixelsPerWindowPixel;
}

SkinPicture MakeSkinPicture(const QImage& image, double scale) {
    if (image.isNull()) return {};
    auto data = std::make_shared<SkinPicture::Data>();
    data->Scale = scale;
    data->Density = density;
    data->Pixels = image;
    data->DesignSize = image.size();
    if (!Scale(*data, image)) data->Error = "picture too large";
    return SkinPicture(std::move(data));
}

std::string DoubleSizeName(const std::string& path) {
    const std::size_t name = path.find_last_of("/\\");
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || (name != std::string::npos && dot < name)) return path + "@2x";
    return path.substr(0, dot) + "@2x" + path.substr(dot);
}

PictureFile FindPicture(const std::string& path, bool sharp) {
    for (const std::string& place : PlacesOf(path)) {
        for (const bool doubleSize : {true, false}) {
            if (doubleSize && !sharp) continue;
            const std::string name = doubleSize ? DoubleSizeName(place) : place;
            const std::string resolved = ResolvePath(name);
            QFileInfo file(QString::fromUtf8(resolved));
            if (file.isFile()) return {name, file, doubleSize};
        }
    }
    return {path, {}, false};
}

void PaintPicture(QPainter& painter, const QRect& target, const SkinPicture& picture) {
    if (picture.IsNull()) return;
    const QPixmap& pixmap = picture.Pixmap();
    if (target.size() == pixmap.deviceIndependentSize().toSize()) {
        painter.drawPixmap(target.topLeft(), pixmap);
        return;
    }
    const bool smooth = painter.testRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter.drawPixmap(target, pixmap);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
}

std::size_t PictureCacheSize() {
    return Store().Bytes();
}

void ClearPictureCache() {
    Store().Clear();
}

}  // namespace dravik
