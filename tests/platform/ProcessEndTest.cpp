#include "platform/ProcessEnd.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tessera::platform {
namespace {

struct AtExit {
    ~AtExit() {
        // A program's own exit handlers run before the system stops anything, on every system.
        std::_Exit(otherThreadsAreGone() ? 1 : 0);
    }
};

TEST(ProcessEnd, AProgramHasItsThreadsAtWorkAndInItsExitHandlers) {
    EXPECT_FALSE(otherThreadsAreGone());
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static const AtExit atExit;
            std::exit(2);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace tessera::platform
