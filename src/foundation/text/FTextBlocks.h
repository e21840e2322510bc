// Blocks of sixteen bytes of text, looked at all at once. For what scans text, inside of this framework.
//
// A block is sixteen 8-bit or eight 16-bit characters. Comparing blocks gives a mask whose characters have all bits set
// where the answer is yes. The compiler's vectors are used rather than one processor's calls, so that the same lines
// serve every machine that it compiles for; one call of x86's is worth its exception, since every loop asks it.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

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

// One bit for each byte of the mask, the first byte lowest.
template <class Mask>
inline unsigned bitsOf(Mask mask) {
#ifdef __SSE2__
    return static_cast<unsigned>(_mm_movemask_epi8(std::bit_cast<__m128i>(mask)));
#else
    std::uint8_t bytes[16];
    std::memcpy(bytes, &mask, sizeof bytes);
    unsigned bits = 0;
    for (unsigned i = 0; i < sizeof bytes; ++i) {
        bits |= static_cast<unsigned>(bytes[i] >> 7) << i;
    }
    return bits;
#endif
}

// The index of the first character that the mask marks, or kUnits.
template <class Character>
inline std::size_t firstMarked(Block<Character> mask) {
    constexpr unsigned kBehindLast = 1u << 16;
    return static_cast<std::size_t>(std::countr_zero(bitsOf(mask) | kBehindLast)) / sizeof(Character);
}

template <class Character>
inline bool anyMarked(Block<Character> mask) {
    return bitsOf(mask) != 0;
}

// Capital ASCII letters made small, everything else as it is.
template <class Character>
inline Block<Character> foldAscii(Block<Character> block) {
    const Block<Character> isCapital = asBlock<Character>((block - Unit<Character>{'A'}) < Unit<Character>{26});
    return block + (isCapital & Unit<Character>{32});
}

} // namespace tessera::textblocks
