// IValue: a value as other modules see it: a number in a range. The first interface of UValue.
//
// All on the thread that the value belongs to.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IValue : IBaseUnknown {
    static constexpr FUIDBytes iid = "{409112CC-61B8-4C28-83D4-5DA173EEB309}"_uid;

    virtual bool isEnabled() const = 0;
    // The value is limited to the range, or left alone when it may not be changed.
    virtual void setValue(std::int32_t value) = 0;
    virtual std::int32_t getValue() const = 0;
    virtual std::int32_t getMinimum() const = 0;
    virtual std::int32_t getMaximum() const = 0;
    virtual std::int32_t getDefault() const = 0;

protected:
    ~IValue() = default;
};

} // namespace tessera
