// Binary form: the 32-bit count, and that many entries without their class.
#include "foundation/object/FRefPtr.h"
#include "persistence/registry/FRegistryBackup.h"
#include "persistence/streams/FStream.h"

namespace tessera {

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

} // namespace tessera
