// IComponentObserver: is told of the classes that come and go in a component registry.
#pragma once

namespace tessera {

class FComponentDescription;

class IComponentObserver {
public:
    // It is about to be entered; whether it is available is known.
    virtual void componentAdded(FComponentDescription& description) = 0;
    // It has been taken out; borrowed for the call.
    virtual void componentRemoved(FComponentDescription& description) = 0;

protected:
    ~IComponentObserver() = default;
};

} // namespace tessera
