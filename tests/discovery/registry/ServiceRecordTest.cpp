#include "discovery/registry/ServiceRecord.h"

#include "platform/Processes.h"
#include "tests/discovery/registry/RegistryTest.h"

#include <stdexcept>

namespace tessera::test {
namespace {

using ServiceRecordTest = RegistryTest;

TEST_F(ServiceRecordTest, TheFileIsThreeLines) {
    ServiceRecord record;
    record.processName = "tessera";
    record.processId = 4711;
    record.type = "tesxcon_nanomsg";
    record.name = "not in the file";
    EXPECT_EQ(record.format(), "tessera" + kLineEnd + "4711" + kLineEnd + "tesxcon_nanomsg" + kLineEnd);
}

TEST_F(ServiceRecordTest, NameIsTheLastComponentOfThePath) {
    const ServiceRecord record = ServiceRecord::forPath("/tmp/Marlgrove/ServiceDiscovery/com.marlgrove.tessera");
    EXPECT_EQ(record.name, "com.marlgrove.tessera");
    EXPECT_EQ(record.path, "/tmp/Marlgrove/ServiceDiscovery/com.marlgrove.tessera");
    EXPECT_EQ(ServiceRecord::forPath("bare").name, "bare");
}

struct GoodText {
    const char* name;
    const char* text;
    const char* processName;
    int processId;
    const char* type;
};

class EveryGoodText : public testing::TestWithParam<GoodText> {};
INSTANTIATE_TEST_SUITE_P(Good, EveryGoodText,
                         testing::Values(GoodText{"Plain", "peer\n12\ntype\n", "peer", 12, "type"},
                                         GoodText{"NoEndOfTheLastLine", "peer\n12\ntype", "peer", 12, "type"},
                                         GoodText{"NoType", "peer\n12\n", "peer", 12, ""},
                                         GoodText{"NoProcessName", "\n12\ntype\n", "", 12, "type"},
                                         GoodText{"BlanksInFront", "peer\n \t12\ntype\n", "peer", 12, "type"},
                                         GoodText{"TailBehindTheNumber", "peer\n12abc\ntype\n", "peer", 12, "type"},
                                         GoodText{"PlusSign", "peer\n+12\ntype\n", "peer", 12, "type"},
                                         GoodText{"MinusSign", "peer\n-12\ntype\n", "peer", -12, "type"},
                                         GoodText{"Largest", "peer\n2147483647\ntype\n", "peer", 2147483647, "type"},
                                         GoodText{"FurtherLines", "peer\n12\ntype\nmore\n", "peer", 12, "type"},
                                         GoodText{"BlanksInNames", "a peer\n12\na type\n", "a peer", 12, "a type"}),
                         [](const auto& row) { return row.param.name; });

TEST_P(EveryGoodText, IsTakenOver) {
    ServiceRecord record;
    record.parse(GetParam().text);
    EXPECT_EQ(record.processName, GetParam().processName);
    EXPECT_EQ(record.processId, GetParam().processId);
    EXPECT_EQ(record.type, GetParam().type);
}

struct BadText {
    const char* name;
    const char* text;
    const char* message;
};

class EveryBadText : public testing::TestWithParam<BadText> {};
constexpr const char* kNoNumber = "invalid stoi argument";
constexpr const char* kTooLarge = "stoi argument out of range";
INSTANTIATE_TEST_SUITE_P(Bad, EveryBadText,
                         testing::Values(BadText{"Empty", "", kNoNumber}, BadText{"OneLine", "peer\n", kNoNumber},
                                         BadText{"Word", "peer\nx12\ntype\n", kNoNumber},
                                         BadText{"Blank", "peer\n  \ntype\n", kNoNumber},
                                         BadText{"SignAlone", "peer\n-\ntype\n", kNoNumber},
                                         BadText{"TwoSigns", "peer\n+-1\ntype\n", kNoNumber},
                                         BadText{"PlusAlone", "peer\n+\ntype\n", kNoNumber},
                                         BadText{"OneTooMany", "peer\n2147483648\ntype\n", kTooLarge},
                                         BadText{"FarTooMany", "peer\n99999999999999999999999\ntype\n", kTooLarge},
                                         BadText{"FarTooFew", "peer\n-99999999999\ntype\n", kTooLarge}),
                         [](const auto& row) { return row.param.name; });

TEST_P(EveryBadText, RaisesTheStandardExceptionWithItsText) {
    ServiceRecord record;
    std::string message = "none";
    try {
        record.parse(GetParam().text);
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(GetParam().message, kNoNumber);
        message = error.what();
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(GetParam().message, kTooLarge);
        message = error.what();
    }
    EXPECT_EQ(message, GetParam().message);
}

TEST_F(ServiceRecordTest, AFileThatCantBeOpenedLeavesEverything) {
    ServiceRecord record = ServiceRecord::forPath(genericOf(scratch_ / "absent"));
    record.processId = 5;
    record.processName = "before";
    record.readFile();
    EXPECT_EQ(record.processId, 5);
    EXPECT_EQ(record.processName, "before");
}

TEST_F(ServiceRecordTest, AShorterRecordLeavesNothingOfALongerOne) {
    ServiceRecord record =
        ServiceRecord::forPath(genericOf(scratch_.write("name", "a very long process name\n123456\ntype\n")));
    record.processName = "p";
    record.processId = 1;
    record.type = "t";
    EXPECT_TRUE(record.writeFile());
    EXPECT_EQ(scratch_.read("name"), "p" + kLineEnd + "1" + kLineEnd + "t" + kLineEnd);
    ServiceRecord copy = ServiceRecord::forPath(record.path);
    copy.readFile();
    EXPECT_EQ(copy, record);
}

TEST_F(ServiceRecordTest, AFolderThatIsMissingMakesWritingFail) {
    EXPECT_FALSE(ServiceRecord::forPath(genericOf(scratch_ / "absent/name")).writeFile());
}

TEST_F(ServiceRecordTest, IsAliveWhenTheProcessRunsUnderThatName) {
    ServiceRecord record;
    record.processId = platform::ownProcessId();
    record.processName = OWN_NAME;
    EXPECT_TRUE(record.isAlive());
    record.processName = std::string("R") + (OWN_NAME + 1);
    EXPECT_FALSE(record.isAlive()) << "the name is compared byte for byte";
    record.processName = "";
    EXPECT_FALSE(record.isAlive());
}

TEST_F(ServiceRecordTest, IsDeadWithItsProcess) {
    const auto helper = startHelper("");
    ServiceRecord record;
    record.processId = helper->id();
    record.processName = kHelperName;
    EXPECT_TRUE(record.isAlive());
    helper->kill();
    EXPECT_FALSE(record.isAlive());
}

TEST_F(ServiceRecordTest, AnEmptyNameMeetsTheEmptyNameOfAProcessThatCantBeOpened) {
    ServiceRecord record;
    record.processId = -1;
    EXPECT_TRUE(record.isAlive());
}

} // namespace
} // namespace tessera::test
