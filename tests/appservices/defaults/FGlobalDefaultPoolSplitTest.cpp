// The settings of the process in a folder with a file for each group.
#include "appservices/defaults/FGlobalDefaultPool.h"

#include "AutoSaverDouble.h"
#include "DefaultsFixture.h"
#include "appservices/defaults/GroupFileName.h"
#include "foundation/containers/CmString.h"

#include <algorithm>

namespace tessera::test {
namespace {

std::string fileOf(const char* group) {
    return std::string("Defaults/") + groupFileName(group).text8() + ".xml";
}

class FGlobalDefaultPoolSplit : public DefaultsFixture {
protected:
    static FRefPtr<FGlobalDefaultPool> started() { return startedPool(Files::split); }
    static bool save(FGlobalDefaultPool& pool) { return pool.save(RunSavers::no); }

    // Writes the groups, each with "key" set to 1, as an earlier run did.
    void earlierRun(std::initializer_list<const char*> groups) {
        const auto pool = started();
        for (const char* group : groups) {
            pool->setInt(group, "key", 1);
        }
        ASSERT_TRUE(save(*pool));
    }
    std::size_t fileCount() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(user_ / "Defaults"), {}));
    }
};

TEST_F(FGlobalDefaultPoolSplit, WritesADocumentForEachGroup) {
    const auto pool = started();
    pool->getGroup("v", 2, kMade)->setInt("key", 7);
    pool->setString("a/b:c", "text", "t");
    pool->getGroup("empty", 0, kMade);
    AutoSaverDouble saver("Saver", 5);
    pool->registerAutoSaver(&saver);
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(user_.read(fileOf("v")), lines({
                                           "<Defaults>",
                                           "   <string name=\"Group\" value=\"v\"/>",
                                           "   <int name=\"Version\" value=\"2\"/>",
                                           "   <member name=\"Values\">",
                                           "      <int name=\"key\" value=\"7\"/>",
                                           "   </member>",
                                           "</Defaults>",
                                       }));
    EXPECT_EQ(user_.read(fileOf("a/b:c")), lines({
                                               "<Defaults>",
                                               "   <string name=\"Group\" value=\"a/b:c\"/>",
                                               "   <member name=\"Values\">",
                                               "      <string name=\"text\" value=\"t\"/>",
                                               "   </member>",
                                               "</Defaults>",
                                           }));
    EXPECT_EQ(user_.read("Defaults/AutoSaver.xml"), lines({
                                                        "<AutoSaver>",
                                                        "   <member name=\"Saver\">",
                                                        "      <int name=\"state\" value=\"5\"/>",
                                                        "   </member>",
                                                        "</AutoSaver>",
                                                    }));
    EXPECT_EQ(fileCount(), 3u);
    EXPECT_EQ(user_.entryCount(), 1u);
}

TEST_F(FGlobalDefaultPoolSplit, NamesAFileByTheDigestOfTheGroupsName) {
    earlierRun({"a"});
    EXPECT_TRUE(user_.has("Defaults/0CC175B9C0F1B6A831C399E269772661.xml"));
}

TEST_F(FGlobalDefaultPoolSplit, WritesNoFileForAutoSaversWithoutAny) {
    earlierRun({"x"});
    EXPECT_FALSE(user_.has("Defaults/AutoSaver.xml"));
}

TEST_F(FGlobalDefaultPoolSplit, ReadsAGroupWhenItIsFirstAskedFor) {
    earlierRun({"x", "y"});
    const auto pool = started();
    EXPECT_EQ(pool->getGroupCount(), 0u);
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
    EXPECT_EQ(pool->getGroupCount(), 1u);
    std::filesystem::remove(user_ / fileOf("x"));
    EXPECT_EQ(intOf(*pool, "x", "key"), 1) << "once read it stays";
    EXPECT_EQ(pool->getGroup("none", 0, kLeft), nullptr);
}

TEST_F(FGlobalDefaultPoolSplit, WhatWasNeverAskedForStaysInItsFile) {
    earlierRun({"x", "y"});
    const std::string before = user_.read(fileOf("y"));
    {
        const auto pool = started();
        pool->setInt("x", "key", 2);
        EXPECT_TRUE(save(*pool));
    }
    EXPECT_EQ(user_.read(fileOf("y")), before);
    EXPECT_EQ(intOf(*started(), "x", "key"), 2);
}

TEST_F(FGlobalDefaultPoolSplit, DropsAFileOfAnotherVersion) {
    earlierRun({"x"});
    const auto pool = started();
    EXPECT_EQ(pool->getGroup("x", 2, kLeft), nullptr);
    FDefaults* group = pool->getGroup("x", 2, kMade);
    ASSERT_NE(group, nullptr);
    EXPECT_TRUE(group->isEmpty());
    group->setInt("new", 1);
    EXPECT_TRUE(save(*pool));
    const auto next = started();
    ASSERT_NE(next->getGroup("x", 2, kLeft), nullptr);
    EXPECT_FALSE(next->getGroup("x", 2, kLeft)->has("key"));
}

TEST_F(FGlobalDefaultPoolSplit, WhatAnotherVersionHasDroppedDoesntComeBackOutOfTheFile) {
    earlierRun({"x"});
    const auto pool = started();
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
    EXPECT_EQ(pool->getGroup("x", 2, kLeft), nullptr);
    EXPECT_EQ(pool->getGroup("x", 0, kLeft), nullptr);
    EXPECT_EQ(intOf(*pool, "x", "key"), -99);
    EXPECT_TRUE(save(*pool));
    EXPECT_FALSE(user_.has(fileOf("x")));
}

TEST_F(FGlobalDefaultPoolSplit, ADamagedFileGivesAnEmptyGroup) {
    earlierRun({"x", "y"});
    user_.write(fileOf("x"), "damaged");
    const auto pool = started();
    FDefaults* group = pool->getGroup("x", 0, kMade);
    ASSERT_NE(group, nullptr);
    EXPECT_TRUE(group->isEmpty());
    EXPECT_EQ(intOf(*pool, "y", "key"), 1) << "the others are well";
}

TEST_F(FGlobalDefaultPoolSplit, AGroupHasTheNameThatItWasFoundUnder) {
    earlierRun({"x"});
    std::filesystem::rename(user_ / fileOf("x"), user_ / fileOf("copy"));
    const auto pool = started();
    ASSERT_NE(pool->getGroup("copy", 0, kLeft), nullptr);
    EXPECT_TRUE(pool->getGroup("copy", 0, kLeft)->getGroupName() == "copy");
}

TEST_F(FGlobalDefaultPoolSplit, TheFileOfARemovedGroupGoesAtTheNextSave) {
    earlierRun({"x", "y", "z"});
    const auto pool = started();
    pool->removeGroup("x");
    pool->removeGroup("y");
    EXPECT_EQ(pool->getGroup("x", 0, kLeft), nullptr);
    pool->load();
    EXPECT_TRUE(pool->getGroup("x", 0, kMade)->isEmpty()) << "the file isn't asked any more";
    EXPECT_TRUE(user_.has(fileOf("x")));
    pool->removeGroup("x");
    pool->setInt("y", "new", 1);
    EXPECT_TRUE(save(*pool));
    EXPECT_FALSE(user_.has(fileOf("x")));
    EXPECT_TRUE(user_.has(fileOf("y")));
    EXPECT_EQ(intOf(*pool, "y", "key"), -99);
    EXPECT_EQ(intOf(*started(), "z", "key"), 1);
}

TEST_F(FGlobalDefaultPoolSplit, TheFileOfAGroupThatBecameEmptyGoesAtTheNextSave) {
    earlierRun({"x"});
    {
        const auto pool = started();
        EXPECT_TRUE(pool->remove("x", "key"));
        EXPECT_TRUE(save(*pool));
    }
    EXPECT_FALSE(user_.has(fileOf("x")));
    EXPECT_EQ(intOf(*started(), "x", "key"), -99);
}

TEST_F(FGlobalDefaultPoolSplit, AFileThatCouldntBeReadStaysAsLongAsNothingIsSet) {
    earlierRun({"x"});
    const std::string good = user_.read(fileOf("x"));
    user_.write(fileOf("x"), "somebody else is just writing it");
    {
        const auto pool = started();
        EXPECT_EQ(intOf(*pool, "x", "key"), -99);
        user_.write(fileOf("x"), good);
        EXPECT_TRUE(save(*pool));
    }
    EXPECT_EQ(user_.read(fileOf("x")), good);
    EXPECT_EQ(intOf(*started(), "x", "key"), 1);
}

TEST_F(FGlobalDefaultPoolSplit, AFileThatCouldntBeReadAgainStays) {
    earlierRun({"x"});
    const std::string good = user_.read(fileOf("x"));
    const auto pool = started();
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
    user_.write(fileOf("x"), "somebody else is just writing it");
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "x", "key"), -99);
    user_.write(fileOf("x"), good);
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(user_.read(fileOf("x")), good);
}

TEST_F(FGlobalDefaultPoolSplit, AValueTakesThePlaceOfAFileThatCouldntBeRead) {
    earlierRun({"x"});
    user_.write(fileOf("x"), "damaged");
    const auto pool = started();
    pool->setInt("x", "new", 2);
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(intOf(*started(), "x", "new"), 2);
    EXPECT_TRUE(pool->remove("x", "new"));
    EXPECT_TRUE(save(*pool));
    EXPECT_FALSE(user_.has(fileOf("x"))) << "the last value was this program's own";
}

TEST_F(FGlobalDefaultPoolSplit, AFileThatCouldntBeReadGoesWithItsGroup) {
    earlierRun({"x", "y"});
    user_.write(fileOf("x"), "damaged");
    user_.write(fileOf("y"), "damaged");
    const auto pool = started();
    for (const char* group : {"x", "y"}) {
        EXPECT_EQ(intOf(*pool, group, "key"), -99);
        pool->removeGroup(group);
    }
    EXPECT_TRUE(pool->getGroup("y", 0, kMade)->isEmpty()) << "made again, for no value";
    EXPECT_TRUE(save(*pool));
    EXPECT_FALSE(user_.has(fileOf("x")));
    EXPECT_FALSE(user_.has(fileOf("y")));
}

TEST_F(FGlobalDefaultPoolSplit, AutoSaversGetTheirState) {
    {
        AutoSaverDouble saver("Saver", 5);
        const auto pool = started();
        pool->registerAutoSaver(&saver);
        EXPECT_TRUE(save(*pool));
    }
    AutoSaverDouble saver("Saver");
    const auto pool = newPool(Files::split);
    pool->registerAutoSaver(&saver);
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(saver.restored, 0);
    pool->restore();
    EXPECT_EQ(saver.state, 5);
}

TEST_F(FGlobalDefaultPoolSplit, ADamagedFileOfAutoSaversIsPassedOver) {
    earlierRun({"x"});
    user_.write("Defaults/AutoSaver.xml",
                lines({"<AutoSaver>", "   <member name=\"Saver\">", "      <int name=\"state\" value=\"5\"/>"}));
    AutoSaverDouble saver("Saver");
    const auto pool = newPool(Files::split);
    pool->registerAutoSaver(&saver);
    EXPECT_TRUE(pool->load()) << "the folder is there";
    pool->restore();
    EXPECT_EQ(saver.restored, 0);
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
}

TEST_F(FGlobalDefaultPoolSplit, TakesOverTheOneFile) {
    {
        AutoSaverDouble saver("Saver", 5);
        const auto pool = startedPool(Files::one);
        pool->setInt("x", "key", 1);
        pool->registerAutoSaver(&saver);
        EXPECT_TRUE(save(*pool));
    }
    AutoSaverDouble saver("Saver");
    const auto pool = newPool(Files::split);
    pool->registerAutoSaver(&saver);
    EXPECT_TRUE(pool->load());
    EXPECT_FALSE(pool->needsExtraction()) << "that file was extracted by who wrote it";
    pool->restore();
    EXPECT_EQ(saver.state, 5);
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
    EXPECT_TRUE(save(*pool));
    EXPECT_FALSE(user_.has("Defaults.xml"));
    EXPECT_TRUE(user_.has(fileOf("x")));
    EXPECT_TRUE(user_.has("Defaults/AutoSaver.xml"));
    EXPECT_EQ(intOf(*started(), "x", "key"), 1);
}

TEST_F(FGlobalDefaultPoolSplit, TellsTheFileOfAnOlderProgram) {
    const auto pool = newPool(Files::split);
    EXPECT_FALSE(pool->load()) << "there is nothing";
    EXPECT_FALSE(pool->needsExtraction());
    user_.write("Defaults.xml", lines({"<Defaults>", "</Defaults>"}));
    EXPECT_TRUE(pool->load());
    EXPECT_TRUE(pool->needsExtraction());
    std::filesystem::create_directory(user_ / "Defaults");
    EXPECT_TRUE(pool->load());
    EXPECT_FALSE(pool->needsExtraction());
}

TEST_F(FGlobalDefaultPoolSplit, KeepsTheOneFileUntilAllIsWritten) {
    {
        const auto pool = startedPool(Files::one);
        pool->setInt("x", "key", 1);
        EXPECT_TRUE(save(*pool));
    }
    const auto pool = started();
    user_.write(fileOf("x") + "/file", "a folder of that name");
    EXPECT_FALSE(save(*pool));
    EXPECT_TRUE(user_.has("Defaults.xml"));
    EXPECT_TRUE(user_.has(fileOf("FGlobalDefaultPool"))) << "the others are written all the same";
    EXPECT_EQ(pool->getLastError(), 1);
    std::filesystem::remove_all(user_ / fileOf("x"));
    EXPECT_TRUE(save(*pool));
    EXPECT_FALSE(user_.has("Defaults.xml"));
}

TEST_F(FGlobalDefaultPoolSplit, AnUnfinishedMoveToTheFolderBeginsAnew) {
    {
        AutoSaverDouble saver("Saver", 5);
        const auto pool = startedPool(Files::one);
        pool->setInt("x", "key", 1);
        pool->setInt("y", "key", 2);
        pool->registerAutoSaver(&saver);
        EXPECT_TRUE(save(*pool));
    }
    // What a process has left that was ended in the middle.
    user_.write("Defaults (New)/" + std::string(groupFileName("y").text8()) + ".xml", "half a fi");
    user_.write("Defaults (New)/of an earlier one", "");
    AutoSaverDouble saver("Saver");
    const auto pool = newPool(Files::split);
    pool->registerAutoSaver(&saver);
    EXPECT_TRUE(pool->load());
    pool->restore();
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(user_.entryCount(), 1u);
    EXPECT_FALSE(user_.has("Defaults/of an earlier one"));
    const auto next = started();
    EXPECT_EQ(intOf(*next, "x", "key"), 1);
    EXPECT_EQ(intOf(*next, "y", "key"), 2);
    EXPECT_TRUE(user_.has("Defaults/AutoSaver.xml"));
}

TEST_F(FGlobalDefaultPoolSplit, AMoveToTheFolderThatFailsLeavesTheOneFileToTheNextRun) {
    {
        const auto pool = startedPool(Files::one);
        pool->setInt("x", "key", 1);
        pool->setInt("y", "key", 2);
        EXPECT_TRUE(save(*pool));
    }
    {
        const auto pool = started();
        pool->removeGroup("y");
        user_.write("Defaults", "a file of that name");
        EXPECT_FALSE(save(*pool));
        EXPECT_EQ(pool->getLastError(), 1);
        EXPECT_FALSE(user_.has("Defaults (New)"));
        EXPECT_TRUE(user_.has("Defaults.xml"));
        std::filesystem::remove(user_ / "Defaults");
        EXPECT_EQ(intOf(*started(), "y", "key"), 2) << "nothing has been saved";
        EXPECT_TRUE(pool->load());
        EXPECT_EQ(pool->getGroup("y", 0, kLeft), nullptr) << "it counts as removed until a save gets through";
        EXPECT_TRUE(save(*pool));
    }
    EXPECT_EQ(user_.entryCount(), 1u);
    EXPECT_EQ(intOf(*started(), "x", "key"), 1);
    EXPECT_EQ(intOf(*started(), "y", "key"), -99);
}

TEST_F(FGlobalDefaultPoolSplit, AnObjectMayRemoveGroupsWhileItIsSaved) {
    class Remover final : public CmString {
    public:
        explicit Remover(FDefaultPool& pool) : pool_(pool) {}
        bool storeAttributes(FAttributes& attributes) const override {
            pool_.removeGroup("own");
            pool_.removeGroup("next");
            return CmString::storeAttributes(attributes);
        }

    private:
        FDefaultPool& pool_;
    };
    earlierRun({"own", "next", "last"});
    const auto pool = started();
    pool->setObject("own", "object", FRefPtr<CmObject>::adopt(new Remover(*pool)).get());
    pool->setInt("next", "key", 2);
    pool->setInt("last", "key", 2);
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(pool->getGroupCount(), 1u);
    EXPECT_FALSE(user_.has(fileOf("own")));
    EXPECT_FALSE(user_.has(fileOf("next")));
    EXPECT_EQ(intOf(*started(), "last", "key"), 2);
}

TEST_F(FGlobalDefaultPoolSplit, SavesNothingBeforeItIsRestored) {
    const auto pool = newPool(Files::split);
    pool->setInt("x", "key", 1);
    EXPECT_FALSE(save(*pool));
    EXPECT_EQ(user_.entryCount(), 0u);
}

TEST_F(FGlobalDefaultPoolSplit, ALoadThatIsRefusedReadsNoGroupLater) {
    earlierRun({"x"});
    const auto pool = newPool(Files::split);
    pool->setLoadGate([] { return false; });
    EXPECT_FALSE(pool->load());
    EXPECT_EQ(pool->getGroup("x", 0, kLeft), nullptr);
    pool->setLoadGate(nullptr);
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
}

TEST_F(FGlobalDefaultPoolSplit, ABackupComesBack) {
    const auto pool = started();
    EXPECT_FALSE(pool->backup()) << "there is no folder";
    EXPECT_FALSE(pool->restoreBackup());
    earlierRun({"x"});
    const std::string good = user_.read(fileOf("x"));
    user_.write("Defaults (Backup)/of an earlier one", "");
    EXPECT_TRUE(pool->backup());
    EXPECT_FALSE(user_.has("Defaults (Backup)/of an earlier one"));
    EXPECT_EQ(fileCount(), 1u);
    user_.write(fileOf("x"), "damaged");
    user_.write("Defaults/more", "");
    EXPECT_TRUE(pool->restoreBackup());
    EXPECT_EQ(user_.read(fileOf("x")), good);
    EXPECT_FALSE(user_.has("Defaults/more"));
    EXPECT_EQ(user_.entryCount(), 1u) << "the backup is used up";
    EXPECT_FALSE(pool->restoreBackup());
    EXPECT_TRUE(user_.has(fileOf("x"))) << "without a backup nothing is removed";
}

TEST_F(FGlobalDefaultPoolSplit, WithoutFilesTheBackupStays) {
    user_.write("Defaults (Backup)/file", "");
    EXPECT_FALSE(started()->backup());
    EXPECT_TRUE(user_.has("Defaults (Backup)/file"));
}

TEST_F(FGlobalDefaultPoolSplit, ABackupBringsBackRemovedGroups) {
    earlierRun({"x"});
    const auto pool = started();
    EXPECT_TRUE(pool->backup());
    pool->removeGroup("x");
    EXPECT_TRUE(pool->restoreBackup());
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
}

TEST_F(FGlobalDefaultPoolSplit, AfterTrashNothingCountsAsRemoved) {
    earlierRun({"x"});
    const auto pool = started();
    pool->removeGroup("x");
    EXPECT_TRUE(pool->trash());
    earlierRun({"x"});
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
}

TEST_F(FGlobalDefaultPoolSplit, TrashDeletesTheFolder) {
    const auto pool = started();
    EXPECT_FALSE(pool->trash()) << "there is no folder";
    earlierRun({"x"});
    EXPECT_TRUE(pool->trash());
    EXPECT_EQ(user_.entryCount(), 0u);
}

} // namespace
} // namespace tessera::test
