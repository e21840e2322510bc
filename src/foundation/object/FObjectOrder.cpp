#include "foundation/object/FObjectOrder.h"

#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"

namespace tessera {

FObjectOrder& FObjectOrder::getInstance() {
    static constinit FObjectOrder instance;
    return instance;
}

FResult FObjectOrder::isSameObject(IBaseUnknown* a, IBaseUnknown* b) {
    const CmObject* ours = asCmObject(a);
    const CmObject* others = asCmObject(b);
    if (ours != nullptr && others != nullptr) {
        return ours == others ? kResultOk : kResultFalse;
    }
    return queryFor<IBaseUnknown>(a) == queryFor<IBaseUnknown>(b) ? kResultOk : kResultFalse;
}

FResult FObjectOrder::compareObjects(IBaseUnknown* a, IBaseUnknown* b, std::int32_t* result) {
    const CmObject* ours = asCmObject(a);
    const CmObject* others = asCmObject(b);
    if (result == nullptr || ours == nullptr || others == nullptr) {
        return kInvalidArgument;
    }
    *result = ours->compare(others);
    return kResultOk;
}

} // namespace tessera
