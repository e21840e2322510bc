// message: a text of the host in the user's language, with values in it, as UTF-8.
//
// Values stand for the conversions %s (text), %d (whole number) and %f (number; "%.3f" for three digits, none without a
// precision), %% for the sign itself; the decimal sign is always the point, as in what users type. A translation that
// doesn't take these values, in this order, is passed over for the English text. Main thread.
#pragma once

#include "appservices/translation/TranslatedText.h"

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace tessera::host {

class MessageValue {
public:
    MessageValue(std::string_view text) : value_(text) {}
    MessageValue(const std::string& text) : value_(std::string_view(text)) {}
    MessageValue(const char* text) : value_(std::string_view(text)) {}
    template <std::integral Number>
    MessageValue(Number number) : value_(static_cast<std::int64_t>(number)) {}
    MessageValue(double number) : value_(number) {}

    // Puts the value behind the text; false when the letter isn't for this sort of value.
    bool append(std::string& text, char letter, int precision) const;

private:
    // A text is borrowed for the length of the call.
    const std::variant<std::string_view, std::int64_t, double> value_;
};

std::string fillMessage(TranslatedText& text, std::span<const MessageValue> values);

inline std::string message(TranslatedText& text) {
    return fillMessage(text, {});
}

template <class... Values>
std::string message(TranslatedText& text, const Values&... values) {
    const MessageValue all[] = {values...};
    return fillMessage(text, all);
}

} // namespace tessera::host
