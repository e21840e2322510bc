// Small doubles of a host's services that keep lists of who joined them, and the look-up of services itself.
#pragma once

#include "shell/hostapi/IAlertHost.h"
#include "shell/hostapi/ICommandHandler.h"
#include "shell/hostapi/ICommandTable.h"
#include "shell/hostapi/IDriverArbiter.h"
#include "shell/hostapi/IDriverClient.h"
#include "shell/hostapi/IExportHost.h"
#include "shell/hostapi/IExportListener.h"
#include "shell/hostapi/IHostServices.h"
#include "shell/hostapi/IIdleClient.h"
#include "shell/hostapi/IObjectObserver.h"
#include "shell/hostapi/IObjectRegistry.h"
#include "shell/hostapi/IObjectTest.h"
#include "shell/hostapi/IProject.h"
#include "shell/hostapi/IProjectListListener.h"
#include "shell/hostapi/ITimeValue.h"
#include "shell/hostapi/UnusedSlots.h"
#include "support/host/FakeObject.h"
#include "support/host/HostScript.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tessera::test {

class FakeServices final : public FakeObject<IHostServices> {
public:
    // Gives one reference.
    using Make = std::function<IBaseUnknown*()>;

    explicit FakeServices(HostScript& script) : script_(script) {}

    // make gives the table of T.
    template <class T>
    void offer(const char* name, std::function<FRefPtr<T>()> make) {
        remove<T>();
        entries_.push_back({T::iid, name, [make] { return static_cast<void*>(make().detach()); }});
    }
    template <class T, class Object>
    void offer(const char* name, const FRefPtr<Object>& object) {
        offer<T>(name, [object] { return FRefPtr<T>(object.get()); });
    }
    template <class T>
    void remove() {
        std::erase_if(entries_, [](const Entry& entry) { return entry.uid == T::iid; });
    }

    FResult queryService(const FUIDBytes& uid, void** out) override {
        *out = nullptr;
        for (const Entry& entry : entries_) {
            if (entry.uid == uid && !script_.fails(entry.name.c_str())) {
                asked.push_back(entry.name);
                *out = entry.make();
                return kResultOk;
            }
        }
        return kNoInterface;
    }

    // The services that were given out, in their order.
    std::vector<std::string> asked;

private:
    struct Entry {
        FUIDBytes uid;
        std::string name;
        std::function<void*()> make;
    };

    HostScript& script_;
    std::vector<Entry> entries_;
};

class FakeProjectList final : public FakeObject<UnusedSlots<IProjectList>> {
public:
    FResult addListener(IProjectListListener* listener) override {
        listeners.push_back(listener);
        if (active != nullptr) {
            listener->activated(active);
        }
        return kResultOk;
    }
    FResult removeListener(IProjectListListener* listener) override {
        return std::erase(listeners, listener) != 0 ? kResultOk : kResultFalse;
    }
    void activate(IProject* project) {
        active = project;
        for (IProjectListListener* listener : std::vector(listeners)) {
            listener->activated(project);
        }
    }
    void deactivate() {
        active = nullptr;
        for (IProjectListListener* listener : std::vector(listeners)) {
            listener->deactivated();
        }
    }
    void deactivate(IProject* project) {
        for (IProjectListListener* listener : std::vector(listeners)) {
            listener->projectDeactivated(project);
        }
    }

    std::vector<IProjectListListener*> listeners;
    IProject* active = nullptr;
};

class FakeObjectRegistry final : public FakeObject<IObjectRegistry> {
public:
    FResult addObserver(IBaseUnknown* object, IObjectObserver* observer) override {
        observers.emplace_back(object, observer);
        return kResultOk;
    }
    FResult removeObserver(IBaseUnknown* object, IObjectObserver* observer) override {
        return std::erase(observers, std::pair(object, observer)) != 0 ? kResultOk : kResultFalse;
    }
    void tell(std::int32_t code) {
        for (const auto& [object, observer] : std::vector(observers)) {
            observer->update(object, code);
        }
    }
    std::vector<std::pair<IBaseUnknown*, IObjectObserver*>> observers;
};

class FakeObjectTest final : public FakeObject<IObjectTest> {
public:
    FResult compare(IBaseUnknown* a, IBaseUnknown* b) override { return identity(a) == identity(b) ? 0 : 1; }

private:
    static IBaseUnknown* identity(IBaseUnknown* object) { return queryFor<IBaseUnknown>(object).get(); }
};

class FakeTimeValue final : public FakeObject<ITimeValue> {
public:
    FResult setValue(double seconds, std::int32_t notify) override {
        values.emplace_back(seconds, notify);
        return kResultOk;
    }
    std::vector<std::pair<double, std::int32_t>> values;
};

class FakeTransport final : public FakeObject<UnusedSlots<ITransport>> {
public:
    void locate(double seconds) override { located.push_back(seconds); }
    IBaseUnknown* parameter(const char* name) override {
        return std::string(name) == "cycleLeftTime"    ? left.get()
               : std::string(name) == "cycleRightTime" ? right.get()
                                                       : nullptr;
    }
    std::vector<double> located;
    FRefPtr<FakeTimeValue> left = makeFake<FakeTimeValue>();
    FRefPtr<FakeTimeValue> right = makeFake<FakeTimeValue>();
};

// Joins with a reference.
class FakeExportHost final : public FakeObject<IExportHost> {
public:
    FResult addListener(IExportListener* listener) override {
        listeners.emplace_back(listener);
        return kResultOk;
    }
    FResult removeListener(IExportListener* listener) override {
        return std::erase(listeners, FRefPtr<IExportListener>(listener)) != 0 ? kResultOk : kResultFalse;
    }
    std::vector<FRefPtr<IExportListener>> listeners;
};

class FakeAlertHost final : public FakeObject<IAlertHost> {
public:
    std::int32_t show(const char16_t* message, const char16_t* button, std::int64_t, std::int64_t) override {
        shown.emplace_back(message, button);
        return 0;
    }
    std::vector<std::pair<std::u16string, std::u16string>> shown;
};

class FakeCommandTable final : public FakeObject<ICommandTable> {
public:
    FResult addCommand(void* moduleHandle, const char* group, const char16_t* name16, std::int64_t unused,
                       const char* category, const char* name) override {
        commands.push_back({moduleHandle, group, name16, unused, category, name});
        return kResultOk;
    }
    FResult removeCommands(void* moduleHandle) override {
        return std::erase_if(commands, [&](const Command& c) { return c.module == moduleHandle; }) != 0 ? kResultOk
                                                                                                        : kResultFalse;
    }
    struct Command {
        void* module;
        std::string group;
        std::u16string name16;
        std::int64_t unused;
        std::string category;
        std::string name;
    };
    std::vector<Command> commands;
};

class FakeCommandTarget final : public FakeObject<UnusedSlots<ICommandTarget>> {
public:
    explicit FakeCommandTarget(HostScript& script) : script_(script) {}

    FResult enableCommand(const char* category, const char* name) override {
        enabled.emplace_back(category, name);
        return kResultOk;
    }
    FResult addHandler(ICommandHandler* handler) override {
        if (script_.fails("commandTarget.addHandler")) {
            return kResultFailure;
        }
        handlers.emplace_back(handler);
        return kResultOk;
    }
    FResult removeHandler(ICommandHandler* handler) override {
        return std::erase(handlers, FRefPtr<ICommandHandler>(handler)) != 0 ? kResultOk : kResultFalse;
    }
    std::vector<std::pair<std::string, std::string>> enabled;
    std::vector<FRefPtr<ICommandHandler>> handlers;

private:
    HostScript& script_;
};

class FakeDriverArbiter final : public FakeObject<IDriverArbiter> {
public:
    FResult addClient(IDriverClient* client) override {
        clients.emplace_back(client);
        return kResultOk;
    }
    FResult removeClient(IDriverClient* client) override {
        return std::erase(clients, FRefPtr<IDriverClient>(client)) != 0 ? kResultOk : kResultFalse;
    }
    std::int32_t requestRelease(IDriverClient* client, const char* text) override {
        requests.emplace_back(client, text);
        return 5;
    }
    std::vector<FRefPtr<IDriverClient>> clients;
    std::vector<std::pair<IDriverClient*, std::string>> requests;
};

// Holds no references, and walks over a copy: the unkindest host that a client has to get along with.
class FakeIdleHost final : public FakeObject<UnusedSlots<IIdleHost>> {
public:
    FResult addClient(IIdleClient* client) override {
        clients.push_back(client);
        return kResultOk;
    }
    FResult removeClient(IIdleClient* client) override {
        return std::erase(clients, client) != 0 ? kResultOk : kResultFalse;
    }
    void idle() {
        for (IIdleClient* client : std::vector(clients)) {
            client->onIdle();
        }
    }
    std::vector<IIdleClient*> clients;
};

} // namespace tessera::test
