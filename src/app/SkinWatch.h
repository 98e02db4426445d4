#pragma once

#include <QFileSystemWatcher>
#include <QTimer>
#include <map>
#include <string>

namespace dravik {

class frMain;

/// Builds the page anew when the skin file or one of its pictures changes on the disk, for skin
/// authors. The page, a box over it and the link stay as they are, and no command of the page runs.
///
/// A change is taken up when the files have been quiet for a moment, since an editor may write in
/// several steps or replace the file by another one. A message that is open is answered first.
class SkinWatch {
 public:
    explicit SkinWatch(const frMain& window);

 private:
    using Stamps = std::map<std::string, std::string>;

    /// Watches what the skin now consists of, in place of what was watched before.
    void Aim();
    void Follow();
    void TakeUpChange();
    bool MustWait() const;
    static Stamps StampsOfSkin();

    const frMain& window_;
    QFileSystemWatcher watcher_;
    QTimer settle_;
    QTimer follow_;
    Stamps seen_;  ///< state of the files that the page was built from
    std::string skinFile_;
    std::string imageFolder_;
};

}  // namespace dravik
