// GuestModule: one module file, loaded as any host loads it: by its exported functions, slots and identifiers, with no
// knowledge of what is inside.
//
// load() gives nothing with a complaint when the file can't be loaded, lacks GetPluginFactory, or offers no service.
// The object's start and stop may follow each other any number of times; the destructor stops what runs. Main thread.
#pragma once

#include "host/checks/GuestWatch.h"
#include "host/program/Complaint.h"
#include "platform/DynamicLibrary.h"
#include "shell/hostapi/IModuleFactory.h"
#include "shell/hostapi/IPlugin.h"

#include <memory>
#include <optional>
#include <string>

namespace tessera::host {

class GuestModule {
public:
    static std::unique_ptr<GuestModule> load(std::shared_ptr<GuestWatch> watch, const std::string& path,
                                             Complaint* complaint);
    GuestModule(const GuestModule&) = delete;
    GuestModule& operator=(const GuestModule&) = delete;
    ~GuestModule();

    // "Tessera Exchange 1.5.10.6 by ...".
    const std::string& title() const { return title_; }
    bool isRunning() const { return isRunning_; }
    Complaint start(IBaseUnknown* context);
    // Afterwards, references that the guest still holds have become misuses in the watch.
    void stop();

private:
    GuestModule(std::shared_ptr<GuestWatch> watch, platform::DynamicLibrary library);
    Complaint findService();
    void describe(int index);

    const std::shared_ptr<GuestWatch> watch_;
    platform::DynamicLibrary library_;
    IModuleFactory* factory_ = nullptr; // one reference of ours, as of the next
    IPlugin* plugin_ = nullptr;
    std::string title_;
    bool isRunning_ = false;
};

} // namespace tessera::host
