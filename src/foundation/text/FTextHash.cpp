#include "foundation/text/FTextHash.h"

namespace tessera {
namespace {

// As long as no step leaves 32 bits, several steps in a row and one division give the same remainder as a division for
// each. Groups of four, three or two ASCII characters fit, depending on how large a remainder can be. Characters from
// 0x80 up are negative, wrap, and are taken one by one.
constexpr std::uint64_t kWrap = std::uint64_t{1} << 32;

constexpr std::uint64_t largestGroup(std::uint64_t remainder, int count) {
    std::uint64_t value = remainder;
    for (int i = 0; i < count; ++i) {
        value = value * 64 + 0x7f;
    }
    return value;
}

// The largest table for which a group of so many characters stays within 32 bits.
constexpr std::uint32_t largestTable(int count) {
    std::uint64_t scale = 1;
    for (int i = 0; i < count; ++i) {
        scale *= 64;
    }
    return static_cast<std::uint32_t>((kWrap - 1 - largestGroup(0, count)) / scale) + 1;
}
static_assert(largestGroup(largestTable(4) - 1, 4) < kWrap && largestGroup(largestTable(4), 4) >= kWrap);
static_assert(largestGroup(largestTable(2) - 1, 2) < kWrap && largestGroup(largestTable(2), 2) >= kWrap);

std::uint32_t unit(char c) {
    return static_cast<std::uint32_t>(static_cast<signed char>(c));
}
std::uint32_t unit(char16_t c) {
    return c;
}

template <std::size_t Size, class Character>
std::uint32_t hashInGroups(std::basic_string_view<Character> text, std::uint32_t tableSize) {
    std::uint32_t h = 0;
    std::size_t i = 0;
    for (; i + Size <= text.size(); i += Size) {
        // The characters are added up first, so that only one step waits for the division before it.
        std::uint32_t group = 0;
        std::uint32_t allBits = 0;
        for (std::size_t k = 0; k < Size; ++k) {
            group = group * 64 + unit(text[i + k]);
            allBits |= unit(text[i + k]);
        }
        if (allBits < 0x80) {
            h = ((h << (6 * Size)) + group) % tableSize;
            continue;
        }
        for (std::size_t k = 0; k < Size; ++k) {
            h = ((h << 6) + unit(text[i + k])) % tableSize;
        }
    }
    for (; i < text.size(); ++i) {
        h = ((h << 6) + unit(text[i])) % tableSize;
    }
    return h;
}

template <class Character>
std::uint32_t hashAnyText(std::basic_string_view<Character> text, std::uint32_t tableSize) {
    if (tableSize == 0) {
        return 0;
    }
    if (tableSize <= largestTable(4)) {
        return hashInGroups<4>(text, tableSize);
    }
    if (tableSize <= largestTable(3)) {
        return hashInGroups<3>(text, tableSize);
    }
    if (tableSize <= largestTable(2)) {
        return hashInGroups<2>(text, tableSize);
    }
    return hashInGroups<1>(text, tableSize);
}

} // namespace

std::uint32_t hashText(std::string_view text, std::uint32_t tableSize) {
    return hashAnyText(text, tableSize);
}

std::uint32_t hashText(std::u16string_view text, std::uint32_t tableSize) {
    return hashAnyText(text, tableSize);
}

} // namespace tessera
