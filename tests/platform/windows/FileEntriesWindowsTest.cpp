#include "platform/FileEntries.h"

#include "platform/Files.h"
#include "platform/Volumes.h"
#include "support/ScratchFolder.h"
#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <windows.h>

namespace tessera::platform {
namespace {

namespace fs = std::filesystem;
using testing_support::expectNoHandleLeftBy;

class FileEntriesWindowsTest : public testing::Test {
protected:
    std::u16string path(const std::string& name) const { return (scratch_ / name).make_preferred().u16string(); }
    bool isMarked(const std::string& name, DWORD mark) const {
        return (::GetFileAttributesW((scratch_ / name).c_str()) & mark) != 0;
    }

    testing_support::ScratchFolder scratch_;
    std::int32_t error_ = -7;
};

// Not behind the present folder, which may be anywhere.
TEST_F(FileEntriesWindowsTest, ALinkToARelativePathLeadsThereFromItsOwnFolder) {
    scratch_.write("folder/take.wav", "x");
    EXPECT_TRUE(createLink(path("folder/a.lnk"), u"take.wav", error_));
    EXPECT_EQ(readLink(path("folder/a.lnk")), path("folder/take.wav"));
    EXPECT_TRUE(createLink(path("folder/b.lnk"), u"..\\folder", error_));
    EXPECT_EQ(readLink(path("folder/b.lnk")), path("folder"));
}

TEST_F(FileEntriesWindowsTest, ALinkToNothingIsntMade) {
    EXPECT_FALSE(createLink(path("a.lnk"), u"", error_));
    EXPECT_EQ(error_, ERROR_INVALID_NAME);
    EXPECT_FALSE(createLink(path("a.lnk"), std::u16string_view(u"C:\\a\0b", 6), error_));
    EXPECT_EQ(scratch_.entryCount(), 0u);
}

// There is no room for a longer target in a link.
TEST_F(FileEntriesWindowsTest, ALinkIsWholeOrIsntThere) {
    const std::u16string longest = u"C:\\" + std::u16string(128, u'a') + u"\\" + std::u16string(127, u'b');
    ASSERT_EQ(longest.size(), 259u);
    EXPECT_TRUE(createLink(path("a.lnk"), longest, error_));
    EXPECT_EQ(readLink(path("a.lnk")), longest);
    EXPECT_FALSE(createLink(path("b.lnk"), longest + u"b", error_));
    EXPECT_EQ(error_, ERROR_FILENAME_EXCED_RANGE);
    EXPECT_EQ(scratch_.entryCount(), 1u);
}

TEST_F(FileEntriesWindowsTest, QuestionsAreAnsweredWhileSomebodyKeepsTheFileToHimself) {
    scratch_.write("file", "x");
    const HANDLE file =
        ::CreateFileW((scratch_ / "file").c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(canonicalPath(path("FILE")), path("file"));
    EXPECT_TRUE(isSameFile(path("file"), path("FILE")));
    EXPECT_EQ(fileKindOf(path("file")), FileKind::file);
    EXPECT_TRUE(fileStatus(path("file"), error_));
    ::CloseHandle(file);
}

TEST_F(FileEntriesWindowsTest, TimesAreThoseOfTheFile) {
    scratch_.write("file", "x");
    // 2001-09-09 01:46:40, and a second and a bit before 1970.
    const std::uint64_t created = 116'444'736'000'000'000 + 1'000'000'000 * std::uint64_t{10'000'000};
    const std::uint64_t modified = 116'444'736'000'000'000 - 10'000'001;
    const auto timeOf = [](std::uint64_t units) {
        return FILETIME{static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
    };
    const FILETIME first = timeOf(created);
    const FILETIME second = timeOf(modified);
    const HANDLE file =
        ::CreateFileW((scratch_ / "file").c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(::SetFileTime(file, &first, nullptr, &second));
    FILETIME kept = {};
    ::GetFileTime(file, &kept, nullptr, nullptr);
    ::CloseHandle(file);
    const auto status = fileStatus(path("file"), error_);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->modified, -2) << "rounded down";
    if (kept.dwHighDateTime == first.dwHighDateTime) {
        EXPECT_EQ(status->created, 1'000'000'000);
    }
}

TEST_F(FileEntriesWindowsTest, AReadOnlyFileIsDeletedAndAFolderNever) {
    scratch_.write("file", "x");
    fs::create_directory(scratch_ / "folder");
    ::SetFileAttributesW((scratch_ / "file").c_str(), FILE_ATTRIBUTE_READONLY);
    ::SetFileAttributesW((scratch_ / "folder").c_str(), FILE_ATTRIBUTE_READONLY);
    // Not every system marks folders.
    const bool isMarkedBefore = isMarked("folder", FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(deleteFile(path("file"), error_));
    EXPECT_FALSE(scratch_.has("file"));
    EXPECT_FALSE(deleteFile(path("folder"), error_));
    EXPECT_EQ(error_, ERROR_ACCESS_DENIED);
    EXPECT_EQ(isMarked("folder", FILE_ATTRIBUTE_READONLY), isMarkedBefore) << "its mark is its own business";
    EXPECT_FALSE(deleteFile(path("missing"), error_));
    EXPECT_EQ(error_, ERROR_FILE_NOT_FOUND);
}

TEST_F(FileEntriesWindowsTest, ANameThatAsksForASearchIsNoStoredName) {
    scratch_.write("file", "x");
    EXPECT_EQ(storedName(path("FILE")), u"file");
    EXPECT_EQ(storedName(path("f*")), std::nullopt);
    EXPECT_EQ(storedName(path("fil?")), std::nullopt);
    EXPECT_EQ(storedName(path("missing")), std::nullopt);
    EXPECT_EQ(storedName(u"C:\\"), std::nullopt);
}

TEST_F(FileEntriesWindowsTest, NoQuestionLeavesAHandleBehind) {
    scratch_.write("folder/file", "x");
    int round = 0;
    const auto useOnce = [&] {
        const std::string turn = std::to_string(round++);
        for (const char* name : {"folder", "folder/file", "missing", "missing/below"}) {
            fileStatus(path(name), error_);
            fileKindOf(path(name));
            canonicalPath(path(name));
            storedName(path(name));
            readLink(path(name));
            isSameFile(path(name), path("folder/file"));
            sectorSizeOf(path(name));
            volumeInfo(testing_support::slashTextOf(scratch_ / name));
            File::open(path(name), {.read = true}, FileDisposition::openExisting, error_);
        }
        File::open(u"nul", {.read = true}, FileDisposition::openExisting, error_);
        EXPECT_TRUE(createLink(path(turn + ".lnk"), path("folder"), error_));
        EXPECT_FALSE(createLink(path(turn + ".lnk"), path("folder"), error_));
        EXPECT_EQ(readLink(path(turn + ".lnk")), path("folder"));
        EXPECT_TRUE(moveEntry(path("folder/file"), path("folder/other"), error_));
        EXPECT_FALSE(moveEntry(path("folder/file"), path("folder/other"), error_));
        EXPECT_TRUE(moveEntry(path("folder/other"), path("folder/file"), error_));
        EXPECT_TRUE(createFolders(path("made/" + turn), error_));
    };
    expectNoHandleLeftBy(useOnce);
}

} // namespace
} // namespace tessera::platform
