// DefaultsFixture: a folder for the user's data and one beside the program, both of the test's own, and a few words for
// what lies in them.
#pragma once

#include "appservices/defaults/FGlobalDefaultPool.h"
#include "persistence/objects/DocumentFolders.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessera::test {

inline constexpr auto kLeft = IDefaultPool::Missing::left;
inline constexpr auto kMade = IDefaultPool::Missing::made;

// -99 where there is no such value.
inline std::int64_t intOf(IDefaultPool& pool, const char* group, const char* key) {
    std::int64_t value = -99;
    pool.getInt(group, key, value);
    return value;
}

class DefaultsFixture : public testing::Test {
protected:
    using Files = FGlobalDefaultPool::Files;
    using RunSavers = FGlobalDefaultPool::RunSavers;

    DefaultsFixture() { called().clear(); }

    static std::string lines(std::initializer_list<const char*> texts) {
        std::string all = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
        for (const char* text : texts) {
            all += text;
            all += "\r\n";
        }
        return all;
    }

    static FRefPtr<FGlobalDefaultPool> newPool(Files files) {
        auto pool = FRefPtr<FGlobalDefaultPool>::adopt(new FGlobalDefaultPool);
        pool->setFiles(files);
        return pool;
    }
    // As a program has it behind its start.
    static FRefPtr<FGlobalDefaultPool> startedPool(Files files) {
        auto pool = newPool(files);
        pool->load();
        pool->restore();
        return pool;
    }

    // What the callbacks and gates, which are plain functions, have noted.
    static std::vector<std::string>& called() {
        static std::vector<std::string> names;
        return names;
    }

    testing_support::ScratchFolder user_;
    testing_support::ScratchFolder module_;
    DocumentFolders folders_{user_.path(), module_.path()};
};

} // namespace tessera::test
