#include "acceptance/BrokenModuleFixture.h"

namespace tessera::acceptance {
namespace {

TEST_F(BrokenModuleFixture, ReferencesThatAreKeptAreToldByName) {
    ASSERT_EQ(load("leaks_references"), "");
    EXPECT_EQ(misusesToTheEnd(), Lines{"Selection is still held after terminate, 2 references"});
}

} // namespace
} // namespace tessera::acceptance
