#include "discovery/registry/ServiceDiscovery.h"

#include "discovery/uri/FileSystemFacade.h"
#include "foundation/messages/FTaskList.h"
#include "platform/Processes.h"

#include <algorithm>
#include <utility>

namespace tessera {

namespace {

constexpr std::string_view kOurNames = "com.marlgrove.";
constexpr const char* kRegistryFolders[] = {"Marlgrove", "ServiceDiscovery"};

constexpr const char* kRegistered = "Bonjorno service %s registered \n";
constexpr const char* kUnregistered = "Bonjorno service %s unregistered \n";
constexpr const char* kAvailable = "Bonjorno service %s available \n";
constexpr const char* kUnavailable = "Bonjorno service %s unavailable \n";

// The place for whoever wants to see the registry at work; it prints nothing.
void trace(const char*, const std::string&) {}

bool isOurName(std::string_view name) {
    return name.starts_with(kOurNames);
}

// A process announces on the event named after its own service.
void announce(const std::string& name) {
    if (const FRefPtr<IIPCSemaphore> event = createServiceEvent(name)) {
        event->signal();
    }
}

} // namespace

struct ServiceDiscovery::Anchor {
    ServiceDiscovery* owner;
};

ServiceDiscovery& ServiceDiscovery::getInstance() {
    // Never destroyed: the listener may be waiting while the process goes down.
    static auto& process = *new ServiceDiscovery;
    return process;
}

ServiceDiscovery::ServiceDiscovery() : anchor_(std::make_shared<Anchor>(Anchor{this})) {}

ServiceDiscovery::~ServiceDiscovery() = default;

void ServiceDiscovery::start(const std::string& name) {
    ownName_ = name;
    folder_.clear();
    if (const Result<Uri> temporary = fileSystem().temporaryDirectory()) {
        Uri folder = temporary.value();
        for (const char* component : kRegistryFolders) {
            folder = folder.child(component);
        }
        folder_ = folder.path;
        const Result<EntryStatus> status = fileSystem().status(folder);
        if (!status || !status.value().exists()) {
            static_cast<void>(fileSystem().createDirectories(folder));
        }
    }
    exitWatcher_ = std::make_shared<ProcessExitWatcher>();
}

void ServiceDiscovery::observe(const ServiceId& id, ServiceCallback onAvailable, ServiceCallback onUnavailable) {
    observers_.push_back({id.name, id.type, std::move(onAvailable), std::move(onUnavailable)});
    // The old one ends before the new one listens, or it could take a signal that is meant for both.
    trigger_.reset();
    trigger_ = std::make_unique<TriggerListener>();
    trigger_->listen(id.name, [anchor = std::weak_ptr<Anchor>(anchor_)](const std::string& name) {
        FTaskList::process().post([anchor, name] {
            if (const auto held = anchor.lock()) {
                held->owner->serviceChanged(name);
            }
        });
    });
}

void ServiceDiscovery::stopObserving(const ServiceId& id) {
    if (trigger_) {
        trigger_->stopListening();
    }
    std::erase_if(observers_, [&id](const ServiceObserver& observer) {
        return observer.name == id.name && observer.type == id.type;
    });
}

void ServiceDiscovery::registerService(const ServiceId& id) {
    ServiceRecord record;
    record.path = pathOf(id.name);
    record.name = id.name;
    record.type = id.type;
    record.processId = platform::ownProcessId();
    record.processName = platform::ownBaseName();
    if (!folder_.empty()) {
        record.writeFile();
    }
    records_.push_back(record);
    tell(record, &ServiceObserver::onAvailable);
    announce(record.name);
    trace(kRegistered, record.name);
}

void ServiceDiscovery::unregisterService(const ServiceId& id) {
    const auto isIts = [&id](const ServiceRecord& record) { return record.name == id.name && record.type == id.type; };
    std::vector<ServiceRecord> going;
    std::copy_if(records_.begin(), records_.end(), std::back_inserter(going), isIts);
    for (const ServiceRecord& record : going) {
        tell(record, &ServiceObserver::onUnavailable);
        if (!folder_.empty()) {
            static_cast<void>(fileSystem().remove(Uri::fromPath(record.path)));
        }
        announce(record.name);
        trace(kUnregistered, record.name);
    }
    std::erase_if(records_, isIts);
}

void ServiceDiscovery::scan() {
    const auto look = [this](const Uri& entry) {
        ServiceRecord record = ServiceRecord::forPath(entry.path);
        if (isOurName(record.name)) {
            record.readFile();
            if (record.isAlive()) {
                takeIn(std::move(record));
            }
        }
        return true;
    };
    if (!folder_.empty()) {
        static_cast<void>(fileSystem().walk(Uri::fromPath(folder_), look, kWalkFolderAlone));
    }
}

bool ServiceDiscovery::isKnown(const std::string& name) const {
    return std::any_of(records_.begin(), records_.end(), [&name](const ServiceRecord& record) {
        return record.name == name && record.type == kLinkServiceType;
    });
}

bool ServiceDiscovery::isLiveRecord(const std::string& path) const {
    ServiceRecord record = ServiceRecord::forPath(path);
    if (!isOurName(record.name)) {
        return false;
    }
    record.readFile();
    return record.isAlive();
}

void ServiceDiscovery::removeByPath(const std::string& path) {
    removeRecords([&path](const ServiceRecord& record) { return record.path == path; });
}

void ServiceDiscovery::removeByProcessId(int processId) {
    removeRecords([processId](const ServiceRecord& record) { return record.processId == processId; });
}

void ServiceDiscovery::postServiceChanged(const std::string& name) {
    FTaskList::process().post([anchor = std::weak_ptr<Anchor>(anchor_), name] {
        if (const auto held = anchor.lock()) {
            held->owner->serviceChanged(name);
        }
    });
}

void ServiceDiscovery::serviceChanged(const std::string& name) {
    if (!isKnown(name)) {
        serviceAppeared(pathOf(name));
    } else if (name != ownName_) {
        removeByPath(pathOf(name));
    }
}

std::string ServiceDiscovery::pathOf(const std::string& name) const {
    return folder_ + "/" + name;
}

void ServiceDiscovery::serviceAppeared(const std::string& path) {
    ServiceRecord record = ServiceRecord::forPath(path);
    if (record.name == ownName_) {
        return;
    }
    record.readFile();
    // The file of a dead process stays: it is its service's to overwrite, and nobody else's to delete.
    if (record.isAlive()) {
        takeIn(std::move(record));
    }
}

void ServiceDiscovery::takeIn(ServiceRecord record) {
    if (record.name == ownName_) {
        return;
    }
    // Services of one process need one watch: its end takes them all.
    if (exitWatcher_ && exitWatcher_->processId() != record.processId) {
        exitWatcher_->watch(record.processId, [anchor = std::weak_ptr<Anchor>(anchor_)](int processId) {
            if (const auto held = anchor.lock()) {
                held->owner->removeByProcessId(processId);
            }
        });
    }
    trace(kAvailable, record.name);
    // A process whose file another one has overwritten is gone. What is still to come of its end must not be taken for
    // the going of this one.
    std::erase_if(records_, [&record](const ServiceRecord& known) {
        return known.path == record.path && known.processId != record.processId;
    });
    records_.push_back(record);
    tell(record, &ServiceObserver::onAvailable);
}

template <class Predicate>
void ServiceDiscovery::removeRecords(Predicate goes) {
    std::vector<ServiceRecord> going;
    std::copy_if(records_.begin(), records_.end(), std::back_inserter(going), goes);
    for (const ServiceRecord& record : going) {
        trace(kUnavailable, record.name);
        tell(record, &ServiceObserver::onUnavailable);
        if (exitWatcher_) {
            exitWatcher_->stop();
        }
    }
    std::erase_if(records_, goes);
}

void ServiceDiscovery::tell(const ServiceRecord& record, ServiceCallback ServiceObserver::*callback) {
    // Over a copy: a callback may observe, or stop observing.
    const std::vector<ServiceObserver> observers = observers_;
    for (const ServiceObserver& observer : observers) {
        if (observer.matches(record) && observer.*callback) {
            (observer.*callback)(record);
        }
    }
}

} // namespace tessera
