// IAttributeList: the attribute-list object that other modules create by identifier. It is known by its identifiers
// alone; a module hands it on and asks nothing of it.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IAttributeList : IBaseUnknown {
    static constexpr FUIDBytes iid = "{DA76D0E4-50CA-4F1F-B5CF-917FC146583D}"_uid;
    // Under this one it is created and answered as well.
    static constexpr FUIDBytes secondIid = "{E72A95FB-CBBC-460E-B8DE-DE5382F79F25}"_uid;

protected:
    ~IAttributeList() = default;
};

} // namespace tessera
