#include "foundation/threads/FSemaphore.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FSemaphore, IsTakenAsOftenAsItsInitialCount) {
    FSemaphore semaphore(3);
    EXPECT_TRUE(semaphore.isValid());
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(-1)) << "without limit";
    EXPECT_TRUE(semaphore.wait(-5)) << "any negative time is without limit";
    EXPECT_FALSE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(30));
}

TEST(FSemaphore, WithANegativeCountIsNotValid) {
    FSemaphore semaphore(-1);
    EXPECT_FALSE(semaphore.isValid());
    EXPECT_FALSE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(-1));
}

} // namespace
} // namespace tessera
