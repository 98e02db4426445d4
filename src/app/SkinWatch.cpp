#include "app/SkinWatch.h"

#include <QDateTime>
#include <QDir>

#include "app/frMain.h"
#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/ProfileCache.h"
#include "settings/basSettings.h"
#include "skin/basSkin.h"
#include "skin/message/frWarning.h"

namespace dravik {

namespace {

constexpr int kSettled = 150;  // milliseconds of quiet after which a change is complete
constexpr int kFollow = 500;   // milliseconds between looks at which skin is shown

QString Resolved(const std::string& path) {
    return QString::fromUtf8(ResolvePath(path));
}

QFileInfoList Pictures() {
    return QDir(Resolved(basGlobal.ImageFolder)).entryInfoList(QDir::Files);
}

}  // namespace

/// An open message waits for its answer; before the first page there is nothing to build anew.
bool SkinWatch::MustWait() const {
    return !window_.Started() || (MessageDialog() != nullptr && MessageDialog()->IsOpen());
}

SkinWatch::SkinWatch(const frMain& window) : window_(window) {
    settle_.setSingleShot(true);
    settle_.setInterval(kSettled);
    const auto changed = [this] { settle_.start(); };
    QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &settle_, changed);
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_, changed);
    QObject::connect(&settle_, &QTimer::timeout, &settle_, [this] { TakeUpChange(); });
    QObject::connect(&follow_, &QTimer::timeout, &follow_, [this] { Follow(); });
    follow_.start(kFollow);
}

SkinWatch::Stamps SkinWatch::StampsOfSkin() {
    QFileInfoList files = Pictures();
    files.append(QFileInfo(Resolved(basGlobal.SkinFile)));
    Stamps stamps;
    for (const QFileInfo& file : files)
        stamps[file.filePath().toStdString()] =
            std::to_string(file.size()) + ' ' +
            file.lastModified().toString(Qt::ISODateWithMs).toStdString();
    return stamps;
}

/// Whatever was watched is given up first: a file that another one has replaced is no longer the
/// one of that name. The folders tell of files that come back or are new.
void SkinWatch::Aim() {
    skinFile_ = basGlobal.SkinFile;
    imageFolder_ = basGlobal.ImageFolder;
    QStringList paths = watcher_.files() + watcher_.directories();
    if (!paths.isEmpty()) watcher_.removePaths(paths);

    const QFileInfo skin(Resolved(skinFile_));
    const QFileInfo folder(Resolved(imageFolder_));
    paths = {skin.path()};
    if (skin.isFile()) paths.append(skin.filePath());
    if (folder.isDir()) paths.append(folder.filePath());
    for (const QFileInfo& picture : Pictures()) paths.append(picture.filePath());
    watcher_.addPaths(paths);
}

/// The settings may have brought another skin; its page has been built already.
void SkinWatch::Follow() {
    if (basGlobal.SkinFile == skinFile_ && basGlobal.ImageFolder == imageFolder_) return;
    Aim();
    seen_ = StampsOfSkin();
}

void SkinWatch::TakeUpChange() {
    if (basGlobal.Closing) return;
    // Between the old file and the new one there may be none.
    const bool missing = !FileExists(basGlobal.SkinFile);
    if (MustWait() || missing) {
        if (!missing) settle_.start();
        return;
    }
    ForgetProfile(basGlobal.SkinFile);
    FindImageFolder();
    Aim();  // before the files are read, so that no later change is missed
    if (Stamps now = StampsOfSkin(); now != seen_) {
        seen_ = std::move(now);
        RebuildPage();
    }
}

}  // namespace dravik
