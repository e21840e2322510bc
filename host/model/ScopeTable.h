// ScopeTable: what the words mean that the selection gives out with its items: the whole event, or a stretch of the
// timeline. Words stay valid for the life of the program, since a guest may keep one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessera::host {

// Seconds on the timeline.
struct TimeRange {
    double start = 0;
    double end = 0;
};

class ScopeTable {
public:
    static constexpr std::uint64_t kWholeEvent = 1;

    std::uint64_t add(TimeRange range) {
        ranges_.push_back(range);
        return kWholeEvent + ranges_.size();
    }
    bool isKnown(std::uint64_t scope) const { return scope >= kWholeEvent && scope <= kWholeEvent + ranges_.size(); }
    // Nothing for the whole event, and for words that were never given out.
    std::optional<TimeRange> range(std::uint64_t scope) const {
        if (!isKnown(scope) || scope == kWholeEvent) {
            return std::nullopt;
        }
        return ranges_[static_cast<std::size_t>(scope - kWholeEvent - 1)];
    }

private:
    std::vector<TimeRange> ranges_;
};

} // namespace tessera::host
