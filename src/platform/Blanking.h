#pragma once

namespace dravik {

/// Asks the system not to blank the screen for the next seconds; called again at least every second
/// for as long as the screen is to stay on. Costs next to nothing.
///
/// What the system has for that is asked: the timer of the X server or of Windows begins anew, and
/// where there is systemd it is told that this computer is not idle, which desktops and the session
/// manager heed. A system that has none of these goes on as it is set up.
void PutOffBlanking();

/// Ends what PutOffBlanking asked for at once. It also ends by itself, and with the program,
/// however that ends.
void AllowBlanking();

}  // namespace dravik
