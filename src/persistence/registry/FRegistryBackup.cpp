#include "persistence/registry/FRegistryBackup.h"

namespace tessera {

FRegistryBackup::FRegistryBackup() {
    entries_.setOwnership(CmOwnership::owner);
}

FRegistryBackup::FRegistryBackup(const FRegistryBackup& other) : CmClass(other) {
    entries_.copyFrom(other.entries_);
}

CmObject* FRegistryBackup::clone() const {
    return new FRegistryBackup(*this);
}

bool FRegistryBackup::isEqual(const CmObject* other) const {
    const auto* backup = cmCast<FRegistryBackup>(other);
    bool equal = backup != nullptr && backup->getCount() == getCount();
    for (std::int32_t i = 0; equal && i < getCount(); ++i) {
        equal = at(i)->isEqual(backup->at(i));
    }
    return equal;
}

bool FRegistryBackup::add(const FStringRef& key, const FStringRef& valueName) {
    if (find(key, valueName) != nullptr) {
        return false;
    }
    auto* entry = new FRegistryEntry(key, valueName);
    if (!entries_.add(entry)) {
        entry->release();
        return false;
    }
    return true;
}

FRegistryEntry* FRegistryBackup::at(std::int32_t index) const {
    return static_cast<FRegistryEntry*>(entries_.at(index));
}

FRegistryEntry* FRegistryBackup::find(const FStringRef& key, const FStringRef& valueName) const {
    for (std::int32_t i = 0; i < getCount(); ++i) {
        if (at(i)->names(key, valueName)) {
            return at(i);
        }
    }
    return nullptr;
}

void FRegistryBackup::backup() {
    for (std::int32_t i = 0; i < getCount(); ++i) {
        at(i)->take();
    }
}

bool FRegistryBackup::restore() const {
    bool complete = true;
    for (std::int32_t i = 0; i < getCount(); ++i) {
        complete = at(i)->putBack() && complete;
    }
    return complete;
}

} // namespace tessera
