// NanomsgSpy: stands between our code and the nanomsg library in the test program that links it. It counts the calls
// and lets one of them fail on demand; every other call goes to the real library.
#pragma once

#include <string>

namespace tessera::test {

class NanomsgSpy {
public:
    // Counting starts anew; nothing fails.
    static void reset();

    // The name of the operation, "nn_bind" and the like.
    static int calls(const std::string& operation);
    static int totalCalls();

    // The next call of the operation fails with the number instead of reaching the library.
    static void failNext(const std::string& operation, int error);
};

} // namespace tessera::test
