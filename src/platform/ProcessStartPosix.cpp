#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
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
///
/// @param id  takes the process's number
bool StartDetached(const QString& program, const QStringList& arguments, qint64* id = nullptr) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached(id);
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

bool Start(const std::string& program, qint64* id) {
    // A path may hold blanks; only what is no file is taken apart as a command line.
    if (FileExists(program))
        return StartDetached(QDir().absoluteFilePath(FileName(ResolvePath(program))), {}, id);
    QStringList words = QProcess::splitCommand(FileName(program));
    if (words.isEmpty()) return false;
    const QString first = words.takeFirst();
    return StartDetached(first, words, id);
}

/// A process by a handle of the system, which unlike its number never comes to mean another one.
class WatchedProcess {
 public:
    ~WatchedProcess() { Watch(-1); }

    void Watch(int handle) {
        if (handle_ >= 0) ::close(handle_);
        handle_ = handle;
    }

    /// The handle becomes readable when the process has ended.
    bool Running() const {
        pollfd state{handle_, POLLIN, 0};
        return handle_ >= 0 && ::poll(&state, 1, 0) == 0;
    }

 private:
    int handle_ = -1;
};
WatchedProcess startedOnce;

}  // namespace

bool StartMinimised(const std::string& program) {
    return Start(program, nullptr);
}

bool StartMinimisedOnce(const std::string& program) {
    if (startedOnce.Running()) return true;
    qint64 id = 0;
    if (!Start(program, &id)) return false;
    startedOnce.Watch(static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(id), 0)));
    return true;
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
