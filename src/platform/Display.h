#pragma once

namespace dravik {

/// Lets the program start where there is no desktop: on a plain framebuffer, and, when it can do
/// without a screen (`console`), also on nothing at all. False when there is no display to start
/// on. To be called before the application object exists.
bool ChooseDisplay(bool console);

}  // namespace dravik
