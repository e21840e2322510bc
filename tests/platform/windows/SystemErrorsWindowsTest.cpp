// The error numbers of Windows, and its words for them.
#include "platform/SystemErrors.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tessera::platform {
namespace {

TEST(SystemErrorsWindows, AreSortedIntoTheTroublesThatUsersKnow) {
    EXPECT_EQ(troubleOf(ERROR_SUCCESS), ErrorTrouble::none);
    EXPECT_EQ(troubleOf(ERROR_CRC), ErrorTrouble::transfer);
    EXPECT_EQ(troubleOf(ERROR_FILE_NOT_FOUND), ErrorTrouble::notFound);
    EXPECT_EQ(troubleOf(ERROR_PATH_NOT_FOUND), ErrorTrouble::notFound);
    EXPECT_EQ(troubleOf(ERROR_FILENAME_EXCED_RANGE), ErrorTrouble::nameTooLong);
    EXPECT_EQ(troubleOf(ERROR_DISK_FULL), ErrorTrouble::diskFull);
    EXPECT_EQ(troubleOf(ERROR_WRITE_PROTECT), ErrorTrouble::readOnly);
    EXPECT_EQ(troubleOf(ERROR_ACCESS_DENIED), ErrorTrouble::notAllowed);
    EXPECT_EQ(troubleOf(ERROR_SHARING_VIOLATION), ErrorTrouble::notAllowed);
    EXPECT_EQ(troubleOf(ERROR_INVALID_FUNCTION), ErrorTrouble::other);
    EXPECT_EQ(troubleOf(-1), ErrorTrouble::other);
}

TEST(SystemErrorsWindows, HaveTheSystemsWordsWithoutALineEnd) {
    const std::string words = describeError(ERROR_FILE_NOT_FOUND);
    ASSERT_FALSE(words.empty());
    EXPECT_GT(static_cast<unsigned char>(words.back()), ' ');
    EXPECT_NE(words, describeError(ERROR_ACCESS_DENIED));
}

TEST(SystemErrorsWindows, WithoutWordsAreTheirNumber) {
    EXPECT_EQ(describeError(0x2fffffff), "Error 805306367");
}

} // namespace
} // namespace tessera::platform
