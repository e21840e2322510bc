// The class records of this layer, in one place so that their order is fixed.
#include "appservices/formatting/CmDate.h"
#include "appservices/formatting/CmTime.h"

namespace tessera {

FMetaClass CmTime::metaClass("CmTime", &CmObject::metaClass, &createCmObject<CmTime>);
FMetaClass CmDate::metaClass("CmDate", &CmObject::metaClass, &createCmObject<CmDate>);

} // namespace tessera
