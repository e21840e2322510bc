// ExportHost: who wants to know of audio exports. Main thread.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "host/model/Project.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "host/services/AttributeList.h"
#include "shell/hostapi/IExportHost.h"
#include "shell/hostapi/IExportListener.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class ExportHost final : public HostObject<ExportHost, IExportHost> {
public:
    static constexpr std::int32_t kFailed = 0;
    static constexpr std::int32_t kWritten = 1;

    explicit ExportHost(std::shared_ptr<HostCore> core);

    std::size_t listenerCount() const { return listeners_.size(); }
    // Before the file is written. What the listeners want to travel with it comes back.
    std::shared_ptr<AttributeList> prepare(const std::string& path, TimeRange range, Project& project);
    void finish(std::int32_t state);

    FResult addListener(IExportListener* listener) override;
    FResult removeListener(IExportListener* listener) override;

private:
    const std::shared_ptr<HostCore> core_;
    std::vector<FRefPtr<IExportListener>> listeners_;
};

} // namespace tessera::host
