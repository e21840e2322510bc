// HostText: texts between the host, which speaks 16-bit text, and the module, which keeps UTF-8.
//
// A host file object writes into a buffer of kHostPathUnits; what it writes ends at its first zero, and at the buffer's
// end in any case. A null file object gives an empty text.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

struct IHostFile;

// A null text is empty; a lone half of a surrogate pair becomes U+FFFD.
std::string utf8Of(const char16_t* text);
// Empty for bytes that are no UTF-8: half a path would be another file.
std::u16string wideOf(std::string_view utf8);

std::u16string widePathOf(IHostFile* file);
std::string pathOf(IHostFile* file);
// The last component of the path.
std::u16string nameOf(IHostFile* file);

} // namespace tessera
