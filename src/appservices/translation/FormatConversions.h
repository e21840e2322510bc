// What texts have in common with printf: the conversions in a format and in its translation.
#pragma once

#include <cstddef>
#include <string_view>

namespace tessera {

// The rule by which translation files are checked: the character behind each "%" of the key is the one behind the next
// "%" of the text, as long as there is one; only what is a letter in the key counts. So it finds the common slip, and
// says nothing about the number of conversions.
bool conversionsMatch(std::u16string_view key, std::u16string_view text);

// Whether a print with the text takes the same arguments as one with the key. What doesn't hold for a translation
// keeps it from being used as a format.
bool takeSameArguments(std::u16string_view key, std::u16string_view text);

// The length of the conversion that the text begins with: "%", flags, width, precision, size, letter. 0 when it begins
// with none.
std::size_t conversionLength(std::u16string_view text);

} // namespace tessera
