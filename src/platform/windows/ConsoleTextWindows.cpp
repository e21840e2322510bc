#include "platform/ConsoleText.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace tessera::platform {

namespace {

// No letter is torn in a text that is shorter.
constexpr std::size_t kBuffer = std::size_t{1} << 16;

UINT before = 0;

// The C runtime may bring text for a console from the locale's code page into another form, and hand it over byte by
// byte, which tears letters apart. Bytes in a buffer it leaves alone, and a console needs no CR in front of an LF.
void passWholeBytesToConsole(std::FILE* stream) {
    const int file = _fileno(stream);
    if (file >= 0 && _isatty(file) != 0) {
        std::fflush(stream);
        _setmode(file, _O_BINARY);
        std::setvbuf(stream, nullptr, _IOFBF, kBuffer);
    }
}

// What is in the buffers is still UTF-8. Standard input may be in use to the last by a thread that waits for a line.
void putBack() {
    std::fflush(stdout);
    std::fflush(stderr);
    SetConsoleOutputCP(before);
}

} // namespace

void showUtf8InConsole() {
    passWholeBytesToConsole(stdout);
    passWholeBytesToConsole(stderr);
    const UINT current = GetConsoleOutputCP();
    // 0 where there is no console. One that shows UTF-8 already may owe that to a program which puts it back itself.
    if (current != 0 && current != CP_UTF8 && SetConsoleOutputCP(CP_UTF8)) {
        before = current;
        std::atexit(putBack);
    }
}

} // namespace tessera::platform
