#include "foundation/messages/FIdleTimer.h"
#include "foundation/messages/FMessage.h"
#include "foundation/messages/FMessenger.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [messages]
class Player : public CmClass<Player, CmObject> {
public:
    static FMetaClass metaClass;

    // The post office has no reference of whom it delivers to: a target takes its messages back first of all.
    ~Player() override {
        if (FMessenger* messenger = FMessenger::getInstance()) {
            messenger->removeMessages(this, nullptr);
        }
    }

    std::int32_t receiveMessage(FMessage* message) override {
        if (!message->isMessage("Locate")) {
            return 0;
        }
        position = message->getFloat("seconds");
        return 1;
    }

    double position = 0;
};

FMetaClass Player::metaClass("Player", &CmObject::metaClass, nullptr);

// From any thread.
void locateLater(Player& player, double seconds) {
    auto* message = new FMessage("Locate");
    message->setFloat("seconds", seconds);
    FMessenger::getInstance()->postMessage(&player, message); // takes the message over
}
// [messages]

TEST(MessagesExample, APostedMessageComesWithTheIdleTask) {
    Player player;
    locateLater(player, 12);
    EXPECT_EQ(player.position, 0);
    FIdleTimer::runIdleTask();
    EXPECT_EQ(player.position, 12);
}

TEST(MessagesExample, WhatIsTakenBackDoesNotCome) {
    {
        Player player;
        locateLater(player, 12);
        EXPECT_TRUE(FMessenger::getInstance()->hasMessages(nullptr, "Locate"));
    }
    EXPECT_FALSE(FMessenger::getInstance()->hasMessages(nullptr, "Locate"));
    FIdleTimer::runIdleTask();
}

TEST(MessagesExample, ANamedTargetAnswersAtOnce) {
    FMessenger& messenger = *FMessenger::getInstance();
    Player player;
    ASSERT_TRUE(messenger.addTarget("player", &player));
    FMessage message("Locate");
    message.setFloat("seconds", 3);
    EXPECT_EQ(messenger.sendTo("player", &message, FMessenger::HookUse::skip), 1);
    EXPECT_EQ(player.position, 3);
    EXPECT_TRUE(messenger.removeTarget("player"));
}

} // namespace
} // namespace tessera::test
