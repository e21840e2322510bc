#include "platform/ConsoleText.h"

namespace tessera::platform {

// Terminals are set up by their users.
void showUtf8InConsole() {}

void readUtf8FromConsole() {}

} // namespace tessera::platform
