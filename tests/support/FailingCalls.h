// FailingCalls: lets one call of the operating system fail, so that a test can fail every step in turn: run the work
// once and count its calls, then run it again with the first call failing, the second, and so on.
//
// A program uses it by linking FailingCalls.cpp and being linked with the option --wrap for each call named there (see
// tesx_add_failing_calls): every use of such a call in our code, but none inside the libraries, then comes through
// here. Calls count only between arm() and disarm(), on the thread that armed.
#pragma once

#include <string>

namespace tessera::testing_support {

class FailingCalls {
public:
    // The call of that number, counted from 1, fails with the error; 0 counts and fails none.
    static void arm(int failingCall, int error);
    // The process ends at the call of that number, as by kill -9: ahead of the call, but half-way through a write.
    static void armToDie(int lastCall);
    // How many calls came.
    static int disarm();
    // The name of the call that failed; empty when none did.
    static std::string failed();

    // From now on, armed or not, renaming without replacing gives this error; 0 for none. So a move meets another
    // volume (EXDEV), or a file system that doesn't know such a renaming (EINVAL).
    static void setRenameError(int error);
};

} // namespace tessera::testing_support
