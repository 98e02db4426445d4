#pragma once

#include <optional>
#include <string>

#include "obd/Diagnosis.h"
#include "obd/Reply.h"

/// The questions of a diagnosis: each of them has its time, and none is asked once the run is to
/// end. Only the files of this folder include this.
namespace dravik {

/// What the answer to a request is to be taken for when nobody has one.
enum class Promise : bool {
    None,   ///< the vehicle has not said that it has this
    Given,  ///< it has, so that silence means that something went wrong
};

/// What came of a request: its messages, and what is lacking. Both where one unit's answer was lost
/// and another's was not.
struct Findings {
    std::vector<UnitMessage> Messages;
    std::optional<Lack> Fault;
};

/// One conversation with the vehicle, with headers on. They are off again when it has ended.
class VehicleQuery {
 public:
    /// Asks the interface for its protocol, and has it show headers.
    VehicleQuery();
    ~VehicleQuery();
    VehicleQuery(const VehicleQuery&) = delete;
    VehicleQuery& operator=(const VehicleQuery&) = delete;

    /// Asks the vehicle. A reply that was disturbed is asked for again, and one that a unit has put
    /// off is waited for. Nothing is sent any more once the conversation is over.
    Findings Ask(const Bytes& request, Promise promise);

    /// The same with a command of the interface: what it answers, "?" where it does not know that
    /// command; nothing without its prompt.
    std::optional<std::string> Command(const std::string& command);

    /// Ends the conversation: headers are off afterwards.
    /// @return false when the interface has not confirmed that, so that the link cannot be used
    bool Finish();

    dravik::Bus Bus() const { return bus_; }

    /// Why nothing more is asked: cancelled, the link is gone, or the vehicle does not answer any
    /// more. Nothing while the conversation goes on.
    std::optional<Lack> Over() const;

 private:
    bool Wanted() const;
    std::optional<std::string> Exchange(const std::string& command, double quietSeconds) const;
    Reply AskOnce(const Bytes& request);
    Reply AskUntilGiven(const Bytes& request);
    bool AnybodyThere();
    void Judge(const Reply& reply, Promise promise);

    dravik::Bus bus_ = dravik::Bus::Unknown;
    bool headers_ = false;         ///< may be on
    std::optional<Lack> givenUp_;  ///< by the conversation itself
    int unanswered_ = 0;           ///< promised answers in a row that did not come
};

}  // namespace dravik
