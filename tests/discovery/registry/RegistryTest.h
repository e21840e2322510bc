// RegistryTest: a temporary folder, and so a registry, for each test, and other processes that share it.
#pragma once

#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/messages/FTaskList.h"
#include "platform/SmallFile.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"
#include "support/ScratchFolder.h"
#include "support/SystemFolders.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tessera::test {

// As the system names programs.
inline const std::string kHelperName = std::filesystem::path(SERVICE_HELPER).filename().string();
inline const std::string kLineEnd{platform::kLineEnding};

class RegistryTest : public testing::Test {
protected:
    using Helper = testing_support::HelperProcess;

    // What stands in the list from another test isn't this one's.
    void SetUp() override { FTaskList::process().runTasks(); }

    std::string folder() const { return genericOf(scratch_ / "Marlgrove/ServiceDiscovery"); }
    // As the registry and URIs spell paths.
    static std::string genericOf(const std::filesystem::path& path) { return path.generic_string(); }
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
    bool hears(std::size_t count, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
        return testing_support::eventually(
            [this, count] {
                FTaskList::process().runTasks();
                return events_.size() >= count;
            },
            limit);
    }

    testing_support::ScratchFolder scratch_;
    testing_support::ScopedTemporaryFolder temporary_{scratch_.path()};
    std::vector<std::string> events_;
};

} // namespace tessera::test
