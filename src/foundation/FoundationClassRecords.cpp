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
#include "foundation/messages/FAttributeListObject.h"
#include "foundation/messages/FIntIDAttribute.h"
#include "foundation/messages/FMessage.h"
#include "foundation/messages/FMessenger.h"
#include "foundation/messages/FPostedMessage.h"
#include "foundation/messages/FStringIDAttribute.h"
#include "foundation/messages/UpdateHandler.h"
#include "foundation/object/CmClass.h"
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/object/CmUID.h"
#include "foundation/object/FAllocator.h"
#include "foundation/object/FLibraryLoader.h"
#include "foundation/object/FObjectOrder.h"
#include "foundation/object/UHostList.h"
#include "foundation/values/UIntDefValue.h"
#include "foundation/values/UPlugTarget.h"

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

// messages/
FMetaClass FMessage::metaClass("FMessage", &CmObject::metaClass, &createCmObject<FMessage>);
FMetaClass FAttributeValue::metaClass("FAttributeValue", &CmObject::metaClass, &createCmObject<FAttributeValue>);
FMetaClass FIntIDAttribute::metaClass("FIntIDAttribute", &FAttributeValue::metaClass, &createCmObject<FIntIDAttribute>);
FMetaClass FStringIDAttribute::metaClass("FStringIDAttribute", &FAttributeValue::metaClass,
                                         &createCmObject<FStringIDAttribute>);
FMetaClass FPostedMessage::metaClass("FPostedMessage", &CmObject::metaClass, nullptr);
FMetaClass FMessenger::metaClass("FMessenger", &CmObject::metaClass, nullptr);

// values/
FMetaClass UValue::metaClass("UValue", &CmObject::metaClass, &createCmObject<UValue>);
FMetaClass UIntValue::metaClass("UIntValue", &UValue::metaClass, &createCmObject<UIntValue>);
FMetaClass UIntDefValue::metaClass("UIntDefValue", &UIntValue::metaClass, nullptr);
FMetaClass UPlugTarget::metaClass("UPlugTarget", &CmObject::metaClass, nullptr);
namespace {
// The names that values have in documents. The one with a default can't be created by name: nobody registers it.
FMetaClass valueAlias(UValue::kBindingName, UValue::metaClass);
FMetaClass intValueAlias(UIntValue::kBindingName, UIntValue::metaClass);
FMetaClass intDefValueAlias(UIntDefValue::kBindingName, UIntDefValue::metaClass);
} // namespace

// Services that other modules ask for by identifier; they have no name.
namespace {

// Null when the end of the process has taken the service away.
template <class Service, class Interface>
void* shareSingleton(Service* service) {
    if (service == nullptr) {
        return nullptr;
    }
    service->addRef();
    return static_cast<Interface*>(service);
}

void* shareUpdateHandler() {
    return shareSingleton<UpdateHandler, IUpdateRegistry>(UpdateHandler::getInstance(true));
}

void* shareMessenger() {
    return shareSingleton<FMessenger, IMessagePost>(FMessenger::getInstance());
}

const FMetaClass objectOrderRecord(nullptr, nullptr, &shareService<FObjectOrder, IObjectOrder>, IObjectOrder::iid);
const FMetaClass allocatorRecord(nullptr, nullptr, &shareService<FAllocator, IAllocator>, IAllocator::iid);
const FMetaClass libraryLoaderRecord(nullptr, nullptr, &createInterface<FLibraryLoader, ILibraryLoader>,
                                     ILibraryLoader::iid);
const FMetaClass hostListRecord(nullptr, nullptr, &createInterface<UHostList, IHostList>, IHostList::iid);
const FMetaClass updateHandlerRecord(nullptr, nullptr, &shareUpdateHandler, IUpdateRegistry::iid);
const FMetaClass messageRecord(nullptr, nullptr, &createInterface<FMessage, IMessageAccess>, IMessageAccess::iid);
// Created under the identifier of its other interface, a message comes by its first one all the same.
const FMetaClass messageObjectsRecord(nullptr, nullptr, &createInterface<FMessage, IMessageAccess>,
                                      IMessageObjects::iid);
const FMetaClass messengerRecord(nullptr, nullptr, &shareMessenger, IMessagePost::iid);
const FMetaClass attributeListRecord(nullptr, nullptr, &createInterface<FAttributeListObject, IAttributeList>,
                                     IAttributeList::iid);
const FMetaClass secondAttributeListRecord(nullptr, nullptr, &createInterface<FAttributeListObject, IAttributeList>,
                                           IAttributeList::secondIid);
const FMetaClass plugTargetRecord(nullptr, nullptr, &createInterface<UPlugTarget, IPlugTarget>, IPlugTarget::iid);

} // namespace
} // namespace tessera
