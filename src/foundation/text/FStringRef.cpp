#include "foundation/text/FStringRef.h"

#include "foundation/text/FString.h"
#include "foundation/text/FTextConversion.h"
#include "foundation/text/FTextHash.h"
#include "foundation/text/FTextScan.h"
#include "foundation/text/FVariant.h"
#include "foundation/text/FWidenedText.h"
#include "foundation/text/IStringResult.h"
#include "platform/CharacterMapping.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace tessera {
namespace {

constexpr std::int32_t kMaximum = FStringRef::kMaximumLength;

template <class Character>
std::int32_t lengthOf(const Character* text, std::int32_t length) {
    if (text == nullptr) {
        return 0;
    }
    if (length >= 0) {
        return std::min(length, kMaximum);
    }
    const std::size_t counted = std::char_traits<Character>::length(text);
    return static_cast<std::int32_t>(std::min<std::size_t>(counted, static_cast<std::size_t>(kMaximum)));
}

} // namespace

FStringRef::FStringRef(const char* text, std::int32_t length)
    : FStringRef(text, lengthOf(text, length), FTextWidth::narrow) {}

FStringRef::FStringRef(const char16_t* text, std::int32_t length)
    : FStringRef(text, lengthOf(text, length), FTextWidth::wide) {}

FStringRef::FStringRef(const FStringRef& other, std::int32_t offset, std::int32_t length) {
    setWidth(other.width());
    if (other.isNull()) {
        return;
    }
    const std::int32_t start = std::clamp(offset, 0, other.characters());
    const std::int32_t rest = other.characters() - start;
    const std::size_t unit = other.isWide() ? sizeof(char16_t) : sizeof(char);
    text_ = static_cast<char*>(other.text_) + static_cast<std::size_t>(start) * unit;
    setCharacters(length < 0 ? rest : std::min(length, rest));
}

FStringRef::FStringRef(const FVariant& value) {
    if (value.type() == FVariant::kText8) {
        *this = FStringRef(value.text8());
    } else if (value.type() == FVariant::kText16) {
        *this = FStringRef(value.text16());
    }
}

std::int32_t FStringRef::length() const {
    return characters();
}

const char* FStringRef::text8() const {
    return !isWide() && text_ != nullptr ? narrowText() : "";
}

const char16_t* FStringRef::text16() const {
    return isWide() && text_ != nullptr ? wideText() : u"";
}

const char16_t* FStringRef::text() const {
    return text16();
}

const void* FStringRef::rawText() const {
    return text_;
}

char FStringRef::char8At(std::int32_t index) const {
    return !isWide() && text_ != nullptr && index >= 0 && index < characters() ? narrowText()[index] : '\0';
}

char16_t FStringRef::char16At(std::int32_t index) const {
    return isWide() && text_ != nullptr && index >= 0 && index < characters() ? wideText()[index] : u'\0';
}

bool FStringRef::isDigitAt(std::int32_t index) const {
    if (index < 0 || index >= characters()) {
        return false;
    }
    return isWide() ? isDigit(wideText()[index]) : isDigit(narrowText()[index]);
}

bool FStringRef::isAscii() const {
    return isWide() ? FTextScan::isAscii(view16()) : FTextScan::isAscii(view8());
}

bool FStringRef::isNormalized(FNormalForm form) const {
    if (isNull()) {
        return true;
    }
    if (!isWide() || form != FNormalForm::composed) {
        return false;
    }
    // Composing ASCII never changes it.
    const std::u16string_view text = view16();
    return FTextScan::isAscii(text) || platform::compose(text.data(), text.size(), nullptr, 0) == characters();
}

bool FStringRef::isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool FStringRef::isSpace(char16_t c) {
    return platform::isWhiteSpace(c);
}

bool FStringRef::isBlank(char16_t c) {
    return c == 32 || c == 160 || (c >= 8194 && c <= 8203) || c == 8239 || c == 8287 || c == 12288;
}

bool FStringRef::isAlpha(char c) {
    return isLower(c) || isUpper(c);
}

bool FStringRef::isAlpha(char16_t c) {
    return platform::isLetter(c);
}

bool FStringRef::isAlnum(char c) {
    return isAlpha(c) || isDigit(c);
}

bool FStringRef::isAlnum(char16_t c) {
    return platform::isLetterOrDigit(c);
}

bool FStringRef::isLower(char c) {
    return c >= 'a' && c <= 'z';
}

bool FStringRef::isLower(char16_t c) {
    return platform::isLowerLetter(c);
}

bool FStringRef::isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}

bool FStringRef::isUpper(char16_t c) {
    return platform::isUpperLetter(c);
}

std::int32_t FStringRef::copyTo8(char* buffer, std::int32_t start, std::int32_t count) const {
    FString part;
    // A view of the stretch, so that only what is asked for is narrowed.
    const FStringRef source = start > characters() ? FStringRef() : FStringRef(*this, start, count);
    const bool readable = part.assign(source) && part.toMultiByte();
    std::size_t size = readable ? static_cast<std::size_t>(part.characters()) : 0;
    if (count >= 0) {
        size = std::min(size, static_cast<std::size_t>(count));
    }
    if (size != 0) {
        std::memcpy(buffer, part.text_, size);
    }
    buffer[size] = '\0';
    return static_cast<std::int32_t>(size);
}

std::int32_t FStringRef::copyTo16(char16_t* buffer, std::int32_t start, std::int32_t count) const {
    // To the end: count bytes may end in the middle of a character, and then mean nothing.
    const FStringRef source = start > characters() ? FStringRef() : FStringRef(*this, start);
    const FWidenedText widened(source);
    std::u16string_view part = widened.view();
    if (count >= 0) {
        part = part.substr(0, static_cast<std::size_t>(count));
    }
    if (!part.empty()) {
        std::memcpy(buffer, part.data(), part.size() * sizeof(char16_t));
    }
    buffer[part.size()] = u'\0';
    return static_cast<std::int32_t>(part.size());
}

bool FStringRef::substring(FString& target, std::int32_t start, std::int32_t count) const {
    if (start > characters()) {
        target.clear();
        return false;
    }
    // By way of a new string: the target may be this very one.
    FString part(FStringRef(*this, start, count));
    target.take(part);
    return true;
}

void FStringRef::sendTo(IStringSource& target) const {
    // A copy, since a view need not end with a NUL and a foreign object reads up to one.
    FString copy(*this);
    if (!isWide()) {
        target.setText8(copy.text8());
        return;
    }
    void* found = nullptr;
    if (target.queryInterface(IStringResult::iid, &found) == kResultOk && found != nullptr) {
        auto* const wideTarget = static_cast<IStringResult*>(found);
        wideTarget->setText16(copy.text16());
        wideTarget->release();
        return;
    }
    target.setText8(copy.text8());
}

void FStringRef::toVariant(FVariant& out) const {
    if (isWide()) {
        out.setText16(FStringRef::text16(), 0);
    } else {
        out.setText8(FStringRef::text8(), 0);
    }
}

std::uint32_t FStringRef::hash(std::uint32_t tableSize) const {
    return isWide() ? hashText(view16(), tableSize) : hashText(view8(), tableSize);
}

} // namespace tessera
