// The class records of this layer, in one place so that their order is fixed.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "appservices/formatting/CmDate.h"
#include "appservices/formatting/CmTime.h"
#include "appservices/formatting/UFormatedValue.h"

namespace tessera {

// Known by name, and not created by it: groups are made by their pool, and there is one pool of the process.
FMetaClass FDefaults::metaClass("FDefaults", &CmObject::metaClass, nullptr);
FMetaClass FDefaultPool::metaClass("FDefaultPool", &CmObject::metaClass, nullptr);
FMetaClass FGlobalDefaultPool::metaClass("FGlobalDefaultPool", &FDefaultPool::metaClass, nullptr);

FMetaClass CmTime::metaClass("CmTime", &CmObject::metaClass, &createCmObject<CmTime>);
FMetaClass CmDate::metaClass("CmDate", &CmObject::metaClass, &createCmObject<CmDate>);
// Known by name, and not created by it: it shows what a program sets, and isn't saved.
FMetaClass UFormatedValue::metaClass("UFormatedValue", &UValue::metaClass, nullptr);

} // namespace tessera
