#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, AModuleForOtherHostsIsRefused) {
    EXPECT_EQ(load("no_service"), "the module offers no class of the category \"Service\"; it is for other hosts");
}

} // namespace
} // namespace tessera::acceptance
