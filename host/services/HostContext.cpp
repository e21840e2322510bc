#include "host/services/HostContext.h"

#include "host/model/HostFile.h"

#include <utility>

namespace tessera::host {

HostContext::HostContext(const std::shared_ptr<HostCore>& core, std::string name, std::string version, Opener opener)
    : HostObject(core->watch, "HostContext"),
      name_(std::move(name)),
      version_(std::move(version)),
      opener_(std::move(opener)) {}

void HostContext::removeService(const FUIDBytes& uid) {
    std::erase_if(services_, [&](const Service& service) { return service.uid == uid; });
}

FResult HostContext::queryService(const FUIDBytes& uid, void** out) {
    if (out == nullptr) {
        reportMisuse("queryService", "the out pointer is null");
        return kInvalidArgument;
    }
    *out = nullptr;
    if (!guestMay("queryService")) {
        return kResultFailure;
    }
    for (const Service& service : services_) {
        if (service.uid == uid) {
            return service.query(uid, out);
        }
    }
    return kNoInterface;
}

FResult HostContext::open(IHostFile* file, std::int64_t) {
    const HostFile* const own = guestMay("open") ? ownObject<HostFile>(file) : nullptr;
    if (own == nullptr) {
        return kInvalidArgument;
    }
    return opener_ && opener_(own->pathText()) ? kResultOk : kResultFailure;
}

} // namespace tessera::host
