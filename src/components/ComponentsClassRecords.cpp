// The class records of the components, in the order in which they are entered.
#include "components/FModule.h"

namespace tessera {

FMetaClass FModuleBase::metaClass("FModuleBase", &CmObject::metaClass, &createCmObject<FModuleBase>);
FMetaClass FModule::metaClass("FModule", &FModuleBase::metaClass, &createCmObject<FModule>);

} // namespace tessera
