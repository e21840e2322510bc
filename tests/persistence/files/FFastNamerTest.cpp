#include "persistence/files/FFastNamer.h"

#include "persistence/files/NamerSupport.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

TEST(FFastNamer, TheFirstNumberIsOne) {
    FakeFolder folder;
    FFastNamer namer;
    const NamerAnswer answer = askNamer(namer, "Take", folder);
    EXPECT_TRUE(answer.found);
    EXPECT_EQ(answer.name, "Take-01");
    EXPECT_EQ(folder.asked, std::vector<std::string>{"Take-01"});
}

TEST(FFastNamer, FindsTheFirstFreeNumberBehindADenseRun) {
    FakeFolder folder;
    folder.taken = takenUpTo("Take", 5);
    FFastNamer namer;
    EXPECT_EQ(askNamer(namer, "Take", folder).name, "Take-06");
    EXPECT_EQ(folder.asked,
              (std::vector<std::string>{"Take-01", "Take-02", "Take-04", "Take-08", "Take-06", "Take-05"}));
}

TEST(FFastNamer, EveryDenseRunEndsAtItsFirstFreeNumber) {
    for (unsigned long last = 0; last <= 130; ++last) {
        FakeFolder folder;
        folder.taken = takenUpTo("n", last);
        FFastNamer namer;
        const unsigned long expected = last + 1;
        EXPECT_EQ(askNamer(namer, "n", folder).name, (expected < 10 ? "n-0" : "n-") + std::to_string(expected));
    }
}

TEST(FFastNamer, ThousandsOfTakenNamesTakeFewQuestions) {
    FakeFolder folder;
    folder.taken = takenUpTo("Take", 9999);
    FFastNamer namer;
    EXPECT_EQ(askNamer(namer, "Take", folder).name, "Take-10000");
    EXPECT_LE(folder.asked.size(), 30u);
}

TEST(FFastNamer, AFreeNumberBehindAGapIsGoodEnough) {
    FakeFolder folder;
    folder.taken = [](const std::string& name) { return name == "Take-01" || name == "Take-04"; };
    FFastNamer namer;
    EXPECT_EQ(askNamer(namer, "Take", folder).name, "Take-02");
}

TEST(FFastNamer, ANumberThatIsThereIsStrippedWhenAsked) {
    FakeFolder folder;
    FFastNamer stripping(FFastNamer::Suffix::strip);
    EXPECT_EQ(askNamer(stripping, "Take-07", folder).name, "Take-01");
    FFastNamer keeping(FFastNamer::Suffix::keep);
    EXPECT_EQ(askNamer(keeping, "Take-07", folder).name, "Take-07-01");
}

TEST(FFastNamer, OnlyAHyphenAndTwoDigitsAreANumber) {
    FakeFolder folder;
    FFastNamer namer;
    EXPECT_EQ(askNamer(namer, "Take07", folder).name, "Take07-01");
    EXPECT_EQ(askNamer(namer, "Take-7", folder).name, "Take-7-01");
    EXPECT_EQ(askNamer(namer, "Take-123", folder).name, "Take-01");
    EXPECT_EQ(askNamer(namer, "-12", folder).name, "-12-01");
}

TEST(FFastNamer, FailsWhenAllPowersAreTaken) {
    FakeFolder folder;
    folder.taken = [](const std::string&) { return true; };
    FFastNamer namer;
    const NamerAnswer answer = askNamer(namer, "Take", folder);
    EXPECT_FALSE(answer.found);
    EXPECT_EQ(answer.name, "");
    EXPECT_EQ(folder.asked.size(), 32u);
    EXPECT_EQ(folder.asked.back(), "Take-2147483648");
}

TEST(FFastNamer, ARefusedCandidateEndsTheSearch) {
    FakeFolder folder;
    folder.longest = 7;
    folder.taken = takenUpTo("Take", 99);
    FFastNamer namer;
    const NamerAnswer answer = askNamer(namer, "Take", folder);
    EXPECT_FALSE(answer.found);
    EXPECT_EQ(answer.name, "");
}

TEST(FFastNamer, KeepsA16BitName) {
    FakeFolder folder;
    FFastNamer namer;
    FString result;
    EXPECT_TRUE(namer.makeName(FStringRef(u"Gr\u00FC\u00DFe-03"), FStringRef(u"wav"), folder, result));
    EXPECT_EQ(utf8Of(result), "Gr\xC3\xBC\xC3\x9F"
                              "e-01");
}

} // namespace
} // namespace tessera
