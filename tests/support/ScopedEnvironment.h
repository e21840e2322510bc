// ScopedEnvironment: sets a variable of the environment and puts back what was there at the end of the scope, so that a
// failing assertion leaves nothing behind for the next test. Not for use while other threads read the environment.
#pragma once

#include "support/Environment.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace tessera::testing_support {

class ScopedEnvironment {
public:
    ScopedEnvironment(std::string name, const std::string& value) : name_(std::move(name)) {
        if (const char* before = std::getenv(name_.c_str()); before != nullptr) {
            before_ = before;
        }
        setVariable(name_, value);
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ~ScopedEnvironment() {
        if (before_) {
            setVariable(name_, *before_);
        } else {
            unsetVariable(name_);
        }
    }

private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace tessera::testing_support
