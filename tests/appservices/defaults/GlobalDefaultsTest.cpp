// The functions around the settings of the process. What ends the pool runs in a process of its own.
#include "appservices/defaults/GlobalDefaults.h"

#include "DefaultsFixture.h"

#include <cstdio>
#include <cstdlib>

namespace tessera::test {
namespace {

using GlobalDefaultsTest = DefaultsFixture;

bool askAtEnd = false;

TEST_F(GlobalDefaultsTest, WorkOnTheOnePool) {
    FGlobalDefaultPool* pool = FGlobalDefaultPool::getInstance();
    ASSERT_NE(pool, nullptr);
    EXPECT_EQ(FGlobalDefaultPool::getInstance(), pool);
    EXPECT_FALSE(GlobalDefaults::load());
    EXPECT_FALSE(GlobalDefaults::save(RunSavers::yes)) << "not restored yet";
    GlobalDefaults::addRestoreCallback([] { called().push_back("restored"); });
    GlobalDefaults::addSaveCallback([] { called().push_back("saving"); });
    GlobalDefaults::restore();
    EXPECT_TRUE(pool->isRestored());
    pool->setInt("x", "key", 1);
    EXPECT_TRUE(GlobalDefaults::save(RunSavers::yes));
    EXPECT_EQ(called(), (std::vector<std::string>{"restored", "saving"}));
    EXPECT_TRUE(user_.has("Defaults.xml"));
    EXPECT_TRUE(GlobalDefaults::backup());
    EXPECT_TRUE(GlobalDefaults::restoreBackup());
    GlobalDefaults::setLoadGate([] { return false; });
    EXPECT_FALSE(GlobalDefaults::load());
    GlobalDefaults::setLoadGate(nullptr);
    pool->setInt("x", "key", 2);
    EXPECT_TRUE(GlobalDefaults::load());
    EXPECT_EQ(intOf(*pool, "x", "key"), 1);
    GlobalDefaults::setSaveGate([] { return false; });
    EXPECT_TRUE(GlobalDefaults::trash());
    EXPECT_TRUE(GlobalDefaults::save(RunSavers::no));
    GlobalDefaults::setSaveGate(nullptr);
    EXPECT_FALSE(user_.has("Defaults.xml"));
}

TEST_F(GlobalDefaultsTest, CloseIsTheEndOfAllGroups) {
    EXPECT_EXIT(
        {
            FGlobalDefaultPool* pool = FGlobalDefaultPool::getInstance();
            const bool before = pool->setInt("x", "key", 1);
            GlobalDefaults::close();
            std::_Exit(before && pool->isClosed() && !pool->setInt("x", "key", 2) ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

void askAfterTheEnd() {
    if (!askAtEnd) {
        return;
    }
    const bool quiet = FGlobalDefaultPool::getInstance() == nullptr && !GlobalDefaults::load() &&
                       !GlobalDefaults::save(GlobalDefaults::RunSavers::yes) && !GlobalDefaults::trash() &&
                       !GlobalDefaults::backup() && !GlobalDefaults::restoreBackup();
    GlobalDefaults::restore();
    GlobalDefaults::close();
    GlobalDefaults::addRestoreCallback([] {});
    GlobalDefaults::addSaveCallback([] {});
    GlobalDefaults::setLoadGate(nullptr);
    GlobalDefaults::setSaveGate(nullptr);
    std::fputs(quiet ? "nothing more" : "something left", stderr);
}

TEST_F(GlobalDefaultsTest, DoNothingAfterTheEndOfThePool) {
    EXPECT_EXIT(
        {
            askAtEnd = FGlobalDefaultPool::getInstance() != nullptr;
            std::exit(0);
        },
        testing::ExitedWithCode(0), "nothing more");
}

// Runs before the class records make the singletons' list, so the handler it enters runs behind the list's own.
[[gnu::init_priority(101)]] const struct EarlyHandler {
    EarlyHandler() { std::atexit(&askAfterTheEnd); }
} earlyHandler;

} // namespace
} // namespace tessera::test
