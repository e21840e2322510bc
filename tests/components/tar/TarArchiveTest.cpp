// The whole way: a module is found in a folder, its component mounts an archive that the system's tar has made, and
// the ordinary file system reads, lists and counts what lies inside.
#include "components/FComponentRegistry.h"
#include "components/FPluginComponent.h"
#include "persistence/archives/FArchiveManager.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>

namespace tessera::test {
namespace {

FString pathText(const std::string& native) {
    FString text;
    text.assignUtf8(native.c_str());
    text.replaceChars("/", '\\');
    return text;
}

class TarArchiveTest : public testing::Test {
protected:
    TarArchiveTest() {
        registry_->acceptCategory("VirtualFileSystem");
        EXPECT_EQ(registry_->scanFolder(FNPath(pathText(TAR_MODULES), PathKind::folder)), 1);
        EXPECT_EQ(registry_->count("VirtualFileSystem"), 1);
    }
    ~TarArchiveTest() override { FArchiveManager::getInstance()->removeUnusedRemovables(); }

    FNPath in(const std::string& inner, const std::string& archive = "all.tar") const {
        return inside(archives_ / archive, inner);
    }
    static FNPath inside(const std::filesystem::path& archive, const std::string& inner) {
        FString text("vfs:\\\\");
        text.append(pathText(testing_support::utf8OfPath(archive)));
        if (!inner.empty()) {
            text.append("\\\\");
            text.append(pathText(inner));
        }
        return FNPath(text, PathKind::file);
    }
    std::string read(FNPath path) const {
        FStream* stream = files_->openFile(path, FileOpenMode::read, nullptr);
        if (stream == nullptr) {
            return "none";
        }
        std::string bytes;
        char block[777];
        for (std::int32_t count = 1; count > 0;) {
            count = stream->read(block, sizeof block);
            bytes.append(block, static_cast<std::size_t>(std::max(count, 0)));
        }
        files_->closeStream(stream);
        return bytes;
    }
    std::map<std::string, std::int64_t> list(const FNPath& folder) const {
        std::map<std::string, std::int64_t> seen;
        const auto entries = FRefPtr<FFileIterator>::adopt(files_->newIterator(folder, false));
        while (FPath* entry = entries ? entries->next() : nullptr) {
            FString name(entry->getName());
            name.toMultiByte(CodePage::utf8);
            seen[name.text8()] = entry->isFolder() ? -1 : files_->getFileSize(*entry);
        }
        return seen;
    }

    const std::filesystem::path archives_ = std::filesystem::canonical(TAR_ARCHIVES);
    FRefPtr<FComponentRegistry> registry_ = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    FFileSystem* files_ = FFileSystem::getInstance();
};

using Listing = std::map<std::string, std::int64_t>;

TEST_F(TarArchiveTest, FilesInsideAreRead) {
    EXPECT_EQ(read(in("first.wav")), std::string(100'000, 'a') + "end");
    EXPECT_EQ(read(in("sub/second.wav")), "second");
    EXPECT_EQ(read(in("sub/deep/third \u00e9\u4e2d")), "third one");
    EXPECT_EQ(read(in("empty")), "");
    EXPECT_EQ(read(in("missing")), "none");
    EXPECT_EQ(read(in("sub")), "none");
}

TEST_F(TarArchiveTest, AStreamSeeks) {
    FNPath path = in("first.wav");
    FStream* stream = files_->openFile(path, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->seek(-3, SeekMode::fromEnd), 100'000);
    char bytes[3];
    EXPECT_EQ(stream->read(bytes, 3), 3);
    EXPECT_EQ(std::string(bytes, 3), "end");
    EXPECT_LT(stream->write("x", 1), 1);
    files_->closeStream(stream);
}

TEST_F(TarArchiveTest, FoldersInsideAreListedAndCounted) {
    EXPECT_EQ(list(in("")), (Listing{{"empty", 0}, {"first.wav", 100'003}, {"sub", -1}}));
    EXPECT_EQ(list(in("sub")), (Listing{{"deep", -1}, {"second.wav", 6}}));
    EXPECT_EQ(list(in("nowhere")), Listing());
    std::int64_t size = 0;
    EXPECT_EQ(files_->countFiles(in(""), false, true, &size), 4);
    EXPECT_EQ(size, 100'003 + 6 + 9);
    EXPECT_EQ(files_->countFiles(in(""), true, true, nullptr), 6);
    EXPECT_EQ(files_->countFiles(in("sub"), true, false, nullptr), 2);
}

TEST_F(TarArchiveTest, FilesAndFoldersExist) {
    EXPECT_TRUE(files_->fileExists(in("sub/second.wav")));
    EXPECT_FALSE(files_->fileExists(in("sub")));
    EXPECT_TRUE(files_->folderExists(in("sub/deep")));
    EXPECT_TRUE(files_->folderExists(in("")));
    std::int64_t created = 0;
    std::int64_t modified = 0;
    EXPECT_TRUE(files_->getFileTimes(in("first.wav"), created, modified));
    std::int64_t outside = 0;
    EXPECT_TRUE(files_->getFileTimes(
        FNPath(pathText(testing_support::utf8OfPath(archives_ / "in/first.wav")), PathKind::file), created, outside));
    EXPECT_EQ(modified, outside);
}

TEST_F(TarArchiveTest, NothingInsideCanBeChanged) {
    FNPath path = in("new");
    EXPECT_EQ(files_->createFile(path, FileOpenMode::write, nullptr), nullptr);
    EXPECT_FALSE(files_->deleteFile(in("first.wav")));
    EXPECT_FALSE(files_->createFolder(in("folder")));
    EXPECT_EQ(read(in("sub/second.wav")), "second");
}

TEST_F(TarArchiveTest, EveryFormOfTarIsRead) {
    for (const char* form : {"gnu", "oldgnu", "pax", "posix", "ustar"}) {
        EXPECT_EQ(read(in("sub/second.wav", std::string(form) + ".tar")), "second") << form;
    }
}

TEST_F(TarArchiveTest, NamesThatLeadOutAreLeftOut) {
    EXPECT_EQ(list(in("", "out.tar")), (Listing{{"second.wav", 6}}));
}

TEST_F(TarArchiveTest, WhatIsNoTarIsNotMounted) {
    const testing_support::ScratchFolder scratch;
    EXPECT_EQ(read(inside(scratch.write("text.tar", std::string(2'000, 'x')), "a")), "none");
    // Cut in the middle of a file: what stood before can be read or not, but nothing breaks.
    std::filesystem::copy(archives_ / "all.tar", scratch / "cut.tar");
    std::filesystem::resize_file(scratch / "cut.tar", 50'000);
    EXPECT_EQ(read(inside(scratch / "cut.tar", "sub/second.wav")), "none");
}

TEST_F(TarArchiveTest, AnArchiveWithinAnArchiveIsRead) {
    EXPECT_EQ(read(in("sub/nested.tar\\\\sub/second.wav", "outer.tar")), "second");
}

TEST_F(TarArchiveTest, AModuleIsInUseAsLongAsAnArchiveOfItIs) {
    FComponentRegistry::Components components;
    ASSERT_TRUE(registry_->getCategory("VirtualFileSystem", components));
    const auto* tar = cmCast<FPluginComponent>(components.front().get());
    ASSERT_NE(tar, nullptr);
    EXPECT_EQ(tar->getInstanceCount(), 0);
    EXPECT_EQ(read(in("sub/nested.tar\\\\sub/second.wav", "outer.tar")), "second");
    EXPECT_EQ(tar->getInstanceCount(), 2) << "one for each archive";
    EXPECT_EQ(tar->getModule()->getUseCount(), 2);
    FArchiveManager::getInstance()->removeUnusedRemovables();
    EXPECT_EQ(tar->getInstanceCount(), 0);
    EXPECT_EQ(tar->getModule()->getUseCount(), 0);
    EXPECT_EQ(read(in("sub/second.wav")), "second") << "the library is there, or comes again";
}

} // namespace
} // namespace tessera::test
