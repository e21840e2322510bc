// 8-bit text of old files in 16 bits, whatever is in it.
#pragma once

#include "platform/CodePages.h"

#include <string>
#include <string_view>

namespace tessera {

// As the system converts it. Bytes that mean nothing in the code page don't spoil the rest: they stand for the
// character of their own number, where it takes two of them for U+FFFD.
std::u16string widenText(CodePage page, std::string_view bytes);

} // namespace tessera
