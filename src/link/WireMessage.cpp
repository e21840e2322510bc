#include "link/WireMessage.h"

#include <charconv>
#include <stdexcept>
#include <system_error>

namespace tessera {

namespace {

constexpr char kSeparator = ';';

// One allocation for the whole message: it is on the road of every send.
template <class Fields>
std::string joinFields(const Fields& fields) {
    std::size_t size = kWireVersion.size() + 1;
    for (const auto& field : fields) {
        size += field.size() + 1;
    }
    std::string text;
    text.reserve(size);
    text.append(kWireVersion).push_back(kSeparator);
    for (const auto& field : fields) {
        text.append(field).push_back(kSeparator);
    }
    return text;
}

bool isWhiteSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// What the standard conversion passes over and from_chars doesn't: white space and a plus sign.
std::string_view withoutLead(std::string_view text) {
    while (!text.empty() && isWhiteSpace(text.front())) {
        text.remove_prefix(1);
    }
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    return text;
}

bool isHexadecimal(std::string_view digits) {
    return digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X');
}

std::from_chars_result convertHexadecimal(std::string_view digits, bool negative, double& number) {
    digits.remove_prefix(2);
    if (digits.front() == '-') {
        return {digits.data(), std::errc::invalid_argument};
    }
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::hex);
    number = negative ? -number : number;
    return result;
}

std::from_chars_result convert(std::string_view text, double& number) {
    const bool negative = !text.empty() && text.front() == '-';
    const std::string_view digits = negative ? text.substr(1) : text;
    if (isHexadecimal(digits)) {
        const auto result = convertHexadecimal(digits, negative, number);
        if (result.ec != std::errc::invalid_argument) {
            return result;
        }
        // "0x" with no digit behind it is the number 0.
    }
    return std::from_chars(text.data(), text.data() + text.size(), number);
}

} // namespace

std::string writeMessage(std::initializer_list<std::string_view> fields) {
    return joinFields(fields);
}

std::string writeMessage(const FieldList& fields) {
    return joinFields(fields);
}

FieldList readMessage(std::string_view text) {
    FieldList fields;
    while (!text.empty()) {
        const std::size_t end = text.find(kSeparator);
        fields.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            break;
        }
        text.remove_prefix(end + 1);
    }
    return fields;
}

bool hasCurrentVersion(const FieldList& fields) {
    return !fields.empty() && fields.front() == kWireVersion;
}

const std::string& fieldText(const FieldList& fields, std::size_t index) {
    if (index >= fields.size()) {
        throw std::out_of_range("invalid vector<T> subscript");
    }
    return fields[index];
}

double fieldNumber(const FieldList& fields, std::size_t index) {
    double number = 0;
    const auto result = convert(withoutLead(fieldText(fields, index)), number);
    if (result.ec == std::errc::invalid_argument) {
        throw std::invalid_argument("invalid stod argument");
    }
    if (result.ec == std::errc::result_out_of_range) {
        throw std::out_of_range("stod argument out of range");
    }
    return number;
}

} // namespace tessera
