#include "host/text/Message.h"

#include "host/text/Text16.h"

#include <charconv>
#include <cstddef>
#include <optional>

namespace tessera::host {
namespace {

// Room for the digits of any double with the most digits behind the point.
constexpr std::size_t kNumberRoom = 512;

struct Conversion {
    std::size_t length = 2;
    char letter = '\0';
    int precision = 0;
};

// What the format begins with: "%", then the letter, or a point and a digit before it.
Conversion conversionAt(std::string_view format) {
    Conversion result;
    if (format.size() > 3 && format[1] == '.' && format[2] >= '0' && format[2] <= '9') {
        result = {4, format[3], format[2] - '0'};
    } else if (format.size() > 1) {
        result.letter = format[1];
    }
    return result;
}

// Nothing when conversions and values don't belong together.
std::optional<std::string> filled(std::string_view format, std::span<const MessageValue> values) {
    std::string result;
    while (true) {
        const std::size_t sign = format.find('%');
        result += format.substr(0, sign);
        if (sign == std::string_view::npos) {
            return values.empty() ? std::optional<std::string>(std::move(result)) : std::nullopt;
        }
        format.remove_prefix(sign);
        const Conversion conversion = conversionAt(format);
        if (conversion.letter == '%') {
            result += '%';
        } else if (values.empty() || !values.front().append(result, conversion.letter, conversion.precision)) {
            return std::nullopt;
        } else {
            values = values.subspan(1);
        }
        format.remove_prefix(conversion.length);
    }
}

} // namespace

bool MessageValue::append(std::string& text, char letter, int precision) const {
    char digits[kNumberRoom];
    if (const auto* words = std::get_if<std::string_view>(&value_); words != nullptr && letter == 's') {
        text += *words;
    } else if (const auto* whole = std::get_if<std::int64_t>(&value_); whole != nullptr && letter == 'd') {
        text += std::to_string(*whole);
    } else if (const auto* number = std::get_if<double>(&value_); number != nullptr && letter == 'f') {
        const auto end = std::to_chars(digits, digits + kNumberRoom, *number, std::chars_format::fixed, precision);
        text.append(digits, end.ptr);
    } else {
        return false;
    }
    return true;
}

std::string fillMessage(TranslatedText& text, std::span<const MessageValue> values) {
    const std::string translation = toUtf8(translate(text)).value_or(std::string());
    if (std::optional<std::string> result = filled(translation, values)) {
        return *std::move(result);
    }
    const std::string key = toUtf8(text.key).value_or(std::string());
    return filled(key, values).value_or(key);
}

} // namespace tessera::host
