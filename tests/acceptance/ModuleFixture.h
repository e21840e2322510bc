// ModuleFixture: the reference host with the built module in it, loaded from its file and spoken to in slots.
#pragma once

#include "common/Utf8Path.h"
#include "host/program/Application.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace tessera::acceptance {

class ModuleFixture : public ::testing::Test {
protected:
    // Every reference that the module took has to come back, and it must have kept to the rules.
    void TearDown() override {
        if (host_ != nullptr) {
            closeHost();
        }
    }

    void closeHost() {
        const std::shared_ptr<host::HostCore> core = host_->core();
        host_.reset();
        EXPECT_EQ(core->watch->misuses(), std::vector<std::string>{});
    }

    host::Application& host() {
        if (host_ == nullptr) {
            host_ = makeHost();
        }
        return *host_;
    }

    std::unique_ptr<host::Application> makeHost(const std::string& name = "Harrow Max",
                                                const std::string& version = "9.0.20") {
        host::ApplicationSettings settings;
        settings.name = name;
        settings.version = version;
        settings.out = &output_;
        return std::make_unique<host::Application>(settings);
    }

    void startModule() { ASSERT_EQ(host().loadModule(TESX_MODULE_FILE), ""); }

    // The main loop, until the condition holds.
    bool runUntil(const std::function<bool()>& condition) { return host().run(20, condition); }

    std::string path(const std::string& name) const { return programs::utf8Text(folder_ / name); }
    std::string output() const { return output_.str(); }
    std::shared_ptr<host::Event> event(int number) { return host().project()->eventByNumber(number); }

    const testing_support::ScratchFolder folder_;

private:
    std::ostringstream output_;
    std::unique_ptr<host::Application> host_;
};

} // namespace tessera::acceptance
