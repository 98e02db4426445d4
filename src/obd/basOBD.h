#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/basGlobal.h"

/// The link with the diagnostic interface: a serial device that takes text commands, each ended by
/// a carriage return, and answers with text lines closed by the prompt ">".
///
/// The link is one state machine whose state is `ConnState`. Other modules ask for an action by
/// writing that state; `HardwareStep` acts on it, one step per tick of `tiHardware`.
namespace dravik {

/// Connects the port's events and the timers tiHardware and tiTimeout to this module. Called once,
/// before the timers run.
void InitLink();

// Transport ---------------------------------------------------------------------------------------

/// Sends one command to the interface and waits for its prompt.
///
/// @param command  text without its carriage return, e.g. "0101"
/// @return everything received up to and including ">", echoes and line ends included; empty when
///         the port is closed. Without a prompt after 50 s in all: what arrived so far. Of more
///         than 64 KiB the end.
///
/// Resends up to twice while the reply contains "?"; the 50 s are one budget for all attempts.
/// Appends what is sent and received to `CommTrace`, which keeps its first 64 KiB. Pumps events
/// while it waits, so `ConnState` must already say that a command is under way. The wait also ends
/// when the program is closing or the device disappears.
///
/// With the Reconnect setting a link on which nothing arrives for 5 s (10 s while the vehicle's
/// answer to a request is awaited: its bus may have to be searched) is given up: the port is
/// closed. Before that the commands that an interface answers at once, all "AT" ones but the reset,
/// are resent after 2 s.
std::string SendCommand(const std::string& command);

/// The receive event of comOBD: gathers the replies of live requests, hands each whole one to
/// `HandlePidReply`, and asks for a new connect after an overflow (code 1008). Acts only while
/// `ConnState` is 3 or 9; in every other state the characters stay in the port's buffer.
void HandleReceiveEvent(int code);

/// The tick of tiTimeout: one second without a reply turns "Receiving Data." into "Connected.".
void HandleReplyTimeout();

// State machine -----------------------------------------------------------------------------------

/// The tick of tiHardware: acts once on the state that it finds.
void HardwareStep();

/// Runs the whole connect sequence. Its outcome is the new `ConnState`: 3 connected, 2 no port, 1
/// no answer; on success InterfaceId, ProtocolText, DtcCount and MilOn are set as well.
void ConnectInterface();

/// Lets go of the interface: ends the waits of a step that runs, closes the port and leaves
/// state 1. Neither Auto Connect nor Reconnect connects again before a connect is asked for.
void Disconnect();

/// True while there is something to disconnect: the link is up or on its way, is being looked for,
/// or would be connected again without being asked for.
bool LinkActive();

/// Writes the status text and the trace of the last connect attempt to log.txt in the program
/// folder. The trace is brought to "\r\n" line ends in place.
void WriteConnectLog();

/// The device that a port number (1 to 255) stands for: key COMn of the Ports section, else the
/// system's usual one. Empty when there is none.
std::string PortDevice(int number);

/// The status text of the current state; empty for a state outside the table.
const std::string& CurrentStatusText();

// The search for an interface ---------------------------------------------------------------------

/// Looks for an interface: asks every port for its identification at every usual speed, one after
/// the other, each for about a second. The next step of the link begins it, after the link that
/// there is has been closed; that one is connected again at the end. A port that another program
/// uses, or that this user may not use, is never opened. Pumps events while it waits. Another
/// request for the link ends it, and while one runs no other begins.
///
/// @param ports     where to look, see PortCandidates
/// @param finished  called at the end, with what was found
void FindInterface(std::vector<PortCandidate> ports,
                   std::function<void(const std::optional<FoundInterface>& found)> finished);

/// Looks on all ports, and makes what is found the user's: saves its port and speed in the settings
/// and connects. In the demo it looks at the vehicle of the demo alone. Ends the search where one
/// runs already.
void FindAndConnect();

/// Ends the search, with nothing found.
void CancelSearch();

/// True from FindInterface on until the search has ended.
bool Searching();

/// Where the search is ("COM1 /dev/ttyUSB0 38400 ..."), afterwards what came of it: what was found,
/// or that nothing was and which ports could not be asked, a line each. Empty before the first.
const std::string& FindingText();

/// The patterns that FindingText fills in, for whoever puts them into other languages.
std::vector<std::string_view> FindingTexts();

// Reasons -----------------------------------------------------------------------------------------

/// One line on what keeps values away, for the driver: what the last attempt to connect met, how
/// long an answer has been waited for, or why the values stay out. Empty while values come, and
/// while a wait is no longer than usual.
std::string ReasonText();

/// The patterns that ReasonText fills in, for whoever puts them into other languages.
std::vector<std::string_view> ReasonTexts();

// Live and freeze-frame data ----------------------------------------------------------------------

/// True while the page shows freeze-frame data: its name contains "freeze", in lower case.
bool FreezeFrameMode();

/// Sends the request for the next wanted PID, unless a reply is outstanding, and advances the
/// cursor.
void RequestNextPid();

/// Takes one whole reply apart and stores its data bytes as one number under the PID that it names.
/// With the Reconnect setting it asks for a new connect when values were coming and replies have
/// brought none for 5 s; NO DATA counts as a value there.
/// @param reply  everything received up to and including ">"
void HandlePidReply(const std::string& reply);

/// True while the value that is shown of a PID, live or of the frame, is known: the link is
/// connected, and a reply has brought it since the connect and within the last 5 seconds, or 3
/// rounds of requests where those take longer.
bool PidKnown(int pid);

/// Forgets which PIDs are wanted (entry 79 excepted), so that a new page polls only what it shows.
void ClearPidWanted();

/// The n-th byte (1-based) of a hex text without spaces; 0 when it is not there or not hexadecimal.
std::uint8_t ReplyByte(std::string_view text, std::size_t n);

/// Each character's code as two upper-case hex digits: the codes 1 and 12 give "010C".
std::string TextToHex(std::string_view text);

/// One to eight hex digits as a number; nothing for any other text.
std::optional<std::int32_t> HexNumber(std::string_view digits);

// Trouble codes -----------------------------------------------------------------------------------

/// Takes the lamp and the number of stored codes from a reply to "0101".
/// @return false when the reply holds no "41 01"; a first data byte that is not hexadecimal leaves
///         both values unchanged
bool ReadMonitorStatus(const std::string& reply);

/// Reads the stored trouble codes into DtcList and rebuilds the list of codes. Leaves `ConnState`
/// 3, or 1 when the interface did not answer.
void ReadTroubleCodes();

/// Clears the stored trouble codes and tells the user the outcome. Leaves `ConnState` 16 after
/// success, so that the codes are read again, otherwise 3.
void ClearTroubleCodes();

}  // namespace dravik
