#include "foundation/text/FCaseFold.h"
#include "foundation/text/FStringRef.h"
#include "foundation/text/FTextConversion.h"
#include "foundation/text/FTextScan.h"
#include "foundation/text/FWidenedText.h"

#include <algorithm>

namespace tessera {
namespace {

template <class Character>
int compareStretch(std::basic_string_view<Character> text, std::int32_t start, std::basic_string_view<Character> other,
                   std::int32_t length, FCase folding) {
    const auto from = static_cast<std::size_t>(std::max(start, 0));
    if (from > text.size()) {
        return -1;
    }
    text.remove_prefix(from);
    if (length >= 0) {
        text = text.substr(0, static_cast<std::size_t>(length));
        other = other.substr(0, static_cast<std::size_t>(length));
    }
    return FTextScan::compare(text, other, folding);
}

// Reads on to the end of the text, which counts as a NUL, as does a NUL inside.
template <class Character>
class NaturalWalk {
public:
    explicit NaturalWalk(std::basic_string_view<Character> text) : at_(text.data()), end_(at_ + text.size()) {}

    Character current() const { return at_ != end_ ? *at_ : Character{0}; }
    bool atDigit() const { return FStringRef::isDigit(current()); }
    void advance() { ++at_; }
    void advance(std::ptrdiff_t count) { at_ += count; }

    std::ptrdiff_t skipZeros() {
        const Character* const from = at_;
        while (current() == '0') {
            ++at_;
        }
        return at_ - from;
    }

    std::ptrdiff_t countDigits() const {
        const Character* at = at_;
        while (at != end_ && FStringRef::isDigit(*at)) {
            ++at;
        }
        return at - at_;
    }

    Character ahead(std::ptrdiff_t offset) const { return at_[offset]; }

private:
    const Character* at_;
    const Character* const end_;
};

int signOf(std::ptrdiff_t difference) {
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

// Both stand at a digit. The order of the two numbers, or 0 with both walks behind them.
template <class Character>
int compareNumbers(NaturalWalk<Character>& a, NaturalWalk<Character>& b) {
    const std::ptrdiff_t zerosA = a.skipZeros();
    const std::ptrdiff_t zerosB = b.skipZeros();
    const std::ptrdiff_t digitsA = a.countDigits();
    const std::ptrdiff_t digitsB = b.countDigits();
    if (digitsA != digitsB) {
        return signOf(digitsA - digitsB);
    }
    for (std::ptrdiff_t i = 0; i < digitsA; ++i) {
        if (a.ahead(i) != b.ahead(i)) {
            return a.ahead(i) < b.ahead(i) ? -1 : 1;
        }
    }
    a.advance(digitsA);
    b.advance(digitsB);
    return signOf(zerosA - zerosB);
}

template <class Character>
int compareNaturally(std::basic_string_view<Character> textA, std::basic_string_view<Character> textB, FCase folding) {
    // What the two have in common decides nothing, except that a number has to be seen from its start.
    std::size_t start = FTextScan::difference(textA, textB, folding);
    if (start == FTextScan::kNothing) {
        return 0;
    }
    while (start > 0 && FStringRef::isDigit(textA[start - 1])) {
        --start;
    }
    NaturalWalk<Character> a(textA.substr(start));
    NaturalWalk<Character> b(textB.substr(start));
    for (;;) {
        if (a.atDigit() && b.atDigit()) {
            const int order = compareNumbers(a, b);
            if (order != 0) {
                return order;
            }
            continue;
        }
        const Character left = a.current();
        const Character right = b.current();
        if (left == 0 || right == 0) {
            return left != 0 ? 1 : right != 0 ? -1 : 0;
        }
        if (!FCaseFold::equalInText(left, right, folding)) {
            const bool folds = folding == FCase::ignore;
            const auto l = folds ? FCaseFold::foldInText(left) : left;
            const auto r = folds ? FCaseFold::foldInText(right) : right;
            return std::char_traits<Character>::lt(l, r) ? -1 : 1;
        }
        a.advance();
        b.advance();
    }
}

} // namespace

int FStringRef::compare(const FStringRef& other, std::int32_t length, FCase folding) const {
    // The common case, without the way through copies and bounds.
    if (length < 0 && isWide() && other.isWide() && !isEmpty() && !other.isEmpty()) {
        return FTextScan::compare(view16(), other.view16(), folding);
    }
    return compareAt(0, other, length, folding);
}

int FStringRef::compareAt(std::int32_t start, const FStringRef& other, std::int32_t length, FCase folding) const {
    if (length == 0) {
        return 0;
    }
    if (other.isEmpty()) {
        return isEmpty() ? 0 : 1;
    }
    if (isEmpty()) {
        return -1;
    }
    return inCommonWidth(*this, other, 1, -1,
                         [&](auto a, auto b) { return compareStretch(a, start, b, length, folding); });
}

int FStringRef::compareNatural(const FStringRef& other, FCase folding) const {
    if (other.isEmpty()) {
        return isEmpty() ? 0 : 1;
    }
    if (isEmpty()) {
        return -1;
    }
    return inCommonWidth(*this, other, 1, -1, [&](auto a, auto b) { return compareNaturally(a, b, folding); });
}

bool FStringRef::startsWith(const FStringRef& other, FCase folding) const {
    if (isEmpty() || other.isEmpty()) {
        return isEmpty() && other.isEmpty();
    }
    return inCommonWidth(*this, other, false, false, [&](auto a, auto b) {
        return a.size() >= b.size() && FTextScan::compare(a.substr(0, b.size()), b, folding) == 0;
    });
}

bool FStringRef::endsWith(const FStringRef& other, FCase folding) const {
    if (isEmpty() || other.isEmpty()) {
        return isEmpty() && other.isEmpty();
    }
    return inCommonWidth(*this, other, false, false, [&](auto a, auto b) {
        return a.size() >= b.size() && FTextScan::compare(a.substr(a.size() - b.size()), b, folding) == 0;
    });
}

bool FStringRef::contains(const FStringRef& other, FCase folding) const {
    return indexOf(0, other, -1, folding) >= 0;
}

std::int32_t FStringRef::firstDifference(const FStringRef& other, FCase folding) const {
    const auto position = inCommonWidth(*this, other, std::size_t{0}, std::size_t{0},
                                        [&](auto a, auto b) { return FTextScan::difference(a, b, folding); });
    return position == FTextScan::kNothing ? -1 : static_cast<std::int32_t>(position);
}

bool FStringRef::equalsCharAt(std::int32_t index, char c) const {
    if (index < 0 || index >= characters()) {
        return false;
    }
    char16_t wide = 0;
    return isWide() ? FTextConversion::widenCharacter(c, wide) && wideText()[index] == wide : narrowText()[index] == c;
}

bool FStringRef::equalsCharAt(std::int32_t index, char16_t c) const {
    if (index < 0 || index >= characters()) {
        return false;
    }
    char narrow = 0;
    return isWide() ? wideText()[index] == c
                    : FTextConversion::narrowCharacter(c, narrow) && narrowText()[index] == narrow;
}

} // namespace tessera
