#include "host/services/AttributeList.h"

#include "host/text/Text16.h"

#include <charconv>
#include <optional>

namespace tessera::host {
namespace {

// The shortest form that reads back as the same number, whatever the locale.
std::string numberText(double number) {
    char digits[64];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    return std::string(digits, end.ptr);
}

std::optional<std::string> valueText(const AttributeValue& value) {
    switch (value.flags) {
    case AttributeValue::kDouble:
        return numberText(value.number);
    case AttributeValue::kText8:
        return value.text8 == nullptr ? std::nullopt : std::optional<std::string>(value.text8);
    case AttributeValue::kText16:
        return value.text16 == nullptr ? std::nullopt : toUtf8(value.text16);
    default:
        return std::nullopt;
    }
}

} // namespace

std::string AttributeList::asText() const {
    std::string result;
    for (const Attribute& attribute : attributes_) {
        result += (result.empty() ? "" : "; ") + attribute.key + "=" + attribute.text;
    }
    return result;
}

FResult AttributeList::set(const char* key, const AttributeValue* value, std::int64_t) {
    if (!guestMay("set") || key == nullptr || value == nullptr) {
        return kInvalidArgument;
    }
    const std::optional<std::string> text = valueText(*value);
    if (!text) {
        reportMisuse("set", "the value is neither a number nor a text");
        return kInvalidArgument;
    }
    attributes_.push_back({key, *text});
    return kResultOk;
}

} // namespace tessera::host
