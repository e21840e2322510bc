#include "persistence/archives/FPluginFileSystem.h"

#include "persistence/archives/ArchiveTest.h"
#include "persistence/files/RecordingProgress.h"
#include "support/Skips.h"
#include "support/SlotOf.h"

#include <atomic>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace tessera::test {
namespace {

using FPluginFileSystemTest = ArchiveTest;

TEST_F(FPluginFileSystemTest, AnswersToTheNameOfItsBase) {
    EXPECT_STREQ(mount()->getClassName(), "FRemovableFileSystem");
    EXPECT_TRUE(mount()->isTypeOf("FFileSystem", true));
}

TEST_F(FPluginFileSystemTest, KnowsFilesAndFolders) {
    EXPECT_TRUE(files_->fileExists(in("file.wav")));
    EXPECT_FALSE(files_->fileExists(in("sub")));
    EXPECT_FALSE(files_->fileExists(in("missing")));
    EXPECT_TRUE(files_->folderExists(in("sub")));
    EXPECT_TRUE(files_->folderExists(in("")));
    EXPECT_FALSE(files_->folderExists(in("file.wav")));
    EXPECT_EQ(files_->getFileSize(in("file.wav")), 5);
    EXPECT_EQ(files_->getFileSize(in("missing")), -1);
    std::int64_t created = 0;
    std::int64_t modified = 0;
    EXPECT_TRUE(files_->getFileTimes(in("file.wav"), created, modified));
    EXPECT_EQ(modified, 1'000'000);
    EXPECT_EQ(created, modified);
    EXPECT_FALSE(files_->getFileTimes(in("missing"), created, modified));
}

TEST_F(FPluginFileSystemTest, WhatTheComponentCantAnswerIsThere) {
    state_.existsAnswer = kResultNotProvided;
    EXPECT_TRUE(files_->fileExists(in("whatever")));
    EXPECT_FALSE(files_->folderExists(in("whatever")));
    state_.existsAnswer = kResultFailure;
    EXPECT_FALSE(files_->fileExists(in("file.wav")));
}

TEST_F(FPluginFileSystemTest, ListsAFolderWithPathsThatCanBeOpened) {
    for (const std::string folder : {"", "sub"}) {
        const auto entries = FRefPtr<FFileIterator>::adopt(files_->newIterator(in(folder), false));
        ASSERT_TRUE(entries);
        std::map<std::string, bool> seen;
        for (int round = 0; round < 2; ++round) {
            while (FPath* entry = entries->next()) {
                FString name(entry->getName());
                seen[name.text8()] = entry->isFolder();
                EXPECT_EQ(files_->fileExists(*entry), entry->isFile());
                EXPECT_EQ(files_->folderExists(*entry), entry->isFolder());
                EXPECT_EQ(entry->isFile() ? files_->getFileSize(*entry) : 0, entry->getCachedSize());
            }
            entries->reset();
        }
        const std::map<std::string, bool> root{{"file.wav", false}, {"sub", true}};
        const std::map<std::string, bool> sub{{"deep", true}, {"inner.wav", false}};
        EXPECT_EQ(seen, folder.empty() ? root : sub);
    }
}

TEST_F(FPluginFileSystemTest, EachListedFileHasATypeOfItsOwn) {
    state_.files = {{u"a.wav", ""}, {u"b.txt", ""}};
    const auto entries = FRefPtr<FFileIterator>::adopt(files_->newIterator(in(""), false));
    ASSERT_TRUE(entries);
    for (const char* type : {"wav", "txt"}) {
        FPath* entry = entries->next();
        ASSERT_NE(entry, nullptr);
        EXPECT_TRUE(entry->getFileType().getDosType() == FString(type));
    }
}

TEST_F(FPluginFileSystemTest, CountsFilesAndFolders) {
    std::int64_t size = 100;
    EXPECT_EQ(files_->countFiles(in(""), false, true, &size), 3);
    EXPECT_EQ(size, 109); // added
    EXPECT_EQ(files_->countFiles(in(""), true, true, nullptr), 5);
    EXPECT_EQ(files_->countFiles(in(""), false, false, nullptr), 1);
    EXPECT_EQ(files_->countFiles(in("sub"), true, false, nullptr), 2);
    EXPECT_EQ(files_->countFiles(in("x", "missing.pak"), true, true, nullptr), 0);
}

TEST_F(FPluginFileSystemTest, CountsStreamsThatAreReleasedOnSeveralThreads) {
    constexpr int kThreads = 4;
    constexpr int kStreams = 3000;
    std::vector<std::vector<FStream*>> streams(kThreads);
    for (auto& each : streams) {
        for (int i = 0; i < kStreams; ++i) {
            FNPath path = in("file.wav");
            each.push_back(files_->openFile(path, FileOpenMode::read, nullptr));
            ASSERT_NE(each.back(), nullptr);
        }
    }
    EXPECT_EQ(mount()->getOpenCount(), kThreads * kStreams);
    // No latch: those of this library can miss the last arrival on systems without a call to wait for a word.
    std::atomic<int> missing = kThreads;
    std::vector<std::thread> threads;
    for (const auto& each : streams) {
        threads.emplace_back([&each, &missing] {
            --missing;
            while (missing > 0) {
                std::this_thread::yield();
            }
            for (FStream* stream : each) {
                stream->release();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(mount()->getOpenCount(), 0);
}

TEST_F(FPluginFileSystemTest, ChangesGoToTheVolume) {
    state_.canWrite = true;
    FNPath path = in("sub\\new.wav");
    FStream* stream = files_->createFile(path, FileOpenMode::write, nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->write("x", 1), 1);
    EXPECT_EQ(mount()->getOpenCount(), 1);
    files_->closeStream(stream);
    EXPECT_TRUE(files_->deleteFile(in("file.wav")));
    EXPECT_TRUE(files_->createFolder(in("f\\g")));
    EXPECT_TRUE(files_->deleteFolder(in("sub")));
    EXPECT_TRUE(files_->rename(path, FString("newer.wav")));
    EXPECT_TRUE(path.getName() == "newer.wav");
    FString whole;
    in("elsewhere\\x").getFullPath(whole);
    EXPECT_TRUE(files_->rename(path, whole));
    EXPECT_FALSE(files_->rename(path, FString()));
    const std::vector<std::u16string> expected = {u"create sub\\new.wav",
                                                  u"delete file.wav",
                                                  u"folder f\\g",
                                                  u"delete folder sub",
                                                  u"rename sub\\new.wav to sub\\newer.wav",
                                                  u"rename sub\\newer.wav to elsewhere\\x"};
    EXPECT_EQ(state_.changes, expected);
}

TEST_F(FPluginFileSystemTest, NothingIsRenamedOutOfItsMount) {
    state_.canWrite = true;
    scratch_.write("b.pak", "archive");
    FString elsewhere;
    in("y", "b.pak").getFullPath(elsewhere);
    FString nested;
    in("sub\\\\y").getFullPath(nested);
    FString root;
    in("").getFullPath(root);
    const FString names[] = {
        elsewhere,          nested,           root,           keyOf("y"),       FString("\\tmp\\x"),
        FString("deep\\x"), FString("..\\x"), FString("a/x"), FString("C:\\x"), FString(".."),
        FString()};
    for (const FString& name : names) {
        FNPath path = in("sub\\f");
        EXPECT_FALSE(files_->rename(path, name)) << FString(name).text8();
        EXPECT_TRUE(path.getFullPath() == in("sub\\f").getFullPath());
    }
    EXPECT_TRUE(state_.changes.empty());
}

TEST_F(FPluginFileSystemTest, AnArchiveMaySpellItsNameInAnotherCaseWhenAFileIsRenamed) {
    state_.canWrite = true;
    FNPath path = in("sub\\f");
    FString target;
    in("y", "A.PAK").getFullPath(target);
    EXPECT_TRUE(files_->rename(path, target));
    EXPECT_EQ(state_.changes, std::vector<std::u16string>{u"rename sub\\f to y"});
}

TEST_F(FPluginFileSystemTest, AFileIsCopiedOutOfAnArchive) {
    state_.files[u"large.wav"] = std::string(0x10000, 'x') + "end";
    RecordingProgress progress;
    EXPECT_TRUE(files_->copyFile(in("large.wav"), native("copy"), &progress));
    EXPECT_EQ(scratch_.read("copy"), state_.files[u"large.wav"]);
    EXPECT_EQ(progress.events,
              (std::vector<std::string>{"begin Copying File: large.wav 65539", "65536", "65539", "end"}));
    EXPECT_TRUE(files_->copyFile(in("sub\\inner.wav"), native("copy"), nullptr)) << "what is there is replaced";
    EXPECT_EQ(scratch_.read("copy"), "123");
    EXPECT_TRUE(files_->copyFile(in("sub\\deep\\last"), native("last"), nullptr));
    EXPECT_EQ(scratch_.read("last"), "1");
    EXPECT_EQ(scratch_.entryCount(), 3u);
}

TEST_F(FPluginFileSystemTest, ACopyOutOfAnArchiveIsWholeOrIsntThere) {
    scratch_.write("target", "precious");
    EXPECT_FALSE(files_->copyFile(in("missing"), native("target"), nullptr));
    EXPECT_FALSE(files_->copyFile(in("file.wav", "missing.pak"), native("target"), nullptr));
    RecordingProgress progress;
    progress.cancelAt = 1;
    EXPECT_FALSE(files_->copyFile(in("file.wav"), native("target"), &progress));
    state_.claimed = 1;
    EXPECT_FALSE(files_->copyFile(in("file.wav"), native("target"), nullptr)) << "it ends too soon";
    EXPECT_EQ(scratch_.read("target"), "precious");
    EXPECT_EQ(scratch_.entryCount(), 2u);
}

TEST_F(FPluginFileSystemTest, NothingIsCopiedIntoAnArchive) {
    state_.canWrite = true;
    EXPECT_FALSE(files_->copyFile(native("a.pak"), in("new"), nullptr));
    EXPECT_FALSE(files_->copyFile(in("file.wav"), in("new"), nullptr));
    EXPECT_TRUE(state_.changes.empty());
}

TEST_F(FPluginFileSystemTest, AFileMovesWithinItsArchiveAlone) {
    state_.canWrite = true;
    scratch_.write("b.pak", "archive");
    FNPath path = in("file.wav");
    EXPECT_FALSE(files_->move(path, in("file.wav", "b.pak")));
    EXPECT_FALSE(files_->move(path, native("file.wav")));
    EXPECT_TRUE(path.getFullPath() == in("file.wav").getFullPath());
    EXPECT_TRUE(files_->move(path, in("sub\\moved.wav")));
    EXPECT_TRUE(path.getFullPath() == in("sub\\moved.wav").getFullPath());
    EXPECT_EQ(state_.changes, std::vector<std::u16string>{u"rename file.wav to sub\\moved.wav"});
    FNPath outside = native("b.pak");
    FString inside;
    in("b.pak").getFullPath(inside);
    EXPECT_FALSE(files_->move(outside, in("b.pak")));
    EXPECT_FALSE(files_->rename(outside, inside));
    EXPECT_EQ(scratch_.read("b.pak"), "archive");
}

// A folder called "vfs:" is a folder like any other, and no archive's path leads into it.
TEST_F(FPluginFileSystemTest, APathIntoAnArchiveNamesNothingOnTheDisk) {
    if (const char* reason = testing_support::whyNoOddNames()) {
        GTEST_SKIP() << reason;
    }
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(scratch_.path());
    const std::string lookalike = "vfs:/" + testing_support::utf8OfPath(scratch_ / "a.pak");
    scratch_.write(lookalike + "/sub/precious", "x");
    EXPECT_FALSE(files_->deleteFolderContent(in("sub"), true));
    EXPECT_FALSE(files_->copyFolder(in("sub"), native("copy"), nullptr));
    EXPECT_FALSE(files_->copyFile(in("sub\\precious"), native("copy"), nullptr));
    FNPath path = in("sub\\precious");
    EXPECT_FALSE(files_->move(path, native("copy")));
    scratch_.write("file", "y");
    path = native("file");
    EXPECT_FALSE(files_->move(path, in("sub\\file")));
    FString inside;
    in("sub\\file").getFullPath(inside);
    EXPECT_FALSE(files_->rename(path, inside));
    EXPECT_FALSE(files_->copyFile(path, in("sub\\file"), nullptr));
    EXPECT_FALSE(files_->copyFolder(native("vfs:"), in("sub\\copy"), nullptr));
    EXPECT_EQ(scratch_.read(lookalike + "/sub/precious"), "x");
    EXPECT_FALSE(scratch_.has("copy"));
    std::filesystem::current_path(before);
}

TEST_F(FPluginFileSystemTest, WithoutTheBitForWritingNothingChanges) {
    FNPath path = in("file.wav");
    EXPECT_EQ(files_->createFile(path, FileOpenMode::write, nullptr), nullptr);
    EXPECT_FALSE(files_->deleteFile(path));
    EXPECT_FALSE(files_->createFolder(path));
    EXPECT_FALSE(files_->deleteFolder(path));
    EXPECT_FALSE(files_->rename(path, FString("x")));
    EXPECT_TRUE(state_.changes.empty());
    // Nor through a stream that was opened.
    FStream* stream = files_->openFile(path, FileOpenMode::read | FileOpenMode::write, nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_LT(stream->write("x", 1), 1);
    files_->closeStream(stream);
}

TEST_F(FPluginFileSystemTest, WithoutTheBitForReadingNothingIsRead) {
    state_.canRead = false;
    EXPECT_EQ(read(in("file.wav")), "none");
    EXPECT_FALSE(files_->fileExists(in("file.wav")));
    EXPECT_FALSE(files_->folderExists(in("sub")));
    EXPECT_EQ(files_->getFileSize(in("file.wav")), -1);
    EXPECT_NE(mount(), nullptr);
}

TEST_F(FPluginFileSystemTest, WithoutTheBitForIteratingNothingIsListed) {
    state_.canIterate = false;
    EXPECT_EQ(files_->newIterator(in(""), false), nullptr);
    EXPECT_EQ(files_->countFiles(in(""), true, true, nullptr), -1);
    EXPECT_EQ(read(in("file.wav")), "12345");
}

// Components are modules of other makers.
TEST(IVirtualFileSystem, ItsOperationsAndThoseOfAVolumeFollowEachOtherInOrder) {
    using C = IVirtualFileSystem;
    using V = IVirtualVolume;
    expectConsecutive(
        {2, slotOf(&C::initialize), slotOf(&C::getFileType), slotOf(&C::isSupported), slotOf(&C::openVolume)});
    expectConsecutive({2, slotOf(&V::openFile), slotOf(&V::exists), slotOf(&V::getSize), slotOf(&V::iterate),
                       slotOf(&V::createFile), slotOf(&V::deleteFile), slotOf(&V::createFolder),
                       slotOf(&V::deleteFolder), slotOf(&V::rename)});
    EXPECT_EQ(C::iid, "{296329B0-CE4E-4634-B7CF-71B38C1E9FCF}"_uid);
}

TEST_F(FPluginFileSystemTest, ClosedItAnswersWithNothing) {
    const FRefPtr<FPluginFileSystem> mounted(mount());
    mounted->close();
    EXPECT_EQ(state_.volumes, 0);
    EXPECT_FALSE(mounted->fileExists(in("file.wav")));
    EXPECT_EQ(mounted->newIterator(in(""), false), nullptr);
    mounted->closeStream(nullptr);
}

} // namespace
} // namespace tessera::test
