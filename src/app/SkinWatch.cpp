#include "app/SkinWatch.h"

#include <QDateTime>
#include <QDir>

#include "app/frMain.h"
#include "core/DataFiles.h"
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

/// Where the pictures of the skin may lie, whether it does or not.
std::vector<std::string> ImageFolders() {
    return PlacesOf(OwnFile(basGlobal.ImageFolder));
}

QFileInfoList Pictures() {
    QFileInfoList files;
    for (const std::string& folder : ImageFolders())
        files += QDir(Resolved(folder)).entryInfoList(QDir::Files);
    return files;
}

/// The folder that tells when `path` comes, changes or goes: itself, or the first above it.
QString NearestFolder(const std::string& path) {
    QFileInfo folder(Resolved(path));
    while (!folder.isDir() && folder.path() != folder.filePath()) folder.setFile(folder.path());
    return folder.filePath();
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

    paths.clear();
    for (const std::string& skin : PlacesOf(OwnFile(skinFile_))) {
        paths.append(NearestFolder(skin));
        if (FileExists(skin)) paths.append(Resolved(skin));
    }
    for (const std::string& folder : ImageFolders()) paths.append(NearestFolder(folder));
    for (const QFileInfo& picture : Pictures()) paths.append(picture.filePath());
    paths.removeDuplicates();
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
    const std::string skin = DataFile(OwnFile(basGlobal.SkinFile));
    const bool missing = !FileExists(skin);
    if (MustWait() || missing) {
        if (!missing) settle_.start();
        return;
    }
    ForgetProfile(skin);
    FindSkinFilesAgain();
    Aim();  // before the files are read, so that no later change is missed
    if (Stamps now = StampsOfSkin(); now != seen_) {
        seen_ = std::move(now);
        RebuildPage();
    }
}

}  // namespace dravik
