#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, AHostThatIsNotAdmittedIsTold) {
    EXPECT_NE(load("refuses_every_host").find("start it as an admitted one"), std::string::npos);
    EXPECT_EQ(misusesToTheEnd(), Lines{});
}

} // namespace
} // namespace tessera::acceptance
