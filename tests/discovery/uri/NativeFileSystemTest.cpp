// Through the facade, as users call it.
#include "discovery/uri/NativeFileSystem.h"

#include "discovery/uri/FileSystemFacade.h"
#include "discovery/uri/TemporaryPath.h"
#include "discovery/watcher/DirectoryWatcher.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "support/ErrorNumbers.h"
#include "support/Eventually.h"
#include "support/ScratchFolder.h"
#include "support/SystemFolders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <set>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using testing_support::kErrorNumbers;
using testing_support::ScopedTemporaryFolder;
using testing_support::ScratchFolder;

class NativeFileSystemTest : public testing::Test {
protected:
    Uri at(const std::string& name) const { return Uri::fromPath((scratch_ / name).generic_string()); }

    std::multiset<std::string> walked(std::uint32_t options) {
        std::multiset<std::string> names;
        const std::string base = scratch_.path().generic_string() + "/";
        const auto result = files_.walk(
            at(""),
            [&](const Uri& entry) {
                EXPECT_TRUE(entry.path.starts_with(base));
                names.insert(entry.path.substr(base.size()));
                return true;
            },
            options);
        EXPECT_TRUE(result.ok());
        return names;
    }

    ScratchFolder scratch_;
    FileSystem& files_ = fileSystem();
};

TEST(NativePath, DropsWhatOnlyUrisHave) {
    const auto native = [](const char* path) {
        Uri uri;
        uri.path = path;
        return NativeFileSystem::nativePath(uri);
    };
    EXPECT_EQ(native("/c:/a"), "c:/a");
    EXPECT_EQ(native("//?/c:/a"), "c:/a");
    EXPECT_EQ(native("/a/b"), "/a/b");
    EXPECT_EQ(native("/1:/a"), "/1:/a");
    EXPECT_EQ(native(""), "");
}

TEST_F(NativeFileSystemTest, TemporaryDirectoryFollowsTheEnvironment) {
    const ScopedTemporaryFolder moved(scratch_ / "");
    EXPECT_EQ(files_.temporaryDirectory().value().path, scratch_.path().generic_string());
}

TEST_F(NativeFileSystemTest, StatusTellsTheKind) {
    scratch_.write("file", "x");
    fs::create_directory(scratch_ / "folder");
    EXPECT_EQ(files_.status(at("file")).value().kind, EntryKind::file);
    EXPECT_EQ(files_.status(at("folder")).value().kind, EntryKind::folder);
    EXPECT_EQ(files_.status(at("absent")).value().kind, EntryKind::missing);
    EXPECT_FALSE(files_.status(at("absent")).value().exists());
    EXPECT_TRUE(files_.status(at("file")).value().exists());
}

TEST_F(NativeFileSystemTest, WalkMeetsEachEntryOnce) {
    scratch_.write("a", "");
    scratch_.write("\xc3\xa4 b", "");
    scratch_.write("folder/inside", "");
    scratch_.write("folder/deeper/leaf", "");
    EXPECT_EQ(walked(kWalkFolderAlone), (std::multiset<std::string>{"a", "folder", "\xc3\xa4 b"}));
    EXPECT_EQ(walked(kWalkSubfolders), (std::multiset<std::string>{"a", "folder", "folder/deeper", "folder/deeper/leaf",
                                                                   "folder/inside", "\xc3\xa4 b"}));
}

TEST_F(NativeFileSystemTest, WalkEndsWhenTheVisitorHasHadEnough) {
    scratch_.write("folder/a", "");
    scratch_.write("folder/b", "");
    int calls = 0;
    EXPECT_TRUE(files_
                    .walk(
                        at(""), [&calls](const Uri&) { return ++calls < 2; }, kWalkSubfolders)
                    .ok());
    EXPECT_EQ(calls, 2);
}

TEST_F(NativeFileSystemTest, WalkOfAMissingFolderIsAnError) {
    const auto result = files_.walk(
        at("absent"), [](const Uri&) { return true; }, kWalkFolderAlone);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error().code, ENOENT);
    EXPECT_EQ(result.error().category, &std::system_category());
    EXPECT_FALSE(result.error().message.empty());
}

TEST_F(NativeFileSystemTest, MakesOneFolderOrAllOnTheWay) {
    EXPECT_FALSE(files_.createDirectory(at("a/b")).ok());
    EXPECT_TRUE(files_.createDirectories(at("a/b/c")).value());
    EXPECT_TRUE(fs::is_directory(scratch_ / "a/b/c"));
    EXPECT_FALSE(files_.createDirectories(at("a/b/c")).value()) << "it was there";
    EXPECT_TRUE(files_.createDirectory(at("d")).value());
    EXPECT_FALSE(files_.createDirectory(at("d")).value());
    scratch_.write("file", "");
    EXPECT_FALSE(files_.createDirectories(at("file/below")).ok());
}

TEST_F(NativeFileSystemTest, RemovesFilesAndEmptyFolders) {
    scratch_.write("folder/file", "x");
    EXPECT_FALSE(files_.remove(at("folder")).ok());
    EXPECT_TRUE(files_.remove(at("folder/file")).value());
    EXPECT_TRUE(files_.remove(at("folder")).value());
    EXPECT_FALSE(files_.remove(at("folder")).value()) << "nothing there";
}

TEST_F(NativeFileSystemTest, RemovesAFolderWithItsContent) {
    scratch_.write("folder/a", "x");
    scratch_.write("folder/b/c", "x");
    EXPECT_EQ(files_.removeAll(at("folder")).value(), 4u);
    EXPECT_FALSE(scratch_.has("folder"));
}

TEST_F(NativeFileSystemTest, TellsSizeAndTime) {
    scratch_.write("file", "12345");
    EXPECT_EQ(files_.fileSize(at("file")).value(), 5u);
    EXPECT_FALSE(files_.fileSize(at("absent")).ok());
    const FileSystem::Time time{std::chrono::seconds(1000000000)};
    EXPECT_TRUE(files_.setLastWriteTime(at("file"), time).ok());
    EXPECT_EQ(files_.lastWriteTime(at("file")).value(), time);
    EXPECT_EQ(std::chrono::file_clock::to_sys(fs::last_write_time(scratch_ / "file")).time_since_epoch(),
              std::chrono::seconds(1000000000));
    EXPECT_FALSE(files_.lastWriteTime(at("absent")).ok());
    EXPECT_FALSE(files_.setLastWriteTime(at("absent"), time).ok());
}

TEST_F(NativeFileSystemTest, TimesAreAsExactAsTheSystems) {
    scratch_.write("folder/file", "x");
    // To 100 ns, which all file systems that matter keep.
    const FileSystem::Time time{std::chrono::seconds(1000000000) + std::chrono::nanoseconds(123456700)};
    for (const char* name : {"folder/file", "folder"}) {
        EXPECT_TRUE(files_.setLastWriteTime(at(name), time).ok()) << name;
        EXPECT_EQ(files_.lastWriteTime(at(name)).value(), time) << name;
    }
}

TEST_F(NativeFileSystemTest, ErrorsHaveTheSystemsNumbers) {
    scratch_.write("folder/file", "x");
    const auto numberOf = [](const auto& result) {
        EXPECT_FALSE(result.ok());
        return result.ok() || result.error().category != &std::system_category() ? 0 : result.error().code;
    };
    const auto visit = [](const Uri&) { return true; };
    EXPECT_EQ(numberOf(files_.createDirectory(at("absent/inner"))), kErrorNumbers.missingFolder);
    EXPECT_EQ(numberOf(files_.createDirectory(at("folder/file"))), kErrorNumbers.nameTaken);
    EXPECT_EQ(numberOf(files_.walk(at("folder/file"), visit, kWalkFolderAlone)), kErrorNumbers.notAFolder);
    EXPECT_EQ(numberOf(files_.fileSize(at("folder"))), kErrorNumbers.aFolder);
    EXPECT_EQ(numberOf(files_.fileSize(at("absent"))), kErrorNumbers.missing);
    EXPECT_EQ(numberOf(files_.lastWriteTime(at("absent"))), kErrorNumbers.missing);
    EXPECT_EQ(numberOf(files_.setLastWriteTime(at("absent"), {})), kErrorNumbers.missing);
    EXPECT_EQ(numberOf(files_.canonicalPath(at("absent"))), kErrorNumbers.missing);
    EXPECT_EQ(numberOf(files_.setCurrentDirectory(at("absent"))), kErrorNumbers.missing);
    EXPECT_EQ(numberOf(files_.rename(at("absent"), at("other"))), kErrorNumbers.missing);
    EXPECT_EQ(numberOf(files_.copy(at("absent"), at("other"))), kErrorNumbers.missing);
    EXPECT_EQ(numberOf(files_.open(at("absent"), FileOpenMode::read)), kErrorNumbers.missing);
}

TEST_F(NativeFileSystemTest, BytesThatLookLikeLineEndsAreCopiedAsTheyAre) {
    const std::string bytes("\r\n\x1A\n\0\r", 6);
    scratch_.write("from", bytes);
    EXPECT_TRUE(files_.copy(at("from"), at("to")).ok());
    EXPECT_EQ(scratch_.read("to"), bytes);
}

TEST_F(NativeFileSystemTest, ACopyOntoItselfFailsAndLeavesTheFile) {
    scratch_.write("file", "precious");
    EXPECT_FALSE(files_.copy(at("file"), at("file"), FileSystem::Overwrite::yes).ok());
    EXPECT_EQ(scratch_.read("file"), "precious");
    EXPECT_EQ(scratch_.entryCount(), 1u);
}

TEST_F(NativeFileSystemTest, ACanonicalPathIsAbsoluteAndHasNoDots) {
    scratch_.write("folder/file", "");
    const Uri before = files_.currentDirectory().value();
    ASSERT_TRUE(files_.setCurrentDirectory(at("folder")).ok());
    Uri relative;
    relative.path = "../folder/./file";
    EXPECT_EQ(files_.canonicalPath(relative).value(), files_.canonicalPath(at("folder/file")).value());
    EXPECT_TRUE(files_.setCurrentDirectory(before).ok());
}

TEST_F(NativeFileSystemTest, RemovingWhatIsntThereRemovesNothing) {
    EXPECT_EQ(files_.removeAll(at("absent")).value(), 0u);
    EXPECT_EQ(files_.removeAll(at("absent/below")).value(), 0u);
    EXPECT_FALSE(files_.remove(at("absent/below")).value());
    scratch_.write("file", "x");
    EXPECT_EQ(files_.removeAll(at("file")).value(), 1u);
    EXPECT_FALSE(scratch_.has("file"));
}

TEST_F(NativeFileSystemTest, CopiesWithAndWithoutOverwriting) {
    scratch_.write("from", "new");
    scratch_.write("to", "old");
    EXPECT_FALSE(files_.copy(at("from"), at("to")).ok());
    EXPECT_EQ(scratch_.read("to"), "old");
    EXPECT_TRUE(files_.copy(at("from"), at("to"), FileSystem::Overwrite::yes).ok());
    EXPECT_EQ(scratch_.read("to"), "new");
    scratch_.write("folder/sub/leaf", "leaf");
    EXPECT_TRUE(files_.copy(at("folder"), at("copy")).ok());
    EXPECT_EQ(scratch_.read("copy/sub/leaf"), "leaf");
}

// Whatever the unfinished copy is called, somebody's file may be called so.
TEST_F(NativeFileSystemTest, OverwritingTouchesNoOtherFile) {
    scratch_.write("from", "new");
    scratch_.write("to", "old");
    scratch_.write("to.unfinished", "a chapter");
    scratch_.write("to.unfinished2/page", "a page");
    EXPECT_TRUE(files_.copy(at("from"), at("to"), FileSystem::Overwrite::yes).ok());
    EXPECT_EQ(scratch_.read("to"), "new");
    EXPECT_EQ(scratch_.read("to.unfinished"), "a chapter");
    EXPECT_EQ(scratch_.read("to.unfinished2/page"), "a page");
    EXPECT_EQ(scratch_.entryCount(), 4u);
}

TEST_F(NativeFileSystemTest, AFolderCopiedIntoItselfHasEverythingButTheCopy) {
    scratch_.write("song/take", "take");
    scratch_.write("song/old/mix", "mix");
    EXPECT_TRUE(files_.copy(at("song"), at("song/backup")).ok());
    EXPECT_EQ(scratch_.read("song/backup/take"), "take");
    EXPECT_EQ(scratch_.read("song/backup/old/mix"), "mix");
    EXPECT_FALSE(scratch_.has("song/backup/backup"));
    // Further below, and by another name.
    EXPECT_TRUE(files_.copy(at("song"), at("song/old/../old/all")).ok());
    EXPECT_EQ(scratch_.read("song/old/all/backup/old/mix"), "mix");
    EXPECT_EQ(scratch_.read("song/old/all/old/mix"), "mix");
    EXPECT_FALSE(scratch_.has("song/old/all/old/all"));
}

TEST_F(NativeFileSystemTest, Renames) {
    scratch_.write("from", "x");
    EXPECT_TRUE(files_.rename(at("from"), at("to")).ok());
    EXPECT_FALSE(scratch_.has("from"));
    EXPECT_EQ(scratch_.read("to"), "x");
    EXPECT_FALSE(files_.rename(at("from"), at("to")).ok());
}

TEST_F(NativeFileSystemTest, OpensAFileAsAStream) {
    scratch_.write("file", "content");
    {
        const auto stream = files_.open(at("file"), FileOpenMode::read);
        ASSERT_TRUE(stream.ok());
        char text[8] = {};
        EXPECT_EQ(stream.value()->read(text, 7), 7);
        EXPECT_STREQ(text, "content");
    }
    {
        const auto stream = files_.open(at("made"), FileOpenMode::read | FileOpenMode::write);
        ASSERT_TRUE(stream.ok());
        EXPECT_EQ(stream.value()->write("abc", 3), 3);
    }
    EXPECT_EQ(scratch_.read("made"), "abc");
}

TEST_F(NativeFileSystemTest, WhatCantBeOpenedIsAnError) {
    for (const char* name : {"absent", ""}) {
        const auto stream = files_.open(at(name), FileOpenMode::read);
        ASSERT_FALSE(stream.ok());
        EXPECT_EQ(stream.error().message, "unable to open file");
    }
}

TEST_F(NativeFileSystemTest, ALinkGetsItsExtension) {
    scratch_.write("target", "x");
    EXPECT_EQ(files_.createLink(at("target"), at("short")).value(), at("short.lnk"));
    EXPECT_TRUE(scratch_.has("short.lnk"));
    EXPECT_EQ(files_.createLink(at("target"), at("other.lnk")).value(), at("other.lnk"));
    EXPECT_FALSE(files_.createLink(at("target"), at("other.lnk")).ok()) << "it is there already";
}

TEST_F(NativeFileSystemTest, TheCurrentDirectoryCanBeChanged) {
    const Uri before = files_.currentDirectory().value();
    EXPECT_TRUE(files_.setCurrentDirectory(at("")).ok());
    EXPECT_EQ(files_.currentDirectory().value().path, fs::canonical(scratch_.path()).generic_string());
    EXPECT_FALSE(files_.setCurrentDirectory(at("absent")).ok());
    EXPECT_TRUE(files_.setCurrentDirectory(before).ok());
}

TEST_F(NativeFileSystemTest, KnowsItsVolumes) {
    const auto roots = files_.roots().value();
    EXPECT_NE(std::find(roots.begin(), roots.end(), Uri::fromPath(scratch_.path().root_path().generic_string())),
              roots.end());
    const auto info = files_.volumeInfo(at(""));
    ASSERT_TRUE(info.ok());
    EXPECT_GT(info.value().totalBytes, 0u);
    EXPECT_LE(info.value().availableBytes, info.value().totalBytes);
    EXPECT_FALSE(files_.volumeInfo(at("absent")).ok());
}

TEST_F(NativeFileSystemTest, HandsOutAMonitorThatTellsOfChanges) {
    const auto monitor = fileSystem().monitor(at(""));
    ASSERT_TRUE(monitor.ok());
    std::atomic<int> added = 0;
    monitor.value()->addListener([&](const ChangeBatch& batch) {
        added += static_cast<int>(std::count_if(batch.events.begin(), batch.events.end(), [](const ChangeEvent& event) {
            return event.kind == ChangeKind::added;
        }));
    });
    ASSERT_TRUE(monitor.value()->watch(at("").path));
    ASSERT_TRUE(files_.createDirectory(at("new")).ok());
    EXPECT_TRUE(testing_support::eventually([&] { return added == 1; }));
}

TEST_F(NativeFileSystemTest, HandsOutANewMonitorEachTime) {
    EXPECT_NE(files_.monitor(at("")).value(), files_.monitor(at("")).value());
}

TEST_F(NativeFileSystemTest, OtherFileSystemsHaveNoMonitor) {
    const auto monitor = files_.FileSystem::monitor(at(""));
    ASSERT_FALSE(monitor.ok());
    EXPECT_EQ(monitor.error().message, "no monitor available");
}

TEST_F(NativeFileSystemTest, NamesFollowTheRules) {
    EXPECT_FALSE(files_.isCaseSensitive());
    EXPECT_EQ(files_.forbiddenNameCharacters(), "<>\\/:*?|\"\t\n\r");
    EXPECT_FALSE(files_.isValidName("con"));
    EXPECT_TRUE(files_.isValidName("console"));
    EXPECT_EQ(files_.sanitizeName("a:b", '-'), "a-b");
    EXPECT_TRUE(files_.matchPattern("TAKE.WAV", "*.wav"));
    EXPECT_EQ(files_.uriFromPath("/a/../b").value().path, "/b");
}

TEST_F(NativeFileSystemTest, ATemporaryPathIsNewAndGoesWhenTold) {
    const ScopedTemporaryFolder moved(scratch_.path());
    Uri kept;
    {
        const TemporaryPath path;
        kept = path.uri();
        EXPECT_TRUE(kept.path.starts_with(scratch_.path().generic_string() + "/"));
        EXPECT_FALSE(files_.status(kept).value().exists());
        EXPECT_NE(TemporaryPath().uri(), kept);
        EXPECT_TRUE(files_.createDirectories(kept.child("inside")).ok());
    }
    EXPECT_TRUE(files_.status(kept).value().exists());
    Uri removed;
    {
        TemporaryPath path;
        path.setAtEnd(TemporaryPath::AtEnd::remove);
        removed = path.uri();
        EXPECT_TRUE(files_.createDirectories(removed.child("inside")).ok());
    }
    EXPECT_FALSE(files_.status(removed).value().exists());
}

} // namespace
} // namespace tessera::test
