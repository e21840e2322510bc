#include "foundation/containers/CmContainer.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/streams/FStream.h"

// The 16-bit ownership, the 32-bit count, then each element as an object with its class.
namespace tessera {

bool CmContainer::read(FStream& stream) {
    return readElements(stream);
}

bool CmContainer::write(FStream& stream) const {
    return writeElements(stream);
}

bool CmContainer::readElements(FStream& stream) {
    std::int16_t ownership = 0;
    std::int32_t count = 0;
    if (!stream.readInt16(ownership) || !stream.readInt32(count) || count < 0) {
        return false;
    }
    // What is read comes with the one reference that it needs: nothing may be retained on the way in.
    const CmOwnership before = ownership_;
    ownership_ = CmOwnership::none;
    for (; count > 0; --count) {
        CmObject* element = nullptr;
        if (!readObject(stream, "CmObject", element) || element == nullptr) {
            ownership_ = before;
            return false;
        }
        if (!add(element)) {
            discard(element);
            ownership_ = before;
            return false;
        }
    }
    ownership_ = static_cast<CmOwnership>(ownership);
    return true;
}

bool CmContainer::writeElements(FStream& stream) const {
    return stream.writeInt16(static_cast<std::int16_t>(ownership_)) && stream.writeInt32(getCount()) &&
           forEach([&stream](const CmObject* element) { return writeObject(stream, element); });
}

} // namespace tessera
