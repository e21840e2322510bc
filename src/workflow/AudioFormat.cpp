#include "workflow/AudioFormat.h"

#include "shell/hostapi/IAudioClip.h"
#include "shell/hostapi/IAudioStream.h"
#include "shell/hostapi/IAudioWriterFactory.h"
#include "workflow/HostServices.h"

namespace tessera {

namespace {

// The host assumes integers for every other width.
void setSampleKind(IAudioWriterFactory& factory, std::int32_t bitsPerSample) {
    if (bitsPerSample == 32) {
        factory.setSampleKind(2);
    } else if (bitsPerSample == 8) {
        factory.setSampleKind(0);
    }
}

} // namespace

AudioFormat AudioFormat::of(IAudioStream& stream, IHostFile* target) {
    return {FRefPtr<IHostFile>(target), stream.channels(), stream.sampleRate(), stream.bitsPerSample()};
}

AudioFormat AudioFormat::of(IAudioClip& clip, IHostFile* target) {
    return {FRefPtr<IHostFile>(target), clip.channels(), clip.sampleRate(), clip.bitsPerSample()};
}

FRefPtr<IAudioStream> AudioFormat::createWriter(IHostServices* services) const {
    const auto factory = queryService<IAudioWriterFactory>(services);
    if (!factory) {
        return {};
    }
    factory->setSampleRate(sampleRate);
    factory->setFile(file.get());
    factory->setBitsPerSample(bitsPerSample);
    factory->setChannels(channels);
    setSampleKind(*factory, bitsPerSample);
    auto writer = FRefPtr<IAudioStream>::adopt(factory->create());
    return writer && writer->open() ? writer : FRefPtr<IAudioStream>();
}

} // namespace tessera
