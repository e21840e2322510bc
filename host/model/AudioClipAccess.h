// AudioClipAccess: makes a clip of a file for the guest. Asked for IAudioClip it gives the clip itself, an object of
// its own, once a bind has worked.
#pragma once

#include "host/model/AudioClip.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObjectBase.h"
#include "shell/hostapi/IAudioClipAccess.h"

#include <memory>

namespace tessera::host {

class AudioClipAccess final : public HostObjectBase, public IAudioClipAccess {
public:
    explicit AudioClipAccess(std::shared_ptr<HostCore> core);

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override { return takeReference(); }
    std::uint32_t release() override { return giveReference(); }
    bool bind(IHostFile* file) override;
    bool failed() override { return clip_ == nullptr; }

private:
    const std::shared_ptr<HostCore> core_;
    std::shared_ptr<AudioClip> clip_;
};

} // namespace tessera::host
