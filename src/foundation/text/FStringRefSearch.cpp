#include "foundation/text/FCaseFold.h"
#include "foundation/text/FStringRef.h"
#include "foundation/text/FTextConversion.h"
#include "foundation/text/FTextScan.h"
#include "foundation/text/FWidenedText.h"

#include <algorithm>

namespace tessera {
namespace {

constexpr std::int32_t kMissing = -1;

std::int32_t positionOrMissing(std::size_t found, std::size_t offset) {
    return found == FTextScan::kNothing ? kMissing : static_cast<std::int32_t>(offset + found);
}

// One behind the last position that is tried.
std::size_t searchLimit(std::size_t length, std::int32_t lastStart) {
    const auto last = static_cast<std::size_t>(std::max(lastStart, 0));
    return lastStart >= 0 && last < length ? last + 1 : length;
}

// Where a search backward begins; needs text.
std::size_t searchStart(std::size_t length, std::int32_t start) {
    const auto from = static_cast<std::size_t>(std::max(start, 0));
    return start < 0 || from >= length ? length - 1 : from;
}

template <class Character>
std::basic_string_view<Character> bounded(std::basic_string_view<Character> text, std::int32_t length) {
    return length < 0 ? text : text.substr(0, static_cast<std::size_t>(length));
}

template <class Character>
std::int32_t findForward(std::basic_string_view<Character> text, std::int32_t start,
                         std::basic_string_view<Character> needle, FCase folding, std::int32_t lastStart) {
    const auto from = static_cast<std::size_t>(std::max(start, 0));
    const std::size_t limit = searchLimit(text.size(), lastStart);
    if (needle.empty() || from >= limit) {
        return kMissing;
    }
    return positionOrMissing(FTextScan::find(text.substr(from), needle, limit - from, folding), from);
}

template <class Character>
std::int32_t findBackward(std::basic_string_view<Character> text, std::int32_t start,
                          std::basic_string_view<Character> needle, FCase folding) {
    if (needle.empty() || text.empty()) {
        return kMissing;
    }
    for (std::size_t i = searchStart(text.size(), start) + 1; i-- > 0;) {
        if (FCaseFold::equalInText(text[i], needle.front(), folding) &&
            FTextScan::compare(text.substr(i, needle.size()), needle, folding) == 0) {
            return static_cast<std::int32_t>(i);
        }
    }
    return kMissing;
}

template <class Character>
std::int32_t findCharacterForward(std::basic_string_view<Character> text, std::int32_t start, Character c,
                                  FCase folding, std::int32_t lastStart) {
    const auto from = static_cast<std::size_t>(std::max(start, 0));
    const std::size_t limit = searchLimit(text.size(), lastStart);
    if (from >= limit) {
        return kMissing;
    }
    return positionOrMissing(FTextScan::findCharacter(text.substr(from, limit - from), c, folding), from);
}

template <class Character>
std::int32_t findCharacterBackward(std::basic_string_view<Character> text, std::int32_t start, Character c,
                                   FCase folding) {
    if (text.empty()) {
        return kMissing;
    }
    for (std::size_t i = searchStart(text.size(), start) + 1; i-- > 0;) {
        if (FCaseFold::equal(text[i], c, folding)) {
            return static_cast<std::int32_t>(i);
        }
    }
    return kMissing;
}

template <class Character>
std::int32_t countCharacter(std::basic_string_view<Character> text, std::int32_t start, Character c, FCase folding) {
    const auto from = static_cast<std::size_t>(std::max(start, 0));
    return from >= text.size() ? 0 : static_cast<std::int32_t>(FTextScan::count(text.substr(from), c, folding));
}

// Calls work with the text and the character in the text's width.
template <class Work>
std::int32_t withCharacter(const FStringRef& text, char c, Work work) {
    char16_t wide = 0;
    if (!text.isWide()) {
        return work(text.view8(), c);
    }
    return FTextConversion::widenCharacter(c, wide) ? work(text.view16(), wide) : kMissing;
}

template <class Work>
std::int32_t withCharacter(const FStringRef& text, char16_t c, Work work) {
    char narrow = 0;
    if (text.isWide()) {
        return work(text.view16(), c);
    }
    return FTextConversion::narrowCharacter(c, narrow) ? work(text.view8(), narrow) : kMissing;
}

} // namespace

std::int32_t FStringRef::indexOf(std::int32_t start, const FStringRef& other, std::int32_t otherLength, FCase folding,
                                 std::int32_t lastStart) const {
    if (isEmpty() || other.isEmpty()) {
        return kMissing;
    }
    return inCommonWidth(*this, other, kMissing, kMissing, [&](auto text, auto needle) {
        return findForward(text, start, bounded(needle, otherLength), folding, lastStart);
    });
}

std::int32_t FStringRef::indexOf(std::int32_t start, char c, FCase folding, std::int32_t lastStart) const {
    return withCharacter(*this, c, [&](auto text, auto character) {
        return findCharacterForward(text, start, character, folding, lastStart);
    });
}

std::int32_t FStringRef::indexOf(std::int32_t start, char16_t c, FCase folding, std::int32_t lastStart) const {
    return withCharacter(*this, c, [&](auto text, auto character) {
        return findCharacterForward(text, start, character, folding, lastStart);
    });
}

std::int32_t FStringRef::lastIndexOf(std::int32_t start, const FStringRef& other, std::int32_t otherLength,
                                     FCase folding) const {
    if (isEmpty() || other.isEmpty()) {
        return kMissing;
    }
    return inCommonWidth(*this, other, kMissing, kMissing, [&](auto text, auto needle) {
        return findBackward(text, start, bounded(needle, otherLength), folding);
    });
}

std::int32_t FStringRef::lastIndexOf(std::int32_t start, char c, FCase folding) const {
    return withCharacter(
        *this, c, [&](auto text, auto character) { return findCharacterBackward(text, start, character, folding); });
}

std::int32_t FStringRef::lastIndexOf(std::int32_t start, char16_t c, FCase folding) const {
    return withCharacter(
        *this, c, [&](auto text, auto character) { return findCharacterBackward(text, start, character, folding); });
}

std::int32_t FStringRef::count(char c, std::int32_t start, FCase folding) const {
    return withCharacter(*this, c,
                         [&](auto text, auto character) { return countCharacter(text, start, character, folding); });
}

std::int32_t FStringRef::count(char16_t c, std::int32_t start, FCase folding) const {
    return withCharacter(*this, c,
                         [&](auto text, auto character) { return countCharacter(text, start, character, folding); });
}

} // namespace tessera
