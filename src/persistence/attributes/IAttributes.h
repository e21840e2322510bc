// IAttributes: a tree of named values as modules see it: values set and got by name, and queues, which are lists that
// are appended to and read one after the other. The attribute interface of FAttributes.
//
// Names are 8-bit, end with a zero, and are copied. Every operation that gives a result answers kResultOk, or
// kResultFalse when it can't be done. A value goes in by a reference that isn't const: an object whose variant has the
// owner bit changes hands, and the bit is gone afterwards; any other object gets a reference of the tree's own. Texts
// are copied, whoever owns them. What comes out belongs to the tree and stands until the value changes.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

class FVariant;

struct IAttributes : IBaseUnknown {
    static constexpr FUIDBytes iid = "{9D2C64F1-58A7-4B3E-A0D6-71E3C85B1F42}"_uid;

    // Replaces the first value of that name.
    virtual FResult set(const char* name, FVariant& value) = 0;
    // The first value makes a list for values of its kind; a value of another kind, and a name that has no list, fail.
    virtual FResult queue(const char* name, FVariant& value) = 0;
    // Without copy the bytes have to outlive the tree.
    virtual FResult setBinary(const char* name, const void* data, std::uint32_t size, bool copy) = 0;
    virtual FResult get(const char* name, FVariant& out) = 0;
    // The next value of the list; fails at its end, and stays there until resetQueue. A list of trees begins anew.
    virtual FResult unqueue(const char* name, FVariant& out) = 0;
    virtual std::int32_t queuedCount(const char* name) = 0;
    virtual FResult resetQueue(const char* name) = 0;
    virtual FResult resetAllQueues() = 0;
    // Copies at most size bytes.
    virtual FResult getBinary(const char* name, void* buffer, std::uint32_t size) = 0;
    virtual FResult getBinarySize(const char* name, std::uint32_t* size) = 0;
    virtual std::int32_t count() = 0;
    // Null for a bad index.
    virtual const char* getName(std::int32_t index) = 0;

protected:
    ~IAttributes() = default;
};

} // namespace tessera
