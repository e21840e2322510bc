#include "persistence/files/FNFileSystem.h"

#include "foundation/object/FRefPtr.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/files/FNFileSystemFixture.h"
#include "persistence/files/RecordingProgress.h"
#include "support/ErrorNumbers.h"
#include "support/FileMarks.h"
#include "support/Skips.h"
#include "support/SystemText.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

namespace tessera {
namespace {

namespace fs = std::filesystem;
using testing_support::kErrorNumbers;
using testing_support::setModified;
using testing_support::whyNoCaseInNames;
using testing_support::whyNoOddNames;
using testing_support::whyNoSymbolicLinks;

TEST_F(FNFileSystemTest, IsTheOneOfTheProcess) {
    EXPECT_EQ(FFileSystem::getInstance(), &files_);
    EXPECT_TRUE(files_.isTypeOf("FNFileSystem", false));
    EXPECT_TRUE(files_.isTypeOf("FFileSystem", true));
    // A second one serves whoever made it, and takes nothing away when it goes.
    auto second = FRefPtr<FNFileSystem>::adopt(new FNFileSystem);
    EXPECT_EQ(FFileSystem::getInstance(), &files_);
    second.reset();
    EXPECT_EQ(FFileSystem::getInstance(), &files_);
}

// Creating and opening.

TEST_F(FNFileSystemTest, ACreatedFileHoldsWhatWasWritten) {
    EXPECT_TRUE(save("new.txt", "content"));
    EXPECT_EQ(scratch_.read("new.txt"), "content");
}

TEST_F(FNFileSystemTest, CreatingEmptiesAFileThatIsThere) {
    scratch_.write("old.txt", "a long old content");
    EXPECT_TRUE(save("old.txt", "new"));
    EXPECT_EQ(scratch_.read("old.txt"), "new");
}

TEST_F(FNFileSystemTest, CreatingMakesMissingFoldersOnlyWithBothBits) {
    EXPECT_FALSE(save("a/b/new.txt", "x", FileOpenMode::write));
    EXPECT_FALSE(save("a/b/new.txt", "x", FileOpenMode::createFolders));
    EXPECT_FALSE(scratch_.has("a"));
    EXPECT_TRUE(save("a/b/new.txt", "x", FileOpenMode::write | FileOpenMode::createFolders));
    EXPECT_EQ(scratch_.read("a/b/new.txt"), "x");
}

TEST_F(FNFileSystemTest, ACreatedFileCanBeReadOnlyWithTheBitForReading) {
    for (const bool readable : {false, true}) {
        FNPath file = path("both.txt");
        FStream* stream = files_.createFile(file, readable ? 3u : 2u, nullptr);
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(stream->write("abc", 3), 3);
        stream->rewind();
        char buffer[3] = {};
        EXPECT_EQ(stream->read(buffer, 3) == 3, readable);
        files_.closeStream(stream);
    }
}

TEST_F(FNFileSystemTest, AFileIsCreatedForWritingWhateverTheMode) {
    EXPECT_TRUE(save("new.txt", "content", 1));
}

TEST_F(FNFileSystemTest, AFailureToCreateTellsTheSystemsNumber) {
    FNPath file = path("missing/new.txt");
    std::int32_t error = 0;
    EXPECT_EQ(files_.createFile(file, FileOpenMode::write, &error), nullptr);
    EXPECT_EQ(error, kErrorNumbers.missingFolder);
    scratch_.write("file", "");
    FNPath below = path("file/new.txt");
    EXPECT_EQ(files_.createFile(below, FileOpenMode::write | FileOpenMode::createFolders, &error), nullptr);
    EXPECT_EQ(error, kErrorNumbers.fileOnTheWay);
}

TEST_F(FNFileSystemTest, OpeningKeepsTheContent) {
    scratch_.write("there.txt", "content");
    FNPath file = path("there.txt");
    std::int32_t error = 99;
    FStream* stream = files_.openFile(file, FileOpenMode::read | FileOpenMode::write, &error);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(error, 0);
    char buffer[8] = {};
    EXPECT_EQ(stream->read(buffer, 8), 7);
    EXPECT_STREQ(buffer, "content");
    files_.closeStream(stream);
    EXPECT_EQ(scratch_.read("there.txt"), "content");
}

TEST_F(FNFileSystemTest, WhatIsntThereOrIsAFolderIsntOpened) {
    FNPath missing = path("missing.txt");
    std::int32_t error = 0;
    EXPECT_EQ(files_.openFile(missing, FileOpenMode::read, &error), nullptr);
    EXPECT_EQ(error, kErrorNumbers.missing);
    EXPECT_FALSE(scratch_.has("missing.txt"));
    FNPath itself = folder("");
    EXPECT_EQ(files_.openFile(itself, FileOpenMode::read, nullptr), nullptr);
}

TEST_F(FNFileSystemTest, AnUnbufferedStreamKnowsItsSector) {
    scratch_.write("there.txt", "content");
    FNPath file = path("there.txt");
    FStream* stream = files_.openFile(file, FileOpenMode::read | FileOpenMode::unbuffered, nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_GE(cmCast<FFileStream>(stream)->getSectorSize(), 512u);
    files_.closeStream(stream);
}

TEST_F(FNFileSystemTest, ATemporaryFileIsGoneWhenItIsClosed) {
    FNPath file = path("temporary");
    FStream* stream = files_.createFile(file, FileOpenMode::write | FileOpenMode::temporary, nullptr);
    ASSERT_NE(stream, nullptr);
    files_.closeStream(stream);
    EXPECT_FALSE(scratch_.has("temporary"));
}

TEST_F(FNFileSystemTest, ClosingTellsOfStreamsThatCouldWrite) {
    scratch_.write("read.txt", "");
    EXPECT_TRUE(save("written.txt", "x"));
    for (const std::uint32_t mode : {FileOpenMode::read, FileOpenMode::read | FileOpenMode::shareWrite}) {
        FNPath file = path("read.txt");
        files_.closeStream(files_.openFile(file, mode, nullptr));
    }
    // Sharing for writing counts as writing.
    EXPECT_EQ(notices(), (std::vector<std::string>{"PathChanged 1 written.txt", "PathChanged 1 read.txt"}));
}

TEST_F(FNFileSystemTest, ClosingNothingDoesNothing) {
    files_.closeStream(nullptr);
    EXPECT_TRUE(notices().empty());
}

// Names whose bytes mean nothing.

class NamesWithoutMeaning : public FNFileSystemTest {
protected:
    void SetUp() override {
        if (const char* reason = testing_support::whyNoUtf8()) {
            GTEST_SKIP() << reason;
        }
        scratch_.write("parent/file", "content");
        scratch_.write("other/file", "other");
    }

    // The folder that holds it is what such a path must never be taken for.
    void expectNothingChanged() {
        EXPECT_EQ(scratch_.read("parent/file"), "content");
        EXPECT_EQ(scratch_.read("other/file"), "other");
        EXPECT_EQ(scratch_.entryCount(), 2u);
        EXPECT_EQ(std::distance(fs::directory_iterator(scratch_ / "parent"), {}), 1);
        EXPECT_TRUE(notices().empty());
    }

    FNPath nameless(PathKind kind) const { return FNPath("B\xe4r", folder("parent"), kind); }
    FNPath namelessFolder() const { return nameless(PathKind::folder); }
    FNPath inNamelessFolder() const { return FNPath("file", namelessFolder(), PathKind::file); }
};

TEST_F(NamesWithoutMeaning, AreNeverDeleted) {
    EXPECT_FALSE(files_.deleteFolderContent(namelessFolder(), true));
    EXPECT_FALSE(files_.deleteFolder(namelessFolder()));
    EXPECT_FALSE(files_.deleteFile(nameless(PathKind::file)));
    EXPECT_FALSE(files_.deleteFile(inNamelessFolder()));
    expectNothingChanged();
}

TEST_F(NamesWithoutMeaning, AreNeverMadeOrOpened) {
    EXPECT_FALSE(files_.createFolder(namelessFolder()));
    EXPECT_FALSE(files_.folderExists(namelessFolder()));
    FNPath file = nameless(PathKind::file);
    EXPECT_EQ(files_.createFile(file, FileOpenMode::write | FileOpenMode::createFolders, nullptr), nullptr);
    FNPath inner = inNamelessFolder();
    EXPECT_EQ(files_.createFile(inner, FileOpenMode::write | FileOpenMode::createFolders, nullptr), nullptr);
    EXPECT_FALSE(files_.createLink(file, path("other/file")));
    FNPath link = path("link.lnk");
    EXPECT_FALSE(files_.createLink(link, file));
    const auto iterator = FRefPtr<FFileIterator>::adopt(files_.newIterator(namelessFolder(), false));
    EXPECT_EQ(iterator->next(), nullptr);
    expectNothingChanged();
}

TEST_F(NamesWithoutMeaning, AreNeverMoved) {
    FNPath nowhere = namelessFolder();
    EXPECT_FALSE(files_.move(nowhere, folder("moved")));
    EXPECT_FALSE(files_.rename(nowhere, u"renamed"));
    FNPath other = folder("other");
    EXPECT_FALSE(files_.move(other, namelessFolder()));
    EXPECT_FALSE(files_.rename(other, "B\xe4r"));
    expectNothingChanged();
}

TEST_F(NamesWithoutMeaning, AreNeverCopied) {
    EXPECT_FALSE(files_.copyFolder(namelessFolder(), folder("copy"), nullptr));
    EXPECT_FALSE(files_.copyFolder(folder("other"), namelessFolder(), nullptr));
    EXPECT_FALSE(files_.copyFile(nameless(PathKind::file), path("copy"), nullptr));
    EXPECT_FALSE(files_.copyFile(path("other/file"), nameless(PathKind::file), nullptr));
    EXPECT_FALSE(files_.copyFile(path("other/file"), inNamelessFolder(), nullptr));
    expectNothingChanged();
}

// Deleting.

TEST_F(FNFileSystemTest, DeletingAFileTellsIt) {
    scratch_.write("old.txt", "x");
    EXPECT_TRUE(files_.deleteFile(path("old.txt")));
    EXPECT_FALSE(scratch_.has("old.txt"));
    EXPECT_EQ(notices(), std::vector<std::string>{"PathChanged 2 old.txt"});
}

TEST_F(FNFileSystemTest, AReadOnlyFileIsDeleted) {
    const fs::path file = scratch_.write("old.txt", "x");
    fs::permissions(file, fs::perms(0444));
    EXPECT_TRUE(files_.deleteFile(path("old.txt")));
    EXPECT_FALSE(scratch_.has("old.txt"));
}

TEST_F(FNFileSystemTest, DeletingAsAFileSparesFolders) {
    scratch_.write("folder/inner.txt", "x");
    EXPECT_FALSE(files_.deleteFile(path("folder")));
    EXPECT_FALSE(files_.deleteFile(path("missing")));
    EXPECT_TRUE(notices().empty());
    EXPECT_EQ(scratch_.read("folder/inner.txt"), "x");
}

TEST_F(FNFileSystemTest, DeletingAsAFileSparesWhatLinksPointAt) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("folder/inner.txt", "x");
    fs::create_symlink(scratch_ / "folder", scratch_ / "link");
    EXPECT_TRUE(files_.deleteFile(path("link")));
    EXPECT_FALSE(scratch_.has("link"));
    EXPECT_EQ(scratch_.read("folder/inner.txt"), "x");
}

TEST_F(FNFileSystemTest, DeletingAFolderTakesAllThatItHolds) {
    scratch_.write("folder/a/b/c.txt", "x");
    scratch_.write("folder/.hidden", "x");
    EXPECT_TRUE(files_.deleteFolder(folder("folder")));
    EXPECT_FALSE(scratch_.has("folder"));
    EXPECT_EQ(notices(), std::vector<std::string>{"PathChanged 2 folder"});
}

TEST_F(FNFileSystemTest, DeletingAFolderNeverLeavesItThroughALink) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("outside/precious.txt", "x");
    scratch_.write("folder/inner/own.txt", "x");
    fs::create_directory_symlink(scratch_ / "outside", scratch_ / "folder/inner/way-out");
    fs::create_directory_symlink(scratch_ / "folder", scratch_ / "folder/inner/loop");
    fs::create_symlink("nowhere", scratch_ / "folder/broken");
    EXPECT_TRUE(files_.deleteFolder(folder("folder")));
    EXPECT_FALSE(scratch_.has("folder"));
    EXPECT_EQ(scratch_.read("outside/precious.txt"), "x");
}

TEST_F(FNFileSystemTest, AFolderThatIsALinkGoesItself) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("outside/precious.txt", "x");
    fs::create_directory_symlink(scratch_ / "outside", scratch_ / "link");
    EXPECT_TRUE(files_.deleteFolder(folder("link")));
    EXPECT_FALSE(scratch_.has("link"));
    EXPECT_EQ(scratch_.read("outside/precious.txt"), "x");
}

TEST_F(FNFileSystemTest, OnlyFoldersAreDeletedAsFolders) {
    scratch_.write("file", "x");
    EXPECT_FALSE(files_.deleteFolder(folder("file")));
    EXPECT_FALSE(files_.deleteFolder(folder("missing")));
    EXPECT_FALSE(files_.deleteFolder(FNPath(FStringRef("\\"), PathKind::folder)));
    EXPECT_FALSE(files_.deleteFolder(FNPath(PathKind::folder)));
    EXPECT_EQ(scratch_.read("file"), "x");
}

TEST_F(FNFileSystemTest, AFolderWithANameThatHasNoPathFormStays) {
    if (const char* reason = whyNoOddNames()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("folder/back\\slash.txt", "x");
    EXPECT_FALSE(files_.deleteFolder(folder("folder")));
    EXPECT_EQ(scratch_.read("folder/back\\slash.txt"), "x");
    EXPECT_TRUE(notices().empty());
}

TEST_F(FNFileSystemTest, ContentIsDeletedWithOrWithoutSubFolders) {
    scratch_.write("folder/a.txt", "x");
    scratch_.write("folder/inner/b.txt", "x");
    EXPECT_TRUE(files_.deleteFolderContent(folder("folder"), false));
    EXPECT_FALSE(scratch_.has("folder/a.txt"));
    EXPECT_EQ(scratch_.read("folder/inner/b.txt"), "x");
    EXPECT_TRUE(files_.deleteFolderContent(folder("folder"), true));
    EXPECT_FALSE(scratch_.has("folder/inner"));
    EXPECT_TRUE(scratch_.has("folder"));
    EXPECT_FALSE(files_.deleteFolderContent(folder("missing"), true));
}

TEST_F(FNFileSystemTest, ContentThatHasNoPathFormIsSaidToBeLeft) {
    if (const char* reason = whyNoOddNames()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("folder/back\\slash.txt", "x");
    EXPECT_FALSE(files_.deleteFolderContent(folder("folder"), false));
    EXPECT_FALSE(files_.deleteFolderContent(folder("folder"), true));
    EXPECT_EQ(scratch_.read("folder/back\\slash.txt"), "x");
}

// Names.

TEST_F(FNFileSystemTest, RenamingGivesTheFileAndThePathTheNewName) {
    scratch_.write("old.txt", "x");
    FNPath file = path("old.txt");
    EXPECT_TRUE(files_.rename(file, "new.txt"));
    EXPECT_EQ(utf8Of(file.getName()), "new.txt");
    EXPECT_EQ(utf8Of(file.getFullPath()), utf8Of(path("new.txt").getFullPath()));
    EXPECT_FALSE(scratch_.has("old.txt"));
    EXPECT_EQ(scratch_.read("new.txt"), "x");
    EXPECT_EQ(notices(), std::vector<std::string>{"PathChanged 4 new.txt < old.txt"});
}

TEST_F(FNFileSystemTest, RenamingToAWholePathMovesTheFile) {
    scratch_.write("old.txt", "x");
    fs::create_directory(scratch_ / "folder");
    FNPath file = path("old.txt");
    EXPECT_TRUE(files_.rename(file, path("folder/new.txt").getFullPath()));
    EXPECT_EQ(scratch_.read("folder/new.txt"), "x");
    EXPECT_EQ(utf8Of(file.getFullPath()), utf8Of(path("folder/new.txt").getFullPath()));
}

TEST_F(FNFileSystemTest, RenamingNeverReplaces) {
    scratch_.write("old.txt", "old");
    scratch_.write("taken.txt", "precious");
    fs::create_directory(scratch_ / "folder");
    fs::create_directory(scratch_ / "empty");
    FNPath file = path("old.txt");
    EXPECT_FALSE(files_.rename(file, "taken.txt"));
    EXPECT_FALSE(files_.rename(file, "empty"));
    FNPath inner = folder("folder");
    EXPECT_FALSE(files_.rename(inner, "empty"));
    EXPECT_EQ(utf8Of(file.getName()), "old.txt");
    EXPECT_EQ(scratch_.read("old.txt"), "old");
    EXPECT_EQ(scratch_.read("taken.txt"), "precious");
    EXPECT_TRUE(notices().empty());
}

TEST_F(FNFileSystemTest, AFileMayKeepItsName) {
    scratch_.write("file", "x");
    FNPath file = path("file");
    EXPECT_TRUE(files_.rename(file, "file"));
    EXPECT_EQ(scratch_.read("file"), "x");
    FNPath missing = path("missing");
    EXPECT_FALSE(files_.rename(missing, "missing"));
}

TEST_F(FNFileSystemTest, WhatIsntThereOrGetsNoNameIsntRenamed) {
    FNPath missing = path("missing");
    EXPECT_FALSE(files_.rename(missing, "new"));
    scratch_.write("there", "x");
    FNPath there = path("there");
    EXPECT_FALSE(files_.rename(there, ""));
    EXPECT_EQ(scratch_.read("there"), "x");
}

TEST_F(FNFileSystemTest, MovingTakesFilesAndFoldersToTheTarget) {
    scratch_.write("file.txt", "x");
    scratch_.write("folder/inner.txt", "y");
    FNPath file = path("file.txt");
    EXPECT_TRUE(files_.move(file, path("folder/moved.txt")));
    EXPECT_EQ(scratch_.read("folder/moved.txt"), "x");
    FNPath all = folder("folder");
    EXPECT_TRUE(files_.move(all, folder("other")));
    EXPECT_EQ(scratch_.read("other/inner.txt"), "y");
    EXPECT_EQ(notices(),
              (std::vector<std::string>{"PathChanged 4 moved.txt < file.txt", "PathChanged 4 other < folder"}));
}

TEST_F(FNFileSystemTest, AFolderIsntMovedIntoItself) {
    scratch_.write("folder/inner.txt", "y");
    FNPath all = folder("folder");
    EXPECT_FALSE(files_.move(all, folder("folder/deeper")));
    EXPECT_EQ(scratch_.read("folder/inner.txt"), "y");
}

// Copying.

TEST_F(FNFileSystemTest, ACopyHasTheSameBytes) {
    std::string bytes;
    for (int i = 0; i < 200000; ++i) {
        bytes.push_back(static_cast<char>(i * 31 + i / 256));
    }
    scratch_.write("source", bytes);
    EXPECT_TRUE(files_.copyFile(path("source"), path("target"), nullptr));
    EXPECT_EQ(scratch_.read("target"), bytes);
    EXPECT_EQ(scratch_.read("source"), bytes);
    EXPECT_EQ(scratch_.entryCount(), 2u);
    EXPECT_EQ(notices(), std::vector<std::string>{"PathChanged 1 target"});
}

TEST_F(FNFileSystemTest, AnEmptyFileIsCopied) {
    scratch_.write("source", "");
    EXPECT_TRUE(files_.copyFile(path("source"), path("target"), nullptr));
    EXPECT_TRUE(scratch_.has("target"));
}

TEST_F(FNFileSystemTest, CopyingReplacesTheTargetAndKeepsItsRights) {
    scratch_.write("source", "new");
    const fs::path target = scratch_.write("target", "a longer old content");
    // What the system makes of these; some know no more than who may write.
    for (const int rights : {0640, 0440}) {
        fs::permissions(target, fs::perms(rights));
        const fs::perms before = fs::status(target).permissions();
        EXPECT_TRUE(files_.copyFile(path("source"), path("target"), nullptr));
        EXPECT_EQ(scratch_.read("target"), "new");
        EXPECT_EQ(fs::status(target).permissions(), before);
    }
}

TEST_F(FNFileSystemTest, CopyingToALinkWritesWhatItLeadsTo) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("source", "new");
    scratch_.write("real", "old");
    fs::create_symlink("real", scratch_ / "link");
    EXPECT_TRUE(files_.copyFile(path("source"), path("link"), nullptr));
    EXPECT_TRUE(fs::is_symlink(scratch_ / "link"));
    EXPECT_EQ(scratch_.read("real"), "new");
}

TEST_F(FNFileSystemTest, AFileIsntCopiedOntoItself) {
    scratch_.write("file", "precious");
    fs::create_hard_link(scratch_ / "file", scratch_ / "twin");
    for (const char* other : {"file", "twin"}) {
        EXPECT_FALSE(files_.copyFile(path("file"), path(other), nullptr)) << other;
        EXPECT_FALSE(files_.copyFile(path(other), path("file"), nullptr)) << other;
        EXPECT_EQ(scratch_.read("file"), "precious") << other;
    }
}

TEST_F(FNFileSystemTest, AFileIsntCopiedOntoItselfThroughALink) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("file", "precious");
    fs::create_symlink("file", scratch_ / "link");
    EXPECT_FALSE(files_.copyFile(path("file"), path("link"), nullptr));
    EXPECT_FALSE(files_.copyFile(path("link"), path("file"), nullptr));
    EXPECT_EQ(scratch_.read("file"), "precious");
}

TEST_F(FNFileSystemTest, WhatIsntAFileIsntCopied) {
    fs::create_directory(scratch_ / "folder");
    scratch_.write("file", "x");
    EXPECT_FALSE(files_.copyFile(path("folder"), path("target"), nullptr));
    EXPECT_FALSE(files_.copyFile(path("missing"), path("target"), nullptr));
    EXPECT_FALSE(files_.copyFile(path("file"), path("folder"), nullptr));
    EXPECT_FALSE(files_.copyFile(path("file"), path("missing/target"), nullptr));
    EXPECT_FALSE(scratch_.has("target"));
    EXPECT_EQ(scratch_.entryCount(), 2u);
}

TEST_F(FNFileSystemTest, ProgressSeesTheNameAndEachBlock) {
    scratch_.write("Bass.wav", std::string(0x10000 * 2 + 10, 'x'));
    RecordingProgress progress;
    EXPECT_TRUE(files_.copyFile(path("Bass.wav"), path("target"), &progress));
    EXPECT_EQ(progress.events,
              (std::vector<std::string>{"begin Copying File: Bass.wav 131082", "65536", "131072", "131082", "end"}));
}

TEST_F(FNFileSystemTest, ACancelledCopyLeavesNothingBehind) {
    scratch_.write("source", std::string(0x10000 * 3, 'x'));
    RecordingProgress progress;
    progress.cancelAt = 2;
    EXPECT_FALSE(files_.copyFile(path("source"), path("target"), &progress));
    EXPECT_EQ(scratch_.entryCount(), 1u);
    EXPECT_EQ(progress.events.back(), "end");
    EXPECT_TRUE(notices().empty());
}

TEST_F(FNFileSystemTest, ACancelledCopyLeavesTheOldTarget) {
    scratch_.write("source", std::string(0x10000 * 3, 'x'));
    scratch_.write("target", "precious");
    RecordingProgress progress;
    progress.cancelAt = 3;
    EXPECT_FALSE(files_.copyFile(path("source"), path("target"), &progress));
    EXPECT_EQ(scratch_.read("target"), "precious");
    EXPECT_EQ(scratch_.entryCount(), 2u);
}

TEST_F(FNFileSystemTest, AFolderIsCopiedWithAllThatItHolds) {
    scratch_.write("source/a.txt", "a");
    scratch_.write("source/inner/b.txt", "b");
    fs::create_directory(scratch_ / "source/empty");
    EXPECT_TRUE(files_.copyFolder(folder("source"), folder("target"), nullptr));
    EXPECT_EQ(scratch_.read("target/a.txt"), "a");
    EXPECT_EQ(scratch_.read("target/inner/b.txt"), "b");
    EXPECT_TRUE(fs::is_directory(scratch_ / "target/empty"));
    EXPECT_EQ(notices(), std::vector<std::string>{"PathChanged 1 target"});
}

TEST_F(FNFileSystemTest, ACopiedFolderKeepsTheRightsOfItsFiles) {
    const fs::path tool = scratch_.write("source/tool", "#!");
    fs::permissions(tool, fs::perms(0555));
    EXPECT_TRUE(files_.copyFolder(folder("source"), folder("target"), nullptr));
    EXPECT_EQ(scratch_.read("target/tool"), "#!");
    EXPECT_EQ(fs::status(scratch_ / "target/tool").permissions(), fs::status(tool).permissions());
}

TEST_F(FNFileSystemTest, ACopiedFolderKeepsItsLinks) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("source/a.txt", "a");
    fs::create_symlink("a.txt", scratch_ / "source/link");
    EXPECT_TRUE(files_.copyFolder(folder("source"), folder("target"), nullptr));
    EXPECT_EQ(fs::read_symlink(scratch_ / "target/link"), "a.txt");
}

TEST_F(FNFileSystemTest, CopyingAFolderNeverEntersALink) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("outside/big.txt", "x");
    scratch_.write("source/a.txt", "a");
    fs::create_directory_symlink(scratch_ / "outside", scratch_ / "source/way-out");
    fs::create_directory_symlink(scratch_ / "source", scratch_ / "source/loop");
    EXPECT_TRUE(files_.copyFolder(folder("source"), folder("target"), nullptr));
    EXPECT_TRUE(fs::is_symlink(scratch_ / "target/way-out"));
    EXPECT_TRUE(fs::is_symlink(scratch_ / "target/loop"));
}

TEST_F(FNFileSystemTest, AFolderIsntCopiedOverAnotherNorIntoItself) {
    scratch_.write("source/a.txt", "a");
    scratch_.write("target/b.txt", "b");
    EXPECT_FALSE(files_.copyFolder(folder("source"), folder("target"), nullptr));
    EXPECT_FALSE(files_.copyFolder(folder("source"), folder("source"), nullptr));
    EXPECT_FALSE(files_.copyFolder(folder("source"), folder("source/deeper"), nullptr));
    EXPECT_FALSE(scratch_.has("target/a.txt"));
    EXPECT_FALSE(scratch_.has("source/deeper"));
}

TEST_F(FNFileSystemTest, AFolderIsntCopiedIntoItselfThroughALink) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("source/a.txt", "a");
    fs::create_directory_symlink(scratch_ / "source", scratch_ / "link");
    EXPECT_FALSE(files_.copyFolder(folder("source"), folder("link/deeper"), nullptr));
    EXPECT_FALSE(scratch_.has("source/deeper"));
}

TEST_F(FNFileSystemTest, ANameThatOnlyBeginsLikeTheSourceIsAnotherFolder) {
    scratch_.write("source/a.txt", "a");
    EXPECT_TRUE(files_.copyFolder(folder("source"), folder("source-2"), nullptr));
    fs::create_directory(scratch_ / "source-3");
    EXPECT_TRUE(files_.copyFolder(folder("source"), folder("source-3/inner"), nullptr));
    EXPECT_EQ(scratch_.read("source-3/inner/a.txt"), "a");
}

TEST_F(FNFileSystemTest, ACopyThatWouldLackSomethingIsNone) {
    if (const char* reason = whyNoOddNames()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("source/a.txt", "a");
    scratch_.write("source/back\\slash.txt", "x");
    EXPECT_FALSE(files_.copyFolder(folder("source"), folder("target"), nullptr));
    EXPECT_FALSE(scratch_.has("target"));
}

TEST_F(FNFileSystemTest, ACancelledFolderCopyIsRemovedAgain) {
    scratch_.write("source/a.txt", "a");
    scratch_.write("source/inner/b.txt", "b");
    RecordingProgress progress;
    progress.cancelAt = 2;
    EXPECT_FALSE(files_.copyFolder(folder("source"), folder("target"), &progress));
    EXPECT_FALSE(scratch_.has("target"));
    EXPECT_EQ(scratch_.read("source/a.txt"), "a");
}

// Folders, counts, sizes and times.

TEST_F(FNFileSystemTest, FoldersAreMadeWithTheirParents) {
    EXPECT_FALSE(files_.folderExists(folder("a/b/c")));
    EXPECT_TRUE(files_.createFolder(folder("a/b/c")));
    EXPECT_TRUE(files_.folderExists(folder("a/b/c")));
    EXPECT_TRUE(files_.createFolder(folder("a/b/c")));
    scratch_.write("file", "");
    EXPECT_FALSE(files_.createFolder(folder("file/inner")));
}

TEST_F(FNFileSystemTest, FilesAndFoldersExistEachAsWhatTheyAre) {
    scratch_.write("folder/file", "");
    EXPECT_TRUE(files_.fileExists(path("folder/file")));
    EXPECT_FALSE(files_.folderExists(folder("folder/file")));
    EXPECT_TRUE(files_.folderExists(folder("folder")));
    EXPECT_FALSE(files_.fileExists(path("folder")));
    EXPECT_FALSE(files_.fileExists(path("missing")));
}

TEST_F(FNFileSystemTest, CountsFilesAndFoldersAndAddsTheirSizes) {
    scratch_.write("folder/a.txt", "12345");
    scratch_.write("folder/inner/b.txt", "123");
    scratch_.write("folder/inner/deeper/c.txt", "12");
    std::int64_t size = 100;
    EXPECT_EQ(files_.countFiles(folder("folder"), false, false, &size), 1);
    EXPECT_EQ(size, 105);
    EXPECT_EQ(files_.countFiles(folder("folder"), true, false, nullptr), 2);
    size = 0;
    EXPECT_EQ(files_.countFiles(folder("folder"), false, true, &size), 3);
    EXPECT_EQ(size, 10);
    EXPECT_EQ(files_.countFiles(folder("folder"), true, true, nullptr), 5);
    EXPECT_EQ(files_.countFiles(folder("missing"), true, true, nullptr), 0);
}

TEST_F(FNFileSystemTest, CountingNeverEntersALink) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("folder/a.txt", "1");
    scratch_.write("outside/b.txt", "1");
    fs::create_directory_symlink(scratch_ / "folder", scratch_ / "folder/loop");
    fs::create_directory_symlink(scratch_ / "outside", scratch_ / "folder/way-out");
    // The two links count as what they are.
    EXPECT_EQ(files_.countFiles(folder("folder"), false, true, nullptr), 3);
    EXPECT_EQ(files_.countFiles(folder("folder"), true, true, nullptr), 3);
}

TEST_F(FNFileSystemTest, TellsSizes) {
    scratch_.write("file", "12345");
    fs::create_directory(scratch_ / "folder");
    EXPECT_EQ(files_.getFileSize(path("file")), 5);
    EXPECT_EQ(files_.getFileSize(folder("folder")), 0);
    EXPECT_EQ(files_.getFileSize(path("missing")), -1);
}

TEST_F(FNFileSystemTest, ALinkHasTheSizeOfWhatItLeadsTo) {
    if (const char* reason = whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("file", "12345");
    fs::create_symlink("file", scratch_ / "link");
    EXPECT_EQ(files_.getFileSize(path("link")), 5);
}

TEST_F(FNFileSystemTest, FormatsTheSizeOfAFile) {
    scratch_.write("file", std::string(512, 'x'));
    FString text;
    EXPECT_TRUE(files_.formatSize(path("file"), text, 4));
    EXPECT_EQ(utf8Of(text), "0.512 Bytes");
    scratch_.write("empty", "");
    EXPECT_FALSE(files_.formatSize(path("empty"), text, 4));
    EXPECT_FALSE(files_.formatSize(path("missing"), text, 4));
}

TEST_F(FNFileSystemTest, TellsTimesInWholeSecondsRoundedDown) {
    const fs::path file = scratch_.write("file", "x");
    setModified(file, 1234567890, 999999);
    std::int64_t created = 0;
    std::int64_t modified = 0;
    EXPECT_TRUE(files_.getFileTimes(path("file"), created, modified));
    EXPECT_EQ(modified, 1234567890);
    EXPECT_GE(created, 1234567890);
    setModified(file, -2, 500000);
    EXPECT_TRUE(files_.getFileTimes(path("file"), created, modified));
    EXPECT_EQ(modified, -2);
    EXPECT_FALSE(files_.getFileTimes(path("missing"), created, modified));
    EXPECT_EQ(modified, -2);
}

TEST_F(FNFileSystemTest, KnowsOneFileUnderSeveralNames) {
    scratch_.write("file", "x");
    scratch_.write("other", "x");
    fs::create_hard_link(scratch_ / "file", scratch_ / "twin");
    EXPECT_TRUE(files_.isSameFile(path("file"), path("twin")));
    EXPECT_FALSE(files_.isSameFile(path("file"), path("other")));
    EXPECT_FALSE(files_.isSameFile(path("missing"), path("missing")));
}

TEST_F(FNFileSystemTest, NamesThatDifferInCaseAreTwoFiles) {
    if (const char* reason = whyNoCaseInNames()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("file", "x");
    scratch_.write("FILE", "x");
    EXPECT_FALSE(files_.isSameFile(path("file"), path("FILE")));
}

TEST_F(FNFileSystemTest, KnowsRootsAndAbsolutePaths) {
    EXPECT_TRUE(files_.isRootPath("\\"));
    EXPECT_TRUE(files_.isRootPath("C:"));
    EXPECT_FALSE(files_.isRootPath("C:\\folder"));
    EXPECT_TRUE(files_.isAbsolute(path("file")));
    EXPECT_FALSE(files_.isAbsolute(FNPath(FStringRef("..\\file"), PathKind::file)));
}

// Texts.

TEST_F(FNFileSystemTest, CleansNamesAndPaths) {
    FString name("what?\x01");
    EXPECT_TRUE(files_.sanitizeName(name, 0, true));
    EXPECT_EQ(utf8Of(name), "what_");
    FString kept("what?\x01");
    EXPECT_TRUE(files_.sanitizeName(kept, u'-', false));
    EXPECT_EQ(utf8Of(kept), "what-\x01");
    FString text("a:b:c");
    EXPECT_TRUE(files_.sanitizePath(text, 0));
    EXPECT_EQ(utf8Of(text), "a:b_c");
}

// Links.

TEST_F(FNFileSystemTest, ALinkIsMadeWithItsExtensionAndLeadsBack) {
    scratch_.write("target.wav", "x");
    FNPath link = path("to target");
    EXPECT_TRUE(files_.createLink(link, path("target.wav")));
    EXPECT_EQ(utf8Of(link.getName()), "to target.lnk");
    EXPECT_TRUE(files_.resolveLink(link));
    EXPECT_EQ(utf8Of(link.getName()), "target.wav");
    EXPECT_FALSE(link.fileType().isDefined());
    link.resolveKind();
    EXPECT_EQ(link.getKind(), PathKind::file);
}

TEST_F(FNFileSystemTest, ALinkNeverTakesANameThatIsThere) {
    scratch_.write("target", "x");
    scratch_.write("link.lnk", "precious");
    FNPath link = path("link.lnk");
    EXPECT_TRUE(files_.createLink(link, path("target")));
    EXPECT_EQ(utf8Of(link.getName()), "link-01.lnk");
    EXPECT_EQ(scratch_.read("link.lnk"), "precious");
    FNPath second = path("link");
    EXPECT_TRUE(files_.createLink(second, path("target")));
    EXPECT_EQ(utf8Of(second.getName()), "link-02.lnk");
}

TEST_F(FNFileSystemTest, AnyNumberOfLinksLeadToAFolderOrToNowhere) {
    fs::create_directory(scratch_ / "folder");
    scratch_.write("nowhere", "");
    for (const char* name : {"link.lnk", "link-01.lnk", "link-02.lnk", "link-03.lnk", "link-04.lnk"}) {
        FNPath link = path("link");
        EXPECT_TRUE(files_.createLink(link, folder("folder")));
        EXPECT_EQ(utf8Of(link.getName()), name);
    }
    for (const char* name : {"Link 1.0.LNK", "Link 1.0-01.LNK", "Link 1.0-02.LNK", "Link 1.0-03.LNK"}) {
        FNPath link = path("Link 1.0.LNK");
        scratch_.write("nowhere", "");
        EXPECT_TRUE(files_.createLink(link, path("nowhere")));
        EXPECT_EQ(utf8Of(link.getName()), name);
        fs::remove(scratch_ / "nowhere");
    }
}

TEST_F(FNFileSystemTest, OnlyLinksWithTheExtensionAreResolved) {
    scratch_.write("target", "x");
    scratch_.write("text.lnk", "no link");
    FNPath link = path("link.lnk");
    EXPECT_TRUE(files_.createLink(link, path("target")));
    fs::copy(scratch_ / "link.lnk", scratch_ / "plain", fs::copy_options::copy_symlinks);
    fs::rename(scratch_ / "link.lnk", scratch_ / "other.LNK");
    FNPath plain = path("plain");
    EXPECT_FALSE(files_.resolveLink(plain));
    FNPath text = path("text.lnk");
    EXPECT_FALSE(files_.resolveLink(text));
    EXPECT_EQ(utf8Of(text.getName()), "text.lnk");
    FNPath other = path("other.LNK");
    EXPECT_TRUE(files_.resolveLink(other));
    EXPECT_TRUE(files_.isSameFile(other, path("target")));
}

// Volumes and the desktop.

TEST_F(FNFileSystemTest, NamesTheVolumeByLabelOrKind) {
    FString name;
    const VolumeKind kind = files_.getVolumeKind(folder(""));
    EXPECT_NE(kind, VolumeKind::none);
    if (kind != VolumeKind::unknown) {
        EXPECT_TRUE(files_.getVolumeName(folder(""), name));
        EXPECT_FALSE(name.isEmpty());
    }
    EXPECT_EQ(files_.getVolumeKind(path("missing")), VolumeKind::none);
    EXPECT_FALSE(files_.getVolumeName(path("missing"), name));
}

TEST_F(FNFileSystemTest, TellsTheFreeSpace) {
    EXPECT_GT(files_.getFreeSpace(folder("")), 0);
    EXPECT_LE(static_cast<std::uintmax_t>(files_.getFreeSpace(folder(""))), fs::space(scratch_.path()).capacity);
    EXPECT_EQ(files_.getFreeSpace(path("missing")), -1);
}

class VolumeListener : public CmObject {
public:
    std::vector<std::string> received;

    std::int32_t receiveMessage(FMessage* message) override {
        const auto* root = cmCast<FNPath>(message->getObject(FStringRef("kRootPath")));
        received.push_back(std::string(message->getName()) + " " +
                           (root != nullptr && root->isFolder() ? utf8Of(root->getFullPath()) : "no folder"));
        return 0;
    }
};

TEST_F(FNFileSystemTest, VolumeListenersHearOfVolumesUntilTheyLeave) {
    VolumeListener listener;
    auto* unknown = static_cast<IUpdateTarget*>(&listener);
    const FNPath root(FStringRef("X:"), PathKind::folder);
    files_.addVolumeListener(unknown);
    files_.tellVolumeChange(true, root);
    files_.tellVolumeChange(false, root);
    files_.removeVolumeListener(unknown);
    files_.tellVolumeChange(true, root);
    EXPECT_EQ(listener.received, (std::vector<std::string>{"VolMount X:", "VolUnmount X:"}));
}

TEST_F(FNFileSystemTest, PathsOfAnotherFormAreAnsweredWithNothing) {
    scratch_.write("file", "x");
    const FNPath native = path("file");
    FPath foreign;
    foreign.setPath(native.getPath());
    foreign.setName("file");
    EXPECT_FALSE(files_.fileExists(foreign));
    EXPECT_EQ(files_.openFile(foreign, FileOpenMode::read, nullptr), nullptr);
    EXPECT_EQ(files_.createFile(foreign, FileOpenMode::write, nullptr), nullptr);
    EXPECT_FALSE(files_.deleteFile(foreign));
    EXPECT_FALSE(files_.rename(foreign, "new"));
    EXPECT_FALSE(files_.copyFile(native, foreign, nullptr));
    EXPECT_EQ(files_.newIterator(foreign, false), nullptr);
    EXPECT_EQ(scratch_.read("file"), "x");
}

} // namespace
} // namespace tessera
