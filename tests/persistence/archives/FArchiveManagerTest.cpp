#include "persistence/archives/FArchiveManager.h"

#include "persistence/archives/ArchiveTest.h"
#include "persistence/urls/FUrl.h"
#include "support/FileMarks.h"

#include <thread>

namespace tessera::test {
namespace {

using FArchiveManagerTest = ArchiveTest;

// A mount of another scheme.
class LibraryFiles : public FFileSystem {
public:
    FStream* openFile(FPath& path, std::uint32_t, std::int32_t*) override {
        asked = FArchiveManager::getInnerPath(path);
        return new FMemoryStream;
    }
    FFileIterator* newIterator(const FPath&, bool) override { return new Walk; }

    FString asked;

private:
    class Walk : public FFileIterator {
    public:
        FPath* next() override {
            if (rest_ == 0) {
                return nullptr;
            }
            path_.set(FString(rest_-- == 2 ? "C:\\hidden\\one.wav" : "C:\\hidden\\two"), PathKind::file);
            path_.setKind(rest_ == 1 ? PathKind::file : PathKind::folder);
            return &path_;
        }
        void reset() override { rest_ = 2; }

    private:
        int rest_ = 0;
        FNPath path_;
    };
};

std::string fullOf(const FPath* path) {
    FString text;
    path->getFullPath(text);
    text.toMultiByte(CodePage::utf8);
    return text.text8();
}

TEST_F(FArchiveManagerTest, AFileInAnArchiveIsReadThroughTheFileSystem) {
    EXPECT_EQ(read(in("file.wav")), "12345");
    EXPECT_EQ(read(in("sub\\inner.wav")), "123");
    EXPECT_EQ(read(in("missing")), "none");
    EXPECT_EQ(state_.volumes, 1); // mounted once
    EXPECT_EQ(archives_->getMountCount(keyOf("a.pak")), 1);
}

TEST_F(FArchiveManagerTest, AnUnbufferedOpeningNeverReachesAMount) {
    EXPECT_EQ(read(in("file.wav"), FileOpenMode::read | FileOpenMode::unbuffered), "none");
    EXPECT_EQ(state_.made, 0);
    EXPECT_EQ(read(in("file.wav"), FileOpenMode::read | FileOpenMode::write), "12345"); // opened with mode 5 inside
}

TEST_F(FArchiveManagerTest, AUrlLeadsIntoAnArchive) {
    FUrl url(FString(("vfs://" + testing_support::slashTextOf(scratch_ / "a.pak") + "//sub/inner.wav").c_str()));
    EXPECT_TRUE(files_->fileExists(url));
    EXPECT_EQ(files_->getFileSize(url), 3);
}

TEST_F(FArchiveManagerTest, OnlyTheComponentOfTheArchivesTypeIsTaken) {
    scratch_.write("a.zip", "archive");
    EXPECT_EQ(archives_->getFileSystem(in("x", "a.zip")), nullptr);
    EXPECT_EQ(state_.made, 2); // both were asked
    scratch_.write("plain", "archive");
    EXPECT_EQ(archives_->getFileSystem(in("x", "plain")), nullptr);
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, WhatCantBeOpenedIsNotMounted) {
    EXPECT_EQ(archives_->getFileSystem(in("x", "missing.pak")), nullptr);
    scratch_.write("b.pak", "broken");
    EXPECT_EQ(archives_->getFileSystem(in("x", "b.pak")), nullptr);
    state_.initialized = kResultFailure;
    EXPECT_EQ(archives_->getFileSystem(in("x")), nullptr);
    state_.initialized = kResultOk;
    EXPECT_NE(archives_->getFileSystem(in("x")), nullptr);
    EXPECT_EQ(archives_->getFileSystem(FNPath(FString("vfs:\\\\"), PathKind::file)), nullptr);
    EXPECT_EQ(archives_->getFileSystem(FNPath(FString("kpssound:\\\\lib\\x"), PathKind::file)), nullptr);
    EXPECT_EQ(archives_->getFileSystem(FNPath(FString("C:\\x"), PathKind::file)), nullptr);
}

TEST_F(FArchiveManagerTest, WithoutASourceNothingIsMounted) {
    FakeSource::present = nullptr;
    EXPECT_EQ(mount(), nullptr);
    EXPECT_EQ(read(in("file.wav")), "none");
}

TEST_F(FArchiveManagerTest, ComponentsAreGivenTheHostContext) {
    ForeignObject<> context;
    FArchiveManager::setHostContext(&context);
    ASSERT_NE(mount(), nullptr);
    EXPECT_EQ(state_.context, &context);
}

TEST_F(FArchiveManagerTest, MountedTwiceItTakesTwoRemovals) {
    FFileSystem* mounted = mount();
    const FString key = keyOf("a.pak");
    EXPECT_TRUE(archives_->addArchive(mounted, FString("vfs"), key));
    EXPECT_EQ(archives_->getMountCount(key), 2);
    EXPECT_FALSE(archives_->removeArchive(FString("vfs"), key, FArchiveManager::kUnlessMountedTwice));
    EXPECT_EQ(archives_->getMountCount(key), 1);
    EXPECT_EQ(mount(), mounted);
    EXPECT_TRUE(archives_->removeArchive(FString("vfs"), key, FArchiveManager::kUnlessMountedTwice));
    EXPECT_EQ(archives_->getMountCount(key), 0);
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, ForceIsExactlyOne) {
    FFileSystem* mounted = mount();
    const FString key = keyOf("a.pak");
    archives_->addArchive(mounted, FString("vfs"), key);
    archives_->addArchive(mounted, FString("vfs"), key);
    EXPECT_FALSE(archives_->removeArchive(FString("vfs"), key, 2));
    EXPECT_EQ(archives_->getMountCount(key), 2);
    EXPECT_TRUE(archives_->removeArchive(FString("vfs"), key, FArchiveManager::kForced));
}

TEST_F(FArchiveManagerTest, RemovingAsksForKeyAndScheme) {
    EXPECT_FALSE(archives_->removeArchive(FString("vfs"), keyOf("a.pak"), 1)); // empty table
    ASSERT_NE(mount(), nullptr);
    EXPECT_FALSE(archives_->removeArchive(FString("axf"), keyOf("a.pak"), 1));
    EXPECT_FALSE(archives_->removeArchive(FString("vfs"), keyOf("b.pak"), 1));
    EXPECT_TRUE(archives_->removeArchive(FString("vfs"), keyOf("a.pak"), 1));
}

TEST_F(FArchiveManagerTest, NothingIsAddedWithoutAllArguments) {
    LibraryFiles library;
    EXPECT_FALSE(archives_->addArchive(nullptr, FString("axf"), FString("k")));
    EXPECT_FALSE(archives_->addArchive(&library, FString(), FString("k")));
    EXPECT_FALSE(archives_->addArchive(&library, FString("axf"), FString()));
}

TEST_F(FArchiveManagerTest, NamesThatDifferInCaseShareAMount) {
    FFileSystem* mounted = mount();
    scratch_.write("A.pak", "broken");
    EXPECT_EQ(archives_->getFileSystem(in("x", "A.pak")), mounted);
    EXPECT_EQ(state_.volumes, 1);
}

TEST_F(FArchiveManagerTest, IdleMountsAreDropped) {
    ASSERT_NE(mount(), nullptr);
    scratch_.write("b.pak", "archive");
    ASSERT_NE(archives_->getFileSystem(in("", "b.pak")), nullptr);
    const FRefPtr<FPluginFileSystem> held(mount());
    archives_->removeUnusedRemovables();
    EXPECT_EQ(state_.volumes, 0) << "closed, whoever holds it";
    EXPECT_EQ(archives_->getMountCount(keyOf("a.pak")), 0);
    EXPECT_EQ(archives_->getMountCount(keyOf("b.pak")), 0);
}

TEST_F(FArchiveManagerTest, AMountWithALiveStreamSurvives) {
    FNPath path = in("file.wav");
    FStream* stream = files_->openFile(path, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(mount()->getOpenCount(), 1);
    archives_->removeUnusedRemovables();
    EXPECT_EQ(state_.volumes, 1);
    files_->closeStream(stream);
    EXPECT_EQ(mount()->getOpenCount(), 0);
    archives_->removeUnusedRemovables();
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, AMountWhoseStreamIsGoingSurvives) {
    FNPath path = in("file.wav");
    FStream* stream = files_->openFile(path, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    int volumes = 0;
    state_.streamGone = [&] {
        archives_->removeUnusedRemovables();
        volumes = state_.volumes;
    };
    files_->closeStream(stream);
    EXPECT_EQ(volumes, 1);
    archives_->removeUnusedRemovables();
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, AnIteratorOutlivesItsMount) {
    auto entries = FRefPtr<FFileIterator>::adopt(files_->newIterator(in(""), false));
    ASSERT_TRUE(entries);
    archives_->removeUnusedRemovables();
    EXPECT_EQ(archives_->getMountCount(keyOf("a.pak")), 0);
    EXPECT_EQ(state_.volumes, 1) << "the component's iterator may lean on it";
    EXPECT_NE(entries->next(), nullptr);
    entries.reset();
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, AStreamOutlivesItsMount) {
    FNPath path = in("file.wav");
    FStream* stream = files_->openFile(path, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    mount()->close();
    EXPECT_TRUE(archives_->removeArchive(FString("vfs"), keyOf("a.pak"), FArchiveManager::kForced));
    EXPECT_EQ(state_.volumes, 1) << "the component's stream may lean on it";
    char byte = 0;
    EXPECT_EQ(stream->read(&byte, 1), 1);
    files_->closeStream(stream);
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, AnArchiveThatIsAskedForWhileItOpensIsMountedOnce) {
    FFileSystem* first = nullptr;
    state_.opening = [&] { first = mount(); };
    FFileSystem* const mounted = mount();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(mounted, first);
    EXPECT_EQ(state_.volumes, 1);
    EXPECT_EQ(archives_->getMountCount(keyOf("a.pak")), 1);
}

TEST_F(FArchiveManagerTest, ComponentsAreGivenBackWhenTheirArchiveHasGone) {
    ASSERT_NE(mount(), nullptr);
    EXPECT_EQ(state_.made, 2);
    EXPECT_EQ(state_.givenBack, 1) << "the one of another type";
    auto entries = FRefPtr<FFileIterator>::adopt(files_->newIterator(in(""), false));
    archives_->removeUnusedRemovables();
    EXPECT_EQ(state_.givenBack, 1) << "its iterator is there";
    entries.reset();
    EXPECT_EQ(state_.givenBack, 2);
    EXPECT_EQ(state_.components, 0);
}

TEST_F(FArchiveManagerTest, ComponentsAreGivenBackWhereNothingIsMounted) {
    scratch_.write("a.zip", "archive");
    EXPECT_EQ(archives_->getFileSystem(in("x", "a.zip")), nullptr);
    scratch_.write("b.pak", "broken");
    EXPECT_EQ(archives_->getFileSystem(in("x", "b.pak")), nullptr);
    EXPECT_EQ(state_.made, 4);
    EXPECT_EQ(state_.givenBack, 4);
    EXPECT_EQ(state_.components, 0);
}

// The source belongs to the main thread.
TEST_F(FArchiveManagerTest, AComponentThatGoesOnAnotherThreadIsMerelyReleased) {
    FNPath path = in("file.wav");
    FStream* stream = files_->openFile(path, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(archives_->removeArchive(FString("vfs"), keyOf("a.pak"), FArchiveManager::kForced));
    EXPECT_EQ(state_.components, 1);
    std::thread([stream] { stream->release(); }).join();
    EXPECT_EQ(state_.components, 0);
    EXPECT_EQ(state_.volumes, 0);
    EXPECT_EQ(state_.givenBack, 1) << "the one of another type";
}

TEST_F(FArchiveManagerTest, AMountAddedTwiceAndOneOfAnotherKindSurvive) {
    archives_->addArchive(mount(), FString("vfs"), keyOf("a.pak"));
    LibraryFiles library;
    archives_->addArchive(&library, FString("kpssound"), FString("Lib"));
    archives_->removeUnusedRemovables();
    EXPECT_EQ(archives_->getMountCount(keyOf("a.pak")), 2);
    EXPECT_EQ(archives_->getMountCount(FString("lib")), 1);
    EXPECT_TRUE(archives_->removeArchive(FString("kpssound"), FString("LIB"), 0));
}

TEST_F(FArchiveManagerTest, OtherSchemesAreServedByWhatWasEntered) {
    LibraryFiles library;
    ASSERT_TRUE(archives_->addArchive(&library, FString("kpssound"), FString("lib")));
    FNPath path(FString("kpssound:\\\\Lib\\a\\b.wav"), PathKind::file);
    EXPECT_EQ(archives_->getFileSystem(path), &library);
    FStream* stream = files_->openFile(path, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    files_->closeStream(stream);
    EXPECT_TRUE(library.asked == "\\a\\b.wav");

    const FNPath folder(FString("kpssound:\\\\Lib\\a"), PathKind::folder);
    const auto entries = FRefPtr<FFileIterator>::adopt(files_->newIterator(folder, false));
    ASSERT_TRUE(entries);
    EXPECT_STREQ(entries->getClassName(), "FFileIteratorUrlWrapper");
    for (int round = 0; round < 2; ++round) {
        const FPath* entry = entries->next();
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(fullOf(entry), "kpssound:\\\\Lib\\a\\one.wav");
        EXPECT_TRUE(entry->isFile());
        entry = entries->next();
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(fullOf(entry), "kpssound:\\\\Lib\\a\\two");
        EXPECT_TRUE(entry->isFolder());
        EXPECT_EQ(entries->next(), nullptr);
        entries->reset();
    }
    EXPECT_TRUE(archives_->removeArchive(FString("kpssound"), FString("lib"), 0));
}

TEST_F(FArchiveManagerTest, AnArchiveWithinAnArchiveIsMountedThroughIt) {
    state_.files[u"nested.pak"] = "archive";
    const FNPath path = in("nested.pak\\\\file.wav");
    FString key;
    ASSERT_TRUE(FArchiveManager::getArchiveKey(path, key));
    EXPECT_TRUE(key.startsWith("vfs:"));
    EXPECT_EQ(read(path), "12345");
    EXPECT_EQ(state_.volumes, 2);
    EXPECT_EQ(mount()->getOpenCount(), 1); // the inner archive's own file
    archives_->removeUnusedRemovables();
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, ArchivesLieInOneAnotherUpToSixteenDeep) {
    state_.files[u"n.pak"] = "archive";
    std::string inner = "n.pak";
    for (int level = 2; level < 16; ++level) {
        inner += "\\\\n.pak";
    }
    EXPECT_EQ(read(in(inner + "\\\\file.wav")), "12345");
    EXPECT_EQ(state_.volumes, 16);
    EXPECT_EQ(read(in(inner + "\\\\n.pak\\\\file.wav")), "none");
    EXPECT_EQ(state_.volumes, 16);
    // From the innermost outwards, as each holds the one around it open.
    archives_->removeUnusedRemovables();
    EXPECT_EQ(state_.volumes, 0);
}

TEST_F(FArchiveManagerTest, APathThroughAnyNumberOfArchivesIsAnswered) {
    std::string text = "vfs:\\\\";
    for (int level = 0; level < 20000; ++level) {
        text += "a\\\\";
    }
    EXPECT_FALSE(files_->fileExists(FNPath(FString((text + "f").c_str()), PathKind::file)));
}

TEST_F(FArchiveManagerTest, AnOuterArchiveThatIsMissingIsAskedForOnce) {
    std::string inner = "x.pak";
    for (int level = 0; level < 9; ++level) {
        inner += "\\\\x.pak";
    }
    EXPECT_FALSE(files_->fileExists(in(inner, "missing.pak")));
    EXPECT_EQ(state_.made, 2) << "the two components of the source, for the outermost";
}

TEST_F(FArchiveManagerTest, TheFileIsOpenedForWritingWhereTheComponentWrites) {
    for (const bool writes : {false, true}) {
        SCOPED_TRACE(writes);
        state_.canWrite = writes;
        ASSERT_NE(mount(), nullptr);
        std::int32_t count = 0;
        EXPECT_EQ(state_.file->seek(0, 0, nullptr), kResultOk);
        EXPECT_EQ(state_.file->write("A", 1, &count) == kResultOk && count == 1, writes);
        archives_->removeUnusedRemovables();
        EXPECT_EQ(scratch_.read("a.pak"), writes ? "Archive" : "archive");
    }
}

TEST_F(FArchiveManagerTest, OnAReadOnlyFileAComponentThatWritesIsReadOnly) {
    state_.canWrite = true;
    EXPECT_EQ(mount()->getCapabilities(), 7u);
    const auto guard = testing_support::writeUnwritable(scratch_ / "b.pak");
    auto* mounted = static_cast<FPluginFileSystem*>(archives_->getFileSystem(in("", "b.pak")));
    ASSERT_NE(mounted, nullptr);
    EXPECT_EQ(mounted->getCapabilities(), 5u);
    EXPECT_FALSE(files_->deleteFile(in("file.wav", "b.pak")));
    EXPECT_FALSE(files_->createFolder(in("f", "b.pak")));
    EXPECT_TRUE(state_.changes.empty());
}

} // namespace
} // namespace tessera::test
