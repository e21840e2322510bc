// A save breaks off at each of its steps in turn, as by kill -9: what was saved before, or what was being saved, is
// there afterwards.
#include "DefaultsFixture.h"
#include "support/HelperProcess.h"

#include <filesystem>
#include <set>
#include <string>

namespace tessera::test {
namespace {

using testing_support::HelperProcess;
using testing_support::ScratchFolder;

constexpr int kGroups = 10;
constexpr std::int64_t kNone = -99;

class DefaultsPowerCut : public DefaultsFixture {
protected:
    // What the helper said: "saved" and its count of calls, or "(end)" when it died.
    std::string run(const char* form, int number, int dyingCall) {
        HelperProcess helper(SETTINGS_HELPER,
                             {user_.path().string(), form, std::to_string(number), std::to_string(dyingCall)});
        const std::string said = helper.hear();
        helper.finish();
        return said;
    }

    int countCalls(const char* form, int number) {
        const std::string said = run(form, number, 0);
        EXPECT_EQ(said.substr(0, 6), "saved ");
        return std::atoi(said.substr(6).c_str());
    }

    // The numbers that the groups have; kNone for one without.
    std::multiset<std::int64_t> numbersOf(Files files) {
        const auto pool = newPool(files);
        pool->load();
        std::multiset<std::int64_t> numbers;
        for (int i = 0; i < kGroups; ++i) {
            numbers.insert(intOf(*pool, ("group " + std::to_string(i)).c_str(), "number"));
        }
        return numbers;
    }

    static std::multiset<std::int64_t> all(std::int64_t number) {
        std::multiset<std::int64_t> numbers;
        for (int i = 0; i < kGroups; ++i) {
            numbers.insert(number);
        }
        return numbers;
    }

    // What somebody does who finds the settings gone and knows of the file beside them.
    void takeTheOldFile() {
        if (user_.has("Defaults_old.xml")) {
            std::filesystem::rename(user_ / "Defaults_old.xml", user_ / "Defaults.xml");
        }
    }
};

TEST_F(DefaultsPowerCut, OneFileIsTheOldOrTheNewOneAsAWhole) {
    ASSERT_EQ(run("one", 0, 0).substr(0, 5), "saved");
    const int calls = countCalls("one", 1);
    ASSERT_GT(calls, 10);
    int present = 1;
    int aside = 0;
    int fresh = 0;
    // One cut after the other, on what the one before has left.
    for (int call = 1; call <= calls; ++call) {
        SCOPED_TRACE("cut at call " + std::to_string(call));
        const int next = present + 1;
        ASSERT_EQ(run("one", next, call), "(end)");
        if (numbersOf(Files::one) == all(kNone)) {
            // Between the renaming and the end of the writing: the old file waits beside the new one, whole.
            EXPECT_TRUE(user_.has("Defaults_old.xml"));
            ++aside;
            takeTheOldFile();
        }
        const auto numbers = numbersOf(Files::one);
        if (numbers == all(next)) {
            present = next;
            ++fresh;
        } else {
            EXPECT_EQ(numbers, all(present));
        }
    }
    EXPECT_GT(aside, 0);
    EXPECT_GT(fresh, 0);
    // The next save that gets through tidies up.
    EXPECT_EQ(run("one", 1000, 0).substr(0, 5), "saved");
    EXPECT_EQ(numbersOf(Files::one), all(1000));
    EXPECT_EQ(user_.entryCount(), 1u);
}

TEST_F(DefaultsPowerCut, OfSplitFilesOneAtMostIsDamaged) {
    ASSERT_EQ(run("split", 1, 0).substr(0, 5), "saved");
    const int calls = countCalls("split", 1);
    ASSERT_GT(calls, 3 * kGroups);
    std::size_t damaged = 0;
    for (int call = 1; call <= calls; ++call) {
        SCOPED_TRACE("cut at call " + std::to_string(call));
        ASSERT_EQ(run("split", 2, call), "(end)");
        const auto numbers = numbersOf(Files::split);
        EXPECT_LE(numbers.count(kNone), 1u);
        EXPECT_EQ(numbers.count(kNone) + numbers.count(1) + numbers.count(2), static_cast<std::size_t>(kGroups));
        damaged += numbers.count(kNone);
        EXPECT_EQ(run("split", 1, 0).substr(0, 5), "saved") << "and the next one is well";
        EXPECT_EQ(numbersOf(Files::split), all(1));
    }
    EXPECT_GT(damaged, 0u) << "written in place, as it is meant";
}

TEST_F(DefaultsPowerCut, OnTheWayToSplitFilesTheSettingsAreTheOldOrTheNewOnesAsAWhole) {
    ASSERT_EQ(run("one", 1, 0).substr(0, 5), "saved");
    const std::string oneFile = user_.read("Defaults.xml");
    const int calls = countCalls("split", 1);
    ASSERT_GT(calls, 3 * kGroups);
    int old = 0;
    for (int call = 1; call <= calls; ++call) {
        SCOPED_TRACE("cut at call " + std::to_string(call));
        std::filesystem::remove_all(user_ / "Defaults");
        user_.write("Defaults.xml", oneFile);
        ASSERT_EQ(run("split", 2, call), "(end)");
        const auto numbers = numbersOf(Files::split);
        EXPECT_TRUE(numbers == all(1) || numbers == all(2));
        old += numbers == all(1) ? 1 : 0;
        ASSERT_TRUE(startedPool(Files::split)->save(RunSavers::no)) << "and the next one is well";
        EXPECT_EQ(numbersOf(Files::split), numbers);
        EXPECT_EQ(user_.entryCount(), 1u);
    }
    EXPECT_GT(old, kGroups);
}

} // namespace
} // namespace tessera::test
