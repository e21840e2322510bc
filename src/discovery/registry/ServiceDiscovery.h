// ServiceDiscovery: lets the processes of one user find each other without a broker.
//
// Each service leaves a small file in the folder "Marlgrove/ServiceDiscovery" of the temporary folder (ServiceRecord
// has the format) and signals the named event that bears its own name when it comes and when it goes. An observer
// listens to the event of the service that it waits for. A signal has no content: it says that the service has come
// when it isn't known, and that it has gone when it is. A process that dies signals nothing and leaves its file; its
// end is noticed by watching the process, and the file is taken for stale because no process of that id and name lives.
//
// Main thread only: the records and observers have no lock. The listener's thread and the platform's do no more than
// post to the list of small tasks, which the idle task runs. A callback may call any operation of this class.
//
// Failures are silent, with one exception, deliberately left: a record file whose second line is no number raises
// std::invalid_argument or std::out_of_range, out of scan, out of the tests of a path, and out of the task that follows
// a signal. Whoever must not let an exception out of those has to catch it.
#pragma once

#include "discovery/registry/ProcessExitWatcher.h"
#include "discovery/registry/ServiceId.h"
#include "discovery/registry/ServiceObserver.h"
#include "discovery/registry/ServiceRecord.h"
#include "discovery/registry/TriggerListener.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera {

class ServiceDiscovery {
public:
    // The process's own, made at first use.
    static ServiceDiscovery& getInstance();

    ServiceDiscovery();
    ServiceDiscovery(const ServiceDiscovery&) = delete;
    ServiceDiscovery& operator=(const ServiceDiscovery&) = delete;
    ~ServiceDiscovery();

    // First of all, with the name under which this process offers its service: it doesn't discover that one.
    void start(const std::string& name);
    // A new one takes over the one listener there is. Without a named event there is no listener, and scan remains.
    void observe(const ServiceId& id, ServiceCallback onAvailable, ServiceCallback onUnavailable);
    // Ends the listener, whoever it is for.
    void stopObserving(const ServiceId& id);
    // Writes this process's record and tells the others. Own observers of this very service are told as well.
    void registerService(const ServiceId& id);
    // Takes it back. A service that isn't known here is left alone.
    void unregisterService(const ServiceId& id);
    // Takes in all live services of the folder, one that is known once more: so whoever starts anew is told of a peer
    // that has been there all the time. When that goes, observers are told as often as it was taken in.
    void scan();
    void stop() {}

    // The same as scan.
    void refresh() { scan(); }
    bool isKnown(const std::string& name) const;
    // Whether the path holds a live record of a service of ours. One that names no process counts as alive, and so does
    // a file that can't be read.
    bool isLiveRecord(const std::string& path) const;
    void removeByPath(const std::string& path);
    void removeByProcessId(int processId);
    // Has serviceChanged called by the list of small tasks. From any thread.
    void postServiceChanged(const std::string& name);
    // What follows a signal: the service has come if it isn't known, else it has gone.
    void serviceChanged(const std::string& name);

    const std::string& folder() const { return folder_; }
    const std::vector<ServiceRecord>& records() const { return records_; }
    const std::vector<ServiceObserver>& observers() const { return observers_; }

private:
    struct Anchor;

    std::string pathOf(const std::string& name) const;
    void serviceAppeared(const std::string& path);
    // A record that is alive.
    void takeIn(ServiceRecord record);
    template <class Predicate>
    void removeRecords(Predicate goes);
    void tell(const ServiceRecord& record, ServiceCallback ServiceObserver::*callback);

    std::vector<ServiceRecord> records_;
    std::vector<ServiceObserver> observers_;
    std::string folder_;
    std::string ownName_;
    std::unique_ptr<TriggerListener> trigger_;
    std::shared_ptr<ProcessExitWatcher> exitWatcher_;
    // What tasks in the list hold on to weakly: a task that comes after this object's end does nothing.
    std::shared_ptr<Anchor> anchor_;
};

} // namespace tessera
