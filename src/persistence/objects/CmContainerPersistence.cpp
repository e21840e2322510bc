#include "foundation/containers/CmContainer.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FXmlObject.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/streams/FStream.h"

#include <algorithm>
#include <utility>

// On a stream: the 16-bit ownership, the 32-bit count, then each element as an object with its class.
namespace tessera {

namespace {

constexpr char kOwnershipKey[] = "ownership";
constexpr char kElementKey[] = "obj";

} // namespace

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

bool CmContainer::storeAttributes(FAttributes& attributes) const {
    if (ownership_ != CmOwnership::none && !attributes.setInt(kOwnershipKey, static_cast<std::int64_t>(ownership_))) {
        return false;
    }
    return forEach([&attributes](CmObject* element) { return attributes.appendObject(kElementKey, element); });
}

bool CmContainer::restoreAttributes(FAttributes& attributes) {
    std::int64_t ownership = 0;
    attributes.getInt(kOwnershipKey, ownership);
    // As behind a stream, each element comes with the one reference that it needs.
    const CmOwnership before = ownership_;
    ownership_ = CmOwnership::none;
    std::vector<CmObject*> added;
    const auto addElement = [this, &added](CmObject* element) {
        // One that can't be had is passed over: the others mean something without it.
        CmObject* object = FXmlObject::resolve(element);
        if (object == nullptr) {
            return true;
        }
        object->addRef();
        if (!add(object)) {
            discard(object);
            return false;
        }
        added.push_back(object);
        return true;
    };
    bool complete = true;
    for (std::int32_t i = 0; complete && i < attributes.getCount(); ++i) {
        const FStringIDAttribute& record = *attributes.at(i);
        if (!(record.getKey() == kElementKey)) {
            continue;
        }
        const auto* list = cmCast<FObjectList>(record.getObject());
        for (std::int32_t j = 0; list != nullptr && complete && j < list->count(); ++j) {
            complete = addElement(list->at(j));
        }
    }
    if (!complete) {
        takeBack(std::move(added));
    }
    ownership_ = complete ? static_cast<CmOwnership>(ownership) : before;
    return complete;
}

} // namespace tessera
