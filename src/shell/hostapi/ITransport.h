// ITransport: the play position and its parameters.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct ITransport : IBaseUnknown {
    static constexpr FUIDBytes iid = "{7E64890C-FA5C-4ECB-B37A-D80665A86C99}"_uid;

    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;

    // Slot 9. Main thread. Moves the play position; seconds of the active project.
    virtual void locate(double seconds) = 0;

    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    virtual void reserved13() = 0;
    virtual void reserved14() = 0;
    virtual void reserved15() = 0;
    virtual void reserved16() = 0;
    virtual void reserved17() = 0;
    virtual void reserved18() = 0;
    virtual void reserved19() = 0;
    virtual void reserved20() = 0;
    virtual void reserved21() = 0;
    virtual void reserved22() = 0;
    virtual void reserved23() = 0;
    virtual void reserved24() = 0;
    virtual void reserved25() = 0;
    virtual void reserved26() = 0;
    virtual void reserved27() = 0;
    virtual void reserved28() = 0;
    virtual void reserved29() = 0;
    virtual void reserved30() = 0;

    // Slot 31. Main thread. The parameter of that 8-bit name, which stays the host's, or null. "cycleLeftTime" and
    // "cycleRightTime" offer ITimeValue.
    virtual IBaseUnknown* parameter(const char* name) = 0;

protected:
    ~ITransport() = default;
};

} // namespace tessera
