// The class records of the foundation, in the order in which they are entered: a base stands before its children, an
// alias behind its class. They stand in one source because the order of initialisation is fixed within a source alone.
// A class that isn't in here can't be created or found by its name.
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

// Services that other modules ask for by identifier; they have no name.
namespace {

const FMetaClass objectOrderRecord(nullptr, nullptr, &shareService<FObjectOrder, IObjectOrder>, IObjectOrder::iid);
const FMetaClass allocatorRecord(nullptr, nullptr, &shareService<FAllocator, IAllocator>, IAllocator::iid);
const FMetaClass libraryLoaderRecord(nullptr, nullptr, &createInterface<FLibraryLoader, ILibraryLoader>,
                                     ILibraryLoader::iid);
const FMetaClass hostListRecord(nullptr, nullptr, &createInterface<UHostList, IHostList>, IHostList::iid);

} // namespace
} // namespace tessera
