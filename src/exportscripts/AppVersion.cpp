#include "exportscripts/AppVersion.h"

#include <charconv>
#include <cstddef>

namespace tessera {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kVersionCharacters = "0123456789.-";
constexpr std::string_view kSeparators = ".-";

// Cuts the next non-empty piece off the front; empty when there is none left.
std::string_view takePiece(std::string_view& text) {
    const std::size_t start = text.find_first_not_of(kSeparators);
    if (start == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(start);
    const std::string_view piece = text.substr(0, text.find_first_of(kSeparators));
    text.remove_prefix(piece.size());
    return piece;
}

std::uint32_t readNumber(std::string_view digits) {
    std::uint32_t number = 0;
    const std::errc error = std::from_chars(digits.data(), digits.data() + digits.size(), number).ec;
    return error == std::errc{} ? number : 0;
}

} // namespace

AppVersion parseVersion(std::string_view text) {
    const std::size_t lastDigit = text.find_last_of(kDigits);
    if (lastDigit == std::string_view::npos) {
        return {};
    }
    text = text.substr(0, lastDigit + 1);
    if (const std::size_t foreign = text.find_last_not_of(kVersionCharacters); foreign != std::string_view::npos) {
        text.remove_prefix(foreign + 1);
    }
    AppVersion version;
    version.major = readNumber(takePiece(text));
    version.minor = readNumber(takePiece(text));
    version.patch = readNumber(takePiece(text));
    version.build = readNumber(takePiece(text));
    return version;
}

} // namespace tessera
