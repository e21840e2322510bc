#include "foundation/containers/CmContainer.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/streams/FStream.h"

#include <algorithm>
#include <utility>

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
    std::vector<CmObject*> added;
    for (; count > 0; --count) {
        CmObject* element = nullptr;
        if (!readObject(stream, "CmObject", element) || element == nullptr) {
            break;
        }
        if (!add(element)) {
            discard(element);
            break;
        }
        added.push_back(element);
    }
    if (count > 0) {
        // Nobody would own what came before the failure.
        takeBack(std::move(added));
    }
    ownership_ = count > 0 ? before : static_cast<CmOwnership>(ownership);
    return count == 0;
}

void CmContainer::takeBack(std::vector<CmObject*> added) {
    std::sort(added.begin(), added.end());
    const auto iterator = newIterator();
    while (!iterator->isDone()) {
        if (std::binary_search(added.begin(), added.end(), iterator->current())) {
            removeAtIterator(*iterator);
        } else {
            iterator->next();
        }
    }
    for (CmObject* element : added) {
        discard(element);
    }
}

bool CmContainer::writeElements(FStream& stream) const {
    return stream.writeInt16(static_cast<std::int16_t>(ownership_)) && stream.writeInt32(getCount()) &&
           forEach([&stream](const CmObject* element) { return writeObject(stream, element); });
}

} // namespace tessera
