#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, AModuleWithoutMemoryIsRefused) {
    EXPECT_EQ(load("null_factory"), "the module \"" + fileOf("null_factory") + "\" gave no factory");
}

} // namespace
} // namespace tessera::acceptance
