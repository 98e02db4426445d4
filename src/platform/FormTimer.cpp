#include "platform/FormTimer.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <utility>
#include <vector>

namespace dravik {

struct FormTimer::Impl {
    Impl(int interval, bool enable) : IntervalMs(interval), Enabled(enable) {
        AllTimers().push_back(this);
        Start();
    }
    ~Impl() { std::erase(AllTimers(), this); }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    /// Every form timer there is. Never destroyed, since form timers may be globals.
    static std::vector<Impl*>& AllTimers() {
        static auto* timers = new std::vector<Impl*>;
        return *timers;
    }

    /// Begins a whole interval; without an application object, StartPending does it later.
    void Start() {
        if (!Enabled || IntervalMs <= 0 || QCoreApplication::instance() == nullptr) return;
        if (!Timer) {
            Timer = std::make_unique<QTimer>();
            Timer->setTimerType(Qt::PreciseTimer);
            Timer->setSingleShot(true);
            QObject::connect(Timer.get(), &QTimer::timeout, [this] { Tick(); });
        }
        Timer->start(IntervalMs);
    }

    void Stop() {
        if (Timer) Timer->stop();
    }

    // The next interval begins before the handler runs: a handler that pumps events would otherwise
    // silence its own timer for that long.
    void Tick() {
        Start();
        if (Handler) Handler();
    }

    /// Timers that were enabled before the application object existed start with it, and none
    /// outlives it.
    static void StartPending() {
        qAddPostRoutine([] {
            for (Impl* timer : AllTimers()) timer->Timer.reset();
        });
        for (Impl* timer : AllTimers()) timer->Start();
    }

    int IntervalMs;
    bool Enabled;
    std::function<void()> Handler;
    std::unique_ptr<QTimer> Timer;
};

FormTimer::FormTimer(int intervalMs, bool enabled) {
    static const bool registered = [] {
        qAddPreRoutine(&Impl::StartPending);
        return true;
    }();
    static_cast<void>(registered);
    impl_ = std::make_unique<Impl>(intervalMs, enabled);
}

FormTimer::~FormTimer() = default;
FormTimer::FormTimer(FormTimer&&) noexcept = default;
FormTimer& FormTimer::operator=(FormTimer&&) noexcept = default;

void FormTimer::SetEnabled(bool enabled) {
    if (enabled == impl_->Enabled) return;
    impl_->Enabled = enabled;
    if (enabled)
        impl_->Start();
    else
        impl_->Stop();
}

bool FormTimer::Enabled() const {
    return impl_->Enabled;
}

void FormTimer::SetInterval(int milliseconds) {
    impl_->IntervalMs = milliseconds;
    impl_->Stop();
    impl_->Start();
}

int FormTimer::Interval() const {
    return impl_->IntervalMs;
}

void FormTimer::Restart() {
    impl_->Enabled = true;
    impl_->Start();
}

void FormTimer::OnTick(std::function<void()> handler) {
    impl_->Handler = std::move(handler);
}

}  // namespace dravik
