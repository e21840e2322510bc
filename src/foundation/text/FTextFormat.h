// FTextFormat: printf formats for both widths, the same on every system.
//
// % [flags -+ #0 and blank] [width or *] [.precision or .*] [h hh l ll I64 I32 z] conversion
//
//   d i u o x X p   integers; a pointer prints as "0x" and hexadecimal digits
//   f e g a F E G A floats, as the library prints them in the process's locale
//   c s             a character or text of the format's own width
//   C S             of the other width; with h always 8-bit, with l always 16-bit
//   %               a percent sign
//
// A null text prints as "(null)". An unknown conversion prints as it stands and takes no argument; what is stored
// through a pointer elsewhere ("%n") is unknown here. Text beyond the limit is dropped. Neither heap nor failure,
// except that text of the other width needs memory for its copy and is left out without it.
#pragma once

#include <cstdarg>
#include <cstddef>

namespace tessera {

class FTextFormat {
public:
    // Writes at most limit characters and no NUL. The number of characters written.
    static std::size_t print(char* target, std::size_t limit, const char* format, std::va_list arguments);
    static std::size_t print(char16_t* target, std::size_t limit, const char16_t* format, std::va_list arguments);
};

} // namespace tessera
