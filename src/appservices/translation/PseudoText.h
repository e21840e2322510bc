// The pseudo translation: English in disguise, for seeing which texts of a program don't come from the table.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

// The text between two underscores, each vowel with a grave accent; printf conversions stay. A context in double braces
// is dropped: it is never shown.
std::u16string pseudoText(std::u16string_view key);

} // namespace tessera
