#include "persistence/paths/FFileType.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace tessera {

namespace {

// Case goes by 16-bit characters; text that is ASCII keeps its width.
FString folded(const FStringRef& text) {
    FString result(text);
    if (!result.isAscii()) {
        result.toWide();
    }
    result.toLower();
    return result;
}

bool sameText(const FString& a, const FString& b) {
    return !a.isEmpty() && !b.isEmpty() && a == b;
}

// UTF-8, as setField writes it; other bytes are text of the system's code page. A foreign record may lack the NUL.
template <std::size_t size>
FString fieldText(const char (&field)[size]) {
    FString text(field, static_cast<std::int32_t>(std::find(field, field + size, '\0') - field));
    if (!text.isAscii()) {
        text.toWide(CodePage::utf8);
    }
    return text;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

// The bytes behind the text are zero: a record carries nothing of what its memory held before.
template <std::size_t size>
void setField(char (&field)[size], const FString& text) {
    FString bytes(text);
    bytes.toMultiByte(CodePage::utf8);
    const char* source = bytes.text8();
    std::size_t count = std::min(static_cast<std::size_t>(bytes.length()), size - 1);
    // A character that doesn't fit as a whole stays out.
    while (count > 0 && isContinuation(source[count])) {
        --count;
    }
    std::memset(field, 0, size);
    std::memcpy(field, source, count);
}

} // namespace

FFileType::FFileType(const FStringRef& name, const FStringRef& dosType, std::uint32_t macType,
                     const FStringRef& unixType, const FStringRef& mimeType, const FStringRef& mimeTypeAlt)
    : macType_(macType),
      dosType_(folded(dosType)),
      unixType_(folded(unixType)),
      mimeType_(folded(mimeType)),
      mimeTypeAlt_(folded(mimeTypeAlt)),
      name_(name) {}

FFileType::FFileType(const FStringRef& name, const FStringRef& dosType, const char* macType, const FStringRef& unixType,
                     const FStringRef& mimeType, const FStringRef& mimeTypeAlt)
    : FFileType(name, dosType, macTypeFromText(macType), unixType, mimeType, mimeTypeAlt) {}

FFileType::FFileType(const HostTypeRecord& record) {
    fromRecord(record);
}

FFileType::FFileType(const FFileType& other) = default;
FFileType& FFileType::operator=(const FFileType& other) = default;
FFileType::~FFileType() = default;

std::uint32_t FFileType::macTypeFromText(const char* text) {
    std::uint32_t code = 0;
    const std::string_view characters = text != nullptr ? text : "";
    for (std::size_t i = 0; i < sizeof code; ++i) {
        code = (code << 8) | (i < characters.size() ? static_cast<unsigned char>(characters[i]) : 0u);
    }
    return code;
}

CmObject* FFileType::clone() const {
    return new FFileType(*this);
}

bool FFileType::isEqual(const CmObject* other) const {
    const auto* type = cmCast<FFileType>(other);
    return type != nullptr && (sameText(dosType_, type->dosType_) || sameText(unixType_, type->unixType_) ||
                               sameText(mimeType_, type->mimeType_));
}

bool FFileType::isEqual(const HostTypeRecord& record) const {
    const FFileType type(record);
    return isEqual(&type);
}

void FFileType::setDosType(const FStringRef& type) {
    dosType_ = folded(type);
}

void FFileType::setUnixType(const FStringRef& type) {
    unixType_ = folded(type);
}

void FFileType::setMimeType(const FStringRef& type) {
    mimeType_ = folded(type);
}

void FFileType::setMimeTypeAlt(const FStringRef& type) {
    mimeTypeAlt_ = folded(type);
}

bool FFileType::isDefined() const {
    return macType_ != 0 || !dosType_.isEmpty() || !unixType_.isEmpty() || !mimeType_.isEmpty() ||
           !mimeTypeAlt_.isEmpty();
}

void FFileType::clear() {
    *this = FFileType();
}

void FFileType::fromRecord(const HostTypeRecord& record) {
    clear();
    macType_ = record.macType;
    dosType_ = folded(fieldText(record.extension));
    name_ = fieldText(record.name);
}

void FFileType::toRecord(HostTypeRecord& record) const {
    record.macType = macType_;
    setField(record.extension, dosType_);
    setField(record.name, name_);
}

} // namespace tessera
