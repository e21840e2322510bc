#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, AnExceptionOutOfTerminateEndsAtTheHost) {
    ASSERT_EQ(load("throws"), "");
    EXPECT_EQ(misusesToTheEnd(), Lines{"an exception came out of IPlugin.terminate: broken to the end"});
}

} // namespace
} // namespace tessera::acceptance
