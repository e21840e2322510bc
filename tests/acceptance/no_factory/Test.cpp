#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, ALibraryWithoutAFactoryIsNoModule) {
    EXPECT_EQ(load("no_factory"), "\"" + fileOf("no_factory") +
                                      "\" is no module: it lacks the function GetPluginFactory or refused to start; "
                                      "give another one with --module");
}

} // namespace
} // namespace tessera::acceptance
