#include "persistence/files/FileCopy.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FileCopy, ProgressCountsBytesBelowTwoGigabytes) {
    EXPECT_EQ(progressUnit(0), 1);
    EXPECT_EQ(progressUnit(0x7fffffff), 1);
}

TEST(FileCopy, ProgressOfLargerFilesStaysInside31Bits) {
    EXPECT_EQ(progressUnit(0x80000000), 2);
    EXPECT_EQ(progressUnit(0xfffffffe), 3);
    EXPECT_EQ(progressUnit(10000000000), 5);
    for (const std::int64_t size : {0x80000000LL, 0xffffffffLL, 10000000000LL, 0x7fffffffffffLL}) {
        EXPECT_LE(size / progressUnit(size), 0x7fffffff) << size;
    }
}

} // namespace
} // namespace tessera
