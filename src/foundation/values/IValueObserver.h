// IValueObserver: sees each notification of every value of the process; for logging. See UValue::setGlobalObserver.
#pragma once

namespace tessera {

class UValue;

class IValueObserver {
public:
    // On the value's thread, before its target hears of it.
    virtual void valueNotifies(UValue& value) = 0;

protected:
    ~IValueObserver() = default;
};

} // namespace tessera
