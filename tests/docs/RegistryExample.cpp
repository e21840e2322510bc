#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/messages/FTaskList.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tessera::test {
namespace {

// [registry]
// A peer: says that it is there, and looks out for the module.
class Presence {
public:
    Presence() {
        registry_.start(kPeerServiceName);
        registry_.observe(
            ownServiceId(), [this](const ServiceRecord& record) { moduleProcess = record.processId; },
            [this](const ServiceRecord&) { moduleProcess = 0; });
        registry_.registerService(peerServiceId()); // once the link is open: now the module may bind and send
        try {
            registry_.scan(); // the module may have been there before
        } catch (const std::logic_error&) {
            // Somebody's record is damaged; what stood before it is known.
        }
    }
    ~Presence() {
        registry_.unregisterService(peerServiceId());
        registry_.stopObserving(ownServiceId());
    }

    int moduleProcess = 0;

private:
    ServiceDiscovery registry_;
};
// [registry]

class RegistryExample : public testing::Test {
protected:
    // What another test has left.
    void SetUp() override {
        FTaskList::process().runTasks();
        module_.start(kOwnServiceName);
    }

    static bool hears(const Presence& presence, bool module) {
        return testing_support::eventually([&presence, module] {
            FTaskList::process().runTasks();
            return (presence.moduleProcess != 0) == module;
        });
    }

    // In the module's place, in this process.
    ServiceDiscovery module_;
};

TEST_F(RegistryExample, AModuleThatIsThereIsFound) {
    module_.registerService(ownServiceId());
    const Presence presence;
    EXPECT_GT(presence.moduleProcess, 0);
    module_.unregisterService(ownServiceId());
    EXPECT_TRUE(hears(presence, false));
}

TEST_F(RegistryExample, AModuleThatComesLaterIsHeardOf) {
    const Presence presence;
    EXPECT_EQ(presence.moduleProcess, 0);
    module_.registerService(ownServiceId());
    EXPECT_TRUE(hears(presence, true));
    module_.unregisterService(ownServiceId());
    EXPECT_TRUE(hears(presence, false));
}

} // namespace
} // namespace tessera::test
