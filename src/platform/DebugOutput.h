// DebugOutput: text for whoever watches this process with a debugger; nobody else sees it.
#pragma once

namespace tessera::platform {

// On Windows the debugger's output. On Linux the standard error stream, and only while a debugger is attached: the
// module prints nothing of its own accord into its host's terminal.
void writeDebugOutput(const char* text);

} // namespace tessera::platform
