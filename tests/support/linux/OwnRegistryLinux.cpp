#include "support/OwnRegistry.h"

#include "support/ScopedEnvironment.h"

namespace tessera::testing_support {

class OwnRegistry::Redirection : public ScopedEnvironment {
public:
    explicit Redirection(const std::filesystem::path& folder) : ScopedEnvironment("XDG_CONFIG_HOME", folder.string()) {}
};

OwnRegistry::OwnRegistry() : redirection_(std::make_unique<Redirection>(folder_.path())) {}

OwnRegistry::~OwnRegistry() = default;

void OwnRegistry::remove() {
    redirection_.reset();
    redirection_ = std::make_unique<Redirection>(folder_.write("file", ""));
}

} // namespace tessera::testing_support
