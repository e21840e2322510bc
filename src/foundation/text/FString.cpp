#include "foundation/text/FString.h"

#include "foundation/text/FNumberText.h"
#include "foundation/text/FTextConversion.h"
#include "foundation/text/FTextFormat.h"
#include "foundation/text/FTextScan.h"
#include "foundation/text/FVariant.h"
#include "foundation/text/IStringResult.h"
#include "platform/CharacterMapping.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

namespace tessera {
namespace {

template <class Character>
constexpr FTextWidth widthOf() {
    return sizeof(Character) == 1 ? FTextWidth::narrow : FTextWidth::wide;
}

constexpr std::size_t bytesPerCharacter(FTextWidth width) {
    return width == FTextWidth::wide ? sizeof(char16_t) : sizeof(char);
}

// The stretch of a source that is taken over; its length in full, so that what is too long can be refused.
template <class Character>
std::basic_string_view<Character> sourceView(const Character* text, std::int32_t length, FNul nul) {
    if (text == nullptr) {
        return {};
    }
    if (length < 0) {
        return std::basic_string_view<Character>(text);
    }
    const auto given = static_cast<std::size_t>(length);
    if (nul == FNul::kept) {
        return {text, given};
    }
    const Character* const end = std::char_traits<Character>::find(text, given, Character{0});
    return {text, end == nullptr ? given : static_cast<std::size_t>(end - text)};
}

// "%lf" without the zeros at its end; one digit stays behind the point. Another locale's point isn't looked for.
std::size_t withoutTrailingZeros(const char* text, std::size_t length) {
    const std::size_t point = std::string_view(text, length).rfind('.');
    if (point == std::string_view::npos) {
        return length;
    }
    while (length > point + 2 && text[length - 1] == '0') {
        --length;
    }
    return length;
}

} // namespace

FString::FString(const char* text, std::int32_t length, FNul nul) : FString() {
    assign8(text, length, nul);
    setWidth(FTextWidth::narrow);
}

FString::FString(const char16_t* text, std::int32_t length, FNul nul) : FString() {
    assign16(text, length, nul);
}

FString::FString(const char* text, CodePage codePage, std::int32_t length, FNul nul) : FString(text, length, nul) {
    toWide(codePage);
}

FString::FString(const FString& other) : FString(static_cast<const FStringRef&>(other)) {}

FString::FString(const FStringRef& other, std::int32_t length) : FString() {
    assign(other, length);
    setWidth(isNull() ? other.width() : width());
}

FString::FString(const FVariant& value) : FString() {
    assignVariant(value);
}

FString::FString(IStringResult& source) : FString() {
    if (source.isWide()) {
        assign16(source.getText16());
    } else {
        assign8(source.getText8());
    }
}

FString::FString(FString&& other) noexcept : FString() {
    take(other);
}

FString::~FString() {
    std::free(text_);
    text_ = nullptr;
    setCharacters(0);
}

FString& FString::operator=(const FString& other) {
    assign(other);
    return *this;
}

FString& FString::operator=(const FStringRef& other) {
    assign(other);
    return *this;
}

FString& FString::operator=(FString&& other) noexcept {
    take(other);
    return *this;
}

FString& FString::operator=(const char* text) {
    assign8(text);
    return *this;
}

FString& FString::operator=(const char16_t* text) {
    assign16(text);
    return *this;
}

const char* FString::text8() const {
    if (isWide() && !isEmpty()) {
        toMultiByte();
    }
    return FStringRef::text8();
}

const char16_t* FString::text16() const {
    if (!isWide() && !isEmpty()) {
        toWide();
    }
    return FStringRef::text16();
}

char FString::char8At(std::int32_t index) const {
    text8();
    return FStringRef::char8At(index);
}

char16_t FString::char16At(std::int32_t index) const {
    text16();
    return FStringRef::char16At(index);
}

template <class Character>
bool FString::assignText(std::basic_string_view<Character> source) {
    if (source.data() == text_) {
        return true;
    }
    if (source.size() > static_cast<std::size_t>(kMaximumLength)) {
        return false;
    }
    if (source.empty()) {
        return resize(0, widthOf<Character>());
    }
    // A new block rather than a longer one: the old text isn't needed, and the source may lie inside it.
    const std::size_t bytes = source.size() * sizeof(Character);
    auto* const block = static_cast<Character*>(std::malloc(bytes + sizeof(Character)));
    if (block == nullptr) {
        return false;
    }
    std::memcpy(block, source.data(), bytes);
    block[source.size()] = 0;
    own(block, source.size(), widthOf<Character>());
    return true;
}

bool FString::assign(const FStringRef& other, std::int32_t length) {
    const std::size_t most = length < 0 ? std::string_view::npos : static_cast<std::size_t>(length);
    return other.isWide() ? assignText(other.view16().substr(0, most)) : assignText(other.view8().substr(0, most));
}

bool FString::assign8(const char* text, std::int32_t length, FNul nul) {
    return text == text_ || assignText(sourceView(text, length, nul));
}

bool FString::assign16(const char16_t* text, std::int32_t length, FNul nul) {
    return text == text_ || assignText(sourceView(text, length, nul));
}

bool FString::assignUtf8(const char* text, std::int32_t length) {
    const std::string_view source = sourceView(text, length, FNul::kept);
    if (text == text_ || source.empty()) {
        return assign8(text, length) && toWide(CodePage::utf8);
    }
    // Bytes are only stored when they turn out not to be UTF-8.
    return assignWidened(CodePage::utf8, source) || (assignText(source) && toWide(CodePage::utf8));
}

bool FString::assignVariant(const FVariant& value) {
    switch (value.type()) {
    case FVariant::kInteger:
        return assignAscii(FNumberText::integer(value.integer()).view());
    case FVariant::kFloat:
        assignDouble(value.real());
        return true;
    case FVariant::kText8:
        return assign8(value.text8());
    case FVariant::kText16:
        return assign16(value.text16());
    default:
        clear();
        return false;
    }
}

void FString::assignDouble(double value) {
    // The largest double has 309 digits in front of its point.
    char text[400];
    const int printed = std::snprintf(text, sizeof text, "%f", value);
    const std::size_t length = std::min(static_cast<std::size_t>(std::max(printed, 0)), sizeof text - 1);
    assignAscii(std::string_view(text, withoutTrailingZeros(text, length)));
}

bool FString::assignAscii(std::string_view text) {
    FString next(text.data(), static_cast<std::int32_t>(text.size()));
    if ((isWide() && !next.toWide()) || next.isNull() != text.empty()) {
        return false;
    }
    take(next);
    return true;
}

void FString::clear() {
    resize(0, width());
}

bool FString::printf(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const bool done = vprintf(format, arguments);
    va_end(arguments);
    return done;
}

bool FString::printf(const char16_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const bool done = vprintf(format, arguments);
    va_end(arguments);
    return done;
}

bool FString::vprintf(const char* format, std::va_list arguments) {
    char text[kPrintLimit + 1];
    return assignText(std::string_view(text, FTextFormat::print(text, kPrintLimit, format, arguments)));
}

bool FString::vprintf(const char16_t* format, std::va_list arguments) {
    char16_t text[kPrintLimit + 1];
    return assignText(std::u16string_view(text, FTextFormat::print(text, kPrintLimit, format, arguments)));
}

bool FString::resize(std::int32_t length, FTextWidth width, bool fill) {
    if (length < 0 || length > kMaximumLength) {
        return false;
    }
    if (length == 0) {
        own(nullptr, 0, width);
        return true;
    }
    const auto size = static_cast<std::size_t>(length);
    void* const block = std::realloc(text_, (size + 1) * bytesPerCharacter(width));
    if (block == nullptr) {
        return false;
    }
    text_ = block;
    setWidth(width);
    const auto from = std::min(static_cast<std::size_t>(characters()), size);
    if (width == FTextWidth::wide) {
        wideBuffer()[size] = 0;
        std::fill(wideBuffer() + from, wideBuffer() + (fill ? size : from), u' ');
    } else {
        narrowBuffer()[size] = 0;
        std::fill(narrowBuffer() + from, narrowBuffer() + (fill ? size : from), ' ');
    }
    return true;
}

bool FString::toWide(CodePage codePage) const {
    if (isWide()) {
        return true;
    }
    if (isEmpty()) {
        own(nullptr, 0, FTextWidth::wide);
        return true;
    }
    return assignWidened(codePage, view8());
}

bool FString::assignWidened(CodePage codePage, std::string_view source) const {
    const std::ptrdiff_t length = FTextConversion::widenedLength(codePage, source);
    if (length <= 0 || length > kMaximumLength) {
        return false;
    }
    const auto size = static_cast<std::size_t>(length);
    auto* const block = static_cast<char16_t*>(std::malloc((size + 1) * sizeof(char16_t)));
    if (block == nullptr) {
        return false;
    }
    if (FTextConversion::widen(codePage, source, block, size) != length) {
        std::free(block);
        return false;
    }
    block[size] = 0;
    // A NUL in the middle ends the new text. It is one in both widths, so the shorter source tells whether to look.
    const bool whole = std::memchr(source.data(), 0, source.size()) == nullptr;
    own(block, whole ? size : std::char_traits<char16_t>::length(block), FTextWidth::wide);
    return true;
}

bool FString::toMultiByte(CodePage codePage) const {
    if (!isWide()) {
        return codePage == CodePage::system || isEmpty() || recode(codePage);
    }
    if (isEmpty()) {
        own(nullptr, 0, FTextWidth::narrow);
        return true;
    }
    const std::u16string_view source = view16();
    const std::ptrdiff_t length = FTextConversion::narrowedLength(codePage, source);
    if (length <= 0 || length > kMaximumLength) {
        return false;
    }
    const auto size = static_cast<std::size_t>(length);
    auto* const block = static_cast<char*>(std::malloc(size + 1));
    if (block == nullptr) {
        return false;
    }
    if (FTextConversion::narrow(codePage, source, block, size) != length) {
        std::free(block);
        return false;
    }
    block[size] = 0;
    const void* const nul = std::memchr(block, 0, size);
    const auto text = nul == nullptr ? size : static_cast<std::size_t>(static_cast<const char*>(nul) - block);
    own(block, text, FTextWidth::narrow);
    return true;
}

bool FString::recode(CodePage codePage) const {
    // On a copy, so that half of the way leaves nothing changed.
    FString copy(*this);
    if (copy.isNull() || !copy.toWide() || !copy.toMultiByte(codePage)) {
        return false;
    }
    const auto length = static_cast<std::size_t>(copy.characters());
    own(copy.release(), length, FTextWidth::narrow);
    return true;
}

bool FString::normalize(FNormalForm form) {
    if (isNull()) {
        return true;
    }
    if (!isWide() || form != FNormalForm::composed) {
        return false;
    }
    const std::u16string_view source = view16();
    // ASCII is composed as it stands.
    const std::ptrdiff_t length = FTextScan::isAscii(source)
                                      ? static_cast<std::ptrdiff_t>(source.size())
                                      : platform::compose(source.data(), source.size(), nullptr, 0);
    if (length == characters()) {
        return true;
    }
    if (length <= 0 || length > kMaximumLength) {
        return false;
    }
    const auto size = static_cast<std::size_t>(length);
    auto* const block = static_cast<char16_t*>(std::malloc((size + 1) * sizeof(char16_t)));
    if (block == nullptr) {
        return false;
    }
    platform::compose(source.data(), source.size(), block, size);
    block[size] = 0;
    own(block, size, FTextWidth::wide);
    return true;
}

void FString::swap(FString& other) noexcept {
    const std::int32_t length = characters();
    const FTextWidth ownWidth = width();
    std::swap(text_, other.text_);
    setCharacters(other.characters());
    setWidth(other.width());
    other.setCharacters(length);
    other.setWidth(ownWidth);
}

void FString::take(FString& other) {
    if (this == &other) {
        return;
    }
    const auto length = static_cast<std::size_t>(other.characters());
    const FTextWidth otherWidth = other.width();
    own(other.release(), length, otherWidth);
}

void FString::adopt(char* buffer) {
    adoptText(buffer);
}

void FString::adopt(char16_t* buffer) {
    adoptText(buffer);
}

template <class Character>
void FString::adoptText(Character* buffer) {
    if (buffer == text_) {
        return;
    }
    const std::size_t length = buffer == nullptr ? 0 : std::char_traits<Character>::length(buffer);
    // Empty text is null text everywhere else, too.
    if (length == 0 || length > static_cast<std::size_t>(kMaximumLength)) {
        std::free(buffer);
        resize(0, widthOf<Character>());
        return;
    }
    own(buffer, length, widthOf<Character>());
}

void* FString::release() {
    void* const buffer = std::exchange(text_, nullptr);
    setCharacters(0);
    return buffer;
}

void FString::takeToVariant(FVariant& out) {
    if (isEmpty()) {
        clear();
        toVariant(out);
        return;
    }
    if (isWide()) {
        out.setText16(static_cast<const char16_t*>(release()), FVariant::kOwner);
    } else {
        out.setText8(static_cast<const char*>(release()), FVariant::kOwner);
    }
}

void FString::fromPascal(const std::uint8_t* bytes) {
    assignText(std::string_view(reinterpret_cast<const char*>(bytes + 1), bytes[0]));
}

void FString::toPascal(std::uint8_t* buffer) const {
    constexpr std::size_t kMost = 255;
    FString copy;
    std::string_view source = view8();
    if (isWide() && copy.assign(*this) && copy.toMultiByte()) {
        source = copy.view8();
    }
    source = source.substr(0, kMost);
    buffer[0] = static_cast<std::uint8_t>(source.size());
    std::copy(source.begin(), source.end(), buffer + 1);
}

void FString::own(void* block, std::size_t length, FTextWidth width) const {
    // A block without text in it is given back at once, so that null and empty stay the same.
    if (length == 0) {
        std::free(block);
        block = nullptr;
    }
    std::free(text_);
    text_ = block;
    setCharacters(static_cast<std::int32_t>(length));
    setWidth(width);
}

} // namespace tessera
