// CmStack: last in, first out. The top is the head of the list; add, as in every list, appends at the bottom, so that a
// copied or reloaded stack keeps its order. pop releases nothing: what the stack held of an element is the caller's
// then.
#pragma once

#include "foundation/containers/CmLinkedList.h"

namespace tessera {

class CmStack : public CmClass<CmStack, CmLinkedList> {
public:
    static FMetaClass metaClass;

    CmStack* clone() const override;

    // False for null.
    bool push(CmObject* element) { return prepend(element); }
    // Null when the stack is empty.
    CmObject* pop() { return takeFirst(); }
};

} // namespace tessera
