// HostContext: what a guest gets at initialize: who the host is, where its services are, how a project is opened.
//
// Services are entered by addService before the guest comes: one object for all, or a maker for those of which every
// query gives a new one. A guest keeps the services interface for its whole life.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IHostApplicationInfo.h"
#include "shell/hostapi/IHostServices.h"
#include "shell/hostapi/IProjectOpener.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class HostContext final : public HostObject<HostContext, IHostServices, IHostApplicationInfo, IProjectOpener> {
public:
    // True when the project of that file is open and active.
    using Opener = std::function<bool(const std::string& path)>;

    HostContext(const std::shared_ptr<HostCore>& core, std::string name, std::string version, Opener opener);

    bool mayOutliveGuest() const override { return true; }

    template <class Interface, class Object>
    void addService(std::shared_ptr<Object> object) {
        services_.push_back(
            {Interface::iid, [object](const FUIDBytes& uid, void** out) { return object->queryInterface(uid, out); }});
    }
    template <class Interface, class Maker>
    void addMaker(Maker make) {
        services_.push_back(
            {Interface::iid, [make](const FUIDBytes& uid, void** out) { return make()->queryInterface(uid, out); }});
    }
    // For tests of guests that meet a poorer host.
    void removeService(const FUIDBytes& uid);

    FResult queryService(const FUIDBytes& uid, void** out) override;
    const char* name() override { return guestMay("name") ? name_.c_str() : ""; }
    const char* version() override { return guestMay("version") ? version_.c_str() : ""; }
    FResult open(IHostFile* file, std::int64_t unused) override;

private:
    struct Service {
        FUIDBytes uid;
        std::function<FResult(const FUIDBytes&, void**)> query;
    };

    const std::string name_;
    const std::string version_;
    const Opener opener_;
    std::vector<Service> services_;
};

} // namespace tessera::host
