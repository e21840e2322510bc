// AudioClip: one sound file of the pool, with the facts that were read from it when the clip was made.
#pragma once

#include "host/audio/AudioFormat.h"
#include "host/audio/ReadStream.h"
#include "host/model/HostFile.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IAudioClip.h"

#include <memory>
#include <string>

namespace tessera::host {

class AudioClip final : public HostObject<AudioClip, UnusedSlots<IAudioClip>> {
public:
    // Nothing, with a reason in *error, when the file can't be read as audio.
    static std::shared_ptr<AudioClip> open(const std::shared_ptr<HostCore>& core, const std::string& path,
                                           std::string* error);
    AudioClip(std::shared_ptr<HostCore> core, const std::string& path, const AudioFormat& format,
              std::int64_t frameCount);

    const std::string& path() const { return file_->pathText(); }
    const AudioFormat& format() const { return format_; }
    std::int64_t frameCount() const { return frames_; }
    double seconds() const { return static_cast<double>(frames_) / format_.sampleRate; }

    IHostFile* file() override { return guestMay("file") ? file_.get() : nullptr; }
    std::int32_t channels() override { return guestMay("channels") ? format_.channels : 0; }
    float sampleRate() override { return guestMay("sampleRate") ? static_cast<float>(format_.sampleRate) : 0; }
    std::int64_t frames() override { return guestMay("frames") ? frames_ : 0; }
    std::int32_t bitsPerSample() override { return guestMay("bitsPerSample") ? factsOf(format_.kind).bits : 0; }
    IAudioStream* stream() override;

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<HostCore> core_;
    const std::shared_ptr<HostFile> file_;
    const AudioFormat format_;
    const std::int64_t frames_;
    std::shared_ptr<ReadStream> lastStream_; // lent to the guest until it asks again
};

} // namespace tessera::host
