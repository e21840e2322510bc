// AudioPool: the clips that belong to a project, whether an event plays them or not.
#pragma once

#include "host/model/AudioPart.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IPool.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace tessera::host {

class AudioPool final : public HostObject<AudioPool, UnusedSlots<IPool>> {
public:
    explicit AudioPool(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "AudioPool") {}

    const std::vector<std::shared_ptr<AudioPart>>& parts() const { return parts_; }
    void addPart(std::shared_ptr<AudioPart> part) {
        if (std::find(parts_.begin(), parts_.end(), part) == parts_.end()) {
            parts_.push_back(std::move(part));
        }
    }

    // The part whose clip is that file, or null. A file that was replaced meanwhile counts as another.
    std::shared_ptr<AudioPart> find(const AudioClip& clip) const {
        const auto found = std::find_if(parts_.begin(), parts_.end(), [&](const auto& part) {
            return part->ownClip()->path() == clip.path() && part->ownClip()->frameCount() == clip.frameCount() &&
                   part->ownClip()->format() == clip.format();
        });
        return found == parts_.end() ? nullptr : *found;
    }

    FResult add(IFolderNode* node, std::int64_t) override {
        AudioPart* const part = guestMay("add") ? ownObject<AudioPart>(node) : nullptr;
        if (part == nullptr || part->ownClip() == nullptr) {
            return kInvalidArgument;
        }
        addPart(part->self());
        return kResultOk;
    }

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    std::vector<std::shared_ptr<AudioPart>> parts_;
};

} // namespace tessera::host
