// The wrapped object saves itself into a tree of named values. A stream gets the identifier of its class, as CmUID
// writes one, and the tree record; another tree gets both under a key each.
#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/object/CmUID.h"
#include "foundation/object/IComponentSource.h"
#include "foundation/object/IPersistentObject.h"
#include "persistence/attributes/FAttributes.h"

namespace tessera {

namespace {

constexpr char kDataKey[] = "ObjData";

} // namespace

bool CmDelegatingUnknown::saveObject(FUIDBytes& uid, FAttributes& attributes) const {
    const auto persistent = queryFor<IPersistentObject>(object_.get());
    return persistent && persistent->saveAttributes(&attributes) == kResultOk &&
           persistent->getClassUID(uid) == kResultOk;
}

bool CmDelegatingUnknown::createObject(const FUIDBytes& uid) {
    object_.reset();
    const ClassFactory* registry = ClassFactory::getInstance(false);
    if (registry == nullptr) {
        return false;
    }
    const auto source = FRefPtr<IComponentSource>::adopt(
        static_cast<IComponentSource*>(registry->createInstance(IComponentSource::iid)));
    if (source) {
        object_ = FRefPtr<IBaseUnknown>::adopt(source->createByIdentifier(uid));
    }
    return static_cast<bool>(object_);
}

bool CmDelegatingUnknown::loadObject(FAttributes& attributes) {
    const auto persistent = queryFor<IPersistentObject>(object_.get());
    return persistent && persistent->loadAttributes(&attributes) == kResultOk;
}

bool CmDelegatingUnknown::write(FStream& stream) const {
    FUIDBytes uid;
    FAttributes attributes;
    return saveObject(uid, attributes) && CmUID(uid).write(stream) && attributes.write(stream);
}

bool CmDelegatingUnknown::read(FStream& stream) {
    CmUID uid;
    FAttributes attributes;
    return uid.read(stream) && createObject(uid.bytes()) && attributes.read(stream) && loadObject(attributes);
}

bool CmDelegatingUnknown::storeAttributes(FAttributes& attributes) const {
    FUIDBytes uid;
    auto data = FRefPtr<FAttributes>::adopt(new FAttributes);
    return saveObject(uid, *data) && CmUID(uid).storeAttributes(attributes) &&
           attributes.setObject(kDataKey, data.detach(), AttributeHolding::owned);
}

bool CmDelegatingUnknown::restoreAttributes(FAttributes& attributes) {
    CmUID uid;
    FAttributes* data = attributes.getTree(kDataKey);
    return data != nullptr && uid.restoreAttributes(attributes) && createObject(uid.bytes()) && loadObject(*data);
}

} // namespace tessera
