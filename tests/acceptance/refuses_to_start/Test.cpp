#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, AModuleThatRefusesToStartIsRefused) {
    EXPECT_NE(load("refuses_to_start").find("refused to start"), std::string::npos);
}

} // namespace
} // namespace tessera::acceptance
