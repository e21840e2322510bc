// IMediaObject: a host object that carries media attributes. It offers IMediaAttributes.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct AttributeValue;

struct IMediaObject : IBaseUnknown {
    // Slot 3. Main thread. For instance "range".
    virtual bool hasProperty(const char* name) = 0;

    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;

    // Slot 7. Main thread. The value of an attribute; a text in it stays the object's. Anything but kResultOk: there
    // is none.
    virtual FResult attribute(const char* key, AttributeValue* value) = 0;

protected:
    ~IMediaObject() = default;
};

} // namespace tessera
