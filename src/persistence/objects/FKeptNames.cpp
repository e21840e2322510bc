#include "persistence/objects/FKeptNames.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <new>

namespace tessera {

namespace {

// Names whose places fall together stand side by side, so many at most.
constexpr std::size_t kMostTries = 8;

struct KeptName {
    std::size_t length;
    char text[FKeptNames::kLongest + 1];
};

// Never emptied: documents are read, and records live, to the very end of the process.
constinit std::atomic<const KeptName*> table[FKeptNames::kTableSize];

std::size_t placeOf(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (const char c : name) {
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619u;
    }
    return (hash ^ hash >> 15) % FKeptNames::kTableSize;
}

const KeptName* newName(std::string_view name) {
    auto* kept = new (std::nothrow) KeptName{name.size(), {}};
    if (kept != nullptr) {
        std::memcpy(kept->text, name.data(), name.size());
    }
    return kept;
}

// What stands in the slot now: the name, or another that was quicker. Null without memory.
const KeptName* enter(std::atomic<const KeptName*>& slot, std::string_view name) {
    const KeptName* mine = newName(name);
    const KeptName* present = nullptr;
    if (mine == nullptr || slot.compare_exchange_strong(present, mine, std::memory_order_acq_rel)) {
        return mine;
    }
    delete mine;
    return present;
}

} // namespace

FStringRef FKeptNames::find(std::string_view name) {
    if (name.empty() || name.size() > kLongest) {
        return {};
    }
    std::size_t place = placeOf(name);
    for (std::size_t i = 0; i < kMostTries; ++i, place = (place + 1) % kTableSize) {
        const KeptName* kept = table[place].load(std::memory_order_acquire);
        if (kept == nullptr) {
            kept = enter(table[place], name);
        }
        if (kept != nullptr && kept->length == name.size() && std::memcmp(kept->text, name.data(), name.size()) == 0) {
            return {kept->text, static_cast<std::int32_t>(name.size())};
        }
    }
    return {};
}

} // namespace tessera
