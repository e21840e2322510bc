#include "foundation/text/FUtf8.h"

#include "foundation/text/FTextBlocks.h"

#include <cstdint>

namespace tessera {
namespace {

using textblocks::anyMarked;
using textblocks::asBlock;
using textblocks::Block;
using textblocks::firstMarked;
using textblocks::kUnits;
using textblocks::load;

constexpr std::size_t kBytes = kUnits<char>;
constexpr std::size_t kWords = kUnits<char16_t>;

typedef std::uint8_t EightBytes __attribute__((vector_size(8)));

static_assert(std::endian::native == std::endian::little, "sequences are read and written as words, lowest byte first");

bool isContinuation(unsigned char c) {
    return (c & 0xc0) == 0x80;
}

// Whether three bytes are the form of a unit: of the 32 stretches of 0x800 units the first takes fewer, and the halves
// of pairs have none.
bool isTriple(unsigned unit) {
    constexpr std::uint32_t kStretches = ~(1u | 1u << (0xd800 >> 11));
    return (kStretches >> (unit >> 11) & 1) != 0;
}

// Sixteen bytes as sixteen code units; right for ASCII alone.
void storeWidened(Block<char> block, char16_t* target) {
    EightBytes halves[2];
    std::memcpy(halves, &block, sizeof halves);
    const auto low = __builtin_convertvector(halves[0], Block<char16_t>);
    const auto high = __builtin_convertvector(halves[1], Block<char16_t>);
    std::memcpy(target, &low, sizeof low);
    std::memcpy(target + kWords, &high, sizeof high);
}

// Eight code units as eight bytes; right for ASCII alone.
void storeNarrowed(Block<char16_t> block, char* target) {
    const EightBytes bytes = __builtin_convertvector(block, EightBytes);
    std::memcpy(target, &bytes, sizeof bytes);
}

// Two blocks at a time: most text is ASCII for long stretches.
bool isAsciiPair(const char16_t* text) {
    const Block<char16_t> both = load(text) | load(text + kWords);
    return !anyMarked<char16_t>(asBlock<char16_t>((both & std::uint16_t{0xff80}) != std::uint16_t{0}));
}

bool isAsciiPair(const char* text) {
    return !anyMarked<char>(load(text) | load(text + kBytes));
}

// Reads bytes and writes code units; each step takes what it can and leaves the rest to the next. The steps are inlined
// into the walk, which keeps both positions in registers that way.
class Widening {
public:
    Widening(const char* text, std::size_t length, char16_t* target, std::size_t capacity)
        : at_(reinterpret_cast<const unsigned char*>(text)),
          end_(at_ + length),
          target_(target),
          targetEnd_(target + capacity) {}

    bool run() {
        while (at_ != end_) {
            if (*at_ < 0x80) {
                takeAscii();
            } else if (*at_ < 0xe0) {
                if (!takePairs()) {
                    return false;
                }
            } else if (*at_ < 0xf0) {
                if (!takeTriples()) {
                    return false;
                }
            } else if (!takeQuadruple()) {
                return false;
            }
        }
        return true;
    }

private:
    // Whole blocks are stored before it is known how much of them is ASCII, as long as there is room: what isn't gets
    // overwritten by what follows.
    [[gnu::always_inline]] void takeAscii() {
        while (static_cast<std::size_t>(end_ - at_) >= kBytes &&
               static_cast<std::size_t>(targetEnd_ - target_) >= kBytes) {
            const Block<char> block = load(reinterpret_cast<const char*>(at_));
            storeWidened(block, target_);
            // The highest bit of a byte is the mask. A whole block is the common case, and its step doesn't wait for
            // the count.
            if (!anyMarked<char>(block)) {
                at_ += kBytes;
                target_ += kBytes;
                continue;
            }
            const std::size_t ascii = firstMarked<char>(block);
            at_ += ascii;
            target_ += ascii;
            return;
        }
        while (at_ != end_ && *at_ < 0x80) {
            *target_++ = *at_++;
        }
    }

    [[gnu::always_inline]] bool takePairs() {
        do {
            if (*at_ < 0xc2 || end_ - at_ < 2 || !isContinuation(at_[1])) {
                return false;
            }
            *target_++ = static_cast<char16_t>((at_[0] & 0x1f) << 6 | (at_[1] & 0x3f));
            at_ += 2;
        } while (at_ != end_ && *at_ >= 0x80 && *at_ < 0xe0);
        return true;
    }

    [[gnu::always_inline]] bool takeTriples() {
        // Four bytes at a time while there are so many: one test for the form of all three that count.
        while (end_ - at_ >= 4) {
            std::uint32_t word;
            std::memcpy(&word, at_, sizeof word);
            if ((word & 0xc0c0f0) != 0x8080e0) {
                return (word & 0xf0) != 0xe0;
            }
            const unsigned unit = (word & 0x0f) << 12 | (word >> 2 & 0xfc0) | (word >> 16 & 0x3f);
            if (!isTriple(unit)) {
                return false;
            }
            *target_++ = static_cast<char16_t>(unit);
            at_ += 3;
        }
        return at_ == end_ || (*at_ & 0xf0) != 0xe0 || takeLastTriple();
    }

    bool takeLastTriple() {
        if (end_ - at_ < 3 || !isContinuation(at_[1]) || !isContinuation(at_[2])) {
            return false;
        }
        const unsigned unit = (at_[0] & 0x0fu) << 12 | (at_[1] & 0x3fu) << 6 | (at_[2] & 0x3fu);
        if (!isTriple(unit)) {
            return false;
        }
        *target_++ = static_cast<char16_t>(unit);
        at_ += 3;
        return true;
    }

    bool takeQuadruple() {
        if (end_ - at_ < 4 || !isContinuation(at_[1]) || !isContinuation(at_[2]) || !isContinuation(at_[3]) ||
            at_[0] > 0xf4) {
            return false;
        }
        const unsigned point =
            (at_[0] & 0x07u) << 18 | (at_[1] & 0x3fu) << 12 | (at_[2] & 0x3fu) << 6 | (at_[3] & 0x3fu);
        if (point < 0x10000 || point > 0x10ffff) {
            return false;
        }
        *target_++ = static_cast<char16_t>(0xd800 + ((point - 0x10000) >> 10));
        *target_++ = static_cast<char16_t>(0xdc00 + ((point - 0x10000) & 0x3ff));
        at_ += 4;
        return true;
    }

    const unsigned char* at_;
    const unsigned char* const end_;
    char16_t* target_;
    char16_t* const targetEnd_;
};

// Reads code units and writes bytes: blocks of eight where there is room for the most that eight can make, single
// characters otherwise.
class Narrowing {
public:
    Narrowing(const char16_t* text, std::size_t length, char* target, std::size_t capacity)
        : at_(text), end_(text + length), target_(target), targetEnd_(target + capacity) {}

    void run() {
        while (at_ != end_) {
            if (!canTakeBlock() || !takeBlock()) {
                takeCharacter();
            }
        }
    }

private:
    bool canTakeBlock() const {
        // Four bytes are stored for three, so there is one more than eight triples.
        constexpr std::ptrdiff_t kMost = 3 * kWords + 1;
        return end_ - at_ >= static_cast<std::ptrdiff_t>(kWords) && targetEnd_ - target_ >= kMost;
    }

    // False for a block with halves of pairs.
    [[gnu::always_inline]] bool takeBlock() {
        const Block<char16_t> block = load(at_);
        const auto any = [](Block<char16_t> mask) { return anyMarked<char16_t>(mask); };
        if (!any(asBlock<char16_t>((block & std::uint16_t{0xff80}) != std::uint16_t{0}))) {
            storeNarrowed(block, target_);
            target_ += kWords;
        } else if (!any(asBlock<char16_t>((block & std::uint16_t{0xf800}) != std::uint16_t{0}))) {
            putShortOnes(block);
        } else if (!any(asBlock<char16_t>((block & std::uint16_t{0xf800}) == std::uint16_t{0xd800}))) {
            putMixed();
        } else {
            return false;
        }
        at_ += kWords;
        return true;
    }

    // One byte or two each, without a branch: accents stand where no processor expects them. All eight are worked out
    // at once; of each both bytes are written, and the second is overwritten when it doesn't count.
    [[gnu::always_inline]] void putShortOnes(Block<char16_t> block) {
        const Block<char16_t> isPair = asBlock<char16_t>((block & std::uint16_t{0xff80}) != std::uint16_t{0});
        const Block<char16_t> second = (block & std::uint16_t{0x3f}) << std::uint16_t{8};
        const Block<char16_t> pair = std::uint16_t{0x80c0} | (block >> std::uint16_t{6}) | second;
        const Block<char16_t> bytes = (isPair & pair) | (~isPair & block);
        const Block<char16_t> sizes = std::uint16_t{1} - isPair;
        std::uint16_t words[kWords];
        std::uint16_t steps[kWords];
        std::memcpy(words, &bytes, sizeof words);
        std::memcpy(steps, &sizes, sizeof steps);
        for (std::size_t i = 0; i < kWords; ++i) {
            std::memcpy(target_, &words[i], sizeof words[i]);
            target_ += steps[i];
        }
    }

    [[gnu::always_inline]] void putMixed() {
        for (std::size_t i = 0; i < kWords; ++i) {
            const unsigned unit = at_[i];
            if (unit >= 0x800) {
                const std::uint32_t word = 0x8080e0 | unit >> 12 | (unit << 2 & 0x3f00) | (unit << 16 & 0x3f0000);
                std::memcpy(target_, &word, sizeof word);
                target_ += 3;
            } else {
                putShort(unit);
            }
        }
    }

    void putShort(unsigned unit) {
        if (unit >= 0x80) {
            *target_++ = static_cast<char>(0xc0 | unit >> 6);
            unit = 0x80 | (unit & 0x3f);
        }
        *target_++ = static_cast<char>(unit);
    }

    void takeCharacter() {
        const unsigned unit = *at_++;
        if (unit < 0x800) {
            putShort(unit);
        } else if ((unit & 0xf800) != 0xd800) {
            putTriple(unit);
        } else if (unit < 0xdc00 && at_ != end_ && (*at_ & 0xfc00) == 0xdc00) {
            putQuadruple(0x10000 + ((unit - 0xd800) << 10) + (*at_++ - 0xdc00u));
        } else {
            putTriple(0xfffd);
        }
    }

    void putTriple(unsigned unit) {
        target_[0] = static_cast<char>(0xe0 | unit >> 12);
        target_[1] = static_cast<char>(0x80 | (unit >> 6 & 0x3f));
        target_[2] = static_cast<char>(0x80 | (unit & 0x3f));
        target_ += 3;
    }

    void putQuadruple(unsigned point) {
        target_[0] = static_cast<char>(0xf0 | point >> 18);
        target_[1] = static_cast<char>(0x80 | (point >> 12 & 0x3f));
        target_[2] = static_cast<char>(0x80 | (point >> 6 & 0x3f));
        target_[3] = static_cast<char>(0x80 | (point & 0x3f));
        target_ += 4;
    }

    const char16_t* at_;
    const char16_t* const end_;
    char* target_;
    char* const targetEnd_;
};

// What the units of one block add to the length of the text, gathered in lanes and summed before a lane overflows.
template <class Character>
std::size_t sumOfLanes(Block<Character> lanes) {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < kUnits<Character>; ++i) {
        sum += lanes[i];
    }
    return sum;
}

// Also how soon the sums look for a stretch of ASCII again.
constexpr std::size_t kBlocksUntilOverflow = 120;

// A byte begins one code unit unless it continues a sequence, and those from 0xf0 up begin a pair.
std::size_t unitsOf(unsigned char c) {
    return (isContinuation(c) ? 0u : 1u) + (c >= 0xf0 ? 1u : 0u);
}

// Every unit makes three bytes, less one below 0x800 and one more below 0x80; the halves of a pair make two each.
std::size_t bytesOf(char16_t c) {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : 3;
}

// The pairs that begin between from and to; the last may reach beyond.
std::size_t countPairs(const char16_t* from, const char16_t* to, const char16_t* end) {
    std::size_t pairs = 0;
    for (const char16_t* at = from; at != to && at + 1 != end; ++at) {
        pairs += (at[0] & 0xfc00) == 0xd800 && (at[1] & 0xfc00) == 0xdc00 ? 1u : 0u;
    }
    return pairs;
}

} // namespace

std::size_t FUtf8::widenedLength(const char* text, std::size_t length) {
    std::size_t units = 0;
    std::size_t i = 0;
    while (length - i >= kBytes) {
        for (; length - i >= 2 * kBytes && isAsciiPair(text + i); i += 2 * kBytes) {
            units += 2 * kBytes;
        }
        Block<char> lanes = {};
        for (std::size_t k = 0; k < kBlocksUntilOverflow && length - i >= kBytes; ++k, i += kBytes) {
            const Block<char> block = load(text + i);
            // A mask is -1 where it says yes, so subtracting it counts.
            lanes -= asBlock<char>((block & std::uint8_t{0xc0}) != std::uint8_t{0x80});
            lanes -= asBlock<char>(block >= std::uint8_t{0xf0});
        }
        units += sumOfLanes<char>(lanes);
    }
    for (; i < length; ++i) {
        units += unitsOf(static_cast<unsigned char>(text[i]));
    }
    return units;
}

bool FUtf8::widen(const char* text, std::size_t length, char16_t* target, std::size_t capacity) {
    return Widening(text, length, target, capacity).run();
}

std::size_t FUtf8::narrowedLength(const char16_t* text, std::size_t length) {
    std::size_t bytes = 0;
    std::size_t i = 0;
    while (length - i >= kWords) {
        for (; length - i >= 2 * kWords && isAsciiPair(text + i); i += 2 * kWords) {
            bytes += 2 * kWords;
        }
        const std::size_t from = i;
        Block<char16_t> saved = {};
        Block<char16_t> halves = {};
        for (std::size_t k = 0; k < kBlocksUntilOverflow && length - i >= kWords; ++k, i += kWords) {
            const Block<char16_t> high = load(text + i) & std::uint16_t{0xf800};
            const Block<char16_t> beyondAscii = load(text + i) & std::uint16_t{0xff80};
            // A mask is -1 where it says yes, so subtracting it counts.
            saved -= asBlock<char16_t>(high == std::uint16_t{0});
            saved -= asBlock<char16_t>(beyondAscii == std::uint16_t{0});
            halves |= asBlock<char16_t>(high == std::uint16_t{0xd800});
        }
        bytes += 3 * (i - from) - sumOfLanes<char16_t>(saved);
        if (anyMarked<char16_t>(halves)) {
            bytes -= 2 * countPairs(text + from, text + i, text + length);
        }
    }
    for (; i < length; ++i) {
        bytes += bytesOf(text[i]) - 2 * countPairs(text + i, text + i + 1, text + length);
    }
    return bytes;
}

void FUtf8::narrow(const char16_t* text, std::size_t length, char* target, std::size_t capacity) {
    Narrowing(text, length, target, capacity).run();
}

} // namespace tessera
