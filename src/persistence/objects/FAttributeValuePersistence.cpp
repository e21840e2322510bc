// The type word, then the value: an object with its class, a foreign object in its wrapper, a text as a framework
// string, a 64-bit integer or a 64-bit float. The word is written as it is held; what it says about holding means
// nothing to the reader, who holds everything itself.
#include "foundation/containers/CmString.h"
#include "foundation/messages/FAttributeValue.h"
#include "foundation/object/CmDelegatingUnknown.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/streams/FStream.h"

namespace tessera {

using namespace AttributeBits;

namespace {

constexpr std::int32_t kUnreadableValue = -97;

} // namespace

bool FAttributeValue::write(FStream& stream) const {
    if (!stream.writeUInt16(type_)) {
        return false;
    }
    if (hasType(kObject)) {
        return writeObject(stream, getObject());
    }
    if (hasType(kForeign)) {
        return CmDelegatingUnknown(getForeign()).write(stream);
    }
    if (hasType(kText)) {
        return FString(getText()).writeString(stream);
    }
    if (hasType(kInteger)) {
        return stream.writeInt64(getInt());
    }
    return hasType(kFloat) && stream.writeDouble(getFloat());
}

bool FAttributeValue::read(FStream& stream) {
    clear();
    std::uint16_t type = 0;
    if (stream.readUInt16(type) && readValue(stream, type)) {
        return true;
    }
    reportError(kUnreadableValue, FStringRef());
    return false;
}

bool FAttributeValue::readValue(FStream& stream, std::uint16_t type) {
    type_ = type & kMarks;
    if ((type & kObject) != 0) {
        CmObject* object = nullptr;
        if (!readObject(stream, CmObject::metaClass.getName(), object)) {
            return false;
        }
        const auto keep = FRefPtr<CmObject>::adopt(object);
        setObject(object, kByReference);
        return true;
    }
    if ((type & kForeign) != 0) {
        CmDelegatingUnknown wrapper;
        if (!wrapper.read(stream)) {
            return false;
        }
        setForeign(wrapper.getObject(), kByReference);
        return true;
    }
    if ((type & kText) != 0) {
        FString text;
        if (!text.readString(stream)) {
            return false;
        }
        setText(text);
        return true;
    }
    if ((type & kInteger) != 0) {
        std::int64_t value = 0;
        if (!stream.readInt64(value)) {
            return false;
        }
        setInt(value);
        return true;
    }
    double value = 0;
    if ((type & kFloat) == 0 || !stream.readDouble(value)) {
        return false;
    }
    setFloat(value);
    return true;
}

} // namespace tessera
