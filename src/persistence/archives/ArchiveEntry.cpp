#include "persistence/archives/ArchiveEntry.h"

namespace tessera {

ArchiveEntry::ArchiveEntry(const FStringRef& scheme, const FStringRef& key, FFileSystem* fileSystem)
    : scheme_(scheme), key_(key), fileSystem_(fileSystem) {
    key_.toUpper();
}

ArchiveEntry::~ArchiveEntry() = default;

bool ArchiveEntry::isEqual(const CmObject* other) const {
    const auto* entry = cmCast<ArchiveEntry>(other);
    return entry != nullptr && key_ == entry->key_;
}

int ArchiveEntry::compare(const CmObject* other) const {
    const auto* entry = cmCast<ArchiveEntry>(other);
    return entry != nullptr ? key_.compare(entry->key_) : CmClass::compare(other);
}

std::uint32_t ArchiveEntry::hash(std::uint32_t tableSize) const {
    return key_.hash(tableSize);
}

} // namespace tessera
