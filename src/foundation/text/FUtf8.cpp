#include "foundation/text/FUtf8.h"

#include "foundation/text/FTextBlocks.h"

#include <cstdint>

namespace tessera {
namespace {

using textblocks::asBlock;
using textblocks::Block;
using textblocks::firstMarked;
using textblocks::kUnits;
using textblocks::load;

constexpr std::size_t kBytes = kUnits<char>;
constexpr std::size_t kWords = kUnits<char16_t>;

typedef std::uint8_t EightBytes __attribute__((vector_size(8)));

bool isContinuation(unsigned char c) {
    return (c & 0xc0) == 0x80;
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

// Reads bytes and writes code units; each step takes what it can and leaves the rest to the next.
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
    void takeAscii() {
        while (static_cast<std::size_t>(end_ - at_) >= kBytes &&
               static_cast<std::size_t>(targetEnd_ - target_) >= kBytes) {
            const Block<char> block = load(reinterpret_cast<const char*>(at_));
            storeWidened(block, target_);
            const std::size_t ascii = firstMarked<char>(asBlock<char>(block >= std::uint8_t{0x80}));
            at_ += ascii;
            target_ += ascii;
            if (ascii != kBytes) {
                return;
            }
        }
        while (at_ != end_ && *at_ < 0x80) {
            *target_++ = *at_++;
        }
    }

    bool takePairs() {
        do {
            if (*at_ < 0xc2 || end_ - at_ < 2 || !isContinuation(at_[1])) {
                return false;
            }
            *target_++ = static_cast<char16_t>((at_[0] & 0x1f) << 6 | (at_[1] & 0x3f));
            at_ += 2;
        } while (at_ != end_ && *at_ >= 0x80 && *at_ < 0xe0);
        return true;
    }

    bool takeTriples() {
        do {
            if (end_ - at_ < 3 || !isContinuation(at_[1]) || !isContinuation(at_[2])) {
                return false;
            }
            const unsigned unit = (at_[0] & 0x0fu) << 12 | (at_[1] & 0x3fu) << 6 | (at_[2] & 0x3fu);
            if (unit < 0x800 || (unit & 0xf800) == 0xd800) {
                return false;
            }
            *target_++ = static_cast<char16_t>(unit);
            at_ += 3;
        } while (at_ != end_ && (*at_ & 0xf0) == 0xe0);
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

class Narrowing {
public:
    Narrowing(const char16_t* text, std::size_t length, char* target, std::size_t capacity)
        : at_(text), end_(text + length), target_(target), targetEnd_(target + capacity) {}

    void run() {
        while (at_ != end_) {
            if (*at_ < 0x80) {
                takeAscii();
            } else if (*at_ < 0x800) {
                takePairs();
            } else if ((*at_ & 0xf800) != 0xd800) {
                takeTriples();
            } else {
                takeSurrogate();
            }
        }
    }

private:
    void takeAscii() {
        while (static_cast<std::size_t>(end_ - at_) >= kWords &&
               static_cast<std::size_t>(targetEnd_ - target_) >= kWords) {
            const Block<char16_t> block = load(at_);
            storeNarrowed(block, target_);
            const std::size_t ascii = firstMarked<char16_t>(asBlock<char16_t>(block >= std::uint16_t{0x80}));
            at_ += ascii;
            target_ += ascii;
            if (ascii != kWords) {
                return;
            }
        }
        while (at_ != end_ && *at_ < 0x80) {
            *target_++ = static_cast<char>(*at_++);
        }
    }

    void takePairs() {
        do {
            target_[0] = static_cast<char>(0xc0 | *at_ >> 6);
            target_[1] = static_cast<char>(0x80 | (*at_ & 0x3f));
            target_ += 2;
            ++at_;
        } while (at_ != end_ && *at_ >= 0x80 && *at_ < 0x800);
    }

    void takeTriples() {
        do {
            putTriple(*at_++);
        } while (at_ != end_ && *at_ >= 0x800 && (*at_ & 0xf800) != 0xd800);
    }

    void takeSurrogate() {
        const bool paired = *at_ < 0xdc00 && end_ - at_ >= 2 && (at_[1] & 0xfc00) == 0xdc00;
        if (!paired) {
            putTriple(0xfffd);
            ++at_;
            return;
        }
        const unsigned point = 0x10000 + ((at_[0] - 0xd800u) << 10) + (at_[1] - 0xdc00u);
        target_[0] = static_cast<char>(0xf0 | point >> 18);
        target_[1] = static_cast<char>(0x80 | (point >> 12 & 0x3f));
        target_[2] = static_cast<char>(0x80 | (point >> 6 & 0x3f));
        target_[3] = static_cast<char>(0x80 | (point & 0x3f));
        target_ += 4;
        at_ += 2;
    }

    void putTriple(char16_t unit) {
        target_[0] = static_cast<char>(0xe0 | unit >> 12);
        target_[1] = static_cast<char>(0x80 | (unit >> 6 & 0x3f));
        target_[2] = static_cast<char>(0x80 | (unit & 0x3f));
        target_ += 3;
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

constexpr std::size_t kBlocksUntilOverflow = 120;

// A byte begins one code unit unless it continues a sequence, and those from 0xf0 up begin a pair.
std::size_t unitsOf(unsigned char c) {
    return (isContinuation(c) ? 0u : 1u) + (c >= 0xf0 ? 1u : 0u);
}

// Every unit makes three bytes, less one below 0x800 and one more below 0x80; the halves of a pair make two each.
std::size_t bytesOf(char16_t c) {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : 3;
}

} // namespace

std::size_t FUtf8::widenedLength(const char* text, std::size_t length) {
    std::size_t units = 0;
    std::size_t i = 0;
    while (length - i >= kBytes) {
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
    // One unit of the next block is needed to see whether a pair begins with the last one of this.
    while (length - i > kWords) {
        Block<char16_t> lanes = {};
        std::size_t blocks = 0;
        for (; blocks < kBlocksUntilOverflow && length - i > kWords; ++blocks, i += kWords) {
            const Block<char16_t> block = load(text + i);
            const Block<char16_t> next = load(text + i + 1);
            const Block<char16_t> paired = asBlock<char16_t>((block & std::uint16_t{0xfc00}) == std::uint16_t{0xd800}) &
                                           asBlock<char16_t>((next & std::uint16_t{0xfc00}) == std::uint16_t{0xdc00});
            lanes -= asBlock<char16_t>(block >= std::uint16_t{0x80});
            lanes -= asBlock<char16_t>(block >= std::uint16_t{0x800});
            lanes += paired + paired + std::uint16_t{2};
        }
        bytes += sumOfLanes<char16_t>(lanes) - blocks * kWords;
    }
    for (; i < length; ++i) {
        bytes += bytesOf(text[i]);
        const bool paired = (text[i] & 0xfc00) == 0xd800 && i + 1 < length && (text[i + 1] & 0xfc00) == 0xdc00;
        bytes -= paired ? 2 : 0;
    }
    return bytes;
}

void FUtf8::narrow(const char16_t* text, std::size_t length, char* target, std::size_t capacity) {
    Narrowing(text, length, target, capacity).run();
}

} // namespace tessera
