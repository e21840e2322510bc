// FakeContext: what a host gives to initialize: who it is, and its services.
#pragma once

#include "shell/hostapi/IHostApplicationInfo.h"
#include "support/host/FakeServices.h"

#include <string>

namespace tessera::test {

class FakeContext final : public FakeObject<IHostApplicationInfo> {
public:
    FakeContext(std::string name, std::string version, FakeServices* services)
        : name_(std::move(name)), version_(std::move(version)), services_(services) {}

    const char* name() override { return name_.c_str(); }
    const char* version() override { return version_.c_str(); }
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (uid == IHostServices::iid && services_) {
            return services_->queryInterface(uid, out);
        }
        if (uid == IHostApplicationInfo::iid && anonymous) {
            *out = nullptr;
            return kNoInterface;
        }
        return FakeObject::queryInterface(uid, out);
    }

    // Doesn't tell who it is.
    bool anonymous = false;

private:
    std::string name_;
    std::string version_;
    FRefPtr<FakeServices> services_;
};

} // namespace tessera::test
