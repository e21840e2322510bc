#include "appservices/defaults/FDefaultPool.h"

#include "AutoSaverDouble.h"
#include "foundation/containers/CmString.h"
#include "foundation/object/ClassFactory.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FSubList.h"

#include <gtest/gtest.h>

#include <list>
#include <map>
#include <string>
#include <vector>

namespace tessera {
namespace {

using test::AutoSaverDouble;

constexpr auto kLeft = IDefaultPool::Missing::left;
constexpr auto kMade = IDefaultPool::Missing::made;

// A pool that gets its groups from a list, and tells which it was asked for.
class LazyPool : public FDefaultPool {
public:
    using FDefaultPool::deletedGroups;
    using FDefaultPool::restoreAutoSavers;
    using FDefaultPool::setLazyLoading;

    FDefaults* loadGroup(const char* name) override {
        asked.emplace_back(name);
        const auto found = versions.find(name);
        if (found == versions.end()) {
            return nullptr;
        }
        auto* group = new FDefaults(name, found->second);
        group->setInt("loaded", 1);
        return group;
    }

    std::map<std::string, std::int32_t> versions;
    std::vector<std::string> asked;
};

std::int64_t intOf(IDefaultPool& pool, const char* group, const char* key) {
    std::int64_t value = -99;
    pool.getInt(group, key, value);
    return value;
}

FRefPtr<FAttributes> treeOf(const CmObject& object) {
    auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    EXPECT_TRUE(object.storeAttributes(*tree));
    return tree;
}

TEST(FDefaultPool, IsKnownByNameAndNotCreatedByIt) {
    const ClassFactory& registry = *ClassFactory::getInstance(true);
    ASSERT_NE(registry.findByName("FDefaultPool"), nullptr);
    EXPECT_EQ(registry.createInstance("FDefaultPool"), nullptr);
}

TEST(FDefaultPool, AnswersItsInterface) {
    FDefaultPool pool;
    FRefPtr<IDefaultPool> found;
    EXPECT_EQ(pool.queryInterface(IDefaultPool::iid, found.receive()), kResultOk);
    EXPECT_EQ(found.get(), &pool);
}

TEST(FDefaultPool, MakesAGroupWhenItIsAskedTo) {
    FDefaultPool pool;
    EXPECT_EQ(pool.getGroup("x", 0, kLeft), nullptr);
    FDefaults* group = pool.getGroup("x", 2, kMade);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->getVersion(), 2);
    EXPECT_TRUE(group->getGroupName() == "x");
    EXPECT_EQ(pool.getGroup("x", 2, kLeft), group);
    EXPECT_EQ(pool.getGroup("x", 2, kMade), group);
    EXPECT_EQ(pool.getGroup("X", 2, kLeft), nullptr);
}

TEST(FDefaultPool, HasNoGroupWithoutAName) {
    FDefaultPool pool;
    EXPECT_EQ(pool.getGroup(nullptr, 0, kMade), nullptr);
    EXPECT_EQ(pool.getGroup("", 0, kMade), nullptr);
    EXPECT_EQ(pool.getGroup(std::string(2048, 'x').c_str(), 0, kMade), nullptr) << "no file would give it back";
    EXPECT_FALSE(pool.setInt("", "key", 1));
    EXPECT_EQ(pool.getGroupCount(), 0u);
}

TEST(FDefaultPool, DropsTheValuesOfAnotherVersion) {
    FDefaultPool pool;
    pool.getGroup("x", 1, kMade)->setInt("key", 1);
    FDefaults* group = pool.getGroup("x", 2, kMade);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->getVersion(), 2);
    EXPECT_TRUE(group->isEmpty());
    EXPECT_EQ(pool.getGroup("x", 3, kLeft), nullptr);
    EXPECT_EQ(pool.getGroup("x", 2, kLeft), nullptr) << "asking for another version was the end of it";
}

TEST(FDefaultPool, TheNameMayBeTheGroupsOwn) {
    FDefaultPool pool;
    const FDefaults* group = pool.getGroup("a group with a long name of its own", 1, kMade);
    const char* name = static_cast<const char*>(group->getGroupName().rawText());
    group = pool.getGroup(name, 2, kMade);
    EXPECT_TRUE(group->getGroupName() == "a group with a long name of its own");
}

// Kept, since programs have been written with it: versions and the pool's own operations don't go together.
TEST(FDefaultPool, AValueOperationDestroysAGroupWithAVersion) {
    FDefaultPool pool;
    pool.getGroup("x", 2, kMade)->setInt("precious", 1);
    EXPECT_TRUE(pool.setInt("x", "key", 1));
    EXPECT_FALSE(pool.getGroup("x", 0, kLeft)->has("precious"));
    pool.getGroup("y", 2, kMade)->setInt("precious", 1);
    std::int64_t value = 0;
    EXPECT_FALSE(pool.getInt("y", "precious", value)) << "a question is enough";
    EXPECT_EQ(pool.getGroup("y", 2, kLeft), nullptr);
}

TEST(FDefaultPool, KeepsValuesByGroupAndKey) {
    FDefaultPool pool;
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    EXPECT_TRUE(pool.setInt("g", "int", 1));
    EXPECT_TRUE(pool.setFloat("g", "float", 1.5));
    EXPECT_TRUE(pool.setString("g", "text", "t"));
    EXPECT_TRUE(pool.setObject("g", "object", object.get()));
    EXPECT_EQ(intOf(pool, "g", "int"), 1);
    double number = 0;
    EXPECT_TRUE(pool.getFloat("g", "float", number));
    EXPECT_EQ(number, 1.5);
    FString text;
    EXPECT_TRUE(pool.getString("g", "text", text));
    EXPECT_TRUE(text == "t");
    EXPECT_EQ(pool.getObject("g", "object", "CmString"), object.get());
    EXPECT_EQ(pool.getObject("g", "object", "CmUID"), nullptr);
    EXPECT_EQ(intOf(pool, "h", "int"), -99) << "another group";
    EXPECT_TRUE(pool.remove("g", "int"));
    EXPECT_FALSE(pool.remove("g", "int"));
    EXPECT_EQ(intOf(pool, "g", "int"), -99);
}

TEST(FDefaultPool, InitLeavesAnExistingValue) {
    FDefaultPool pool;
    EXPECT_TRUE(pool.initInt("g", "key", 1));
    EXPECT_FALSE(pool.initInt("g", "key", 2));
    EXPECT_FALSE(pool.initFloat("g", "key", 2));
    EXPECT_FALSE(pool.initString("g", "key", "2"));
    const auto object = FRefPtr<CmObject>::adopt(new CmString("object"));
    EXPECT_FALSE(pool.initObject("g", "key", object.get()));
    EXPECT_EQ(intOf(pool, "g", "key"), 1);
    EXPECT_TRUE(pool.initFloat("g", "f", 2));
    EXPECT_TRUE(pool.initString("g", "s", "2"));
    EXPECT_TRUE(pool.initObject("g", "o", object.get()));
}

TEST(FDefaultPool, IsOfNoUseOnceItIsClosed) {
    FDefaultPool pool;
    pool.setInt("g", "key", 1);
    pool.close();
    EXPECT_TRUE(pool.isClosed());
    EXPECT_EQ(pool.getGroup("g", 0, kMade), nullptr);
    EXPECT_FALSE(pool.setInt("g", "key", 2));
    EXPECT_FALSE(pool.initInt("g", "new", 2));
    EXPECT_FALSE(pool.remove("g", "key"));
    EXPECT_FALSE(pool.setFloat("g", "key", 2));
    EXPECT_FALSE(pool.setString("g", "key", "2"));
    EXPECT_FALSE(pool.setObject("g", "key", nullptr));
    std::int64_t number = 0;
    double real = 0;
    FString text;
    EXPECT_FALSE(pool.getInt("g", "key", number));
    EXPECT_FALSE(pool.getFloat("g", "key", real));
    EXPECT_FALSE(pool.getString("g", "key", text));
    EXPECT_EQ(pool.getObject("g", "key", nullptr), nullptr);
    EXPECT_FALSE(pool.initFloat("g", "new", 2));
    EXPECT_FALSE(pool.initString("g", "new", "2"));
    EXPECT_FALSE(pool.initObject("g", "new", nullptr));
    pool.removeGroup("g");
    EXPECT_EQ(pool.getGroupCount(), 1u);
}

TEST(FDefaultPool, BeginsWithoutAnError) {
    EXPECT_EQ(FDefaultPool().getLastError(), -1);
}

TEST(FDefaultPool, LoadsAGroupWhenItIsFirstAskedFor) {
    LazyPool pool;
    pool.versions = {{"x", 0}, {"old", 1}};
    EXPECT_EQ(intOf(pool, "x", "loaded"), 1);
    EXPECT_EQ(intOf(pool, "x", "loaded"), 1);
    EXPECT_EQ(pool.asked, std::vector<std::string>{"x"}) << "once";
    EXPECT_EQ(pool.getGroup("old", 0, kLeft), nullptr);
    FDefaults* fresh = pool.getGroup("old", 0, kMade);
    ASSERT_NE(fresh, nullptr);
    EXPECT_TRUE(fresh->isEmpty()) << "another version isn't taken over";
    EXPECT_EQ(pool.getGroup("none", 0, kLeft), nullptr);
}

TEST(FDefaultPool, DoesntLoadAGroupThatWasRemoved) {
    LazyPool pool;
    pool.versions = {{"x", 0}, {"y", 0}};
    EXPECT_EQ(intOf(pool, "x", "loaded"), 1);
    pool.removeGroup("x");
    pool.removeGroup("y");
    pool.removeGroup(nullptr);
    pool.removeGroup("");
    EXPECT_EQ(pool.getGroup("x", 0, kLeft), nullptr);
    EXPECT_EQ(pool.getGroup("y", 0, kLeft), nullptr) << "not in memory yet, and gone all the same";
    EXPECT_EQ(pool.deletedGroups().size(), 2u);
    FDefaults* group = pool.getGroup("x", 0, kMade);
    ASSERT_NE(group, nullptr);
    EXPECT_TRUE(group->isEmpty());
    EXPECT_FALSE(pool.deletedGroups().contains("x"));
}

TEST(FDefaultPool, DoesntLoadWhenItMayNot) {
    LazyPool pool;
    pool.versions = {{"x", 0}};
    pool.setLazyLoading(false);
    EXPECT_EQ(pool.getGroup("x", 0, kLeft), nullptr);
    EXPECT_TRUE(pool.getGroup("x", 0, kMade)->isEmpty());
    EXPECT_TRUE(pool.asked.empty());
}

TEST(FDefaultPool, StoresItsGroupsInOrder) {
    FDefaultPool pool;
    for (const char* name : {"c", "a", "b"}) {
        pool.setInt(name, "key", 1);
    }
    const auto tree = treeOf(pool);
    ASSERT_EQ(tree->listCount("Entries"), 3);
    std::string order;
    while (FAttributes* entry = tree->nextSub("Entries")) {
        FString name;
        entry->getString("Group", name);
        order += name.text8();
    }
    EXPECT_EQ(order, "cab");
    EXPECT_EQ(tree->find("AutoSavers"), nullptr);
    FDefaultPool restored;
    EXPECT_TRUE(restored.restoreAttributes(*tree));
    EXPECT_EQ(treeOf(restored)->listCount("Entries"), 3);
    EXPECT_EQ(intOf(restored, "a", "key"), 1);
}

TEST(FDefaultPool, DoesntStoreAGroupWithoutValues) {
    FDefaultPool pool;
    pool.getGroup("version alone", 7, kMade);
    pool.setInt("x", "key", 1);
    pool.setInt("emptied", "key", 1);
    pool.remove("emptied", "key");
    const auto tree = treeOf(pool);
    EXPECT_EQ(tree->listCount("Entries"), 1);
    FDefaultPool restored;
    restored.restoreAttributes(*tree);
    EXPECT_EQ(restored.getGroup("version alone", 7, kLeft), nullptr);
}

TEST(FDefaultPool, RestoringBeginsAfresh) {
    FDefaultPool pool;
    pool.setInt("old", "key", 1);
    const auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    EXPECT_TRUE(pool.restoreAttributes(*tree));
    EXPECT_EQ(pool.getGroupCount(), 0u);
}

TEST(FDefaultPool, RestoringPassesOverWhatWasRemoved) {
    FDefaultPool pool;
    pool.setInt("x", "key", 1);
    pool.setInt("y", "key", 1);
    const auto tree = treeOf(pool);
    pool.removeGroup("x");
    pool.restoreAttributes(*tree);
    EXPECT_EQ(pool.getGroup("x", 0, kLeft), nullptr);
    EXPECT_TRUE(pool.getGroup("x", 0, kMade)->isEmpty());
    EXPECT_EQ(intOf(pool, "y", "key"), 1);
}

TEST(FDefaultPool, RestoringTakesTheFirstOfTwoAndNoneWithoutAName) {
    const auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
    for (const char* name : {"x", "x", ""}) {
        FDefaults group(name);
        group.setInt("key", tree->listCount("Entries"));
        tree->appendSub("Entries", treeOf(group).detach());
    }
    tree->appendSub("Entries", new FAttributes);
    FDefaultPool pool;
    EXPECT_TRUE(pool.restoreAttributes(*tree));
    EXPECT_EQ(pool.getGroupCount(), 1u);
    EXPECT_EQ(intOf(pool, "x", "key"), 0);
}

TEST(FDefaultPool, AutoSaversAreStoredUnderTheirNames) {
    FDefaultPool pool;
    AutoSaverDouble first("First", 1);
    AutoSaverDouble second("Second", 2);
    AutoSaverDouble silent("Silent", 3);
    silent.refuses = true;
    for (AutoSaverDouble* saver : {&first, &second, &silent, &first}) {
        pool.registerAutoSaver(saver);
    }
    pool.registerAutoSaver(nullptr);
    const auto tree = treeOf(pool);
    EXPECT_EQ(first.stored, 1) << "registered twice, asked once";
    const FAttributes* savers = tree->getTree("AutoSavers");
    ASSERT_NE(savers, nullptr);
    EXPECT_EQ(savers->getCount(), 2);
    ASSERT_NE(savers->getTree("Second"), nullptr);
    std::int64_t state = 0;
    EXPECT_TRUE(savers->getTree("Second")->getInt("state", state) && state == 2);
    pool.unregisterAutoSaver(&second);
    EXPECT_EQ(treeOf(pool)->getTree("AutoSavers")->find("Second"), nullptr);
    for (AutoSaverDouble* saver : {&first, &silent, &silent}) {
        pool.unregisterAutoSaver(saver);
    }
    EXPECT_EQ(treeOf(pool)->find("AutoSavers"), nullptr);
}

TEST(FDefaultPool, SaversMayComeAndGoWhileTheyAreStored) {
    FDefaultPool pool;
    class First final : public AutoSaverDouble {
    public:
        First(FDefaultPool& pool, CmObject& leaving) : AutoSaverDouble("First", 1), pool_(pool), leaving_(leaving) {}
        bool storeAttributes(FAttributes& attributes) const override {
            pool_.unregisterAutoSaver(&leaving_);
            // More than the list has room for.
            for (int i = 0; i < 100; ++i) {
                pool_.registerAutoSaver(&coming_.emplace_back("Coming"));
            }
            return AutoSaverDouble::storeAttributes(attributes);
        }

    private:
        FDefaultPool& pool_;
        CmObject& leaving_;
        mutable std::list<AutoSaverDouble> coming_;
    };
    AutoSaverDouble second("Second", 2);
    AutoSaverDouble third("Third", 3);
    First first(pool, second);
    for (AutoSaverDouble* saver : std::initializer_list<AutoSaverDouble*>{&first, &second, &third}) {
        pool.registerAutoSaver(saver);
    }
    EXPECT_EQ(treeOf(pool)->getTree("AutoSavers")->getCount(), 2);
    EXPECT_EQ(first.stored, 1);
    EXPECT_EQ(second.stored, 0);
    EXPECT_EQ(third.stored, 1);
}

TEST(FDefaultPool, AutoSaversGetTheirStateOnce) {
    LazyPool pool;
    AutoSaverDouble saver("Saver", 5);
    AutoSaverDouble stranger("Stranger", 6);
    pool.registerAutoSaver(&saver);
    const auto tree = treeOf(pool);
    saver.state = 0;
    pool.registerAutoSaver(&stranger);
    pool.restoreAttributes(*tree);
    EXPECT_EQ(saver.restored, 0) << "not before it is handed out";
    pool.restoreAutoSavers();
    EXPECT_EQ(saver.state, 5);
    EXPECT_EQ(stranger.restored, 0);
    saver.state = 0;
    pool.restoreAutoSavers();
    EXPECT_EQ(saver.state, 0) << "what was loaded is given up";
    EXPECT_EQ(saver.restored, 1);
}

TEST(FDefaultPool, WhoLeavesWhileOthersAreRestoredIsLeftAlone) {
    LazyPool pool;
    AutoSaverDouble second("Second", 2);
    class First final : public AutoSaverDouble {
    public:
        First(FDefaultPool& pool, CmObject& other) : AutoSaverDouble("First", 1), pool_(pool), other_(other) {}
        bool restoreAttributes(FAttributes& attributes) override {
            pool_.unregisterAutoSaver(&other_);
            return AutoSaverDouble::restoreAttributes(attributes);
        }

    private:
        FDefaultPool& pool_;
        CmObject& other_;
    } first(pool, second);
    pool.registerAutoSaver(&first);
    pool.registerAutoSaver(&second);
    const auto tree = treeOf(pool);
    pool.restoreAttributes(*tree);
    pool.restoreAutoSavers();
    EXPECT_EQ(first.restored, 1);
    EXPECT_EQ(second.restored, 0);
}

} // namespace
} // namespace tessera
