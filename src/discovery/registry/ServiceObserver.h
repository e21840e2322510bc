// ServiceObserver: who wants to know of a service's coming and going.
#pragma once

#include "discovery/registry/ServiceId.h"
#include "discovery/registry/ServiceRecord.h"

#include <functional>

namespace tessera {

using ServiceCallback = std::function<void(const ServiceRecord&)>;

struct ServiceObserver {
    bool matches(const ServiceRecord& record) const { return record.name == name && record.type == type; }

    std::string name;
    std::string type;
    ServiceCallback onAvailable;
    ServiceCallback onUnavailable;
};

} // namespace tessera
