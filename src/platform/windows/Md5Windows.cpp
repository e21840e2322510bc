// The digest in code of our own: the system's providers can be refused to a program, and the name of a file must not
// depend on that.
#include "platform/Md5.h"

#include <bit>
#include <cstddef>
#include <cstring>

namespace tessera::platform {
namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kLengthAt = 56;

using State = std::array<std::uint32_t, 4>;

constexpr State kStart = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};

// The whole part of 2^32 times the sine of 1 to 64, without its sign.
constexpr std::uint32_t kSines[64] = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391,
};

constexpr int kTurns[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

struct Step {
    std::uint32_t mixed;
    std::size_t word;
};

Step step(std::size_t i, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    switch (i / 16) {
    case 0:
        return {(b & c) | (~b & d), i};
    case 1:
        return {(d & b) | (~d & c), (5 * i + 1) % 16};
    case 2:
        return {b ^ c ^ d, (3 * i + 5) % 16};
    default:
        return {c ^ (b | ~d), (7 * i) % 16};
    }
}

void take(State& state, const std::uint8_t* block) {
    static_assert(std::endian::native == std::endian::little);
    std::uint32_t words[16];
    std::memcpy(words, block, sizeof words);
    auto [a, b, c, d] = state;
    for (std::size_t i = 0; i < 64; ++i) {
        const Step now = step(i, b, c, d);
        const std::uint32_t sum = a + now.mixed + kSines[i] + words[now.word];
        a = d;
        d = c;
        c = b;
        b += std::rotl(sum, kTurns[i / 16][i % 4]);
    }
    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
}

} // namespace

Md5Digest md5(std::string_view bytes) {
    State state = kStart;
    const auto* at = reinterpret_cast<const std::uint8_t*>(bytes.data());
    std::size_t left = bytes.size();
    for (; left >= kBlock; left -= kBlock, at += kBlock) {
        take(state, at);
    }
    // The rest, a single set bit, and the length in bits: one block or two.
    std::uint8_t end[2 * kBlock] = {};
    if (left > 0) {
        std::memcpy(end, at, left);
    }
    end[left] = 0x80;
    const std::size_t size = left < kLengthAt ? kBlock : 2 * kBlock;
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    std::memcpy(end + size - sizeof bits, &bits, sizeof bits);
    for (std::size_t i = 0; i < size; i += kBlock) {
        take(state, end + i);
    }
    Md5Digest digest;
    std::memcpy(digest.data(), state.data(), digest.size());
    return digest;
}

} // namespace tessera::platform
