#include "appservices/defaults/GroupTable.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

FRefPtr<FDefaults> newGroup(const std::string& name) {
    return FRefPtr<FDefaults>::adopt(new FDefaults(name.c_str()));
}

std::string namesOf(const GroupTable& table) {
    std::string names;
    table.forEach([&names](std::string_view name, const FDefaults&) {
        names += name;
        return true;
    });
    return names;
}

TEST(GroupTable, FindsByTheExactName) {
    GroupTable table;
    table.add("a", newGroup("a"));
    ASSERT_NE(table.find("a"), nullptr);
    EXPECT_TRUE(table.find("a")->getGroupName() == "a");
    EXPECT_EQ(table.find("A"), nullptr);
    EXPECT_EQ(table.find(""), nullptr);
}

TEST(GroupTable, KeepsTheOrderInWhichGroupsCame) {
    GroupTable table;
    for (const char* name : {"d", "a", "c", "b", "e"}) {
        table.add(name, newGroup(name));
    }
    EXPECT_EQ(namesOf(table), "dacbe");
    EXPECT_TRUE(table.remove("c"));
    EXPECT_TRUE(table.remove("d"));
    EXPECT_TRUE(table.remove("e"));
    EXPECT_FALSE(table.remove("c"));
    EXPECT_EQ(namesOf(table), "ab");
    table.add("c", newGroup("c"));
    EXPECT_EQ(namesOf(table), "abc");
    EXPECT_EQ(table.size(), 3u);
}

TEST(GroupTable, HoldsAReferenceOfEachGroup) {
    const FRefPtr<FDefaults> group = newGroup("a");
    {
        GroupTable table;
        table.add("a", group);
        EXPECT_EQ(group->getReferenceCount(), 2u);
        table.remove("a");
        EXPECT_EQ(group->getReferenceCount(), 1u);
        table.add("a", group);
        table.clear();
        EXPECT_EQ(group->getReferenceCount(), 1u);
        table.add("a", group);
    }
    EXPECT_EQ(group->getReferenceCount(), 1u);
}

TEST(GroupTable, FindsEachOfMany) {
    GroupTable table;
    for (int i = 0; i < 5000; ++i) {
        table.add(std::to_string(i), newGroup(std::to_string(i)));
    }
    for (int i = 0; i < 5000; i += 2) {
        EXPECT_TRUE(table.remove(std::to_string(i)));
    }
    for (int i = 0; i < 5000; ++i) {
        const FDefaults* found = table.find(std::to_string(i));
        ASSERT_EQ(found != nullptr, i % 2 == 1) << i;
        if (found != nullptr) {
            EXPECT_TRUE(found->getGroupName() == std::to_string(i).c_str());
        }
    }
    EXPECT_EQ(table.size(), 2500u);
    table.clear();
    EXPECT_EQ(table.find("1"), nullptr);
    EXPECT_EQ(namesOf(table), "");
}

TEST(GroupTable, StopsTheWalkAtAFalse) {
    GroupTable table;
    for (const char* name : {"a", "b", "c"}) {
        table.add(name, newGroup(name));
    }
    std::string seen;
    EXPECT_FALSE(table.forEach([&seen](std::string_view name, const FDefaults&) {
        seen += name;
        return name != "b";
    }));
    EXPECT_EQ(seen, "ab");
}

TEST(GroupTable, WhatIsRemovedDuringAWalkIsPassedOver) {
    GroupTable table;
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        table.add(name, newGroup(name));
    }
    std::string seen;
    EXPECT_TRUE(table.forEach([&](std::string_view name, const FDefaults& group) {
        if (name == "b") {
            // Itself, one that has been, and those ahead.
            for (const char* other : {"b", "a", "c", "d"}) {
                EXPECT_TRUE(table.remove(other));
            }
            table.add("f", newGroup("f"));
        }
        EXPECT_TRUE(group.getGroupName() == FString(name.data(), static_cast<std::int32_t>(name.size())));
        seen += name;
        return true;
    }));
    EXPECT_EQ(seen, "abef");
    EXPECT_EQ(namesOf(table), "ef");
    EXPECT_EQ(table.size(), 2u);
}

TEST(GroupTable, IsClearedDuringAWalk) {
    GroupTable table;
    const FRefPtr<FDefaults> group = newGroup("a");
    table.add("a", group);
    table.add("b", newGroup("b"));
    std::string seen;
    table.forEach([&](std::string_view name, const FDefaults&) {
        table.clear();
        // A walk within the walk.
        EXPECT_EQ(namesOf(table), "");
        seen += name;
        return true;
    });
    EXPECT_EQ(seen, "a");
    EXPECT_EQ(group->getReferenceCount(), 1u) << "gone with the walk";
}

} // namespace
} // namespace tessera
