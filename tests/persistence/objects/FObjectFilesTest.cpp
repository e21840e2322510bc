#include "persistence/objects/FObjectFiles.h"

#include "persistence/objects/DocumentFolders.h"
#include "persistence/objects/DocumentSupport.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/paths/FFileType.h"
#include "support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tessera {
namespace {

using namespace test;

using Replacing = FObjectFiles::Replacing;
namespace fs = std::filesystem;

class FObjectFilesTest : public testing::Test {
protected:
    ~FObjectFilesTest() override { persistenceHooks = PersistenceHooks(); }

    bool save(const char* title, Replacing replacing = Replacing::silently) {
        const TestNode node(title);
        return FObjectFiles::saveObject("Mixer", "TestNode", node, replacing);
    }
    // The title of what is loaded; "(nothing)" when that fails.
    static std::string load() {
        TestNode node;
        return FObjectFiles::loadObject("Mixer", "TestNode", node) ? std::string(node.title.text8()) : "(nothing)";
    }
    static std::string textOf(const char* title) { return savedObject(TestNode(title), "TestNode"); }
    std::string fileText(const std::string& name) const { return scratch_.read("user/" + name); }
    std::vector<std::string> names(const char* folder = "user") const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(scratch_ / folder)) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    testing_support::ScratchFolder scratch_;
    DocumentFolders folders_{scratch_ / "user", scratch_ / "module"};
};

using testing::ElementsAre;

TEST_F(FObjectFilesTest, ADocumentIsAFileInTheUsersFolderWhichIsMade) {
    EXPECT_TRUE(save("one"));
    EXPECT_THAT(names(), ElementsAre("Mixer.xml"));
    EXPECT_EQ(fileText("Mixer.xml"), textOf("one"));
    EXPECT_EQ(load(), "one");
}

TEST_F(FObjectFilesTest, TheNewDocumentTakesTheOldOnesPlace) {
    EXPECT_TRUE(save("one"));
    EXPECT_TRUE(save("two"));
    EXPECT_THAT(names(), ElementsAre("Mixer.xml"));
    EXPECT_EQ(load(), "two");
}

TEST_F(FObjectFilesTest, DocumentsWithRootsGoTheSameWay) {
    const auto node = newNode("node", 7);
    FObjectDocument document;
    document.addObject("node", *node);
    EXPECT_TRUE(FObjectFiles::saveDocument("Mixer", "Project", document));
    EXPECT_EQ(fileText("Mixer.xml"), saved(document));
    FObjectDocument read;
    EXPECT_TRUE(FObjectFiles::loadDocument("Mixer", "Project", read));
    EXPECT_EQ(cmCast<TestNode>(read.getObject("node"))->number, 7);
    FObjectDocument other;
    EXPECT_TRUE(FObjectFiles::loadDocument("Mixer", "Project", other, "another"));
    EXPECT_EQ(other.getObjects().getCount(), 0);
    EXPECT_FALSE(FObjectFiles::loadDocument("Mixer", "Defaults", other));
}

TEST_F(FObjectFilesTest, WhatTheUserLacksComesFromTheModulesFolder) {
    EXPECT_EQ(load(), "(nothing)");
    scratch_.write("module/Mixer.xml", textOf("shipped"));
    EXPECT_EQ(load(), "shipped");
    EXPECT_TRUE(save("own"));
    EXPECT_EQ(load(), "own");
    EXPECT_THAT(names("module"), ElementsAre("Mixer.xml"));
}

TEST_F(FObjectFilesTest, ADamagedDocumentIsNotReplacedByTheShippedOne) {
    scratch_.write("module/Mixer.xml", textOf("shipped"));
    scratch_.write("user/Mixer.xml", "<TestNode><other/></TestNode>");
    EXPECT_EQ(load(), "(nothing)");
}

TEST_F(FObjectFilesTest, AFailedSaveGivesTheOldFileItsNameBack) {
    EXPECT_TRUE(save("one"));
    TestNode refusing("two");
    refusing.refusesToStore = true;
    EXPECT_FALSE(FObjectFiles::saveObject("Mixer", "TestNode", refusing));
    EXPECT_THAT(names(), ElementsAre("Mixer.xml"));
    EXPECT_EQ(load(), "one");
}

TEST_F(FObjectFilesTest, AFirstSaveThatFailsLeavesNothing) {
    TestNode refusing("one");
    refusing.refusesToStore = true;
    EXPECT_FALSE(FObjectFiles::saveObject("Mixer", "TestNode", refusing));
    EXPECT_THAT(names(), ElementsAre());
}

TEST_F(FObjectFilesTest, AnOldFileIsNeverReadAndGoesWithTheNextSave) {
    scratch_.write("user/Mixer_old.xml", textOf("before the crash"));
    EXPECT_EQ(load(), "(nothing)");
    EXPECT_TRUE(save("one"));
    EXPECT_THAT(names(), ElementsAre("Mixer.xml"));
    scratch_.write("user/Mixer_old.xml", textOf("before the crash"));
    EXPECT_TRUE(save("two"));
    EXPECT_THAT(names(), ElementsAre("Mixer.xml"));
    EXPECT_EQ(load(), "two");
}

TEST_F(FObjectFilesTest, AFailedSaveGivesTheNameBackToWhatACrashLeft) {
    scratch_.write("user/Mixer_old.xml", textOf("before the crash"));
    TestNode refusing("one");
    refusing.refusesToStore = true;
    EXPECT_FALSE(FObjectFiles::saveObject("Mixer", "TestNode", refusing));
    EXPECT_THAT(names(), ElementsAre("Mixer.xml"));
    EXPECT_EQ(load(), "before the crash");
}

// Asking

struct Question {
    std::string text;
    std::string yes;
    std::string no;
};
std::vector<Question> questions;
bool answer = false;

bool ask(const FStringRef& question, const FStringRef& yes, const FStringRef& no) {
    const auto text = [](const FStringRef& part) { return std::string(FString(part).text8()); };
    questions.push_back({text(question), text(yes), text(no)});
    return answer;
}

TEST_F(FObjectFilesTest, AFileIsReplacedWhenTheUserSaysSo) {
    persistenceHooks.ask = ask;
    questions.clear();
    answer = false;
    EXPECT_TRUE(save("one", Replacing::afterAsking)) << "there is nothing to ask about";
    EXPECT_TRUE(questions.empty());
    EXPECT_FALSE(save("two", Replacing::afterAsking));
    EXPECT_EQ(load(), "one");
    answer = true;
    EXPECT_TRUE(save("three", Replacing::afterAsking));
    EXPECT_EQ(load(), "three");
    ASSERT_EQ(questions.size(), 2u);
    EXPECT_EQ(questions[0].text, "Do you want to replace Mixer?");
    EXPECT_EQ(questions[0].yes, "Replace");
    EXPECT_EQ(questions[0].no, "Cancel");
}

TEST_F(FObjectFilesTest, TheQuestionComesInTheUsersLanguage) {
    persistenceHooks.ask = ask;
    persistenceHooks.translate = [](const FStringRef& key) {
        return key == FStringRef("Replace") ? FString("Ersetzen") : FString(key);
    };
    questions.clear();
    EXPECT_TRUE(save("one"));
    save("two", Replacing::afterAsking);
    ASSERT_EQ(questions.size(), 1u);
    EXPECT_EQ(questions[0].yes, "Ersetzen");
}

TEST_F(FObjectFilesTest, WithNobodyToAskNothingIsReplaced) {
    EXPECT_TRUE(save("one"));
    EXPECT_FALSE(save("two", Replacing::afterAsking));
    EXPECT_EQ(load(), "one");
}

// Backups

TEST_F(FObjectFilesTest, ABackupIsACopyUnderATypeOfItsOwn) {
    EXPECT_FALSE(FObjectFiles::backupDocument("Mixer"));
    EXPECT_TRUE(save("one"));
    EXPECT_TRUE(FObjectFiles::backupDocument("Mixer"));
    EXPECT_THAT(names(), ElementsAre("Mixer.xml", "Mixer.xml.backup"));
    EXPECT_TRUE(save("two"));
    EXPECT_EQ(fileText("Mixer.xml.backup"), textOf("one"));
    EXPECT_TRUE(FObjectFiles::backupDocument("Mixer"));
    EXPECT_EQ(fileText("Mixer.xml.backup"), textOf("two"));
}

TEST_F(FObjectFilesTest, ARestoredBackupIsUsedUp) {
    EXPECT_TRUE(save("one"));
    EXPECT_FALSE(FObjectFiles::restoreDocument("Mixer"));
    EXPECT_EQ(load(), "one");
    EXPECT_TRUE(FObjectFiles::backupDocument("Mixer"));
    EXPECT_TRUE(save("two"));
    EXPECT_TRUE(FObjectFiles::restoreDocument("Mixer"));
    EXPECT_EQ(load(), "one");
    EXPECT_THAT(names(), ElementsAre("Mixer.xml"));
    EXPECT_FALSE(FObjectFiles::restoreDocument("Mixer"));
}

TEST_F(FObjectFilesTest, ABackupIsRestoredWhereTheDocumentIsGone) {
    EXPECT_TRUE(save("one"));
    EXPECT_TRUE(FObjectFiles::backupDocument("Mixer"));
    EXPECT_TRUE(FObjectFiles::deleteDocument("Mixer"));
    EXPECT_TRUE(FObjectFiles::restoreDocument("Mixer"));
    EXPECT_EQ(load(), "one");
}

TEST_F(FObjectFilesTest, DocumentsAreAskedForAndDeletedByName) {
    EXPECT_FALSE(FObjectFiles::documentExists("Mixer"));
    EXPECT_FALSE(FObjectFiles::deleteDocument("Mixer"));
    EXPECT_TRUE(save("one"));
    EXPECT_TRUE(FObjectFiles::documentExists("Mixer"));
    EXPECT_TRUE(FObjectFiles::deleteDocument("Mixer"));
    EXPECT_FALSE(FObjectFiles::documentExists("Mixer"));
    scratch_.write("module/Mixer.xml", textOf("shipped"));
    EXPECT_FALSE(FObjectFiles::documentExists("Mixer")) << "it isn't the user's";
}

TEST_F(FObjectFilesTest, TheTypesAreTheProgramsOwn) {
    const FFileType& type = FObjectFiles::documentType();
    EXPECT_STREQ(FString(type.getName()).text8(), "Marlgrove XML File");
    EXPECT_STREQ(FString(type.getDosType()).text8(), "xml");
    EXPECT_EQ(type.getMacType(), 0x54455854u);
    EXPECT_STREQ(FString(FObjectFiles::backupType().getName()).text8(), "Marlgrove XML File (Backup)");
    EXPECT_STREQ(FString(FObjectFiles::backupType().getDosType()).text8(), "xml.backup");
}

TEST_F(FObjectFilesTest, ADotInTheNameIsNoExtension) {
    EXPECT_TRUE(FObjectFiles::saveObject("Mixer 2.1", "TestNode", TestNode("one")));
    EXPECT_TRUE(FObjectFiles::saveObject("Mixer 2.1", "TestNode", TestNode("two")));
    EXPECT_THAT(names(), ElementsAre("Mixer 2.1.xml"));
}

TEST_F(FObjectFilesTest, ADotAtTheEndOfTheNameIsNoExtension) {
    EXPECT_TRUE(FObjectFiles::saveObject("Song 1.", "TestNode", TestNode("one")));
    EXPECT_THAT(names(), ElementsAre("Song 1..xml"));
    EXPECT_FALSE(FObjectFiles::restoreDocument("Song 1.")) << "there is no backup";
    EXPECT_THAT(names(), ElementsAre("Song 1..xml"));
    EXPECT_TRUE(FObjectFiles::backupDocument("Song 1."));
    EXPECT_THAT(names(), ElementsAre("Song 1..xml", "Song 1..xml.backup"));
}

TEST_F(FObjectFilesTest, WithoutANameNothingIsDone) {
    EXPECT_FALSE(FObjectFiles::saveObject("", "TestNode", TestNode("one")));
    TestNode node;
    EXPECT_FALSE(FObjectFiles::loadObject("", "TestNode", node));
    EXPECT_FALSE(FObjectFiles::documentExists(""));
    EXPECT_FALSE(FObjectFiles::backupDocument(""));
    EXPECT_FALSE(FObjectFiles::restoreDocument(""));
    EXPECT_FALSE(FObjectFiles::deleteDocument(""));
}

TEST_F(FObjectFilesTest, WithoutAFolderNothingIsDone) {
    applicationFoldersSource = nullptr;
    EXPECT_FALSE(save("one"));
    EXPECT_EQ(load(), "(nothing)");
    EXPECT_FALSE(FObjectFiles::documentExists("Mixer"));
    EXPECT_FALSE(fs::exists("Mixer.xml")) << "least of all where the process stands";
}

} // namespace
} // namespace tessera
