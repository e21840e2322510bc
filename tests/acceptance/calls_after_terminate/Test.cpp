#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, ACallAfterTerminateIsToldAndRefused) {
    ASSERT_EQ(load("calls_after_terminate"), "");
    const Lines misuses = misusesToTheEnd();
    ASSERT_EQ(misuses.size(), 2U);
    EXPECT_EQ(misuses[0], "Transport is still held after terminate, 1 reference");
    EXPECT_EQ(misuses[1], "Transport.locate was called after terminate");
}

} // namespace
} // namespace tessera::acceptance
