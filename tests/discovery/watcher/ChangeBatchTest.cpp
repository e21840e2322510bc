#include "discovery/watcher/ChangeBatch.h"

#include "discovery/watcher/PrintedChange.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

using platform::FolderChange;

bool nothingExists(const std::string&) {
    return false;
}
bool allExists(const std::string&) {
    return true;
}

std::vector<ChangeEvent> eventsOf(const std::vector<FolderChange>& changes,
                                  const std::function<bool(const std::string&)>& exists = nothingExists) {
    return makeChangeBatch("/f", changes, exists).events;
}

TEST(ChangeBatch, TheKindsHaveTheirNumbers) {
    static_assert(static_cast<int>(ChangeKind::added) == 0);
    static_assert(static_cast<int>(ChangeKind::removed) == 1);
    static_assert(static_cast<int>(ChangeKind::modified) == 2);
    static_assert(static_cast<int>(ChangeKind::renamed) == 3);
    static_assert(static_cast<int>(ChangeKind::other) == 4);
    EXPECT_EQ(ChangeEvent().kind, ChangeKind::other);
}

TEST(ChangeBatch, MapsEachActionToItsKind) {
    const std::vector<ChangeEvent> expected = {{ChangeKind::added, "/f/a", ""},
                                               {ChangeKind::removed, "/f/b", ""},
                                               {ChangeKind::modified, "/f/c/d", ""},
                                               {ChangeKind::other, "/f/e", ""}};
    EXPECT_EQ(eventsOf({{1, "a"}, {2, "b"}, {3, "c/d"}, {0, "e"}}), expected);
}

TEST(ChangeBatch, AnOldAndANewNameAreOneRename) {
    const std::vector<ChangeEvent> expected = {{ChangeKind::renamed, "/f/old", "/f/new"},
                                               {ChangeKind::added, "/f/a", ""}};
    EXPECT_EQ(eventsOf({{4, "old"}, {5, "new"}, {1, "a"}}), expected);
}

TEST(ChangeBatch, HalfAPairAtTheEndIsAddedOrRemovedByWhetherItExists) {
    std::string asked;
    const auto ask = [&](bool answer) {
        return [&asked, answer](const std::string& path) {
            asked = path;
            return answer;
        };
    };
    EXPECT_EQ(eventsOf({{1, "a"}, {4, "old"}}, ask(true)).back(), (ChangeEvent{ChangeKind::added, "/f/old", ""}));
    EXPECT_EQ(asked, "/f/old");
    EXPECT_EQ(eventsOf({{1, "a"}, {4, "old"}}, ask(false)).back(), (ChangeEvent{ChangeKind::removed, "/f/old", ""}));
}

TEST(ChangeBatch, HalvesThatDontFollowEachOtherDirectlyAreNoRename) {
    const std::vector<ChangeEvent> gone = {
        {ChangeKind::removed, "/f/old", ""}, {ChangeKind::added, "/f/a", ""}, {ChangeKind::removed, "/f/new", ""}};
    EXPECT_EQ(eventsOf({{4, "old"}, {1, "a"}, {5, "new"}}), gone);
    const std::vector<ChangeEvent> swapped = {{ChangeKind::added, "/f/new", ""}, {ChangeKind::added, "/f/old", ""}};
    EXPECT_EQ(eventsOf({{5, "new"}, {4, "old"}}, allExists), swapped);
    const std::vector<ChangeEvent> arrivals = {{ChangeKind::added, "/f/a", ""}, {ChangeKind::added, "/f/b", ""}};
    EXPECT_EQ(eventsOf({{5, "a"}, {5, "b"}}, allExists), arrivals);
    const std::vector<ChangeEvent> twice = {{ChangeKind::removed, "/f/a", ""}, {ChangeKind::renamed, "/f/b", "/f/c"}};
    EXPECT_EQ(eventsOf({{4, "a"}, {4, "b"}, {5, "c"}}), twice);
}

TEST(ChangeBatch, JoinsWithOneSlash) {
    EXPECT_EQ(makeChangeBatch("/f/", std::vector<FolderChange>{{1, "a"}}, nothingExists).events[0].path, "/f/a");
    EXPECT_EQ(makeChangeBatch("/", std::vector<FolderChange>{{1, "a"}}, nothingExists).events[0].path, "/a");
    EXPECT_EQ(eventsOf({{0, ""}})[0].path, "/f"); // the folder itself
}

TEST(ChangeBatch, BearsTheTimeAtWhichItWasBuilt) {
    const auto before = std::chrono::system_clock::now();
    const ChangeBatch batch = makeChangeBatch("/f", {}, nothingExists);
    EXPECT_GE(batch.time, before);
    EXPECT_LE(batch.time, std::chrono::system_clock::now());
    EXPECT_TRUE(batch.events.empty());
}

} // namespace
} // namespace tessera::test
