// CodePages: text between 8-bit code pages and 16-bit text, as the system converts it.
//
// Counts are characters of the source and of the result: bytes on the 8-bit side, code units on the 16-bit side; no
// terminator is read or written. Widening is strict: bytes that mean nothing in the code page fail the whole text.
// Narrowing never fails for a character: what the code page can't hold becomes "?". Every operation may be called from
// any thread; converters are kept per thread, so no call opens one. UTF-8 itself is converted by foundation/text and
// isn't served here: ask resolveCodePage first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tessera {

// Any number that the system knows may be cast to it; these are the ones in use.
enum class CodePage : std::uint32_t {
    system = 0,
    shiftJis = 932,
    western = 1252,
    utf8 = 65001,
};

namespace platform {

// What the page stands for: CodePage::system becomes CodePage::utf8 when the user's locale says so or says nothing. The
// locale is looked at once, when the module is loaded; what the program does with setlocale later has no influence.
CodePage resolveCodePage(CodePage page);

// The number of code units that widen() would write, or -1 for an unknown page or bytes that mean nothing in it.
std::ptrdiff_t widenedLength(CodePage page, const char* text, std::size_t length);

// Writes at most capacity code units. The number written, or -1 as in widenedLength or when the room doesn't suffice.
std::ptrdiff_t widen(CodePage page, const char* text, std::size_t length, char16_t* target, std::size_t capacity);

// The number of bytes that narrow() would write, or -1 for an unknown page.
std::ptrdiff_t narrowedLength(CodePage page, const char16_t* text, std::size_t length);

// Writes at most capacity bytes. The number written, or -1 for an unknown page or when the room doesn't suffice.
std::ptrdiff_t narrow(CodePage page, const char16_t* text, std::size_t length, char* target, std::size_t capacity);

} // namespace platform
} // namespace tessera
