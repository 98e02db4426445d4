#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

#include "platform/Paths.h"
#include "platform/ProcessStart.h"

namespace dravik {
namespace {

/// The child shares nothing with this program's own standard streams: they may carry the console.
bool StartDetached(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

QString FileName(const std::string& path) {
    return QFile::decodeName(path.c_str());
}

}  // namespace

bool StartMinimised(const std::string& program) {
    // A path may hold blanks; only what is no file is taken apart as a command line.
    if (FileExists(program)) {
        return StartDetached(QDir().absoluteFilePath(FileName(ResolvePath(program))), {});
    }
    QStringList words = QProcess::splitCommand(FileName(program));
    if (words.isEmpty()) return false;
    const QString first = words.takeFirst();
    return StartDetached(first, words);
}

bool OpenWithSystem(const std::string& file) {
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty() || !FileExists(file)) return false;
    return StartDetached(opener, {QDir().absoluteFilePath(FileName(ResolvePath(file)))});
}

}  // namespace dravik
