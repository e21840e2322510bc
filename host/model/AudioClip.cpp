#include "host/model/AudioClip.h"

#include "host/audio/SoundFileReader.h"

#include <utility>

namespace tessera::host {

std::shared_ptr<AudioClip> AudioClip::open(const std::shared_ptr<HostCore>& core, const std::string& path,
                                           std::string* error) {
    core->writers.finish(path);
    const std::unique_ptr<SoundFileReader> reader = SoundFileReader::open(path, error);
    if (reader == nullptr) {
        return nullptr;
    }
    return std::make_shared<AudioClip>(core, path, reader->format(), reader->frames());
}

AudioClip::AudioClip(std::shared_ptr<HostCore> core, const std::string& path, const AudioFormat& format,
                     std::int64_t frameCount)
    : HostObject(core->watch, "AudioClip"),
      core_(core),
      file_(std::make_shared<HostFile>(core, path)),
      format_(format),
      frames_(frameCount) {}

IAudioStream* AudioClip::stream() {
    if (!guestMay("stream")) {
        return nullptr;
    }
    lastStream_ = std::make_shared<ReadStream>(core_, path(), format_, frames_);
    return lastStream_.get();
}

} // namespace tessera::host
