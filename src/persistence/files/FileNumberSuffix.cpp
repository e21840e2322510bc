#include "persistence/files/FileNumberSuffix.h"

namespace tessera {

namespace {

constexpr std::int32_t kFewestDigits = 2;

} // namespace

std::int32_t findNumberSuffix(const FStringRef& name) {
    const std::int32_t digits = name.trailingDigitsStart();
    if (digits < 1 || name.length() - digits < kFewestDigits) {
        return -1;
    }
    const bool hyphen = name.isWide() ? name.equalsCharAt(digits - 1, u'-') : name.equalsCharAt(digits - 1, '-');
    return hyphen ? digits - 1 : -1;
}

FString withNumberSuffix(const FStringRef& stem, std::uint32_t number) {
    FString suffix;
    suffix.printf("-%02u", number);
    FString name(stem);
    name.append(suffix);
    return name;
}

} // namespace tessera
