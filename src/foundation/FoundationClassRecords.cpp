// The class records of the foundation, in the order in which they are entered: a base stands before its children, an
// alias behind its class. They stand in one source because the order of initialisation is fixed within a source alone.
// A class that isn't in here can't be created or found by its name.
#include "foundation/containers/CmArray.h"
#include "foundation/containers/CmAssociation.h"
#include "foundation/containers/CmBTreeDictionary.h"
#include "foundation/containers/CmBuffer.h"
#include "foundation/containers/CmHashTable.h"
#include "foundation/containers/CmOrderedArray.h"
#include "foundation/containers/CmQueue.h"
#include "foundation/containers/CmStack.h"
#include "foundation/containers/CmString.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/object/CmUID.h"
#include "foundation/object/FAllocator.h"
#include "foundation/object/FLibraryLoader.h"
#include "foundation/object/FObjectOrder.h"
#include "foundation/object/UHostList.h"

namespace tessera {
namespace {

// Factories of services hand out the one object with a further reference.
template <class Service, class Interface>
void* shareService() {
    Interface& service = Service::getInstance();
    service.addRef();
    return &service;
}

} // namespace

// object/
FMetaClass CmObject::metaClass("CmObject", nullptr, &createCmObject<CmObject>);
FMetaClass UHostList::metaClass("UHostList", &CmObject::metaClass, &createCmObject<UHostList>);
FMetaClass CmUID::metaClass("CmUID", &CmObject::metaClass, &createCmObject<CmUID>);
FMetaClass CmDelegatingUnknown::metaClass("CmDelegatingUnknown", &CmObject::metaClass,
                                          &createCmObject<CmDelegatingUnknown>);

// containers/
FMetaClass CmContainer::metaClass("CmContainer", &CmObject::metaClass, nullptr);
FMetaClass CmLinkedList::metaClass("CmLinkedList", &CmContainer::metaClass, &createCmObject<CmLinkedList>);
FMetaClass CmQueue::metaClass("CmQueue", &CmLinkedList::metaClass, &createCmObject<CmQueue>);
FMetaClass CmStack::metaClass("CmStack", &CmLinkedList::metaClass, &createCmObject<CmStack>);
FMetaClass CmArray::metaClass("CmArray", &CmContainer::metaClass, &createCmObject<CmArray>);
FMetaClass CmOrderedArray::metaClass("CmOrderedArray", &CmContainer::metaClass, &createCmObject<CmOrderedArray>);
FMetaClass CmBTree::metaClass("CmBTree", &CmContainer::metaClass, &createCmObject<CmBTree>);
FMetaClass CmBTreeDictionary::metaClass("CmBTreeDictionary", &CmBTree::metaClass, &createCmObject<CmBTreeDictionary>);
FMetaClass CmHashTable::metaClass("CmHashTable", &CmContainer::metaClass, &createCmObject<CmHashTable>);
FMetaClass CmAssociation::metaClass("CmAssociation", &CmObject::metaClass, &createCmObject<CmAssociation>);
FMetaClass CmString::metaClass("CmString", &CmObject::metaClass, &createCmObject<CmString>);
FMetaClass CmBuffer::metaClass("CmBuffer", &CmObject::metaClass, &createCmObject<CmBuffer>);

// Services that other modules ask for by identifier; they have no name.
namespace {

const FMetaClass objectOrderRecord(nullptr, nullptr, &shareService<FObjectOrder, IObjectOrder>, IObjectOrder::iid);
const FMetaClass allocatorRecord(nullptr, nullptr, &shareService<FAllocator, IAllocator>, IAllocator::iid);
const FMetaClass libraryLoaderRecord(nullptr, nullptr, &createInterface<FLibraryLoader, ILibraryLoader>,
                                     ILibraryLoader::iid);
const FMetaClass hostListRecord(nullptr, nullptr, &createInterface<UHostList, IHostList>, IHostList::iid);

} // namespace
} // namespace tessera
