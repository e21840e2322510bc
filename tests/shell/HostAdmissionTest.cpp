#include "shell/HostAdmission.h"

#include "shell/hostapi/IHostApplicationInfo.h"
#include "support/host/FakeObject.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

class FakeApplication final : public test::FakeObject<IHostApplicationInfo> {
public:
    FakeApplication(const char* name, const char* version) : name_(name), version_(version) {}
    const char* name() override {
        ++names;
        return name_;
    }
    const char* version() override {
        ++versions;
        return version_;
    }
    int names = 0;
    int versions = 0;

private:
    const char* name_;
    const char* version_;
};

struct Row {
    const char* label;
    const char* name;
    const char* version;
    bool admitted;
};

class HostAdmission : public testing::TestWithParam<Row> {};

TEST_P(HostAdmission, GoesByNameAndVersion) {
    const auto host = test::makeFake<FakeApplication>(GetParam().name, GetParam().version);
    EXPECT_EQ(isHostAdmitted(host.get()), GetParam().admitted);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HostAdmission,
    testing::Values(Row{"HarrowTooOld", "Harrow", "8.5.9", false}, Row{"HarrowOldest", "Harrow", "8.5.10", true},
                    Row{"HarrowBuild", "Harrow", "8.5.10.1", true}, Row{"HarrowNewer", "Harrow", "9.0.0.0", true},
                    Row{"HarrowMax", "Harrow Max", "9.0.20", true}, Row{"HarrowMid", "Harrow Mid", "8.5.10", true},
                    Row{"HarrowLite", "Harrow Lite", "10", true}, Row{"OwnMinimumOnly", "Ostrey", "7.1.20", true},
                    Row{"OstreyTooOld", "Ostrey", "7.1.19.99", false},
                    Row{"PeerAsHostTooOld", "Tessera Lite", "8.9.9", false},
                    Row{"PeerAsHost", "Tessera Max", "9.0.0", true}, Row{"CaseCounts", "harrow", "9.0.0", false},
                    Row{"WholeName", "Harrow Ma", "9.0.0", false}, Row{"NoName", "", "9.0.0", false},
                    Row{"NullName", nullptr, "9.0.0", false}, Row{"NullVersion", "Harrow", nullptr, false},
                    Row{"NoDigit", "Harrow", "beta", false},
                    Row{"LastNumberCounts", "Harrow", "Version 8.5.9 (x64)", true},
                    Row{"WordsBehind", "Harrow", "Version 8.5.10 beta", true}),
    [](const auto& row) { return row.param.label; });

TEST(HostAdmissionTest, NoHostIsRefused) {
    EXPECT_FALSE(isHostAdmitted(nullptr));
}

TEST(HostAdmissionTest, EveryRowAsksForTheNameAndItsOwnForTheVersion) {
    const auto host = test::makeFake<FakeApplication>("Harrow", "9.0.0");
    EXPECT_TRUE(isHostAdmitted(host.get()));
    EXPECT_EQ(host->names, 3);
    EXPECT_EQ(host->versions, 1);
    const auto stranger = test::makeFake<FakeApplication>("Stranger", "9.0.0");
    EXPECT_FALSE(isHostAdmitted(stranger.get()));
    EXPECT_EQ(stranger->names, 3);
    EXPECT_EQ(stranger->versions, 0);
}

} // namespace
} // namespace tessera
