// WriteStream: a sound file as the guest writes it.
//
// The name is reserved by an empty file as soon as the stream exists, so that nobody else finds it free. The format is
// settled at the first frame: until then a source that attaches may tell more of it than the guest can say with
// numbers, such as whether 32 bits are integers. The file is complete when the guest's last reference goes, or sooner
// when somebody is about to read it; frames that come after that are refused. When frames can't be written, for lack of
// space or because the kind of file ends there, be it at completion, the file is emptied: half a sound must not pass
// for a whole one.
#pragma once

#include "host/audio/FrameShape.h"
#include "host/audio/SoundFileWriter.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IAudioStream.h"

#include <memory>
#include <string>

namespace tessera::host {

class ReadStream;

class WriteStream final : public HostObject<WriteStream, UnusedSlots<IAudioStream>> {
public:
    // Null when no such file can be written, or one of that name exists.
    static std::shared_ptr<WriteStream> create(std::shared_ptr<HostCore> core, const std::string& path,
                                               const AudioFormat& wanted);
    WriteStream(std::shared_ptr<HostCore> core, std::string path, const AudioFormat& wanted);
    ~WriteStream() override { complete(); }

    FrameShape shape() const { return {wanted_.kind, wanted_.channels}; }
    void noteSource(ReadStream& source);
    void complete();

    bool open() override;
    void attach(IAudioStream* other) override;
    std::int64_t frames() override { return guestMay("frames") && writer_ != nullptr ? writer_->frames() : 0; }
    float sampleRate() override { return guestMay("sampleRate") ? static_cast<float>(wanted_.sampleRate) : 0; }
    std::int32_t bytesPerFrame() override { return guestMay("bytesPerFrame") ? shape().bytesPerFrame() : 0; }
    std::int32_t bitsPerSample() override { return guestMay("bitsPerSample") ? factsOf(wanted_.kind).bits : 0; }
    std::int32_t channels() override { return guestMay("channels") ? wanted_.channels : 0; }
    std::int32_t read(std::int32_t count, void* buffer) override;
    std::int32_t write(std::int32_t count, const void* buffer, bool isLast) override;
    bool seek(std::int64_t frame) override;

private:
    enum class Life { reserved, writing, complete, failed };

    bool begin();
    void giveUp();
    void onGuestReleased() override { complete(); }
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<HostCore> core_;
    const std::string path_;
    AudioFormat wanted_;
    bool sourceKnown_ = false;
    std::int64_t sourceBytes_ = 0;
    Life life_ = Life::reserved;
    std::unique_ptr<SoundFileWriter> writer_;
};

} // namespace tessera::host
