// FObjectOrder: the object-order service of this module; one static object.
#pragma once

#include "foundation/object/FStaticService.h"
#include "foundation/object/IObjectOrder.h"

namespace tessera {

class FObjectOrder final : public FStaticService<IObjectOrder> {
public:
    static FObjectOrder& getInstance();

    FResult isSameObject(IBaseUnknown* a, IBaseUnknown* b) override;
    FResult compareObjects(IBaseUnknown* a, IBaseUnknown* b, std::int32_t* result) override;
};

} // namespace tessera
