#include "link/DriverClient.h"

#include "support/host/FakeHost.h"
#include "workflow/HostText.h"
#include "workflow/IPeerLink.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeHost;

class SuspendingPeerLink final : public IPeerLink {
public:
    bool isPeerAvailable() override { return true; }
    void openAudioFile(IHostFile*) override {}
    IHostFile* editSelection() override { return nullptr; }
    void cancelAudioFile(IHostFile*) override {}
    std::int32_t suspendDriver(const char16_t* text) override {
        texts.push_back(utf8Of(text));
        return 0;
    }
    std::vector<std::string> texts;
};

class DriverClientTest : public testing::Test {
protected:
    ~DriverClientTest() override { client_.stop(); }

    FakeHost host_;
    SuspendingPeerLink peer_;
    DriverClient& client_ = DriverClient::instance();
};

TEST_F(DriverClientTest, AnswersItsIdentifier) {
    void* out = nullptr;
    EXPECT_EQ(client_.queryInterface("{19B9CB1D-A2B9-AD43-86C0-874BA552D944}"_uid, &out), kResultOk);
    EXPECT_EQ(out, static_cast<IDriverClient*>(&client_));
    client_.release();
}

TEST_F(DriverClientTest, JoinsTheArbiterBetweenStartAndStop) {
    client_.start(&peer_);
    ASSERT_EQ(host_.drivers->clients.size(), 1u);
    EXPECT_EQ(host_.drivers->clients[0].get(), &client_);
    client_.stop();
    EXPECT_TRUE(host_.drivers->clients.empty());
}

TEST_F(DriverClientTest, SuspendForwardsItsSecondArgument) {
    client_.start(&peer_);
    EXPECT_EQ(client_.suspend(nullptr, u"Kite \u00E4"), kResultOk);
    EXPECT_EQ(peer_.texts, std::vector<std::string>{"Kite \xC3\xA4"});
    client_.stop();
    EXPECT_EQ(client_.suspend(nullptr, u"later"), kResultOk);
    EXPECT_EQ(peer_.texts.size(), 1u);
}

TEST_F(DriverClientTest, TheFourthSlotAnswersAtOnce) {
    EXPECT_EQ(client_.reserved4(), kResultOk);
}

TEST_F(DriverClientTest, RequestReleaseGivesTheHostsAnswer) {
    EXPECT_EQ(client_.requestRelease("text"), 5);
    ASSERT_EQ(host_.drivers->requests.size(), 1u);
    EXPECT_EQ(host_.drivers->requests[0].second, "text");
    host_.services->remove<IDriverArbiter>();
    EXPECT_EQ(client_.requestRelease("text"), -1);
}

} // namespace
} // namespace tessera
