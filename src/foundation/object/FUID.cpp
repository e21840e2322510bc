#include "foundation/object/FUID.h"

#include "platform/DebugOutput.h"
#include "platform/Identifiers.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace tessera {
namespace {

constexpr std::size_t kTextLength = FUID::kTextSize - 1;
constexpr std::size_t kRegistryTextLength = FUID::kRegistryTextSize - 1;

std::uint32_t littleEndian(const std::uint8_t* bytes, int count) {
    std::uint32_t value = 0;
    for (int i = count - 1; i >= 0; --i) {
        value = value << 8 | bytes[i];
    }
    return value;
}

void putLittleEndian(std::uint8_t* bytes, int count, std::uint32_t value) {
    for (int i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

std::uint32_t bigEndian(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

void putBigEndian(std::uint8_t* bytes, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
}

// One group of digits, scanned apart from the rest: a blank would make a scan in place read into the next group.
std::uint32_t scanGroup(const char* text, std::size_t length) {
    char group[9] = {};
    std::memcpy(group, text, length);
    unsigned value = 0;
    std::sscanf(group, "%x", &value);
    return value;
}

void scanBytes(const char* text, std::uint8_t* bytes, int count) {
    for (int i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::uint8_t>(scanGroup(text + 2 * i, 2));
    }
}

// Where each group begins in one of the two text forms.
struct TextForm {
    std::size_t length;
    std::size_t word1;
    std::size_t word2;
    std::size_t word3;
    std::size_t pair;
    std::size_t rest;
};

constexpr TextForm kPlainForm = {kTextLength, 0, 8, 12, 16, 20};
constexpr TextForm kRegistryForm = {kRegistryTextLength, 1, 10, 15, 20, 25};

bool scan(const char* text, const TextForm& form, FUIDBytes& out) {
    if (text == nullptr || std::strlen(text) != form.length) {
        return false;
    }
    putLittleEndian(out.bytes, 4, scanGroup(text + form.word1, 8));
    putLittleEndian(out.bytes + 4, 2, scanGroup(text + form.word2, 4));
    putLittleEndian(out.bytes + 6, 2, scanGroup(text + form.word3, 4));
    scanBytes(text + form.pair, out.bytes + 8, 2);
    scanBytes(text + form.rest, out.bytes + 10, 6);
    return true;
}

constexpr const char* kPrintFormats[] = {
    "INLINE_UID (0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ")",
    "DECLARE_UID (0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ")",
    "FUID (0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ")",
    "DECLARE_CLASS_IID (Interface, 0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 ")",
};

} // namespace

bool FUID::generate() {
    return platform::generateIdentifier(bytes_.bytes);
}

bool FUID::isValid() const {
    return !(bytes_ == FUIDBytes{});
}

void FUID::getLongs(std::uint32_t& l1, std::uint32_t& l2, std::uint32_t& l3, std::uint32_t& l4) const {
    const std::uint8_t* bytes = bytes_.bytes;
    l1 = littleEndian(bytes, 4);
    l2 = littleEndian(bytes + 4, 2) << 16 | littleEndian(bytes + 6, 2);
    l3 = bigEndian(bytes + 8);
    l4 = bigEndian(bytes + 12);
}

void FUID::fromLongs(std::uint32_t l1, std::uint32_t l2, std::uint32_t l3, std::uint32_t l4) {
    putLittleEndian(bytes_.bytes, 4, l1);
    putLittleEndian(bytes_.bytes + 4, 2, l2 >> 16);
    putLittleEndian(bytes_.bytes + 6, 2, l2);
    putBigEndian(bytes_.bytes + 8, l3);
    putBigEndian(bytes_.bytes + 12, l4);
}

void FUID::toString(char* buffer) const {
    std::uint32_t l[4];
    getLongs(l[0], l[1], l[2], l[3]);
    std::snprintf(buffer, kTextSize, "%08" PRIX32 "%08" PRIX32 "%08" PRIX32 "%08" PRIX32, l[0], l[1], l[2], l[3]);
}

bool FUID::fromString(const char* text) {
    return scan(text, kPlainForm, bytes_);
}

void FUID::toRegistryString(char* buffer) const {
    std::uint32_t l[4];
    getLongs(l[0], l[1], l[2], l[3]);
    std::snprintf(buffer, kRegistryTextSize,
                  "{%08" PRIX32 "-%04" PRIX32 "-%04" PRIX32 "-%04" PRIX32 "-%04" PRIX32 "%08" PRIX32 "}", l[0],
                  l[1] >> 16, l[1] & 0xffff, l[2] >> 16, l[2] & 0xffff, l[3]);
}

bool FUID::fromRegistryString(const char* text) {
    return scan(text, kRegistryForm, bytes_);
}

void FUID::print(PrintFormat format, char* buffer) const {
    constexpr std::size_t kLast = std::size(kPrintFormats) - 1;
    const char* const text = kPrintFormats[std::min(static_cast<std::size_t>(format), kLast)];
    std::uint32_t l[4];
    getLongs(l[0], l[1], l[2], l[3]);
    char local[kPrintSize];
    std::snprintf(buffer != nullptr ? buffer : local, kPrintSize, text, l[0], l[1], l[2], l[3]);
    if (buffer == nullptr) {
        platform::writeDebugOutput(local);
        platform::writeDebugOutput("\n");
    }
}

} // namespace tessera
