#include "discovery/uri/NativeFileSystem.h"

#include "discovery/uri/FileSystemFacade.h"
#include "support/ScratchFolder.h"
#include "support/windows/Junction.h"
#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using testing_support::expectNoHandleLeftBy;
using testing_support::makeJunction;
using testing_support::ScratchFolder;
using testing_support::slashTextOf;

class NativeFileSystemWindowsTest : public testing::Test {
protected:
    Uri at(const std::string& name) const { return Uri::fromPath(slashTextOf(scratch_ / name)); }

    std::multiset<std::string> walked(const std::string& folder) {
        std::multiset<std::string> names;
        const std::size_t base = at(folder).path.size() + 1;
        const auto note = [&](const Uri& entry) {
            names.insert(entry.path.substr(base));
            return true;
        };
        EXPECT_TRUE(files_.walk(at(folder), note, kWalkSubfolders).ok());
        return names;
    }

    ScratchFolder scratch_;
    FileSystem& files_ = fileSystem();
};

TEST_F(NativeFileSystemWindowsTest, ACanonicalPathHasNoShortNames) {
    scratch_.write("A Long Folder Name/\xCE\xA9 Take.wav", "x");
    wchar_t shortForm[MAX_PATH] = {};
    ::GetShortPathNameW((scratch_ / "A Long Folder Name").c_str(), shortForm, MAX_PATH);
    if (fs::path(shortForm).filename() == "A Long Folder Name") {
        GTEST_SKIP() << "this volume keeps no short names";
    }
    const Uri inShort = Uri::fromPath(slashTextOf(fs::path(shortForm))).child("\xCE\xA9 Take.wav");
    EXPECT_EQ(files_.canonicalPath(inShort).value(), at("A Long Folder Name/\xCE\xA9 Take.wav"));
}

TEST_F(NativeFileSystemWindowsTest, ACanonicalPathHasTheCaseOfTheStoredNames) {
    const fs::path file = scratch_.write("Folder/File.wav", "x");
    wchar_t longForm[MAX_PATH] = {};
    ::GetLongPathNameW((scratch_ / "FOLDER/file.WAV").c_str(), longForm, MAX_PATH);
    if (fs::path(longForm).filename() != file.filename()) {
        GTEST_SKIP() << "this system's own call keeps the case";
    }
    EXPECT_EQ(files_.canonicalPath(at("FOLDER/file.WAV")).value(), at("Folder/File.wav"));
}

TEST_F(NativeFileSystemWindowsTest, PathsMayBeLongerThanTheSystemsOldLimit) {
    std::string deep = "long";
    for (int i = 0; i < 3; ++i) {
        deep += "/" + std::string(120, static_cast<char>('a' + i));
    }
    EXPECT_TRUE(files_.createDirectories(at(deep)).value());
    EXPECT_FALSE(files_.createDirectories(at(deep)).value());
    EXPECT_TRUE(files_.createDirectory(at(deep + "/inner")).value());
    scratch_.write("file", "12345");
    EXPECT_TRUE(files_.copy(at("file"), at(deep + "/file")).ok());
    EXPECT_EQ(files_.fileSize(at(deep + "/file")).value(), 5u);
    EXPECT_EQ(files_.canonicalPath(at(deep + "/file")).value(), at(deep + "/file"));
    EXPECT_TRUE(files_.rename(at(deep + "/file"), at(deep + "/other")).ok());
    EXPECT_EQ(files_.status(at(deep + "/other")).value().kind, EntryKind::file);
    EXPECT_EQ(walked(deep), (std::multiset<std::string>{"inner", "other"}));
    EXPECT_TRUE(files_.remove(at(deep + "/other")).value());
    EXPECT_EQ(files_.removeAll(at("long")).value(), 5u);
    EXPECT_FALSE(scratch_.has("long"));
}

TEST_F(NativeFileSystemWindowsTest, ADriveOfAUriIsItsRoot) {
    scratch_.write("mine", "");
    const fs::path before = fs::current_path();
    fs::current_path(scratch_.path());
    Uri drive;
    drive.path = "/" + scratch_.path().root_name().string();
    bool seen = false;
    const auto look = [&](const Uri& entry) {
        seen = seen || entry.path.ends_with("mine");
        return true;
    };
    EXPECT_EQ(files_.status(drive).value().kind, EntryKind::folder);
    EXPECT_TRUE(files_.walk(drive, look, kWalkFolderAlone).ok());
    EXPECT_FALSE(seen) << "the drive's present folder";
    fs::current_path(before);
}

TEST_F(NativeFileSystemWindowsTest, AFolderWithSomethingInItSaysSo) {
    scratch_.write("folder/file", "x");
    EXPECT_EQ(files_.remove(at("folder")).error().code, ERROR_DIR_NOT_EMPTY);
}

TEST_F(NativeFileSystemWindowsTest, AMarkAsReadOnlyKeepsNothingInPlace) {
    scratch_.write("folder/file", "x");
    scratch_.write("alone", "x");
    ::SetFileAttributesW((scratch_ / "folder/file").c_str(), FILE_ATTRIBUTE_READONLY);
    ::SetFileAttributesW((scratch_ / "alone").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(files_.remove(at("alone")).value());
    EXPECT_EQ(files_.removeAll(at("folder")).value(), 2u);
    EXPECT_EQ(scratch_.entryCount(), 0u);
}

TEST_F(NativeFileSystemWindowsTest, AFileInUseStaysAndSaysWhy) {
    scratch_.write("folder/file", "x");
    const HANDLE file =
        ::CreateFileW((scratch_ / "folder/file").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_EQ(files_.removeAll(at("folder")).error().code, ERROR_SHARING_VIOLATION);
    EXPECT_EQ(files_.remove(at("folder/file")).error().code, ERROR_SHARING_VIOLATION);
    ::CloseHandle(file);
    EXPECT_EQ(scratch_.read("folder/file"), "x");
}

TEST_F(NativeFileSystemWindowsTest, TimesAreRoundedDownToTheSystemsUnit) {
    scratch_.write("file", "x");
    using std::chrono::nanoseconds;
    for (const auto& [set, kept] : {std::pair{150, 100}, std::pair{-150, -200}, std::pair{-100, -100}}) {
        EXPECT_TRUE(files_.setLastWriteTime(at("file"), FileSystem::Time(nanoseconds(set))).ok());
        EXPECT_EQ(files_.lastWriteTime(at("file")).value(), FileSystem::Time(nanoseconds(kept))) << set;
    }
}

TEST_F(NativeFileSystemWindowsTest, TimesBeyondTheClockEndAtItsEnds) {
    scratch_.write("file", "x");
    const FILETIME first = {1, 0};
    const HANDLE file = ::CreateFileW((scratch_ / "file").c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    const bool set = ::SetFileTime(file, nullptr, nullptr, &first);
    ::CloseHandle(file);
    ASSERT_TRUE(set);
    EXPECT_LT(files_.lastWriteTime(at("file")).value(), FileSystem::Time());
    EXPECT_TRUE(files_.setLastWriteTime(at("file"), FileSystem::Time::min()).ok());
}

TEST_F(NativeFileSystemWindowsTest, LeavesNoHandleBehind) {
    const auto useOnce = [this] {
        scratch_.write("folder/inner/file", "x");
        walked("folder");
        EXPECT_TRUE(files_.canonicalPath(at("folder")).ok());
        EXPECT_TRUE(files_.setLastWriteTime(at("folder"), files_.lastWriteTime(at("folder")).value()).ok());
        EXPECT_FALSE(files_.lastWriteTime(at("absent")).ok());
        EXPECT_TRUE(files_.copy(at("folder"), at("copy")).ok());
        EXPECT_TRUE(files_.copy(at("folder"), at("copy"), FileSystem::Overwrite::yes).ok());
        EXPECT_EQ(files_.removeAll(at("folder")).value(), 3u);
        EXPECT_EQ(files_.removeAll(at("copy")).value(), 3u);
    };
    expectNoHandleLeftBy(useOnce);
}

TEST_F(NativeFileSystemWindowsTest, AJunctionIsNeverEntered) {
    scratch_.write("outside/precious.txt", "x");
    scratch_.write("folder/own.txt", "x");
    if (const char* reason = makeJunction(scratch_ / "folder/way-out", scratch_ / "outside")) {
        GTEST_SKIP() << reason;
    }
    EXPECT_EQ(files_.fileSize(at("folder/way-out/precious.txt")).value(), 1u);
    EXPECT_EQ(walked("folder"), (std::multiset<std::string>{"own.txt", "way-out"}));
    EXPECT_TRUE(files_.copy(at("folder"), at("copy")).ok());
    EXPECT_NE(::GetFileAttributesW((scratch_ / "copy/way-out").c_str()) & FILE_ATTRIBUTE_REPARSE_POINT, 0u);
    EXPECT_EQ(files_.removeAll(at("folder")).value(), 3u);
    EXPECT_TRUE(files_.remove(at("copy/way-out")).value());
    EXPECT_EQ(scratch_.read("outside/precious.txt"), "x");
}

} // namespace
} // namespace tessera::test
