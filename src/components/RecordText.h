// Texts in the fields of class records: zero-padded, and without a zero where they fill the field.
#pragma once

#include "foundation/text/FString.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tessera {

namespace detail {

template <class Character, std::size_t Size>
void fillField(Character (&field)[Size], const Character* text, std::int32_t length) {
    const Character* end =
        std::find(text, text + std::min<std::size_t>(static_cast<std::size_t>(length), Size - 1), Character());
    std::fill(std::copy(text, end, field), field + Size, Character());
}

} // namespace detail

// The field must outlive the view.
template <class Character, std::size_t Size>
FStringRef fieldText(const Character (&field)[Size]) {
    const Character* end = std::find(field, field + Size, Character());
    return FStringRef(field, static_cast<std::int32_t>(end - field));
}

// The text up to its first zero. What is too long is cut, and the last place stays zero.
template <std::size_t Size>
void setField(char (&field)[Size], const FString& text) {
    detail::fillField(field, text.text8(), text.length());
}

template <std::size_t Size>
void setField(char16_t (&field)[Size], const FString& text) {
    const char16_t* characters = text.text16();
    // Bytes that mean nothing as text can't be widened.
    detail::fillField(field, characters, text.isWide() ? text.length() : 0);
}

} // namespace tessera
