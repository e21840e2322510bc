// Binary form: the 32-bit count, and that many entries without their class. As a tree: the list "Entries" of their
// trees.
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/registry/FRegistryBackup.h"
#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

constexpr const char* kEntries = "Entries";

} // namespace

bool FRegistryBackup::read(FStream& stream) {
    entries_.removeAll();
    std::int32_t count = 0;
    if (!stream.readInt32(count) || count < 0) {
        return false;
    }
    for (; count > 0; --count) {
        auto entry = FRefPtr<FRegistryEntry>::adopt(new FRegistryEntry);
        if (!entry->read(stream) || !entries_.add(entry.get())) {
            return false;
        }
        static_cast<void>(entry.detach());
    }
    return true;
}

bool FRegistryBackup::write(FStream& stream) const {
    return stream.writeInt32(getCount()) &&
           entries_.forEach([&stream](const CmObject* entry) { return entry->write(stream); });
}

bool FRegistryBackup::storeAttributes(FAttributes& attributes) const {
    return entries_.forEach([&attributes](const CmObject* entry) {
        auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
        return entry->storeAttributes(*tree) && attributes.appendSub(kEntries, tree.detach());
    });
}

bool FRegistryBackup::restoreAttributes(FAttributes& attributes) {
    entries_.removeAll();
    attributes.resetList(kEntries);
    while (FAttributes* tree = attributes.nextSub(kEntries)) {
        auto entry = FRefPtr<FRegistryEntry>::adopt(new FRegistryEntry);
        if (!entry->restoreAttributes(*tree) || !entries_.add(entry.get())) {
            return false;
        }
        static_cast<void>(entry.detach());
    }
    return true;
}

} // namespace tessera
