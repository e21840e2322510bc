// Texts in the fields of class records: zero-padded, and without a zero where they fill the field.
#pragma once

#include "foundation/text/FString.h"

#include <algorithm>
#include <cstddef>

namespace tessera {

// The field must outlive the view.
template <class Character, std::size_t Size>
FStringRef fieldText(const Character (&field)[Size]) {
    const Character* end = std::find(field, field + Size, Character());
    return FStringRef(field, static_cast<std::int32_t>(end - field));
}

// What is too long is cut, and the last place stays zero.
template <std::size_t Size>
void setField(char (&field)[Size], FString text) {
    std::fill(field, field + Size, '\0');
    const char* characters = text.text8();
    std::copy_n(characters, std::min<std::size_t>(static_cast<std::size_t>(text.length()), Size - 1), field);
}

template <std::size_t Size>
void setField(char16_t (&field)[Size], FString text) {
    std::fill(field, field + Size, u'\0');
    const char16_t* characters = text.text16();
    // Bytes that mean nothing as text can't be widened.
    if (text.isWide()) {
        std::copy_n(characters, std::min<std::size_t>(static_cast<std::size_t>(text.length()), Size - 1), field);
    }
}

} // namespace tessera
