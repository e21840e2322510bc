#include "common/AiffHeader.h"

#include "common/Utf8Path.h"

#include <cstring>
#include <fstream>

namespace tessera::programs {
namespace {

constexpr std::int64_t kFormHeaderBytes = 12;
constexpr std::int64_t kChunkHeaderBytes = 8;
// In "COMM", behind its header and the channel count.
constexpr std::int64_t kFrameCountAt = kChunkHeaderBytes + 2;
// "SSND" has an offset and a block size in front of the data.
constexpr std::int64_t kSoundPreludeBytes = 8;

std::uint32_t bigEndian(const unsigned char* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

void writeBigEndian(std::fstream& file, std::int64_t at, std::int64_t value) {
    const char bytes[4] = {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
                           static_cast<char>(value >> 8), static_cast<char>(value)};
    file.seekp(at);
    file.write(bytes, sizeof bytes);
}

} // namespace

void mendAiffLength(const std::string& path, std::int64_t frames, std::int64_t dataBytes) {
    std::fstream file(nativePath(path), std::ios::binary | std::ios::in | std::ios::out);
    for (std::int64_t at = kFormHeaderBytes; file.seekg(at);) {
        unsigned char header[kChunkHeaderBytes];
        if (!file.read(reinterpret_cast<char*>(header), sizeof header)) {
            return;
        }
        if (std::memcmp(header, "COMM", 4) == 0) {
            writeBigEndian(file, at + kFrameCountAt, frames);
        }
        if (std::memcmp(header, "SSND", 4) == 0) {
            writeBigEndian(file, at + 4, dataBytes + kSoundPreludeBytes);
            return;
        }
        const std::int64_t size = bigEndian(header + 4);
        at += kChunkHeaderBytes + size + size % 2;
    }
}

} // namespace tessera::programs
