#include "persistence/files/FFastNamer.h"

#include "persistence/files/FileNumberSuffix.h"

#include <cstdint>

namespace tessera {

namespace {

enum class Probe { free, taken, refused };

Probe probe(ICandidateChecker& checker, const FString& candidate) {
    if (!checker.isValid(candidate)) {
        return Probe::refused;
    }
    return checker.isTaken(candidate) ? Probe::taken : Probe::free;
}

// The first power of two whose number is free; 0 when a candidate is refused or the numbers are at an end.
std::uint32_t findFreePower(const FString& stem, ICandidateChecker& checker) {
    // Doubling wraps to 0 behind the last power.
    for (std::uint32_t number = 1; number != 0; number *= 2) {
        switch (probe(checker, withNumberSuffix(stem, number))) {
        case Probe::free:
            return number;
        case Probe::refused:
            return 0;
        case Probe::taken:
            break;
        }
    }
    return 0;
}

} // namespace

bool FFastNamer::makeName(const FStringRef& base, const FStringRef&, ICandidateChecker& checker, FString& result) {
    FString stem(base);
    const std::int32_t suffix = findNumberSuffix(stem);
    if (suffix_ == Suffix::strip && suffix > 0) {
        stem.remove(suffix);
    }
    result.clear();
    std::uint32_t free = findFreePower(stem, checker);
    if (free == 0) {
        return false;
    }
    std::uint32_t taken = free / 2;
    while (free - taken > 1) {
        const std::uint32_t middle = taken + (free - taken) / 2;
        const Probe answer = probe(checker, withNumberSuffix(stem, middle));
        if (answer == Probe::refused) {
            return false;
        }
        (answer == Probe::free ? free : taken) = middle;
    }
    result = withNumberSuffix(stem, free);
    return true;
}

} // namespace tessera
