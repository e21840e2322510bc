// ChildProcessListener: is told when a child process has ended.
#pragma once

namespace tessera {

class ChildProcess;

class ChildProcessListener {
public:
    // On the monitor's thread, about 200 ms after the end at most, under the lock of the watched children: it must not
    // wait for a thread that starts or ends children. It may start the child again, or delete it.
    virtual void onChildEnded(ChildProcess& child) = 0;

protected:
    ~ChildProcessListener() = default;
};

} // namespace tessera
