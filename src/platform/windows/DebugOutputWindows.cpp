#include "platform/DebugOutput.h"

#include <windows.h>

namespace tessera::platform {

void writeDebugOutput(const char* text) {
    OutputDebugStringA(text);
}

} // namespace tessera::platform
