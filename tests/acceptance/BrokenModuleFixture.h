// BrokenModuleFixture: the reference host, and a module that is broken on purpose.
#pragma once

#include "host/program/Application.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace tessera::acceptance {

class BrokenModuleFixture : public ::testing::Test {
protected:
    static std::string fileOf(const std::string& defect) { return TESX_BROKEN_FOLDER "/broken_" + defect + ".shlb"; }

    host::Complaint load(const std::string& defect) {
        host::ApplicationSettings settings;
        settings.out = &output_;
        host_ = std::make_unique<host::Application>(settings);
        return host_->loadModule(fileOf(defect));
    }
    host::Application& host() { return *host_; }
    // Takes the host down, and gives what it had to say about its guest until then.
    std::vector<std::string> misusesToTheEnd() {
        const std::shared_ptr<host::HostCore> core = host_->core();
        host_.reset();
        return core->watch->misuses();
    }

    using Lines = std::vector<std::string>;

private:
    std::ostringstream output_;
    std::unique_ptr<host::Application> host_;
};

} // namespace tessera::acceptance
