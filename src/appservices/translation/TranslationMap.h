// TranslationMap: translations by key, in 16-bit text.
//
// Texts that are handed out end with a NUL and stay where they are until the map is cleared, also when their key is set
// again. Finding allocates nothing. Several threads may find at a time; setting is for one.
#pragma once

#include "appservices/translation/TextStore.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tessera {

class TranslationMap {
public:
    TranslationMap();

    // Null when there is no such key.
    const char16_t* find(std::u16string_view key) const;
    // Replaces the text of a key that is there. Gives the text as it is kept.
    const char16_t* set(std::u16string_view key, std::u16string_view text);
    std::size_t size() const { return entries_.size(); }
    bool isEmpty() const { return entries_.empty(); }
    void clear();

private:
    struct Entry {
        std::u16string_view key;
        const char16_t* text;
    };
    // A place in the open table: which entry, and enough of its hash to pass over nearly all others unseen.
    struct Slot {
        std::uint32_t hash = 0;
        // Counted from 1; 0 is a free slot.
        std::uint32_t entry = 0;
    };

    static constexpr std::size_t kFirstSlots = 64;

    std::uint64_t hashOf(std::u16string_view key) const;
    // The slot that holds the key or, where it isn't there, the free one that it belongs in.
    std::size_t slotOf(std::u16string_view key, std::uint32_t hash) const;
    void growSlots();

    // Differs from map to map, so that no file can be made whose keys all meet in one slot.
    std::uint64_t seed_;
    std::vector<Entry> entries_;
    // A power of two of them, at most half in use; none in an empty map.
    std::vector<Slot> slots_;
    TextStore texts_;
};

} // namespace tessera
