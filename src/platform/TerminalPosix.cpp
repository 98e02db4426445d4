#include "platform/Terminal.h"

namespace dravik {

// Every program has the terminal that it was started from.
void JoinTerminal() {}

}  // namespace dravik
