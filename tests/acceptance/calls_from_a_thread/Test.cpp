#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, ACallFromAThreadIsToldAndRefused) {
    ASSERT_EQ(load("calls_from_a_thread"), "");
    EXPECT_EQ(host().transport().position(), 0);
    EXPECT_EQ(misusesToTheEnd(), Lines{"Transport.locate was called from another thread than the host's main thread"});
}

} // namespace
} // namespace tessera::acceptance
