#include "persistence/files/FileChangeHub.h"

#include "foundation/messages/FMessage.h"
#include "foundation/messages/FMessenger.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessera {
namespace {

class Listener : public CmObject {
public:
    std::vector<std::string> received;

    std::int32_t receiveMessage(FMessage* message) override {
        received.push_back(message->getName());
        return 0;
    }
    IBaseUnknown* unknown() { return static_cast<IUpdateTarget*>(this); }
};

void sendNotice(const char* name) {
    const auto message = FRefPtr<FMessage>::adopt(new FMessage(name));
    FMessenger::getInstance()->sendTo("FileSystemChange", message.get(), FMessenger::HookUse::call);
}

TEST(FileChangeHub, PassesNoticesToWhoeverJoined) {
    FileChangeHub* hub = FileChangeHub::getInstance(true);
    const auto first = FRefPtr<Listener>::adopt(new Listener);
    const auto second = FRefPtr<Listener>::adopt(new Listener);
    sendNotice("too early");
    hub->join(first->unknown());
    hub->join(second->unknown());
    sendNotice("for both");
    hub->leave(first->unknown());
    sendNotice("for one");
    hub->leave(second->unknown());
    sendNotice("too late");
    EXPECT_EQ(first->received, std::vector<std::string>{"for both"});
    EXPECT_EQ(second->received, (std::vector<std::string>{"for both", "for one"}));
}

TEST(FileChangeHub, HoldsAReferenceUntilTheListenerLeaves) {
    FileChangeHub* hub = FileChangeHub::getInstance(true);
    const auto listener = FRefPtr<Listener>::adopt(new Listener);
    hub->join(listener->unknown());
    EXPECT_EQ(listener->getReferenceCount(), 2u);
    hub->leave(listener->unknown());
    EXPECT_EQ(listener->getReferenceCount(), 1u);
    hub->leave(listener->unknown());
    hub->join(nullptr);
    EXPECT_EQ(listener->getReferenceCount(), 1u);
}

} // namespace
} // namespace tessera
