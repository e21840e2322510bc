#include "foundation/object/CmUID.h"

namespace tessera {
namespace {

constexpr char kDigits[] = "0123456789ABCDEFGHIJKLMNOPQRSTUV";
constexpr int kBase32Digits = 26;
constexpr int kBitsPerDigit = 5;
constexpr int kBits = 128;

// The digit's value in the given base, either case; 0 for what is no digit.
int digitValue(char c, int base) {
    if (c >= 'a' && c <= 'z') {
        c = static_cast<char>(c - 'a' + 'A');
    }
    for (int value = 0; value < base; ++value) {
        if (kDigits[value] == c) {
            return value;
        }
    }
    return 0;
}

} // namespace

bool CmUID::isEqual(const CmObject* other) const {
    const auto* uid = cmCast<CmUID>(other);
    return uid != nullptr && bytes() == uid->bytes();
}

CmUID* CmUID::clone() const {
    return new CmUID(this);
}

void CmUID::toMemoryDigits(char* buffer) const {
    for (const std::uint8_t byte : bytes().bytes) {
        *buffer++ = kDigits[byte >> 4];
        *buffer++ = kDigits[byte & 15];
    }
    *buffer = '\0';
}

void CmUID::fromMemoryDigits(const char* text) {
    FUIDBytes read;
    for (std::size_t i = 0; i < 2 * sizeof(FUIDBytes) && text[i] != '\0'; ++i) {
        const int value = digitValue(text[i], 16);
        read.bytes[i / 2] |= static_cast<std::uint8_t>(i % 2 == 0 ? value << 4 : value);
    }
    setBytes(read);
}

void CmUID::toBase32(char* buffer) const {
    for (int digit = 0; digit < kBase32Digits; ++digit) {
        int value = 0;
        for (int i = 0; i < kBitsPerDigit; ++i) {
            const int bit = digit * kBitsPerDigit + i;
            if (bit < kBits && (bytes().bytes[bit / 8] >> (bit % 8) & 1) != 0) {
                value |= 1 << i;
            }
        }
        buffer[digit] = kDigits[value];
    }
    buffer[kBase32Digits] = '\0';
}

void CmUID::fromBase32(const char* text) {
    FUIDBytes read;
    for (int digit = 0; digit < kBase32Digits && text[digit] != '\0'; ++digit) {
        const int value = digitValue(text[digit], 32);
        for (int i = 0; i < kBitsPerDigit; ++i) {
            const int bit = digit * kBitsPerDigit + i;
            if (bit < kBits && (value >> i & 1) != 0) {
                read.bytes[bit / 8] |= static_cast<std::uint8_t>(1 << (bit % 8));
            }
        }
    }
    setBytes(read);
}

} // namespace tessera
