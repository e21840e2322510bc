// GuestModule: one module file, found and started through the framework's component registry, with no knowledge of what
// is inside: what the module's classes are is remembered in the host's settings (see FModuleManager), and its class of
// the category "Service" is run by a service manager.
//
// load() gives nothing with a complaint when the file can't be loaded, lacks GetPluginFactory, or offers no service.
// The service's start and stop may follow each other any number of times; the destructor stops what runs. The library
// stays loaded until then. One at a time in a process: the host context is the process's. Main thread.
#pragma once

#include "components/FServiceManager.h"
#include "host/checks/GuestWatch.h"
#include "host/program/Complaint.h"

#include <memory>
#include <string>

namespace tessera::host {

class GuestModule {
public:
    // The context outlives the module.
    static std::unique_ptr<GuestModule> load(std::shared_ptr<GuestWatch> watch, IBaseUnknown* context,
                                             const std::string& path, Complaint* complaint);
    GuestModule(const GuestModule&) = delete;
    GuestModule& operator=(const GuestModule&) = delete;
    ~GuestModule();

    // "Tessera Exchange 1.5.10.6 by ...".
    std::string title() const;
    bool isRunning() const { return services_.getRunningCount() > 0; }
    Complaint start();
    // Afterwards, references that the guest still holds have become misuses in the watch.
    void stop();

private:
    explicit GuestModule(std::shared_ptr<GuestWatch> watch);
    Complaint find(const std::string& path);

    const std::shared_ptr<GuestWatch> watch_;
    const FRefPtr<FComponentRegistry> registry_;
    FServiceManager services_;
    FRefPtr<FModule> module_; // its library used by us
    FRefPtr<FComponentDescription> service_;
    // Of the service that runs, or ran last: what its end does counts as after terminate.
    FRefPtr<IBaseUnknown> object_;
};

} // namespace tessera::host
