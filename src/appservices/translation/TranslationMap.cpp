#include "appservices/translation/TranslationMap.h"

#include "platform/RandomBytes.h"

#include <bit>
#include <cstring>

namespace tessera {
namespace {

constexpr std::uint64_t kMultiplier = 0x9E37'79B9'7F4A'7C15u;

std::uint64_t mix(std::uint64_t state, std::uint64_t word) {
    state = (state ^ word) * kMultiplier;
    return state ^ std::rotr(state, 29);
}

} // namespace

TranslationMap::TranslationMap() {
    if (!platform::fillRandomBytes(&seed_, sizeof seed_)) {
        seed_ = std::bit_cast<std::uintptr_t>(this);
    }
}

const char16_t* TranslationMap::find(std::u16string_view key) const {
    if (slots_.empty()) {
        return nullptr;
    }
    const std::uint32_t entry = slots_[slotOf(key, static_cast<std::uint32_t>(hashOf(key)))].entry;
    return entry != 0 ? entries_[entry - 1].text : nullptr;
}

const char16_t* TranslationMap::set(std::u16string_view key, std::u16string_view text) {
    if (2 * (entries_.size() + 1) > slots_.size()) {
        growSlots();
    }
    const auto hash = static_cast<std::uint32_t>(hashOf(key));
    Slot& slot = slots_[slotOf(key, hash)];
    const char16_t* const kept = texts_.add(text);
    if (slot.entry != 0) {
        return entries_[slot.entry - 1].text = kept;
    }
    entries_.push_back({{texts_.add(key), key.size()}, kept});
    slot = {hash, static_cast<std::uint32_t>(entries_.size())};
    return kept;
}

void TranslationMap::clear() {
    entries_.clear();
    slots_.clear();
    texts_.clear();
}

std::uint64_t TranslationMap::hashOf(std::u16string_view key) const {
    constexpr std::size_t kUnits = sizeof(std::uint64_t) / sizeof(char16_t);
    std::uint64_t state = seed_ + key.size();
    std::uint64_t word = 0;
    for (; key.size() > kUnits; key.remove_prefix(kUnits)) {
        std::memcpy(&word, key.data(), sizeof word);
        state = mix(state, word);
    }
    // An empty key may have no data at all.
    char16_t rest[kUnits] = {};
    key.copy(rest, kUnits);
    std::memcpy(&word, rest, sizeof word);
    return mix(state, word) >> 16;
}

std::size_t TranslationMap::slotOf(std::u16string_view key, std::uint32_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].entry != 0 && (slots_[at].hash != hash || entries_[slots_[at].entry - 1].key != key)) {
        at = (at + 1) & mask;
    }
    return at;
}

void TranslationMap::growSlots() {
    const std::vector<Slot> before = std::move(slots_);
    slots_.assign(before.empty() ? kFirstSlots : 2 * before.size(), Slot());
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : before) {
        if (slot.entry == 0) {
            continue;
        }
        std::size_t at = slot.hash & mask;
        while (slots_[at].entry != 0) {
            at = (at + 1) & mask;
        }
        slots_[at] = slot;
    }
}

} // namespace tessera
