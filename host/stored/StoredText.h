// Between the host's UTF-8 texts and those of a project document.
#pragma once

#include "foundation/text/FString.h"

#include <string>

namespace tessera {
class FAttributes;
}

namespace tessera::host {

// Whether the text can stand in a project document and be read again: one that is too long would make the whole
// document unreadable.
bool canBeStored(const std::string& utf8);
// 8-bit text as long as it is ASCII, and 16-bit text otherwise, so that the document doesn't depend on the user's
// locale.
bool storeText(FAttributes& attributes, const char* key, const std::string& utf8);
// The empty text for a missing one, and for one that is no text in the first place.
std::string restoreText(const FAttributes& attributes, const char* key);

} // namespace tessera::host
