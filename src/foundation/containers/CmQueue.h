// CmQueue: first in, first out. Elements come out as they went in: dequeue releases nothing, so what the queue held of
// an owned or shared element is the caller's then.
#pragma once

#include "foundation/containers/CmLinkedList.h"

namespace tessera {

class CmQueue : public CmClass<CmQueue, CmLinkedList> {
public:
    static FMetaClass metaClass;

    CmQueue* clone() const override;

    // False for null.
    bool enqueue(CmObject* element) { return CmLinkedList::add(element); }
    // Null when the queue is empty.
    CmObject* dequeue() { return takeFirst(); }
};

} // namespace tessera
