#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "vehicle/Faults.h"
#include "vehicle/Framing.h"

namespace dravik::vehicle {

/// The diagnostic interface: characters in, characters out, each with its time. It never sleeps
/// and has no clock; the caller says what time it is (seconds from any start, never falling).
class InterfaceProtocol {
 public:
    explicit InterfaceProtocol(const Scenario& scenario);

    /// Takes characters that the client wrote at `now`; they arrive one after another at the speed
    /// of the line.
    void Receive(double now, std::string_view bytes);

    /// Does everything that is due at `now` and gives what has been sent completely by then.
    std::string TakeOutput(double now);

    /// When TakeOutput is worth calling again, without anything new from the client. Output that
    /// follows closely is put together, so that a reply takes few calls; nothing while idle.
    std::optional<double> NextEvent() const;

    /// As if it had just been plugged in: settings of the factory, nothing on the way.
    void PowerUp();

    Vehicle& Car() { return vehicle_; }
    const Faults& Trouble() const { return faults_; }

 private:
    struct TimedByte {
        double Time;
        char Byte;
    };
    struct AtCommand {
        const char* Name;
        /// What follows the name: b a switch 0 or 1, d a decimal digit, h a hexadecimal digit, any
        /// other character itself.
        const char* Argument;
        std::string (InterfaceProtocol::*Run)(const std::string& argument);
    };
    static const AtCommand kAtCommands[];

    enum class Busy { No, Command, Request };

    /// A character for a busy interface waits, unless it stops what is going on.
    bool Waits() const {
        return busy_ == Busy::Command || (busy_ == Busy::Request && !scenario_.StopOnInput);
    }
    void SetDefaults();
    void TakeByte(const TimedByte& input);
    void Interrupt(double now);
    void RunLine(double now, std::string line);
    void RunAtCommand(double now, const std::string& command);
    void RunRequest(double now, const std::string& digits);
    std::vector<ShownFrame> AnswerOf(const std::string& digits);
    bool ConnectBus(std::vector<Segment>& reply);
    void Reply(double now, std::vector<Segment> reply);
    void Send(double now, std::string_view text);
    std::string LineEnd() const { return lineFeeds_ ? "\r\n" : "\r"; }
    std::string Ending() const { return LineEnd() + LineEnd() + ">"; }

    std::string Reset(const std::string&);
    std::string Identify(const std::string&);
    std::string IdentifyExtended(const std::string&);
    std::string Describe(const std::string&);
    std::string Defaults(const std::string&);
    std::string DescribeProtocol(const std::string&);
    std::string DescribeProtocolNumber(const std::string&);
    std::string SelectProtocol(const std::string& argument);
    std::string ReadVoltage(const std::string&);
    std::string ReadIgnition(const std::string&);
    std::string CloseProtocol(const std::string&);
    std::string SwitchEcho(const std::string& argument);
    std::string SwitchLineFeeds(const std::string& argument);
    std::string SwitchHeaders(const std::string& argument);
    std::string SwitchSpaces(const std::string& argument);
    std::string SwitchTakingApart(const std::string& argument);
    std::string Accept(const std::string&);

    Scenario scenario_;
    Vehicle vehicle_;
    Faults faults_;
    Random random_;
    double characterTime_;

    std::deque<TimedByte> input_, output_;
    std::string line_, lastLine_, current_;
    Busy busy_ = Busy::No;
    double busyUntil_ = 0;    ///< when the prompt of the running command has been sent
    double deafUntil_ = 0;    ///< characters up to here are lost
    double lastReturn_ = -1;  ///< when the line of the running request ended
    char lastSent_ = '\r';
    double inputFree_ = 0, outputFree_ = 0;  ///< when the line is free for another character

    bool echo_ = true, lineFeeds_ = true, headers_ = false, spaces_ = true;
    bool takeApart_ = true;   ///< frames on CAN are put together and shown without control bytes
    bool automatic_ = true;   ///< the protocol is searched
    char protocol_ = '0';     ///< the selected or found one, '0' before anything was found
    bool connected_ = false;  ///< the bus is awake
    bool resetting_ = false;
};

}  // namespace dravik::vehicle
