// Every system call fails in turn: of a save on the way from the one file to a file for each group, after which the
// next run finds the settings whole, and of reading a group's file, which stays.
#include "DefaultsFixture.h"
#include "support/FailingCalls.h"

#include <cerrno>
#include <filesystem>
#include <string>

namespace tessera::test {
namespace {

using testing_support::FailingCalls;

constexpr int kGroups = 5;

std::string groupName(int number) {
    return "group " + std::to_string(number);
}

class DefaultsFaults : public DefaultsFixture {
protected:
    void TearDown() override { FailingCalls::disarm(); }

    void beginWithOneFile() {
        for (const auto& entry : std::filesystem::directory_iterator(user_.path())) {
            std::filesystem::remove_all(entry);
        }
        const auto pool = startedPool(Files::one);
        for (int i = 0; i < kGroups; ++i) {
            pool->setInt(groupName(i).c_str(), "number", i);
        }
        ASSERT_TRUE(pool->save(RunSavers::no));
    }

    static bool isWhole(Files files) {
        const auto pool = newPool(files);
        pool->load();
        for (int i = 0; i < kGroups; ++i) {
            if (intOf(*pool, groupName(i).c_str(), "number") != i) {
                return false;
            }
        }
        return true;
    }
};

TEST_F(DefaultsFaults, WhateverStepFailsTheNextRunFindsTheSettingsWhole) {
    int calls = 1;
    int refused = 0;
    for (int call = 0; call <= calls; ++call) {
        beginWithOneFile();
        const auto pool = startedPool(Files::split);
        FailingCalls::arm(call, EIO);
        const bool saved = pool->save(RunSavers::no);
        const int count = FailingCalls::disarm();
        calls = call == 0 ? count : calls;
        SCOPED_TRACE("call " + std::to_string(call) + " failed: " + FailingCalls::failed());
        EXPECT_TRUE(isWhole(Files::split));
        EXPECT_TRUE(saved || (user_.has("Defaults.xml") && isWhole(Files::one)));
        // In turn the same program's and the next one's.
        EXPECT_TRUE((call % 2 == 0 ? pool : startedPool(Files::split))->save(RunSavers::no)) << "the next one is well";
        EXPECT_TRUE(isWhole(Files::split));
        EXPECT_EQ(user_.entryCount(), 1u) << "the folder";
        refused += saved ? 0 : 1;
    }
    EXPECT_GT(calls, 3 * kGroups);
    EXPECT_GT(refused, kGroups);
}

TEST_F(DefaultsFaults, AGroupWhoseFileCouldntBeReadKeepsIt) {
    beginWithOneFile();
    ASSERT_TRUE(startedPool(Files::split)->save(RunSavers::no));
    int calls = 1;
    int unread = 0;
    for (int call = 0; call <= calls; ++call) {
        const auto pool = startedPool(Files::split);
        FailingCalls::arm(call, EMFILE);
        const bool read = intOf(*pool, groupName(1).c_str(), "number") == 1;
        const int count = FailingCalls::disarm();
        calls = call == 0 ? count : calls;
        SCOPED_TRACE("call " + std::to_string(call) + " failed: " + FailingCalls::failed());
        EXPECT_TRUE(pool->save(RunSavers::no));
        EXPECT_TRUE(isWhole(Files::split));
        unread += read ? 0 : 1;
    }
    EXPECT_GT(unread, 0);
}

} // namespace
} // namespace tessera::test
