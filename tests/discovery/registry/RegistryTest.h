// RegistryTest: a temporary folder, and so a registry, for each test, and other processes that share it.
#pragma once

#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/messages/FTaskList.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"
#include "support/ScopedEnvironment.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tessera::test {

inline const std::string kHelperName = "service_helper";

class RegistryTest : public testing::Test {
protected:
    using Helper = testing_support::HelperProcess;

    // What stands in the list from another test isn't this one's.
    void SetUp() override { FTaskList::process().runTasks(); }

    std::string folder() const { return (scratch_ / "Marlgrove/ServiceDiscovery").string(); }
    std::string pathOf(const std::string& name) const { return folder() + "/" + name; }
    void writeRecord(const std::string& name, const std::string& text) {
        scratch_.write("Marlgrove/ServiceDiscovery/" + name, text);
    }
    std::string readRecord(const std::string& name) const {
        return scratch_.read("Marlgrove/ServiceDiscovery/" + name);
    }
    bool hasRecord(const std::string& name) const { return scratch_.has("Marlgrove/ServiceDiscovery/" + name); }

    // A process that has started its registry under the name.
    std::unique_ptr<Helper> startHelper(const std::string& ownName) {
        auto helper = std::make_unique<Helper>(SERVICE_HELPER, std::vector<std::string>{ownName});
        EXPECT_EQ(helper->hear(), "ready");
        return helper;
    }

    void observe(ServiceDiscovery& registry, const ServiceId& id) {
        registry.observe(
            id, [this](const ServiceRecord& record) { events_.push_back("available " + record.name); },
            [this](const ServiceRecord& record) { events_.push_back("unavailable " + record.name); });
    }

    // Runs the idle task until so many events have come.
    bool hears(std::size_t count) {
        return testing_support::eventually([this, count] {
            FTaskList::process().runTasks();
            return events_.size() >= count;
        });
    }

    testing_support::ScratchFolder scratch_;
    testing_support::ScopedEnvironment temporary_{"TMPDIR", scratch_.path().string()};
    std::vector<std::string> events_;
};

} // namespace tessera::test
