#include "platform/ConsoleText.h"

namespace tessera::platform {

// Terminals are set up by their users.
void showUtf8InConsole() {}

} // namespace tessera::platform
