#include "persistence/files/FileErrors.h"

#include "persistence/files/PathSupport.h"
#include "persistence/objects/PersistenceHooks.h"
#include "platform/SystemErrors.h"
#include "support/ErrorNumbers.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

using testing_support::kErrorNumbers;

struct ErrorRow {
    const char* name;
    int error;
    const char* expected;
};

class FileErrorTexts : public testing::TestWithParam<ErrorRow> {};

TEST_P(FileErrorTexts, AreTheSentencesThatUsersKnow) {
    EXPECT_EQ(utf8Of(fileErrorText(GetParam().error)), GetParam().expected);
}

const ErrorRow kErrors[] = {
    {"NoError", 0, "No error occurred."},
    {"Transfer", kErrorNumbers.transfer, "A reading/writing error occurred. This disk is not working normaly."},
    {"Missing", kErrorNumbers.missing, "The file/folder could not be found at this location."},
    {"FileOnTheWay", kErrorNumbers.fileOnTheWay, "The file/folder could not be found at this location."},
    {"LongName", kErrorNumbers.longName, "This name is too long."},
    {"FullDisk", kErrorNumbers.fullDisk, "This disk is full."},
    {"UsedUpShare", kErrorNumbers.usedUpShare, "This disk is full."},
    {"ReadOnlyDisk", kErrorNumbers.readOnlyDisk, "This disk is read only."},
    {"Rights", kErrorNumbers.noRight, "This operation is not allowed."},
    {"Owner", kErrorNumbers.notOwner, "This operation is not allowed."},
    {"NameTaken", kErrorNumbers.nameTaken, "This operation is not allowed."},
};

INSTANTIATE_TEST_SUITE_P(FileErrors, FileErrorTexts, testing::ValuesIn(kErrors),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FileErrors, AnUnexpectedErrorEndsWithTheSystemsWords) {
    EXPECT_EQ(utf8Of(fileErrorText(kErrorNumbers.brokenPipe)),
              "An unexpected error occurred. The system's description is: " +
                  platform::describeError(kErrorNumbers.brokenPipe));
}

TEST(FileErrors, ThePlainTextIsTheSystems) {
    EXPECT_EQ(utf8Of(systemErrorText(0)), "No error occurred.");
    EXPECT_EQ(utf8Of(systemErrorText(kErrorNumbers.missing)), platform::describeError(kErrorNumbers.missing));
}

TEST(FileErrors, SentencesAreTranslated) {
    persistenceHooks.translate = [](const FStringRef& key) {
        FString text("<");
        text.append(key);
        text.append8(">");
        return text;
    };
    const std::string none = utf8Of(fileErrorText(0));
    const std::string full = utf8Of(fileErrorText(kErrorNumbers.fullDisk));
    const std::string other = utf8Of(fileErrorText(kErrorNumbers.brokenPipe));
    persistenceHooks.translate = nullptr;
    EXPECT_EQ(none, "<No error occurred.>");
    EXPECT_EQ(full, "<This disk is full.>");
    EXPECT_EQ(other, "<An unexpected error occurred. The system's description is: >" +
                         platform::describeError(kErrorNumbers.brokenPipe));
}

} // namespace
} // namespace tessera
