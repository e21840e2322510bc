// The settings of the process in one file.
#include "appservices/defaults/FGlobalDefaultPool.h"

#include "AutoSaverDouble.h"
#include "DefaultsFixture.h"
#include "foundation/object/ClassFactory.h"
#include "persistence/registry/FRegistryEntry.h"

#include <limits>

namespace tessera::test {
namespace {

class FGlobalDefaultPoolTest : public DefaultsFixture {
protected:
    static FRefPtr<FGlobalDefaultPool> started() { return startedPool(Files::one); }
    static FRefPtr<FGlobalDefaultPool> fresh() { return newPool(Files::one); }
    static bool save(FGlobalDefaultPool& pool) { return pool.save(RunSavers::no); }
};

class BaseName {
public:
    explicit BaseName(const char* name) : before_(FGlobalDefaultPool::getBaseName()) {
        FGlobalDefaultPool::setBaseName(name);
    }
    ~BaseName() { FGlobalDefaultPool::setBaseName(before_); }

private:
    FString before_;
};

TEST_F(FGlobalDefaultPoolTest, IsKnownByNameAndNotCreatedByIt) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    ASSERT_NE(registry.findByName("FGlobalDefaultPool"), nullptr);
    EXPECT_EQ(registry.createInstance("FGlobalDefaultPool"), nullptr);
    EXPECT_TRUE(fresh()->isTypeOf("FDefaultPool", true));
}

TEST_F(FGlobalDefaultPoolTest, WritesOneDocument) {
    const auto pool = fresh();
    pool->restore();
    pool->getGroup("v", 2, kMade)->setFloat("half", 0.5);
    pool->setInt("g", "int", 7);
    pool->setString("g", "text", "t");
    AutoSaverDouble saver("Saver", 5);
    pool->registerAutoSaver(&saver);
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(user_.read("Defaults.xml"), lines({
                                              "<Defaults>",
                                              "   <list name=\"Entries\" type=\"list\">",
                                              "      <item>",
                                              "         <string name=\"Group\" value=\"v\"/>",
                                              "         <int name=\"Version\" value=\"2\"/>",
                                              "         <member name=\"Values\">",
                                              "            <float name=\"half\" value=\"0.5\"/>",
                                              "         </member>",
                                              "      </item>",
                                              "      <item>",
                                              "         <string name=\"Group\" value=\"g\"/>",
                                              "         <member name=\"Values\">",
                                              "            <int name=\"int\" value=\"7\"/>",
                                              "            <string name=\"text\" value=\"t\"/>",
                                              "         </member>",
                                              "      </item>",
                                              "   </list>",
                                              "   <member name=\"AutoSavers\">",
                                              "      <member name=\"Saver\">",
                                              "         <int name=\"state\" value=\"5\"/>",
                                              "      </member>",
                                              "   </member>",
                                              "</Defaults>",
                                          }));
    EXPECT_EQ(user_.entryCount(), 1u) << "nothing lies beside it";
}

TEST_F(FGlobalDefaultPoolTest, ValuesComeBackInTheNextRun) {
    {
        const auto pool = started();
        pool->setInt("numbers", "largest", std::numeric_limits<std::int64_t>::max());
        pool->setFloat("numbers", "tenth", 0.1);
        pool->setString("gr\xc3\xb6\xc3\x9f"
                        "e",
                        "t\xc3\xa4xt", "a \"text\" & <more>\r\n");
        pool->setString("texts", "long", std::string(5000, 'x').c_str());
        const auto entry = FRefPtr<CmObject>::adopt(new FRegistryEntry("key", "value"));
        pool->setObject("objects", "entry", entry.get());
        pool->getGroup("versioned", 3, kMade)->setInt("key", 1);
        EXPECT_TRUE(save(*pool));
    }
    const auto pool = fresh();
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "numbers", "largest"), std::numeric_limits<std::int64_t>::max());
    double tenth = 0;
    EXPECT_TRUE(pool->getFloat("numbers", "tenth", tenth));
    EXPECT_EQ(tenth, 0.1);
    FString text;
    EXPECT_TRUE(pool->getString("gr\xc3\xb6\xc3\x9f"
                                "e",
                                "t\xc3\xa4xt", text));
    EXPECT_TRUE(text == "a \"text\" & <more>\r\n");
    EXPECT_TRUE(pool->getString("texts", "long", text));
    EXPECT_EQ(text.length(), 5000);
    const FRegistryEntry entry("key", "value");
    CmObject* object = pool->getObject("objects", "entry", "FRegistryEntry");
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(object->isEqual(&entry));
    const FDefaults* versioned = pool->getGroup("versioned", 3, kLeft);
    ASSERT_NE(versioned, nullptr);
    EXPECT_TRUE(versioned->has("key"));
}

TEST_F(FGlobalDefaultPoolTest, AnObjectThatNobodyAskedForIsSavedAsItWasRead) {
    {
        const auto pool = started();
        const auto entry = FRefPtr<CmObject>::adopt(new FRegistryEntry("key", "value"));
        pool->setObject("objects", "entry", entry.get());
        EXPECT_TRUE(save(*pool));
    }
    for (int run = 0; run < 2; ++run) {
        EXPECT_TRUE(save(*started()));
    }
    EXPECT_NE(started()->getObject("objects", "entry", "FRegistryEntry"), nullptr);
}

TEST_F(FGlobalDefaultPoolTest, AGroupThatOnlyHasAVersionDoesntSurvive) {
    {
        const auto pool = started();
        pool->getGroup("x", 2, kMade);
        EXPECT_TRUE(save(*pool));
    }
    EXPECT_EQ(started()->getGroup("x", 2, kLeft), nullptr);
}

TEST_F(FGlobalDefaultPoolTest, ARemovedGroupIsEmptyWhenItIsAskedForAgain) {
    {
        const auto pool = started();
        pool->setInt("x", "key", 1);
        pool->setInt("y", "key", 1);
        EXPECT_TRUE(save(*pool));
        pool->removeGroup("x");
        EXPECT_TRUE(pool->load());
        EXPECT_EQ(pool->getGroup("x", 0, kLeft), nullptr) << "removed, though not saved yet";
        EXPECT_TRUE(pool->getGroup("x", 0, kMade)->isEmpty());
        pool->removeGroup("x");
        EXPECT_TRUE(save(*pool));
    }
    const auto pool = started();
    EXPECT_EQ(pool->getGroup("x", 0, kLeft), nullptr);
    EXPECT_EQ(intOf(*pool, "y", "key"), 1);
}

TEST_F(FGlobalDefaultPoolTest, AGroupIsRemovedUntilTheNextSave) {
    const auto pool = started();
    pool->removeGroup("x");
    EXPECT_TRUE(save(*pool));
    const auto other = started();
    other->setInt("x", "key", 1);
    EXPECT_TRUE(save(*other));
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
}

TEST_F(FGlobalDefaultPoolTest, SavesNothingBeforeItIsRestored) {
    const auto pool = fresh();
    pool->setInt("x", "key", 1);
    pool->addSaveCallback([] { called().push_back("saving"); });
    EXPECT_FALSE(pool->save(RunSavers::yes));
    EXPECT_TRUE(called().empty());
    pool->load();
    EXPECT_FALSE(pool->isRestored());
    EXPECT_FALSE(save(*pool));
    EXPECT_EQ(user_.entryCount(), 0u);
    pool->restore();
    EXPECT_TRUE(pool->isRestored());
    EXPECT_TRUE(save(*pool));
}

TEST_F(FGlobalDefaultPoolTest, NotesThatItHasBeenLoaded) {
    const auto pool = fresh();
    EXPECT_FALSE(pool->load()) << "there is no file";
    EXPECT_EQ(intOf(*pool, "FGlobalDefaultPool", "Preferences extraced"), 1) << "also after a failure";
    EXPECT_FALSE(pool->needsExtraction());
    EXPECT_EQ(pool->getLastError(), 1);
    EXPECT_EQ(user_.entryCount(), 0u);
}

TEST_F(FGlobalDefaultPoolTest, TellsAFileOfAnOlderProgram) {
    user_.write("Defaults.xml", lines({"<Defaults>", "</Defaults>"}));
    const auto pool = fresh();
    EXPECT_TRUE(pool->load());
    EXPECT_TRUE(pool->needsExtraction());
    EXPECT_EQ(pool->getLastError(), 0);
    pool->restore();
    EXPECT_TRUE(save(*pool));
    EXPECT_TRUE(pool->load());
    EXPECT_FALSE(pool->needsExtraction());
    EXPECT_FALSE(started()->needsExtraction());
}

TEST_F(FGlobalDefaultPoolTest, TakesTheFileThatShipsWithTheProgramWhereTheUserHasNone) {
    {
        const auto pool = started();
        pool->setInt("x", "key", 1);
        EXPECT_TRUE(save(*pool));
    }
    std::filesystem::rename(user_ / "Defaults.xml", module_ / "Defaults.xml");
    const auto pool = fresh();
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
    pool->restore();
    pool->setInt("x", "key", 2);
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(intOf(*started(), "x", "key"), 2) << "the user's own comes first";
}

TEST_F(FGlobalDefaultPoolTest, ADamagedFileGivesEmptySettings) {
    user_.write("Defaults.xml", lines({"<Defaults>", "   <list name=\"Entries\" type=\"list\">"}));
    const auto pool = fresh();
    EXPECT_FALSE(pool->load());
    EXPECT_FALSE(pool->isRestored());
    EXPECT_EQ(pool->getLastError(), 1);
    EXPECT_EQ(pool->getGroupCount(), 1u) << "only the own one";
    EXPECT_FALSE(save(*pool)) << "the damaged file stays until somebody decides";
    user_.write("Defaults.xml", lines({"<Other>", "</Other>"}));
    EXPECT_FALSE(pool->load()) << "somebody else's document";
}

TEST_F(FGlobalDefaultPoolTest, AnotherBaseNameIsAnotherFile) {
    EXPECT_TRUE(FGlobalDefaultPool::getBaseName() == "Defaults");
    const BaseName name("Settings");
    EXPECT_TRUE(save(*started()));
    EXPECT_TRUE(user_.has("Settings.xml"));
    EXPECT_FALSE(user_.has("Defaults.xml"));
    EXPECT_TRUE(started()->getLastError() == 0);
    EXPECT_EQ(user_.read("Settings.xml").find("<Settings"), std::string::npos) << "the root tag stays";
}

TEST_F(FGlobalDefaultPoolTest, HandsAutoSaversTheirStateInRestore) {
    {
        AutoSaverDouble saver("Saver", 5);
        AutoSaverDouble silent("Silent", 6);
        silent.refuses = true;
        const auto pool = started();
        pool->registerAutoSaver(&saver);
        pool->registerAutoSaver(&silent);
        EXPECT_TRUE(save(*pool));
    }
    AutoSaverDouble saver("Saver");
    AutoSaverDouble silent("Silent");
    const auto pool = fresh();
    pool->registerAutoSaver(&saver);
    pool->registerAutoSaver(&silent);
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(saver.restored, 0);
    pool->restore();
    EXPECT_EQ(saver.state, 5);
    EXPECT_EQ(silent.restored, 0) << "it had nothing to keep";
    AutoSaverDouble late("Saver");
    pool->unregisterAutoSaver(&saver);
    pool->registerAutoSaver(&late);
    pool->restore();
    EXPECT_EQ(late.restored, 0) << "what was loaded is given out once";
}

TEST_F(FGlobalDefaultPoolTest, RestoreCallbacksRunInOrderBehindTheAutoSavers) {
    static AutoSaverDouble* watched = nullptr;
    static FGlobalDefaultPool* watchedPool = nullptr;
    AutoSaverDouble saver("Saver", 5);
    watched = &saver;
    const auto pool = started();
    watchedPool = pool.get();
    pool->registerAutoSaver(&saver);
    EXPECT_TRUE(save(*pool));
    const auto next = fresh();
    watchedPool = next.get();
    next->registerAutoSaver(&saver);
    next->load();
    next->addRestoreCallback([] {
        called().push_back("first behind " + std::to_string(watched->restored));
        called().push_back(watchedPool->isRestored() ? "restored" : "not yet");
    });
    next->addRestoreCallback([] { called().push_back("second"); });
    next->restore();
    EXPECT_EQ(called(), (std::vector<std::string>{"first behind 1", "not yet", "second"}));
}

TEST_F(FGlobalDefaultPoolTest, SaveCallbacksRunInOrderWhenTheyAreWanted) {
    const auto pool = started();
    static FGlobalDefaultPool* saved = nullptr;
    saved = pool.get();
    pool->addSaveCallback([] {
        called().push_back("first");
        saved->setInt("x", "of the callback", 1);
    });
    pool->addSaveCallback([] { called().push_back("second"); });
    EXPECT_TRUE(pool->save(RunSavers::no));
    EXPECT_TRUE(called().empty());
    EXPECT_TRUE(pool->save(RunSavers::yes));
    EXPECT_EQ(called(), (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(intOf(*started(), "x", "of the callback"), 1);
}

TEST_F(FGlobalDefaultPoolTest, TheLoadGateMayRefuse) {
    {
        const auto pool = started();
        pool->setInt("x", "key", 1);
        EXPECT_TRUE(save(*pool));
    }
    const auto pool = fresh();
    pool->setLoadGate([] { return false; });
    EXPECT_FALSE(pool->load());
    EXPECT_EQ(pool->getGroupCount(), 0u);
    EXPECT_EQ(pool->getLastError(), -1) << "nothing was tried";
    pool->setLoadGate([] { return true; });
    EXPECT_TRUE(pool->load());
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
    pool->setLoadGate(nullptr);
    EXPECT_TRUE(pool->load());
}

TEST_F(FGlobalDefaultPoolTest, TheSaveGateKeepsTheFileAsItIs) {
    const auto pool = started();
    pool->addSaveCallback([] { called().push_back("callback"); });
    pool->setSaveGate([] {
        called().push_back("gate");
        return false;
    });
    EXPECT_TRUE(pool->save(RunSavers::yes)) << "a veto is no failure";
    EXPECT_EQ(called(), (std::vector<std::string>{"callback", "gate"}));
    EXPECT_EQ(user_.entryCount(), 0u);
    pool->setSaveGate([] { return true; });
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(user_.entryCount(), 1u);
}

TEST_F(FGlobalDefaultPoolTest, SaysWhenItCantSave) {
    const auto pool = started();
    pool->setInt("x", "key", 1);
    EXPECT_TRUE(save(*pool));
    const std::string before = user_.read("Defaults.xml");
    std::filesystem::remove(user_ / "Defaults.xml");
    user_.write("Defaults.xml/file", "a folder of that name");
    EXPECT_FALSE(save(*pool));
    EXPECT_EQ(pool->getLastError(), 1);
    std::filesystem::remove_all(user_ / "Defaults.xml");
    EXPECT_TRUE(save(*pool));
    EXPECT_EQ(pool->getLastError(), 0);
    EXPECT_EQ(user_.read("Defaults.xml"), before);
}

TEST_F(FGlobalDefaultPoolTest, ABackupComesBack) {
    const auto pool = started();
    EXPECT_FALSE(pool->backup()) << "there is no file";
    EXPECT_FALSE(pool->restoreBackup());
    pool->setInt("x", "key", 1);
    EXPECT_TRUE(save(*pool));
    const std::string good = user_.read("Defaults.xml");
    EXPECT_TRUE(pool->backup());
    EXPECT_EQ(user_.read("Defaults.xml.backup"), good);
    user_.write("Defaults.xml", "damaged");
    EXPECT_TRUE(pool->restoreBackup());
    EXPECT_EQ(user_.read("Defaults.xml"), good);
    EXPECT_EQ(user_.entryCount(), 1u) << "the backup is used up";
    EXPECT_FALSE(pool->restoreBackup());
    EXPECT_EQ(user_.read("Defaults.xml"), good);
}

TEST_F(FGlobalDefaultPoolTest, TrashPutsTheFileAside) {
    const auto pool = started();
    EXPECT_FALSE(pool->trash()) << "there is no file";
    user_.write("Defaults.xml", "first");
    EXPECT_TRUE(pool->trash());
    EXPECT_EQ(user_.read("Defaults (Trashed).xml"), "first");
    EXPECT_FALSE(user_.has("Defaults.xml"));
    user_.write("Defaults.xml", "second");
    EXPECT_TRUE(pool->trash());
    EXPECT_EQ(user_.read("Defaults (Trashed).xml"), "second");
    EXPECT_EQ(user_.entryCount(), 1u);
}

TEST_F(FGlobalDefaultPoolTest, WithoutAFolderNothingIsWritten) {
    applicationFoldersSource = nullptr;
    for (const Files files : {Files::one, Files::split}) {
        const auto pool = newPool(files);
        EXPECT_FALSE(pool->load());
        pool->restore();
        pool->setInt("x", "key", 1);
        EXPECT_FALSE(save(*pool));
        EXPECT_FALSE(pool->backup());
        EXPECT_FALSE(pool->restoreBackup());
        EXPECT_FALSE(pool->trash());
    }
    EXPECT_FALSE(std::filesystem::exists("Defaults.xml"));
    EXPECT_FALSE(std::filesystem::exists("Defaults"));
}

} // namespace
} // namespace tessera::test
