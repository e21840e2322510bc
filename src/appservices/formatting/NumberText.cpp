#include "appservices/formatting/NumberText.h"

#include <string_view>

namespace tessera {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kDigitsButZero = "123456789";

void dropTrailingZeros(FString& text) {
    const std::string_view view = text.view8();
    // What has no digits, such as "inf", ends in no zero either.
    const std::int32_t zeros = view.ends_with("00") ? 2 : view.ends_with("0") ? 1 : 0;
    text.remove(text.length() - zeros, zeros);
}

bool isNegativeZero(std::string_view text) {
    return text.starts_with('-') && text.find_first_of(kDigits) != std::string_view::npos &&
           text.find_first_of(kDigitsButZero) == std::string_view::npos;
}

} // namespace

FString formatNumber(double value, std::int32_t decimals) {
    FString text("");
    if (decimals < 0) {
        text.printf("%.2lf", value);
        dropTrailingZeros(text);
    } else {
        FString format("");
        format.printf("%%.%dlf", decimals);
        text.printf(format.text8(), value);
    }
    if (isNegativeZero(text.view8())) {
        text.remove(0, 1);
    }
    return text;
}

} // namespace tessera
