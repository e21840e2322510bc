#include "persistence/files/FPlainNamer.h"

#include "persistence/files/NamerSupport.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FPlainNamer, BeginsWithOne) {
    FakeFolder folder;
    FPlainNamer namer;
    EXPECT_EQ(askNamer(namer, "Take", folder).name, "Take-01");
}

TEST(FPlainNamer, BeginsBehindTheNumberThatIsThere) {
    FakeFolder folder;
    FPlainNamer namer;
    EXPECT_EQ(askNamer(namer, "Take-07", folder).name, "Take-08");
    EXPECT_EQ(askNamer(namer, "Take-99", folder).name, "Take-100");
}

TEST(FPlainNamer, FillsTheFirstGap) {
    FakeFolder folder;
    folder.taken = [](const std::string& name) { return name == "Take-01" || name == "Take-02" || name == "Take-04"; };
    FPlainNamer namer;
    EXPECT_EQ(askNamer(namer, "Take", folder).name, "Take-03");
}

TEST(FPlainNamer, TheLargestNumberIsTried) {
    FakeFolder folder;
    FPlainNamer namer;
    EXPECT_EQ(askNamer(namer, "n-2147483646", folder).name, "n-2147483647");
}

TEST(FPlainNamer, FailsBehindTheLargestNumber) {
    FakeFolder folder;
    FPlainNamer namer;
    for (const char* base : {"n-2147483647", "n-99999999999", "n-99999999999999999999999999"}) {
        const NamerAnswer answer = askNamer(namer, base, folder);
        EXPECT_FALSE(answer.found) << base;
        EXPECT_EQ(answer.name, "") << base;
    }
    EXPECT_TRUE(folder.asked.empty());
}

TEST(FPlainNamer, FailsWhenAllNumbersToTheLargestAreTaken) {
    FakeFolder folder;
    folder.taken = [](const std::string&) { return true; };
    FPlainNamer namer;
    EXPECT_FALSE(askNamer(namer, "n-2147483640", folder).found);
    EXPECT_EQ(folder.asked.size(), 7u);
}

TEST(FPlainNamer, ARefusedCandidateEndsTheSearch) {
    FakeFolder folder;
    folder.longest = 7;
    folder.taken = takenUpTo("Take", 99);
    FPlainNamer namer;
    const NamerAnswer answer = askNamer(namer, "Take-98", folder);
    EXPECT_FALSE(answer.found);
    EXPECT_EQ(answer.name, "");
}

} // namespace
} // namespace tessera
