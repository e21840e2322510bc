#include "appservices/defaults/GroupTable.h"

#include <functional>
#include <utility>

namespace tessera {

namespace {

constexpr std::size_t kFirstBuckets = 8;

std::size_t hashOf(std::string_view name) {
    return std::hash<std::string_view>()(name);
}

} // namespace

GroupTable::GroupTable() : buckets_(kFirstBuckets) {}

GroupTable::Entry** GroupTable::place(std::string_view name, std::size_t hash) {
    Entry** entry = &buckets_[bucketOf(hash)];
    while (*entry != nullptr && ((*entry)->hash != hash || (*entry)->name != name)) {
        entry = &(*entry)->chain;
    }
    return entry;
}

FDefaults* GroupTable::find(std::string_view name) const {
    const std::size_t hash = hashOf(name);
    const Entry* entry = buckets_[bucketOf(hash)];
    while (entry != nullptr && (entry->hash != hash || entry->name != name)) {
        entry = entry->chain;
    }
    return entry != nullptr ? entry->group.get() : nullptr;
}

void GroupTable::add(std::string_view name, FRefPtr<FDefaults> group) {
    if (count_ == buckets_.size()) {
        grow();
    }
    const std::size_t hash = hashOf(name);
    auto* entry = new Entry{std::string(name), std::move(group), hash};
    *place(name, hash) = entry;
    entry->previous = last_;
    (last_ != nullptr ? last_->next : first_) = entry;
    last_ = entry;
    ++count_;
}

bool GroupTable::remove(std::string_view name) {
    Entry** found = place(name, hashOf(name));
    if (*found == nullptr) {
        return false;
    }
    std::unique_ptr<Entry> entry(std::exchange(*found, (*found)->chain));
    (entry->previous != nullptr ? entry->previous->next : first_) = entry->next;
    (entry->next != nullptr ? entry->next->previous : last_) = entry->previous;
    --count_;
    dispose(std::move(entry));
    return true;
}

void GroupTable::clear() {
    // Emptied first: a group's objects may ask for settings while they go.
    Entry* entry = std::exchange(first_, nullptr);
    last_ = nullptr;
    count_ = 0;
    buckets_.assign(kFirstBuckets, nullptr);
    while (entry != nullptr) {
        dispose(std::unique_ptr<Entry>(std::exchange(entry, entry->next)));
    }
}

void GroupTable::dispose(std::unique_ptr<Entry> entry) {
    if (walks_ != 0) {
        entry->isRemoved = true;
        removed_.push_back(std::move(entry));
    }
}

GroupTable::Walk::~Walk() {
    if (--table_.walks_ == 0) {
        // Taken out first: a group's objects may ask for settings while they go.
        const auto gone = std::exchange(table_.removed_, {});
    }
}

void GroupTable::grow() {
    buckets_.assign(buckets_.size() * 2, nullptr);
    for (Entry* entry = first_; entry != nullptr; entry = entry->next) {
        entry->chain = std::exchange(buckets_[bucketOf(entry->hash)], entry);
    }
}

} // namespace tessera
