#include "foundation/containers/CmAssociation.h"
#include "persistence/objects/ObjectStreaming.h"

// The key, then the value, each as an object with its class.
namespace tessera {

bool CmAssociation::read(FStream& stream) {
    CmObject* key = nullptr;
    CmObject* value = nullptr;
    if (!readObject(stream, "CmObject", key)) {
        return false;
    }
    if (!readObject(stream, "CmObject", value)) {
        // Nobody else knows of it yet.
        if (key != nullptr) {
            key->release();
        }
        return false;
    }
    key_ = key;
    value_ = value;
    return true;
}

bool CmAssociation::write(FStream& stream) const {
    return writeObject(stream, key_) && writeObject(stream, value_);
}

} // namespace tessera
