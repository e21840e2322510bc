#include "appservices/defaults/GroupFileName.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

// Files in the field have these names.
TEST(GroupFileName, IsTheDigestOfTheCharactersInUpperCase) {
    EXPECT_EQ(groupFileName("Default Paths"), FStringRef("5006477BD576591BDD67663754C3B5C2"));
    EXPECT_EQ(groupFileName("a"), FStringRef("0CC175B9C0F1B6A831C399E269772661"));
}

TEST(GroupFileName, MakesALegalNameOfAnyText) {
    EXPECT_EQ(groupFileName("../*:?").length(), 32);
    EXPECT_EQ(groupFileName("").length(), 32);
    EXPECT_NE(groupFileName("Group"), groupFileName("group"));
}

} // namespace
} // namespace tessera
