// GroupTable: the groups of a pool by name, in the order in which they came.
//
// A hash table with chains, 8 buckets at first and never more groups than buckets; a list through all entries keeps the
// order. The table holds a reference of each group.
#pragma once

#include "appservices/defaults/FDefaults.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessera {

class GroupTable {
public:
    GroupTable();
    GroupTable(const GroupTable&) = delete;
    GroupTable& operator=(const GroupTable&) = delete;
    ~GroupTable() { clear(); }

    // Borrowed; null when there is none.
    FDefaults* find(std::string_view name) const;
    // At the end. Takes the caller's reference over; the name isn't there yet.
    void add(std::string_view name, FRefPtr<FDefaults> group);
    // Whether it was there.
    bool remove(std::string_view name);
    void clear();
    std::size_t size() const { return count_; }

    // visit(std::string_view name, FDefaults& group) for each in order, until it answers false; whether it never did.
    // The visit may change the table: what it removes isn't visited any more, and goes at the end of the walk.
    template <class Visit>
    bool forEach(Visit visit) const {
        const Walk walk(*this);
        for (const Entry* entry = first_; entry != nullptr; entry = entry->next) {
            if (!entry->isRemoved && !visit(std::string_view(entry->name), *entry->group)) {
                return false;
            }
        }
        return true;
    }

private:
    struct Entry {
        // The group's own may change its width when somebody looks at it.
        std::string name;
        FRefPtr<FDefaults> group;
        std::size_t hash;
        Entry* chain = nullptr;
        Entry* previous = nullptr;
        Entry* next = nullptr;
        // Only kept for a walk that stands on it or comes by.
        bool isRemoved = false;
    };

    class Walk {
    public:
        explicit Walk(const GroupTable& table) : table_(table) { ++table_.walks_; }
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk();

    private:
        const GroupTable& table_;
    };

    // The place that points at the entry, or at the end of its chain.
    Entry** place(std::string_view name, std::size_t hash);
    std::size_t bucketOf(std::size_t hash) const { return hash & (buckets_.size() - 1); }
    void grow();
    void dispose(std::unique_ptr<Entry> entry);

    // A power of two.
    std::vector<Entry*> buckets_;
    Entry* first_ = nullptr;
    Entry* last_ = nullptr;
    std::size_t count_ = 0;
    mutable int walks_ = 0;
    // Until the last walk is over.
    mutable std::vector<std::unique_ptr<Entry>> removed_;
};

} // namespace tessera
