#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <system_error>

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

/// The same for an argument that may be any bytes, which Qt's texts cannot carry. The program
/// becomes nobody's child, so that nothing has to wait for its end.
bool StartWithBytes(const std::string& program, const std::string& argument) {
    const pid_t child = ::fork();
    if (child < 0) return false;
    if (child > 0) {
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    // From here on only what is safe in the copy of a program with several threads.
    ::setsid();
    const pid_t grandchild = ::fork();
    if (grandchild != 0) ::_exit(grandchild < 0 ? 1 : 0);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nothing, stream);
    ::signal(SIGPIPE, SIG_DFL);
    ::execl(program.c_str(), program.c_str(), argument.c_str(), static_cast<char*>(nullptr));
    ::_exit(1);
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
    if (opener.isEmpty()) return false;
    const std::string program = QFile::encodeName(opener).toStdString();
    if (IsAddress(file)) return StartWithBytes(program, file);
    if (!FileExists(file)) return false;
    std::error_code ignored;
    const auto path = std::filesystem::absolute(ResolvePath(file), ignored);
    return StartWithBytes(program, path.native());
}

}  // namespace dravik
