#include "persistence/files/FPlainNamer.h"

#include "persistence/files/FileNumberSuffix.h"

#include <cstdint>

namespace tessera {

namespace {

constexpr std::int64_t kLargestNumber = 0x7fffffff;

} // namespace

bool FPlainNamer::makeName(const FStringRef& base, const FStringRef&, ICandidateChecker& checker, FString& result) {
    FString stem(base);
    std::int64_t number = 1;
    const std::int32_t suffix = findNumberSuffix(stem);
    if (suffix > 0) {
        const std::int64_t present = stem.trailingNumber();
        number = present < kLargestNumber ? present + 1 : kLargestNumber + 1;
        stem.remove(suffix);
    }
    result.clear();
    for (; number <= kLargestNumber; ++number) {
        const FString candidate = withNumberSuffix(stem, static_cast<std::uint32_t>(number));
        if (!checker.isValid(candidate)) {
            return false;
        }
        if (!checker.isTaken(candidate)) {
            result = candidate;
            return true;
        }
    }
    return false;
}

} // namespace tessera
