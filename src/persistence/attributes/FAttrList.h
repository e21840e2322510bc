// FAttrList: a list of values of one kind as the value of an attribute, with a read cursor.
//
// The forms: FIntList, FFloatList, FStringList, FObjectList, FSubList. Each is appended to, asked by index, and read by
// its next, which moves the cursor on; at the end next says no and leaves the cursor there until reset. (FSubList alone
// resets itself.) Not synchronised.
#pragma once

#include "foundation/object/CmClass.h"

#include <cstdint>

namespace tessera {

enum class FAttrListKind { integers, floats, strings, objects, subs };

class FAttrList : public CmClass<FAttrList, CmObject> {
public:
    static FMetaClass metaClass;

    virtual FAttrListKind getKind() const = 0;
    virtual std::int32_t count() const = 0;
    void reset() { cursor_ = 0; }

protected:
    FAttrList() = default;
    // A copy is read from its start.
    FAttrList(const FAttrList& other) : CmClass(other) {}
    FAttrList& operator=(const FAttrList&) = delete;
    ~FAttrList() override = default;

    std::int32_t cursor_ = 0;
};

} // namespace tessera
