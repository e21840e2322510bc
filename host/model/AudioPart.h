// AudioPart: what an event plays, one clip, and at the same time the clip's entry in the pool.
#pragma once

#include "host/model/AudioClip.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IAudioClipFactory.h"
#include "shell/hostapi/IFolderNode.h"

#include <memory>
#include <utility>

namespace tessera::host {

class AudioPart final : public HostObject<AudioPart, IAudioClipFactory, IFolderNode> {
public:
    explicit AudioPart(const std::shared_ptr<HostCore>& core, std::shared_ptr<AudioClip> clip = nullptr)
        : HostObject(core->watch, "AudioPart"), clip_(std::move(clip)) {}

    const std::shared_ptr<AudioClip>& ownClip() const { return clip_; }

    IAudioClip* clip() override { return guestMay("clip") ? clip_.get() : nullptr; }
    bool bind(IAudioClip* clip) override {
        AudioClip* const own = guestMay("bind") ? ownObject<AudioClip>(clip) : nullptr;
        if (own == nullptr || clip_ != nullptr) {
            reportMisuse("bind", "the clip is none of this host's, or the part has one already");
            return false;
        }
        clip_ = own->self();
        return true;
    }

private:
    std::shared_ptr<AudioClip> clip_;
};

} // namespace tessera::host
