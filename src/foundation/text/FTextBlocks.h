// Blocks of sixteen bytes of text, looked at all at once. Internal to the text folder.
//
// A block is sixteen 8-bit or eight 16-bit characters. Comparing blocks gives a mask whose characters have all bits set
// where the answer is yes. The compiler's vectors are used rather than one processor's calls, so that the same lines
// serve every machine that it compiles for.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tessera::textblocks {

template <class Character>
struct BlockOf;

template <>
struct BlockOf<char> {
    using Unit = std::uint8_t;
    typedef Unit Type __attribute__((vector_size(16)));
};

template <>
struct BlockOf<char16_t> {
    using Unit = std::uint16_t;
    typedef Unit Type __attribute__((vector_size(16)));
};

template <class Character>
using Block = typename BlockOf<Character>::Type;

template <class Character>
using Unit = typename BlockOf<Character>::Unit;

template <class Character>
inline constexpr std::size_t kUnits = 16 / sizeof(Character);

template <class Character>
inline Block<Character> load(const Character* text) {
    Block<Character> block;
    std::memcpy(&block, text, sizeof block);
    return block;
}

// The comparison operators give vectors of signed characters; masks are kept in the unsigned form.
template <class Character, class Mask>
inline Block<Character> asBlock(Mask mask) {
    static_assert(sizeof(Mask) == sizeof(Block<Character>));
    return std::bit_cast<Block<Character>>(mask);
}

// The index of the first character that the mask marks, or kUnits.
template <class Character>
inline std::size_t firstMarked(Block<Character> mask) {
    std::uint64_t halves[2];
    std::memcpy(halves, &mask, sizeof halves);
    if (halves[0] != 0) {
        return static_cast<std::size_t>(std::countr_zero(halves[0])) / 8 / sizeof(Character);
    }
    if (halves[1] != 0) {
        return (8 + static_cast<std::size_t>(std::countr_zero(halves[1])) / 8) / sizeof(Character);
    }
    return kUnits<Character>;
}
static_assert(std::endian::native == std::endian::little, "firstMarked counts from the low end of a word");

template <class Character>
inline bool anyMarked(Block<Character> mask) {
    std::uint64_t halves[2];
    std::memcpy(halves, &mask, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

// Capital ASCII letters made small, everything else as it is.
template <class Character>
inline Block<Character> foldAscii(Block<Character> block) {
    const Block<Character> isCapital = asBlock<Character>((block - Unit<Character>{'A'}) < Unit<Character>{26});
    return block + (isCapital & Unit<Character>{32});
}

} // namespace tessera::textblocks
