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

constexpr std::size_t groupSize(std::uint32_t tableSize) {
    for (int count = 4; count > 1; --count) {
        if (largestGroup(tableSize - 1, count) < kWrap) {
            return static_cast<std::size_t>(count);
        }
    }
    return 1;
}

static_assert(groupSize(50) == 4 && groupSize(256) == 3 && groupSize(1 << 21) == 1);

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
        std::uint32_t combined = h;
        std::uint32_t allBits = 0;
        for (std::size_t k = 0; k < Size; ++k) {
            combined = combined * 64 + unit(text[i + k]);
            allBits |= unit(text[i + k]);
        }
        if (allBits < 0x80) {
            h = combined % tableSize;
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
    switch (groupSize(tableSize)) {
    case 4:
        return hashInGroups<4>(text, tableSize);
    case 3:
        return hashInGroups<3>(text, tableSize);
    case 2:
        return hashInGroups<2>(text, tableSize);
    default:
        return hashInGroups<1>(text, tableSize);
    }
}

} // namespace

std::uint32_t hashText(std::string_view text, std::uint32_t tableSize) {
    return hashAnyText(text, tableSize);
}

std::uint32_t hashText(std::u16string_view text, std::uint32_t tableSize) {
    return hashAnyText(text, tableSize);
}

} // namespace tessera
