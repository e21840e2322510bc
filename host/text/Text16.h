// Between UTF-8, which the host keeps all its texts in, and the 16-bit text of its interfaces. Strict both ways: an
// invalid sequence or a lone surrogate gives nothing, since half a file name is another file's name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessera::host {

std::optional<std::u16string> toText16(std::string_view utf8);
std::optional<std::string> toUtf8(std::u16string_view text);

// Writes the text and its closing zero into a buffer of that many units; the empty text when it doesn't fit.
void writeText16(std::string_view utf8, char16_t* buffer, int units);

} // namespace tessera::host
