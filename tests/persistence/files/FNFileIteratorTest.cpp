#include "persistence/files/FNFileIterator.h"

#include "persistence/files/FFileSystem.h"
#include "persistence/files/PathSupport.h"
#include "support/FileMarks.h"
#include "support/ScratchFolder.h"
#include "support/Skips.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace tessera {
namespace {

namespace fs = std::filesystem;

struct Entry {
    PathKind kind;
    std::int32_t size;
    bool visible;
    std::string fullPath;
    std::string extension;
};

class FNFileIteratorTest : public testing::Test {
protected:
    std::map<std::string, Entry> walk(bool resolveLinks, bool fillFileTypes = false) {
        const auto iterator =
            FRefPtr<FNFileIterator>::adopt(new FNFileIterator(folderOf(scratch_.path()), resolveLinks, fillFileTypes));
        return entriesOf(*iterator);
    }
    static std::map<std::string, Entry> entriesOf(FFileIterator& iterator) {
        std::map<std::string, Entry> entries;
        while (FPath* path = iterator.next()) {
            entries[utf8Of(path->getName())] = {path->getKind(), path->getCachedSize(), path->isVisible(),
                                                utf8Of(path->getFullPath()), utf8Of(path->fileType().getDosType())};
        }
        return entries;
    }
    static std::set<std::string> namesOf(const std::map<std::string, Entry>& entries) {
        std::set<std::string> names;
        for (const auto& entry : entries) {
            names.insert(entry.first);
        }
        return names;
    }

    void makeLink(const std::string& name, const std::string& target) {
        FNPath link = pathOf(scratch_ / name);
        EXPECT_TRUE(FFileSystem::getInstance()->createLink(link, pathOf(scratch_ / target)));
    }

    testing_support::ScratchFolder scratch_;
};

TEST_F(FNFileIteratorTest, GivesEachEntryOnce) {
    scratch_.write("a.wav", "12345");
    scratch_.write("folder/inner.txt", "x");
    testing_support::setHidden(scratch_.write(".hidden", "1"));
    const auto entries = walk(false);
    EXPECT_EQ(namesOf(entries), (std::set<std::string>{".hidden", "a.wav", "folder"}));
    EXPECT_EQ(entries.at("a.wav").kind, PathKind::file);
    EXPECT_EQ(entries.at("a.wav").size, 5);
    EXPECT_TRUE(entries.at("a.wav").visible);
    EXPECT_EQ(entries.at("folder").kind, PathKind::folder);
    EXPECT_EQ(entries.at("folder").size, 0);
    EXPECT_FALSE(entries.at(".hidden").visible);
}

TEST_F(FNFileIteratorTest, EntriesKnowTheirFolder) {
    scratch_.write("a.wav", "");
    EXPECT_EQ(walk(false).at("a.wav").fullPath, utf8Of(pathOf(scratch_ / "a.wav").getFullPath()));
}

TEST_F(FNFileIteratorTest, AnEmptyOrMissingFolderHasNoEntries) {
    EXPECT_TRUE(walk(false).empty());
    const auto missing =
        FRefPtr<FNFileIterator>::adopt(new FNFileIterator(folderOf(scratch_ / "missing"), false, false));
    EXPECT_EQ(missing->next(), nullptr);
    EXPECT_EQ(missing->next(), nullptr);
}

TEST_F(FNFileIteratorTest, LinksAreFollowedForKindAndSize) {
    if (const char* reason = testing_support::whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("folder/file", "12345");
    fs::create_symlink("folder/file", scratch_ / "to file");
    fs::create_directory_symlink("folder", scratch_ / "to folder");
    fs::create_symlink("nowhere", scratch_ / "broken");
    const auto entries = walk(false);
    EXPECT_EQ(entries.at("to file").kind, PathKind::file);
    EXPECT_EQ(entries.at("to file").size, 5);
    EXPECT_EQ(entries.at("to folder").kind, PathKind::folder);
    EXPECT_EQ(entries.at("broken").kind, PathKind::file);
}

TEST_F(FNFileIteratorTest, OnlyTheExtensionMakesALink) {
    scratch_.write("target", "12345");
    makeLink("one.lnk", "target");
    makeLink("two.LNK", "target");
    fs::create_directory(scratch_ / "folder.lnk");
    scratch_.write("text.lnk", "no link at all");
    const auto entries = walk(false);
    EXPECT_EQ(entries.at("one.lnk").kind, PathKind::link);
    EXPECT_EQ(entries.at("two.LNK").kind, PathKind::link);
    EXPECT_EQ(entries.at("text.lnk").kind, PathKind::link);
    EXPECT_EQ(entries.at("folder.lnk").kind, PathKind::folder);
    EXPECT_EQ(entries.at("target").kind, PathKind::file);
}

TEST_F(FNFileIteratorTest, ResolvedLinksAreGivenAsWhatTheyLeadTo) {
    scratch_.write("folder/file.wav", "12345");
    scratch_.write("nowhere", "");
    makeLink("to file.lnk", "folder/file.wav");
    makeLink("to folder.lnk", "folder");
    makeLink("broken.lnk", "nowhere");
    fs::remove(scratch_ / "nowhere");
    scratch_.write("text.lnk", "no link at all");
    const auto iterator = FRefPtr<FNFileIterator>::adopt(new FNFileIterator(folderOf(scratch_.path()), true, false));
    std::multimap<std::string, PathKind> found;
    while (FPath* path = iterator->next()) {
        found.emplace(utf8Of(path->getName()), path->getKind());
    }
    EXPECT_EQ(found, (std::multimap<std::string, PathKind>{{"broken.lnk", PathKind::link},
                                                           {"file.wav", PathKind::file},
                                                           {"folder", PathKind::folder},
                                                           {"folder", PathKind::folder},
                                                           {"text.lnk", PathKind::link}}));
}

TEST_F(FNFileIteratorTest, ResolvedLinksHaveTheSizeAndTheMarkOfWhatTheyLeadTo) {
    scratch_.write("folder/file.wav", "12345");
    testing_support::setHidden(scratch_.write("folder/.hidden", "1234567"));
    makeLink(".to file.lnk", "folder/file.wav");
    testing_support::setHidden(scratch_ / ".to file.lnk");
    makeLink("to hidden.lnk", "folder/.hidden");
    makeLink("to folder.lnk", "folder");
    const auto entries = walk(true);
    EXPECT_EQ(namesOf(entries), (std::set<std::string>{".hidden", "file.wav", "folder"}));
    EXPECT_EQ(entries.at("file.wav").size, 5);
    EXPECT_TRUE(entries.at("file.wav").visible);
    EXPECT_EQ(entries.at(".hidden").size, 7);
    EXPECT_FALSE(entries.at(".hidden").visible);
}

TEST_F(FNFileIteratorTest, FileTypesAreFilledWhenAsked) {
    scratch_.write("a.WAV", "");
    scratch_.write("b", "");
    EXPECT_EQ(walk(false, false).at("a.WAV").extension, "");
    const auto filled = walk(false, true);
    EXPECT_EQ(filled.at("a.WAV").extension, "wav");
    EXPECT_EQ(filled.at("b").extension, "???");
}

constexpr const char* kForeignName = "Gr\xC3\xBC\xC3\x9F"
                                     "e \xE9\x9F\xB3 \xF0\x9F\x8E\xB5.wav";

TEST_F(FNFileIteratorTest, NamesMayHoldAnyCharacters) {
    scratch_.write(kForeignName, "");
    EXPECT_EQ(namesOf(walk(false)), std::set<std::string>{kForeignName});
}

TEST_F(FNFileIteratorTest, NamesWithoutAPathFormArePassedOver) {
    if (const char* reason = testing_support::whyNoOddNames()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("back\\slash", "");
    scratch_.write("no\xFFutf8", "");
    scratch_.write(kForeignName, "");
    EXPECT_EQ(namesOf(walk(false)), std::set<std::string>{kForeignName});
}

TEST_F(FNFileIteratorTest, TheLowWordOfALargeSizeIsKept) {
    scratch_.write("large", "");
    testing_support::setSize(scratch_ / "large", 0x180000002);
    EXPECT_EQ(walk(false).at("large").size, static_cast<std::int32_t>(0x80000002u));
}

TEST_F(FNFileIteratorTest, AResetIteratorSeesWhatIsThereNow) {
    scratch_.write("first", "");
    const auto iterator = FRefPtr<FNFileIterator>::adopt(new FNFileIterator(folderOf(scratch_.path()), false, false));
    EXPECT_EQ(entriesOf(*iterator).size(), 1u);
    EXPECT_EQ(iterator->next(), nullptr);
    scratch_.write("second", "");
    iterator->reset();
    EXPECT_EQ(entriesOf(*iterator).size(), 2u);
}

TEST_F(FNFileIteratorTest, AFolderThatComesLaterIsFoundByReset) {
    const auto iterator =
        FRefPtr<FNFileIterator>::adopt(new FNFileIterator(folderOf(scratch_ / "later"), false, false));
    EXPECT_EQ(iterator->next(), nullptr);
    scratch_.write("later/file", "");
    iterator->reset();
    EXPECT_NE(iterator->next(), nullptr);
}

TEST_F(FNFileIteratorTest, AClonedEntryOutlivesTheWalk) {
    scratch_.write("file", "123");
    auto iterator =
        FRefPtr<FFileIterator>::adopt(FFileSystem::getInstance()->newIterator(folderOf(scratch_.path()), false));
    const auto kept = FRefPtr<CmObject>::adopt(iterator->next()->clone());
    iterator.reset();
    const auto* path = cmCast<FNPath>(kept.get());
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(utf8Of(path->getName()), "file");
    EXPECT_EQ(path->getCachedSize(), 3);
}

TEST(FFileIterator, GivesNothing) {
    FFileIterator none;
    none.reset();
    EXPECT_EQ(none.next(), nullptr);
}

} // namespace
} // namespace tessera
