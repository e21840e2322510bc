// FileNames: which names a single file may have, and how any text becomes one. Names are UTF-8, lengths are bytes.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

// What no valid name holds.
inline constexpr std::string_view kForbiddenNameCharacters = "<>\\/:*?|\"\t\n\r";

// 1 to 255 bytes, no blank, tab or line end and no "." at the end, not "." or "..", nothing forbidden, no control
// character, and a stem that isn't a device's: con, nul, prn, aux, com1 to com9, lpt1 to lpt9 in any case.
bool isValidFileName(std::string_view name);

// A valid name that works anywhere: letters and digits of ASCII, ".", "_" and "-", the latter and "." not in front.
bool isPortableFileName(std::string_view name);

// Makes a name that isValidFileName accepts, as far as the replacement allows: forbidden characters, a "." or blank at
// the end, and "." and ".." give way to it; a device's name gets it appended. 255 bytes at most.
std::string sanitizeFileName(std::string name, char replacement);

// The same, but of the characters only "/", ":", "*", "?", tab and line ends are replaced.
std::string sanitizeFileNameMildly(std::string name, char replacement);

// Both, the mild one first, with "_".
std::string sanitizeFileName(std::string name);

// A name that nobody else comes up with: 16 random bytes as "01234567-89ab-cdef-0123-456789abcdef".
std::string uniqueFileName();

// Whether the name fits a pattern with "*" for any run of characters and "?" for one; all others stand for themselves.
enum class NameCase { exact, ignored };
bool matchesPattern(std::string_view name, std::string_view pattern, NameCase letterCase);

} // namespace tessera
