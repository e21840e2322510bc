// StorableText: whether a key or a text comes back out of an object document.
//
// One that doesn't makes the whole document unreadable, and all other settings with it (see FObjectDocument). So the
// settings don't take it in the first place.
#pragma once

#include "foundation/text/FString.h"

namespace tessera {

// The form that texts and keys are kept in: 16 bits where characters lie beyond ASCII and mean something in the
// system's code page, so that the text is the same on every system, and otherwise the width that it has.
FString storableForm(const FStringRef& text);

// Both are asked about the form above. An empty key names nothing.
bool isStorableKey(const FStringRef& key);
bool isStorableText(const FStringRef& text);

} // namespace tessera
