// HostFile: a path as the guest sees it. The host keeps paths in UTF-8, in the platform's own form.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IUrlFactory.h"

#include <memory>
#include <string>

namespace tessera::host {

class HostFile final : public HostObject<HostFile, UnusedSlots<IUrlFactory>> {
public:
    explicit HostFile(std::shared_ptr<HostCore> core, std::string path = {}, bool isFolder = false);

    const std::string& pathText() const { return path_; }

    void path(char16_t* buffer) override;
    FResult setPath(const char16_t* path, std::int32_t isFolder) override;
    void name(char16_t* buffer) override;
    FResult append(const char16_t* name, std::int32_t isFolder) override;
    FResult makeUnique() override;
    FResult clone(void** out) override;

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<HostCore> core_;
    std::string path_;
    bool isFolder_;
};

} // namespace tessera::host
