#include "foundation/threads/FProcessPriority.h"

#include "platform/ProcessPriority.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tessera {
namespace {

// In a process of its own, as a lowered class can't be taken back without a right.
void expectElsewhere(bool (*body)()) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::_Exit(body() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(FProcessPriority, AboveNormalWhenOffIsBelowNormal) {
    expectElsewhere([] { return setProcessAboveNormal(false) && platform::processClass() == 16384; });
}

TEST(FProcessPriority, NormalIsWhatHighWhenOffMeans) {
    EXPECT_TRUE(setProcessHighPriority(false));
    EXPECT_EQ(platform::processClass(), 32u);
}

TEST(FProcessPriority, RaisedClassIsTakenOverOnlyWhereTheSystemAllowsIt) {
    expectElsewhere([] {
        const bool raised = setProcessHighPriority(true);
        return platform::processClass() == (raised ? 128u : 32u);
    });
    expectElsewhere([] {
        const bool raised = setProcessAboveNormal(true);
        return platform::processClass() == (raised ? 32768u : 32u);
    });
}

} // namespace
} // namespace tessera
