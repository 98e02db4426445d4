#pragma once

#include <functional>
#include <memory>

namespace dravik {

/// A form timer: while enabled, it calls OnTick on the user-interface thread every Interval
/// milliseconds.
///
/// Enabling an enabled timer changes nothing; switching it off and on again restarts its interval.
/// It may be created before the application object, but it runs only while one exists. An interval
/// of 0 keeps the timer silent.
class FormTimer {
 public:
    explicit FormTimer(int intervalMs = 0, bool enabled = false);
    ~FormTimer();
    FormTimer(FormTimer&&) noexcept;
    FormTimer& operator=(FormTimer&&) noexcept;

    void SetEnabled(bool enabled);
    bool Enabled() const;

    /// A new interval counts from now on.
    void SetInterval(int milliseconds);
    int Interval() const;

    /// Off and on again: the next tick is a whole interval away.
    void Restart();

    /// What a tick does. It may switch the timer off or pump events; ticks never overlap unless it
    /// pumps events itself while the timer is enabled.
    void OnTick(std::function<void()> handler);

 private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace dravik
