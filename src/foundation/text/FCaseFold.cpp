#include "foundation/text/FCaseFold.h"

#include "platform/CharacterMapping.h"

namespace tessera {
namespace {

// All of the plane, so that a comparison costs one read per character and no call into the system.
class FoldTable {
public:
    FoldTable() {
        for (std::uint32_t c = 0; c < 0x10000; ++c) {
            lower_[c] = platform::lowerCase(static_cast<char16_t>(c));
        }
    }

    char16_t operator[](char16_t c) const { return lower_[c]; }

private:
    char16_t lower_[0x10000];
};

} // namespace

char FCaseFold::foldBeyondAscii(char c) {
    return platform::lowerCase(c);
}

char16_t FCaseFold::foldTextBeyondAscii(char16_t c) {
    static const bool byLowerCase = platform::comparesByLowerCase();
    return byLowerCase ? foldBeyondAscii(c) : platform::comparisonCase(c);
}

char16_t FCaseFold::foldBeyondAscii(char16_t c) {
    // Not given back at the end: destructors of other statics still compare text.
    static const FoldTable& table = *new FoldTable;
    return table[c];
}

} // namespace tessera
