#include "host/stored/StoredText.h"

#include "appservices/defaults/StorableText.h"
#include "host/text/Text16.h"
#include "persistence/attributes/FAttributes.h"

#include <algorithm>
#include <optional>

namespace tessera::host {
namespace {

std::optional<FString> storedForm(const std::string& utf8) {
    if (std::all_of(utf8.begin(), utf8.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        return FString(utf8.c_str(), static_cast<std::int32_t>(utf8.size()));
    }
    const std::optional<std::u16string> text = toText16(utf8);
    return text ? std::optional(FString(text->c_str(), static_cast<std::int32_t>(text->size()))) : std::nullopt;
}

} // namespace

bool canBeStored(const std::string& utf8) {
    const std::optional<FString> text = storedForm(utf8);
    return text && isStorableText(*text);
}

bool storeText(FAttributes& attributes, const char* key, const std::string& utf8) {
    const std::optional<FString> text = storedForm(utf8);
    return text && attributes.setString(key, *text);
}

std::string restoreText(const FAttributes& attributes, const char* key) {
    FString text;
    return attributes.getString(key, text) ? toUtf8(text.text16()).value_or(std::string()) : std::string();
}

} // namespace tessera::host
