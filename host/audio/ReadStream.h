// ReadStream: a sound file as the guest reads it. It opens with open() or with the first operation that needs the file,
// and gives the file back when the guest gives the stream back.
#pragma once

#include "host/audio/FrameShape.h"
#include "host/audio/SoundFileReader.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IAudioStream.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class WriteStream;

class ReadStream final : public HostObject<ReadStream, UnusedSlots<IAudioStream>> {
public:
    ReadStream(std::shared_ptr<HostCore> core, std::string path, const AudioFormat& format, std::int64_t frameCount);

    const AudioFormat& format() const { return format_; }
    std::int64_t dataBytes() const { return frames_ * format_.bytesPerFrame(); }

    bool open() override;
    void attach(IAudioStream* other) override;
    std::int64_t frames() override { return guestMay("frames") ? frames_ : 0; }
    float sampleRate() override { return guestMay("sampleRate") ? static_cast<float>(format_.sampleRate) : 0; }
    std::int32_t bytesPerFrame() override { return guestMay("bytesPerFrame") ? deliveredShape().bytesPerFrame() : 0; }
    std::int32_t bitsPerSample() override { return guestMay("bitsPerSample") ? factsOf(format_.kind).bits : 0; }
    std::int32_t channels() override { return guestMay("channels") ? format_.channels : 0; }
    std::int32_t read(std::int32_t count, void* buffer) override;
    std::int32_t write(std::int32_t count, const void* buffer, bool isLast) override;
    bool seek(std::int64_t frame) override;

private:
    FrameShape ownShape() const { return {format_.kind, format_.channels}; }
    // What the writer at the other end wants, if there is one.
    FrameShape deliveredShape() const;
    bool openFile();
    std::int32_t readConverted(std::int32_t count, void* buffer);
    void onGuestReleased() override { reader_.reset(); }
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<HostCore> core_;
    const std::string path_;
    AudioFormat format_;
    std::int64_t frames_;
    std::unique_ptr<SoundFileReader> reader_;
    std::weak_ptr<WriteStream> target_;
    std::vector<std::uint8_t> unconverted_;
};

} // namespace tessera::host
