// FThreadObserver: is told of every FThread object that comes and goes, for diagnosis. One for the whole process.
#pragma once

namespace tessera {

class FThread;

class FThreadObserver {
public:
    // On the thread that constructs or destroys the object. Its derived part isn't there yet, or no longer.
    virtual void threadCreated(FThread* thread) = 0;
    virtual void threadDestroyed(FThread* thread) = 0;

protected:
    ~FThreadObserver() = default;
};

// The caller keeps the observer and withdraws it, with null, before it goes.
void setThreadObserver(FThreadObserver* observer);

} // namespace tessera
