#pragma once

/// The headers of the vehicle's messages, which tell its control units apart, are on only for the
/// length of a read: everything else counts on their being off.
namespace dravik {

/// Switches the headers on, and off again at the end of its life at the latest.
class HeadersOn {
 public:
    HeadersOn();
    ~HeadersOn() { Off(); }
    HeadersOn(const HeadersOn&) = delete;
    HeadersOn& operator=(const HeadersOn&) = delete;

    /// The interface has ended its answer; what comes later can be waited for.
    bool Answered() const { return answered_; }
    /// Replies have headers now. An interface that does not know the command leaves them off.
    bool On() const { return on_; }

    /// Switches them off, once. Waits some seconds at most.
    /// @return false when the interface does not confirm it: what it sends next may have headers,
    ///         and only a new connect makes sure of it
    bool Off();

 private:
    bool answered_ = false;
    bool on_ = false;
    bool restored_ = false;
    bool confirmed_ = false;
};

}  // namespace dravik
