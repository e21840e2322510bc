#include "persistence/files/FileErrors.h"

#include "persistence/files/PathSupport.h"
#include "persistence/objects/PersistenceHooks.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace tessera {
namespace {

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
    {"Transfer", EIO, "A reading/writing error occurred. This disk is not working normaly."},
    {"Missing", ENOENT, "The file/folder could not be found at this location."},
    {"FileOnTheWay", ENOTDIR, "The file/folder could not be found at this location."},
    {"LongName", ENAMETOOLONG, "This name is too long."},
    {"FullDisk", ENOSPC, "This disk is full."},
    {"UsedUpShare", EDQUOT, "This disk is full."},
    {"ReadOnlyDisk", EROFS, "This disk is read only."},
    {"Rights", EACCES, "This operation is not allowed."},
    {"Owner", EPERM, "This operation is not allowed."},
    {"NameTaken", EEXIST, "This operation is not allowed."},
};

INSTANTIATE_TEST_SUITE_P(FileErrors, FileErrorTexts, testing::ValuesIn(kErrors),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FileErrors, AnUnexpectedErrorEndsWithTheSystemsWords) {
    EXPECT_EQ(utf8Of(fileErrorText(EPIPE)), "An unexpected error occurred. The system's description is: Broken pipe");
}

TEST(FileErrors, ThePlainTextIsTheSystems) {
    EXPECT_EQ(utf8Of(systemErrorText(0)), "No error occurred.");
    EXPECT_EQ(utf8Of(systemErrorText(ENOENT)), "No such file or directory");
}

TEST(FileErrors, SentencesAreTranslated) {
    persistenceHooks.translate = [](const FStringRef& key) {
        FString text("<");
        text.append(key);
        text.append8(">");
        return text;
    };
    const std::string none = utf8Of(fileErrorText(0));
    const std::string full = utf8Of(fileErrorText(ENOSPC));
    const std::string other = utf8Of(fileErrorText(EPIPE));
    persistenceHooks.translate = nullptr;
    EXPECT_EQ(none, "<No error occurred.>");
    EXPECT_EQ(full, "<This disk is full.>");
    EXPECT_EQ(other, "<An unexpected error occurred. The system's description is: >Broken pipe");
}

} // namespace
} // namespace tessera
