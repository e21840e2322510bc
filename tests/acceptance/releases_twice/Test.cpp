#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, AReferenceGivenBackTwiceIsTold) {
    ASSERT_EQ(load("releases_twice"), "");
    EXPECT_EQ(misusesToTheEnd(), Lines{"Selection.release: a reference was given back that nobody had taken"});
}

} // namespace
} // namespace tessera::acceptance
