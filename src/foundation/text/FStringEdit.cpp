#include "foundation/text/FCaseFold.h"
#include "foundation/text/FNumberText.h"
#include "foundation/text/FString.h"
#include "foundation/text/FTextConversion.h"
#include "foundation/text/FTextScan.h"
#include "foundation/text/FWidenedText.h"
#include "platform/CharacterMapping.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

namespace tessera {
namespace {

template <class Character>
constexpr FTextWidth widthOf() {
    return sizeof(Character) == 1 ? FTextWidth::narrow : FTextWidth::wide;
}

// Also true for the start of the text; false for text of nowhere.
template <class Character>
bool liesWithin(const void* text, const void* buffer, std::size_t length) {
    const auto at = reinterpret_cast<std::uintptr_t>(text);
    const auto from = reinterpret_cast<std::uintptr_t>(buffer);
    return buffer != nullptr && at >= from && at < from + (length + 1) * sizeof(Character);
}

template <class Character>
std::basic_string_view<Character> bounded(std::basic_string_view<Character> text, std::int32_t length) {
    return length < 0 ? text : text.substr(0, static_cast<std::size_t>(length));
}

// Comparing ends at a NUL, so what stands behind one in a needle never counts.
template <class Character>
std::basic_string_view<Character> upToNul(std::basic_string_view<Character> text) {
    return text.substr(0, text.find(Character{0}));
}

template <class Character>
bool isRemoved(Character c, FTrimMode mode) {
    switch (mode) {
    case FTrimMode::whiteSpace:
        return FStringRef::isSpace(c);
    case FTrimMode::allButLettersAndDigits:
        return !FStringRef::isAlnum(c);
    case FTrimMode::allButLetters:
        return !FStringRef::isAlpha(c);
    }
    return false;
}

bool isKnown(FTrimMode mode) {
    return mode == FTrimMode::whiteSpace || mode == FTrimMode::allButLettersAndDigits ||
           mode == FTrimMode::allButLetters;
}

// The characters of a set, told apart by their low byte before the set itself is searched. A set inside the text that
// is to be edited would change with it, and is copied.
template <class Character>
class CharacterSet {
public:
    CharacterSet(std::basic_string_view<Character> set, std::basic_string_view<Character> edited) : set_(set) {
        if (liesWithin<Character>(set.data(), edited.data(), edited.size())) {
            copy_.assign(FStringRef(set.data(), static_cast<std::int32_t>(set.size())));
            set_ = {static_cast<const Character*>(copy_.rawText()), static_cast<std::size_t>(copy_.length())};
        }
        for (const Character c : set_) {
            maybe_[static_cast<std::uint8_t>(c)] = true;
        }
    }
    CharacterSet(const CharacterSet&) = delete;
    CharacterSet& operator=(const CharacterSet&) = delete;

    bool contains(Character c) const { return maybe_[static_cast<std::uint8_t>(c)] && set_.find(c) != set_.npos; }

private:
    FString copy_;
    std::basic_string_view<Character> set_;
    bool maybe_[256] = {};
};

// Where something occurs in a text, one place behind the other. The first places are kept, so that counting and then
// copying searches most texts once.
template <class Character>
class Occurrences {
public:
    Occurrences(std::basic_string_view<Character> text, std::basic_string_view<Character> find, std::size_t most,
                FCase folding)
        : text_(text), find_(find), folding_(folding) {
        std::size_t at = next(0);
        while (count_ < most && at != FTextScan::kNothing) {
            if (count_ < kKept) {
                kept_[count_] = at;
            }
            ++count_;
            at = count_ < most ? next(at + find.size()) : at;
        }
    }

    std::size_t count() const { return count_; }

    // The place of the occurrence with this number; before is where the one in front of it ends.
    std::size_t place(std::size_t number, std::size_t before) const {
        return number < kKept ? kept_[number] : next(before);
    }

private:
    static constexpr std::size_t kKept = 256;

    std::size_t next(std::size_t from) const {
        const std::size_t at = FTextScan::find(text_.substr(from), find_, text_.size(), folding_);
        return at == FTextScan::kNothing ? at : from + at;
    }

    std::basic_string_view<Character> text_;
    std::basic_string_view<Character> find_;
    FCase folding_;
    std::size_t count_ = 0;
    std::size_t kept_[kKept];
};

} // namespace

void FString::shrinkTo(std::size_t length) {
    if (length == 0) {
        own(nullptr, 0, width());
        return;
    }
    const auto size = static_cast<std::int32_t>(length);
    // A block that can't be made shorter stays as long as it was.
    if (!resize(size, width())) {
        if (isWide()) {
            wideBuffer()[length] = 0;
        } else {
            narrowBuffer()[length] = 0;
        }
    }
    setCharacters(size);
}

template <class Work>
bool FString::editInCommonWidth(const FStringRef& other, Work work) {
    if (!isWide() && other.isWide() && !toWide()) {
        return false;
    }
    if (!isWide()) {
        return work(other.view8());
    }
    const FWidenedText widened(other);
    return widened.isValid() && work(widened.view());
}

template <class Character>
void FString::appendText(std::basic_string_view<Character> text) {
    if (text.empty() || text.data() == text_) {
        return;
    }
    const auto length = static_cast<std::size_t>(characters());
    if (text.size() > static_cast<std::size_t>(kMaximumLength) - length) {
        return;
    }
    // The buffer may move; a source inside it moves along.
    const bool inside = liesWithin<Character>(text.data(), text_, length);
    const std::size_t offset = inside ? static_cast<std::size_t>(text.data() - bufferAs<Character>()) : 0;
    if (!resize(static_cast<std::int32_t>(length + text.size()), widthOf<Character>())) {
        return;
    }
    Character* const buffer = bufferAs<Character>();
    std::memcpy(buffer + length, inside ? buffer + offset : text.data(), text.size() * sizeof(Character));
    setCharacters(static_cast<std::int32_t>(length + text.size()));
}

void FString::append(const FStringRef& other) {
    if (other.isEmpty() || other.rawText() == text_) {
        return;
    }
    editInCommonWidth(other, [&](auto text) {
        appendText(text);
        return true;
    });
}

void FString::append8(const char* text, std::int32_t length) {
    append(FStringRef(text, length));
}

void FString::append16(const char16_t* text, std::int32_t length) {
    append(FStringRef(text, length));
}

template <class Character>
void FString::appendRepeated(Character c, std::size_t count) {
    const auto length = static_cast<std::size_t>(characters());
    if (count > static_cast<std::size_t>(kMaximumLength) - length ||
        !resize(static_cast<std::int32_t>(length + count), widthOf<Character>())) {
        return;
    }
    std::fill_n(bufferAs<Character>() + length, count, c);
    setCharacters(static_cast<std::int32_t>(length + count));
}

void FString::appendChar(char c, std::int32_t repeat) {
    char16_t wide = 0;
    if (repeat <= 0) {
        return;
    }
    if (!isWide()) {
        appendRepeated(c, static_cast<std::size_t>(repeat));
    } else if (FTextConversion::widenCharacter(c, wide)) {
        appendRepeated(wide, static_cast<std::size_t>(repeat));
    }
}

void FString::appendChar(char16_t c, std::int32_t repeat) {
    char narrow = 0;
    if (repeat <= 0) {
        return;
    }
    if (!isWide() && FTextConversion::narrowCharacter(c, narrow)) {
        appendRepeated(narrow, static_cast<std::size_t>(repeat));
    } else if (toWide()) {
        appendRepeated(c, static_cast<std::size_t>(repeat));
    }
}

template <class Character>
bool FString::splice(std::size_t position, std::size_t count, std::basic_string_view<Character> text) {
    const std::basic_string_view<Character> old = viewAs<Character>();
    if (position > old.size()) {
        return false;
    }
    const std::basic_string_view<Character> head = old.substr(0, position);
    const std::basic_string_view<Character> tail = old.substr(position + std::min(count, old.size() - position));
    const std::size_t length = head.size() + text.size() + tail.size();
    if (length > static_cast<std::size_t>(kMaximumLength)) {
        return false;
    }
    auto* const block = static_cast<Character*>(std::malloc((length + 1) * sizeof(Character)));
    if (block == nullptr) {
        return false;
    }
    Character* at = std::copy(head.begin(), head.end(), block);
    at = std::copy(text.begin(), text.end(), at);
    *std::copy(tail.begin(), tail.end(), at) = 0;
    own(block, length, widthOf<Character>());
    return true;
}

bool FString::insert(std::int32_t position, const FStringRef& text, std::int32_t length) {
    return replace(position, 0, text, length);
}

bool FString::replace(std::int32_t position, std::int32_t count, const FStringRef& text, std::int32_t length) {
    if (position < 0 || position > characters()) {
        return false;
    }
    const std::size_t cut = count < 0 ? std::string_view::npos : static_cast<std::size_t>(count);
    return editInCommonWidth(
        text, [&](auto view) { return splice(static_cast<std::size_t>(position), cut, bounded(view, length)); });
}

std::int32_t FString::replaceAll(const FStringRef& find, const FStringRef& with, FOccurrences occurrences,
                                 FCase folding) {
    if (isEmpty() || find.isNull() || with.isNull()) {
        return 0;
    }
    std::size_t count = 0;
    if (!isWide() && !find.isWide() && !with.isWide()) {
        replaceOccurrences(upToNul(find.view8()), with.view8(), occurrences, folding, count);
        return static_cast<std::int32_t>(count);
    }
    // Both are widened before this text is: they may lie inside it.
    const FWidenedText needle(find);
    const FWidenedText replacement(with);
    if (needle.isValid() && replacement.isValid() && toWide()) {
        replaceOccurrences(upToNul(needle.view()), replacement.view(), occurrences, folding, count);
    }
    return static_cast<std::int32_t>(count);
}

template <class Character>
void FString::replaceOccurrences(std::basic_string_view<Character> find, std::basic_string_view<Character> with,
                                 FOccurrences occurrences, FCase folding, std::size_t& count) {
    const std::basic_string_view<Character> old = viewAs<Character>();
    if (find.empty()) {
        return;
    }
    const std::size_t most = occurrences == FOccurrences::first ? 1 : old.size();
    const Occurrences<Character> places(old, find, most, folding);
    const std::size_t found = places.count();
    const std::size_t length = old.size() - found * find.size() + found * with.size();
    if (found == 0 || length > static_cast<std::size_t>(kMaximumLength)) {
        return;
    }
    auto* const block = static_cast<Character*>(std::malloc((length + 1) * sizeof(Character)));
    if (block == nullptr) {
        return;
    }
    Character* target = block;
    std::size_t copied = 0;
    for (std::size_t i = 0; i < found; ++i) {
        const std::size_t at = places.place(i, copied);
        target = std::copy(old.data() + copied, old.data() + at, target);
        target = std::copy(with.begin(), with.end(), target);
        copied = at + find.size();
    }
    *std::copy(old.data() + copied, old.data() + old.size(), target) = 0;
    own(block, length, widthOf<Character>());
    count = found;
}

bool FString::replaceChars(const FStringRef& set, char replacement) {
    char16_t wide = 0;
    if (isWide() || set.isWide()) {
        return FTextConversion::widenCharacter(replacement, wide) && replaceChars(set, wide);
    }
    return replaceMembers(set.view8(), replacement);
}

bool FString::replaceChars(const FStringRef& set, char16_t replacement) {
    if (isEmpty() || set.isEmpty()) {
        return false;
    }
    char narrow = 0;
    if (!isWide() && !set.isWide()) {
        return FTextConversion::narrowCharacter(replacement, narrow) && replaceMembers(set.view8(), narrow);
    }
    if (!toWide()) {
        return false;
    }
    const FWidenedText widened(set);
    return widened.isValid() && replaceMembers(widened.view(), replacement);
}

template <class Character>
bool FString::replaceMembers(std::basic_string_view<Character> set, Character replacement) {
    const CharacterSet<Character> members(set, viewAs<Character>());
    const Character put = replacement == 0 ? Character{' '} : replacement;
    bool changed = false;
    Character* const buffer = bufferAs<Character>();
    for (std::size_t i = 0; i < static_cast<std::size_t>(characters()); ++i) {
        if (members.contains(buffer[i])) {
            changed = changed || buffer[i] != put;
            buffer[i] = put;
        }
    }
    return changed;
}

template <class Character, class Predicate>
bool FString::removeIf(Predicate predicate) {
    Character* const buffer = bufferAs<Character>();
    Character* const end = buffer + characters();
    Character* const kept = std::remove_if(buffer, end, predicate);
    if (kept == end) {
        return false;
    }
    shrinkTo(static_cast<std::size_t>(kept - buffer));
    return true;
}

bool FString::removeChars(const FStringRef& set) {
    if (isEmpty() || set.isEmpty()) {
        return false;
    }
    return editInCommonWidth(set, [&](auto view) {
        using Character = typename decltype(view)::value_type;
        const CharacterSet<Character> members(view, viewAs<Character>());
        return removeIf<Character>([&](Character c) { return members.contains(c); });
    });
}

bool FString::removeSubstring(const FStringRef& other, FOccurrences occurrences) {
    if (isEmpty() || other.isEmpty()) {
        return false;
    }
    // A needle inside this very text would change while the text does.
    const FString needle(other);
    return editInCommonWidth(needle, [&](auto view) { return removeText(upToNul(view), occurrences); });
}

// What is kept is a stack: whenever its top is the needle, that is taken off. The occurrence that ends first is the
// leftmost one, so this removes in the same order as searching from the start each time, in one walk.
template <class Character>
bool FString::removeText(std::basic_string_view<Character> needle, FOccurrences occurrences) {
    const std::basic_string_view<Character> text = viewAs<Character>();
    if (needle.empty()) {
        return false;
    }
    Character* const buffer = bufferAs<Character>();
    std::size_t kept = 0;
    bool searching = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        buffer[kept++] = buffer[i];
        if (searching && buffer[kept - 1] == needle.back() && kept >= needle.size() &&
            std::basic_string_view<Character>(buffer + kept - needle.size(), needle.size()) == needle) {
            kept -= needle.size();
            searching = occurrences == FOccurrences::all;
        }
    }
    if (kept == text.size()) {
        return false;
    }
    shrinkTo(kept);
    return true;
}

void FString::remove(std::int32_t position, std::int32_t count) {
    if (position < 0 || position >= characters() || count == 0) {
        return;
    }
    const std::int32_t rest = characters() - position;
    const std::int32_t cut = count < 0 ? rest : std::min(count, rest);
    const std::size_t unit = isWide() ? sizeof(char16_t) : sizeof(char);
    char* const gap = narrowBuffer() + static_cast<std::size_t>(position) * unit;
    std::memmove(gap, gap + static_cast<std::size_t>(cut) * unit, static_cast<std::size_t>(rest - cut) * unit);
    shrinkTo(static_cast<std::size_t>(characters() - cut));
}

template <class Character>
bool FString::trimText(FTrimMode mode) {
    std::basic_string_view<Character> text = viewAs<Character>();
    std::size_t end = text.size();
    while (end > 0 && isRemoved(text[end - 1], mode)) {
        --end;
    }
    std::size_t start = 0;
    while (start < end && isRemoved(text[start], mode)) {
        ++start;
    }
    if (end - start == text.size()) {
        return false;
    }
    std::memmove(text_, text.data() + start, (end - start) * sizeof(Character));
    shrinkTo(end - start);
    return true;
}

bool FString::trim(FTrimMode mode) {
    if (isEmpty() || !isKnown(mode)) {
        return false;
    }
    return isWide() ? trimText<char16_t>(mode) : trimText<char>(mode);
}

bool FString::removeAll(FTrimMode mode) {
    if (isEmpty() || !isKnown(mode)) {
        return false;
    }
    return isWide() ? removeIf<char16_t>([mode](char16_t c) { return isRemoved(c, mode); })
                    : removeIf<char>([mode](char c) { return isRemoved(c, mode); });
}

template <class Character>
bool FString::placeCharacter(std::int32_t index, Character c) {
    if (c == 0) {
        if (index < characters()) {
            shrinkTo(static_cast<std::size_t>(index));
        }
        return true;
    }
    if (index >= characters()) {
        if (index >= kMaximumLength || !resize(index + 1, widthOf<Character>(), true)) {
            return false;
        }
        setCharacters(index + 1);
    }
    bufferAs<Character>()[index] = c;
    return true;
}

bool FString::setChar(std::int32_t index, char c) {
    char16_t wide = 0;
    if (index < 0) {
        return false;
    }
    if (!isWide()) {
        return placeCharacter(index, c);
    }
    return FTextConversion::widenCharacter(c, wide) && placeCharacter(index, wide);
}

bool FString::setChar(std::int32_t index, char16_t c) {
    char narrow = 0;
    if (index < 0) {
        return false;
    }
    if (isWide()) {
        return placeCharacter(index, c);
    }
    return FTextConversion::narrowCharacter(c, narrow) && placeCharacter(index, narrow);
}

template <class Wide, class Narrow>
void FString::mapCase(std::int32_t from, std::int32_t to, Wide wide, Narrow narrow) {
    for (std::int32_t i = from; i < to; ++i) {
        if (isWide()) {
            wideBuffer()[i] = wide(wideBuffer()[i]);
        } else {
            narrowBuffer()[i] = narrow(narrowBuffer()[i]);
        }
    }
}

namespace {

constexpr auto kLowerWide = [](char16_t c) { return FCaseFold::fold(c); };
constexpr auto kLowerNarrow = [](char c) { return FCaseFold::fold(c); };
constexpr auto kUpperWide = [](char16_t c) { return platform::upperCase(c); };
constexpr auto kUpperNarrow = [](char c) { return platform::upperCase(c); };

} // namespace

void FString::toLower(std::int32_t index) {
    if (index < 0 || index >= characters()) {
        return;
    }
    mapCase(index, index + 1, kLowerWide, kLowerNarrow);
}

void FString::toLower() {
    mapCase(0, characters(), kLowerWide, kLowerNarrow);
}

void FString::toUpper(std::int32_t index) {
    if (index < 0 || index >= characters()) {
        return;
    }
    mapCase(index, index + 1, kUpperWide, kUpperNarrow);
}

void FString::toUpper() {
    mapCase(0, characters(), kUpperWide, kUpperNarrow);
}

bool FString::incrementVersion(std::uint32_t width, char separator, std::uint64_t minimum, bool keepNumber) {
    constexpr std::uint32_t kWidestNumber = 32;
    if (width > kWidestNumber) {
        return false;
    }
    std::uint64_t number = 1;
    std::int32_t start = trailingDigitsStart();
    if (start < 0) {
        start = characters();
    } else {
        if (getUInt64(number, start) && !keepNumber && ++number == 0) {
            return false;
        }
        if (separator != 0 && start > 0 && equalsCharAt(start - 1, separator)) {
            --start;
        }
    }
    const FNumberText digits = FNumberText::unsignedInteger(std::max(number, minimum));
    FString suffix("");
    if (separator != 0 && start > 0) {
        suffix.appendChar(separator);
    }
    suffix.appendChar('0', static_cast<std::int32_t>(width) - digits.length());
    suffix.append(digits.ref());
    return replace(start, -1, suffix);
}

} // namespace tessera
