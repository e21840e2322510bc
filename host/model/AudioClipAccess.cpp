#include "host/model/AudioClipAccess.h"

#include "host/objects/OwnObject.h"

#include <utility>

namespace tessera::host {

AudioClipAccess::AudioClipAccess(std::shared_ptr<HostCore> core)
    : HostObjectBase(core->watch, "AudioClipAccess"), core_(std::move(core)) {}

FResult AudioClipAccess::queryInterface(const FUIDBytes& uid, void** out) {
    if (out == nullptr) {
        return kInvalidArgument;
    }
    *out = nullptr;
    if (uid == IAudioClip::iid && clip_ != nullptr) {
        return clip_->queryInterface(uid, out);
    }
    if (uid == IAudioClipAccess::iid || uid == IBaseUnknown::iid) {
        *out = static_cast<IAudioClipAccess*>(this);
        takeReference();
        return kResultOk;
    }
    return kNoInterface;
}

bool AudioClipAccess::bind(IHostFile* file) {
    if (!guestMay("bind")) {
        return false;
    }
    const HostFile* const own = ownObject<HostFile>(file);
    if (own == nullptr) {
        reportMisuse("bind", "the file is no file object of this host");
        return false;
    }
    std::string error;
    clip_ = AudioClip::open(core_, own->pathText(), &error);
    if (clip_ == nullptr) {
        core_->note("warning: " + error);
    }
    return clip_ != nullptr;
}

} // namespace tessera::host
