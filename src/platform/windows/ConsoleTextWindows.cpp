#include "platform/ConsoleText.h"

#include "platform/windows/WideText.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <streambuf>
#include <string>
#include <string_view>
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

// The C runtime reads a console by the bytes of a code page, and gets a zero for each letter that isn't in ASCII when
// that page is UTF-8.
class TypedText : public std::streambuf {
public:
    explicit TypedText(HANDLE console) : console_(console) {}

protected:
    int_type underflow() override {
        do {
            if (!readMore()) {
                return traits_type::eof();
            }
        } while (text_.empty());
        setg(text_.data(), text_.data(), text_.data() + text_.size());
        return traits_type::to_int_type(text_.front());
    }

private:
    // A line, or as much of it as fits.
    bool readMore() {
        std::array<wchar_t, 1024> units;
        units[0] = half_;
        const DWORD kept = half_ != 0 ? 1 : 0;
        DWORD count = 0;
        const BOOL done =
            ReadConsoleW(console_, units.data() + kept, static_cast<DWORD>(units.size()) - kept, &count, nullptr);
        if (done == 0 || count == 0 || units[kept] == kEndOfInput) {
            return false;
        }
        count += kept;
        half_ = isHighSurrogate(static_cast<char16_t>(units[count - 1])) ? units[--count] : L'\0';
        text_ = utf8Of(std::wstring_view(units.data(), count));
        std::erase(text_, '\r');
        return true;
    }

    // Ctrl-Z, which ends the input where it stands first in a line.
    static constexpr wchar_t kEndOfInput = 0x1a;

    HANDLE console_;
    std::string text_;
    // Of a letter of two units, where the first read ends between them; 0 for none.
    wchar_t half_ = 0;
};

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

void readUtf8FromConsole() {
    HANDLE const input = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(input, &mode) != 0) {
        // For good: a thread may wait for a line until the process is gone.
        static TypedText& typed = *new TypedText(input);
        std::cin.rdbuf(&typed);
    }
}

} // namespace tessera::platform
