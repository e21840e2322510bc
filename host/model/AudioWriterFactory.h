// AudioWriterFactory: takes down what the guest says of a new sound file, and makes the stream that writes it.
#pragma once

#include "host/audio/WriteStream.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IAudioWriterFactory.h"

#include <memory>
#include <string>

namespace tessera::host {

class AudioWriterFactory final : public HostObject<AudioWriterFactory, UnusedSlots<IAudioWriterFactory>> {
public:
    explicit AudioWriterFactory(std::shared_ptr<HostCore> core);

    void setFile(IHostFile* file) override;
    void setSampleKind(std::int32_t kind) override {
        if (guestMay("setSampleKind")) {
            sampleKind_ = kind;
        }
    }
    void setChannels(std::int32_t channels) override {
        if (guestMay("setChannels")) {
            channels_ = channels;
        }
    }
    void setSampleRate(float framesPerSecond) override {
        if (guestMay("setSampleRate")) {
            sampleRate_ = framesPerSecond;
        }
    }
    void setBitsPerSample(std::int32_t bits) override {
        if (guestMay("setBitsPerSample")) {
            bits_ = bits;
        }
    }
    IAudioStream* create() override;

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<HostCore> core_;
    std::string path_;
    std::int32_t sampleKind_ = 0;
    std::int32_t channels_ = 0;
    std::int32_t bits_ = 0;
    float sampleRate_ = 0;
};

} // namespace tessera::host
