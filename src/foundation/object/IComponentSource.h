// IComponentSource: where components of other modules come from. The component registry implements it, and enters
// itself in ClassFactory under this identifier; without a registry ClassFactory gives null for it.
//
// What is created carries one reference for the caller; null when there is no such component. It is given back through
// releaseInstance, which ends the use of the component's module as well; what is merely released keeps it loaded. Main
// thread.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IComponentSource : IBaseUnknown {
    static constexpr FUIDBytes iid = "{7EA3DDA1-0790-4977-97A4-8588C1B71185}"_uid;

    virtual IBaseUnknown* createByIdentifier(const FUIDBytes& uid) = 0;
    virtual std::int32_t count(const char* category) = 0;
    virtual IBaseUnknown* createAt(const char* category, std::int32_t index) = 0;
    // Gives up the caller's reference of what was created here.
    virtual void releaseInstance(IBaseUnknown* instance) = 0;

protected:
    ~IComponentSource() = default;
};

} // namespace tessera
