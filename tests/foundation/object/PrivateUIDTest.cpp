// The private identifier tells the objects of one load of the module from those of any other.
#include "foundation/object/FObject.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace tessera {
namespace {

std::string identifierOfAnotherProcess() {
    std::FILE* program = popen(PRINT_PRIVATE_UID, "r");
    char line[64] = "";
    if (program != nullptr) {
        static_cast<void>(std::fgets(line, sizeof line, program));
        pclose(program);
    }
    return line;
}

TEST(PrivateUID, DiffersBetweenTwoLoads) {
    const std::string first = identifierOfAnotherProcess();
    const std::string second = identifierOfAnotherProcess();
    ASSERT_EQ(first.size(), 32u);
    ASSERT_EQ(second.size(), 32u);
    EXPECT_NE(first, second);
}

TEST(PrivateUID, StaysTheSameWithinOne) {
    const FUIDBytes first = FObject::privateUID();
    EXPECT_TRUE(first == FObject::privateUID());
}

} // namespace
} // namespace tessera
