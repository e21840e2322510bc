#include "foundation/text/FTextScan.h"

#include "foundation/text/FCaseFold.h"
#include "foundation/text/FTextBlocks.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tessera {
namespace {

using textblocks::anyMarked;
using textblocks::asBlock;
using textblocks::bitsOf;
using textblocks::Block;
using textblocks::firstMarked;
using textblocks::foldAscii;
using textblocks::kUnits;
using textblocks::load;
using textblocks::Unit;

template <class Character>
Block<Character> isEqual(Block<Character> block, Character c) {
    return asBlock<Character>(block == static_cast<Unit<Character>>(c));
}

// Where a comparison has to look closer: the texts differ, as far as the fold sees, or end with a NUL.
template <class Character, FCase Folding>
Block<Character> stops(const Character* a, const Character* b) {
    const Block<Character> left = load(a);
    const Block<Character> right = load(b);
    const auto same = Folding == FCase::ignore
                          ? asBlock<Character>(foldAscii<Character>(left) == foldAscii<Character>(right))
                          : asBlock<Character>(left == right);
    // One question for both: nothing is left of a character that differs, nor of a NUL.
    return asBlock<Character>((left & same) == Unit<Character>{0});
}

// The first position from i at which stops() holds, or size.
template <class Character, FCase Folding>
std::size_t nextStop(const Character* a, const Character* b, std::size_t i, std::size_t size) {
    constexpr std::size_t kStep = kUnits<Character>;
    const auto stopsAt = [&](std::size_t at) { return stops<Character, Folding>(a + at, b + at); };
    while (size - i >= 4 * kStep &&
           !anyMarked<Character>(stopsAt(i) | stopsAt(i + kStep) | stopsAt(i + 2 * kStep) | stopsAt(i + 3 * kStep))) {
        i += 4 * kStep;
    }
    for (; size - i >= kStep; i += kStep) {
        const std::size_t at = firstMarked<Character>(stopsAt(i));
        if (at != kStep) {
            return i + at;
        }
    }
    if (i < size && size >= kStep) {
        // The last characters as one whole block that overlaps what was seen to be equal.
        const std::size_t start = size - kStep;
        const std::size_t at = firstMarked<Character>(stopsAt(start));
        if (at == kStep) {
            return size;
        }
        // When this walk was resumed, an earlier position may be a stop that was already looked at.
        if (start + at >= i) {
            return start + at;
        }
    }
    for (; i < size; ++i) {
        if (a[i] == 0 ||
            (Folding == FCase::ignore ? FCaseFold::foldInText(a[i]) != FCaseFold::foldInText(b[i]) : a[i] != b[i])) {
            return i;
        }
    }
    return size;
}

// A character with its end of text, folded if that is asked for.
template <class Character, FCase Folding>
Character characterAt(std::basic_string_view<Character> text, std::size_t i) {
    const Character c = i < text.size() ? text[i] : Character{0};
    return Folding == FCase::ignore ? FCaseFold::foldInText(c) : c;
}

// Where the two differ, or the first NUL that both have there.
template <class Character, FCase Folding>
std::size_t decisivePosition(std::basic_string_view<Character> a, std::basic_string_view<Character> b) {
    const std::size_t common = std::min(a.size(), b.size());
    if constexpr (Folding == FCase::exact) {
        return nextStop<Character, Folding>(a.data(), b.data(), 0, common);
    }
    for (std::size_t i = 0;; ++i) {
        i = nextStop<Character, Folding>(a.data(), b.data(), i, common);
        const Character left = characterAt<Character, Folding>(a, i);
        // The block's fold knows ASCII alone, so letters beyond it may turn out to be equal here.
        if (left == 0 || left != characterAt<Character, Folding>(b, i)) {
            return i;
        }
    }
}

template <class Character, FCase Folding>
int compareTexts(std::basic_string_view<Character> a, std::basic_string_view<Character> b) {
    const std::size_t i = decisivePosition<Character, Folding>(a, b);
    return static_cast<int>(static_cast<Unit<Character>>(characterAt<Character, Folding>(a, i))) -
           static_cast<int>(static_cast<Unit<Character>>(characterAt<Character, Folding>(b, i)));
}

template <class Character>
int compareAny(std::basic_string_view<Character> a, std::basic_string_view<Character> b, FCase folding) {
    return folding == FCase::ignore ? compareTexts<Character, FCase::ignore>(a, b)
                                    : compareTexts<Character, FCase::exact>(a, b);
}

template <class Character, FCase Folding>
std::size_t differenceOf(std::basic_string_view<Character> a, std::basic_string_view<Character> b) {
    const std::size_t i = decisivePosition<Character, Folding>(a, b);
    const bool same = characterAt<Character, Folding>(a, i) == characterAt<Character, Folding>(b, i);
    return same ? FTextScan::kNothing : i;
}

template <class Character>
std::size_t differenceAny(std::basic_string_view<Character> a, std::basic_string_view<Character> b, FCase folding) {
    return folding == FCase::ignore ? differenceOf<Character, FCase::ignore>(a, b)
                                    : differenceOf<Character, FCase::exact>(a, b);
}

template <class Character>
std::size_t findExactCharacter(std::basic_string_view<Character> text, Character c) {
    constexpr std::size_t kStep = kUnits<Character>;
    std::size_t i = 0;
    for (; text.size() - i >= kStep; i += kStep) {
        const std::size_t at = firstMarked<Character>(isEqual<Character>(load(text.data() + i), c));
        if (at != kStep) {
            return i + at;
        }
    }
    for (; i < text.size(); ++i) {
        if (text[i] == c) {
            return i;
        }
    }
    return FTextScan::kNothing;
}

template <class Character>
bool matchesAt(const Character* text, std::basic_string_view<Character> needle) {
    return std::memcmp(text, needle.data(), needle.size() * sizeof(Character)) == 0;
}

// Blocks of positions are sifted by the first, the second and the last character of the needle together, and what is
// left is compared. positions is the number of positions at which the needle can stand.
template <class Character>
std::size_t findExact(std::basic_string_view<Character> text, std::basic_string_view<Character> needle,
                      std::size_t positions) {
    constexpr std::size_t kStep = kUnits<Character>;
    constexpr unsigned kOne = (1u << sizeof(Character)) - 1;
    const std::size_t last = needle.size() - 1;
    const std::size_t second = std::min<std::size_t>(1, last);
    std::size_t i = 0;
    for (; positions - i >= kStep; i += kStep) {
        const Character* const at = text.data() + i;
        unsigned bits = bitsOf(isEqual<Character>(load(at), needle.front()) &
                               isEqual<Character>(load(at + second), needle[second]) &
                               isEqual<Character>(load(at + last), needle.back()));
        while (bits != 0) {
            const auto bit = static_cast<unsigned>(std::countr_zero(bits));
            if (matchesAt(at + bit / sizeof(Character), needle)) {
                return i + bit / sizeof(Character);
            }
            bits &= ~(kOne << bit);
        }
    }
    for (; i < positions; ++i) {
        if (text[i] == needle.front() && matchesAt(text.data() + i, needle)) {
            return i;
        }
    }
    return FTextScan::kNothing;
}

// Position by position, with the comparison that ends at a NUL.
template <class Character>
std::size_t findByComparing(std::basic_string_view<Character> text, std::basic_string_view<Character> needle,
                            std::size_t limit, FCase folding) {
    const Character first = needle.front();
    for (std::size_t i = 0; i < limit; ++i) {
        if (FCaseFold::equalInText(text[i], first, folding) &&
            compareAny(text.substr(i, needle.size()), needle, folding) == 0) {
            return i;
        }
    }
    return FTextScan::kNothing;
}

template <class Character>
std::size_t findAny(std::basic_string_view<Character> text, std::basic_string_view<Character> needle, std::size_t limit,
                    FCase folding) {
    limit = std::min(limit, text.size());
    const bool plain = folding == FCase::exact && needle.find(Character{0}) == needle.npos;
    if (!plain) {
        return findByComparing(text, needle, limit, folding);
    }
    if (needle.size() > text.size()) {
        return FTextScan::kNothing;
    }
    const std::size_t positions = std::min(limit, text.size() - needle.size() + 1);
    return findExact(text, needle, positions);
}

template <class Character>
std::size_t findFoldedCharacter(std::basic_string_view<Character> text, Character c) {
    const Character folded = FCaseFold::fold(c);
    const auto at =
        std::find_if(text.begin(), text.end(), [&](Character other) { return FCaseFold::fold(other) == folded; });
    return at == text.end() ? FTextScan::kNothing : static_cast<std::size_t>(at - text.begin());
}

template <class Character>
std::size_t countAny(std::basic_string_view<Character> text, Character c, FCase folding) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [&](Character other) { return FCaseFold::equal(other, c, folding); }));
}

template <class Character>
bool isAsciiText(std::basic_string_view<Character> text) {
    constexpr std::size_t kStep = kUnits<Character>;
    std::size_t i = 0;
    for (; text.size() - i >= kStep; i += kStep) {
        if (anyMarked<Character>(asBlock<Character>(load(text.data() + i) >= Unit<Character>{0x80}))) {
            return false;
        }
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i), text.end(),
                       [](Character c) { return static_cast<Unit<Character>>(c) < 0x80; });
}

} // namespace

int FTextScan::compare(std::string_view a, std::string_view b, FCase folding) {
    return compareAny(a, b, folding);
}

int FTextScan::compare(std::u16string_view a, std::u16string_view b, FCase folding) {
    return compareAny(a, b, folding);
}

std::size_t FTextScan::difference(std::string_view a, std::string_view b, FCase folding) {
    return differenceAny(a, b, folding);
}

std::size_t FTextScan::difference(std::u16string_view a, std::u16string_view b, FCase folding) {
    return differenceAny(a, b, folding);
}

std::size_t FTextScan::find(std::string_view text, std::string_view needle, std::size_t limit, FCase folding) {
    return findAny(text, needle, limit, folding);
}

std::size_t FTextScan::find(std::u16string_view text, std::u16string_view needle, std::size_t limit, FCase folding) {
    return findAny(text, needle, limit, folding);
}

std::size_t FTextScan::findCharacter(std::string_view text, char c, FCase folding) {
    return folding == FCase::exact ? findExactCharacter(text, c) : findFoldedCharacter(text, c);
}

std::size_t FTextScan::findCharacter(std::u16string_view text, char16_t c, FCase folding) {
    return folding == FCase::exact ? findExactCharacter(text, c) : findFoldedCharacter(text, c);
}

std::size_t FTextScan::count(std::string_view text, char c, FCase folding) {
    return countAny(text, c, folding);
}

std::size_t FTextScan::count(std::u16string_view text, char16_t c, FCase folding) {
    return countAny(text, c, folding);
}

bool FTextScan::isAscii(std::string_view text) {
    return isAsciiText(text);
}

bool FTextScan::isAscii(std::u16string_view text) {
    return isAsciiText(text);
}

} // namespace tessera
