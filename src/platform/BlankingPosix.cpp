#include <QGuiApplication>
#include <QLibrary>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include "platform/Blanking.h"

namespace dravik {
namespace {

/// Ends the lock, which is its child, when PutOffBlanking is no longer called: a link that falls
/// silent for a moment does not cost a new process each time.
QPointer<QTimer> lease;
constexpr int kLease = 20'000;

/// The timer of the X server, which alone counts where no desktop runs. Two calls are not worth a
/// library of their own; the one that Qt has loaded for its connection has them.
void ResetServer() {
#if QT_CONFIG(xcb)
    // Drawing without a screen has this interface too, and no connection behind it.
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return;
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) return;
    struct Sequence {
        unsigned int Number;
    };
    using ForceScreenSaver = Sequence (*)(xcb_connection_t*, quint8);
    using Flush = int (*)(xcb_connection_t*);
    constexpr quint8 kReset = 0;
    static QLibrary library(QStringLiteral("xcb"), 1);
    static const auto force =
        reinterpret_cast<ForceScreenSaver>(library.resolve("xcb_force_screen_saver"));
    static const auto flush = reinterpret_cast<Flush>(library.resolve("xcb_flush"));
    if (force == nullptr || flush == nullptr) return;
    force(x11->connection(), kReset);
    flush(x11->connection());
#endif
}

/// The lock is held while a program runs that ends with the pipe to this one: it cannot outlive a
/// Dravik that was killed. Where it is refused, that is for the next lease to find out again.
void TakeLock(QObject* parent) {
    const QString program = QStandardPaths::findExecutable(QStringLiteral("systemd-inhibit"));
    if (program.isEmpty()) return;
    auto* holder = new QProcess(parent);
    holder->setStandardOutputFile(QProcess::nullDevice());
    holder->setStandardErrorFile(QProcess::nullDevice());
    holder->start(program, {QStringLiteral("--what=idle"), QStringLiteral("--who=Dravik"),
                            QStringLiteral("--why=Live data are shown"), QStringLiteral("cat")});
}

}  // namespace

void PutOffBlanking() {
    ResetServer();
    if (lease == nullptr) {
        lease = new QTimer(QCoreApplication::instance());
        lease->setSingleShot(true);
        QObject::connect(lease, &QTimer::timeout, [] { AllowBlanking(); });
        TakeLock(lease);
    }
    lease->start(kLease);
}

void AllowBlanking() {
    if (lease == nullptr) return;
    if (auto* holder = lease->findChild<QProcess*>()) {
        holder->kill();
        holder->waitForFinished();
    }
    lease->deleteLater();
    lease.clear();
}

}  // namespace dravik
