#include "host/services/ExportHost.h"

#include "host/model/HostFile.h"
#include "host/objects/GuestCall.h"

#include <utility>

namespace tessera::host {

ExportHost::ExportHost(std::shared_ptr<HostCore> core)
    : HostObject(core->watch, "ExportHost"), core_(std::move(core)) {}

std::shared_ptr<AttributeList> ExportHost::prepare(const std::string& path, TimeRange range, Project& project) {
    auto attributes = std::make_shared<AttributeList>(core_);
    const auto file = std::make_shared<HostFile>(core_, path);
    const std::vector<FRefPtr<IExportListener>> told = listeners_;
    for (const auto& listener : told) {
        callGuest(*watch(), "IExportListener.prepareExport", [&] {
            listener->prepareExport(file.get(), range.start, range.end - range.start, &project, attributes.get());
        });
    }
    return attributes;
}

void ExportHost::finish(std::int32_t state) {
    const std::vector<FRefPtr<IExportListener>> told = listeners_;
    for (const auto& listener : told) {
        callGuest(*watch(), "IExportListener.exportFinished", [&] { listener->exportFinished(state); });
    }
}

FResult ExportHost::addListener(IExportListener* listener) {
    if (!guestMay("addListener") || listener == nullptr) {
        return kInvalidArgument;
    }
    listeners_.emplace_back(listener);
    return kResultOk;
}

FResult ExportHost::removeListener(IExportListener* listener) {
    const bool removed = guestMayLate("removeListener") &&
                         std::erase_if(listeners_, [&](const auto& held) { return held.get() == listener; }) > 0;
    return removed ? kResultOk : kResultFalse;
}

} // namespace tessera::host
