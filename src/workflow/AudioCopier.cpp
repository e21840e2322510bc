#include "workflow/AudioCopier.h"

#include "shell/hostapi/IAudioClip.h"
#include "shell/hostapi/IAudioEvent.h"
#include "shell/hostapi/IAudioPart.h"
#include "workflow/AudioFormat.h"
#include "workflow/EventClip.h"
#include "workflow/FrameBlock.h"
#include "workflow/HostText.h"

#include <limits>

namespace tessera {

namespace {

// Cut towards zero; what no count can hold becomes the nearest one that can.
std::int64_t wholeFrames(double frames) {
    constexpr double kLimit = 9223372036854775808.0;
    if (frames >= kLimit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    if (frames <= -kLimit) {
        return std::numeric_limits<std::int64_t>::min();
    }
    return frames == frames ? static_cast<std::int64_t>(frames) : 0;
}

void setStretch(CopyResult& result, IAudioStream& stream, double start, double end) {
    if (start < end) {
        const double rate = stream.sampleRate();
        result.frames = wholeFrames(rate * (end - start));
        result.startFrame = wholeFrames(rate * start);
    } else {
        result.frames = stream.frames();
        result.startFrame = 0;
    }
}

} // namespace

AudioCopier::AudioCopier(IHostServices* services, FRefPtr<IHostFile> folder)
    : services_(services), target_(std::move(folder)) {}

CopyResult AudioCopier::copyItem(const SelectedItem& item) {
    if (!queryFor<IAudioEvent>(item.object.get())) {
        return {};
    }
    IProjectObject& event = *item.object;
    const double length = event.timelineEnd(item.scope) - event.timelineStart(item.scope);
    const double start = event.clipOffset(item.scope);
    return copyRange(event, start, length + start);
}

CopyResult AudioCopier::copyRange(IProjectObject& event, double start, double end) {
    CopyResult result;
    IAudioClip* clip = clipOf(event);
    const FRefPtr<IAudioStream> stream(clip == nullptr ? nullptr : clip->stream());
    if (!stream || !stream->open() || !nameTarget(clip->file())) {
        return result;
    }
    result.writer = AudioFormat::of(*stream, target_.get()).createWriter(services_);
    if (!result.writer) {
        return result;
    }
    // The writer takes up the exact kind of sample that the stream has.
    result.writer->attach(stream.get());
    setStretch(result, *stream, start, end);
    stream->seek(result.startFrame);
    result.writer->seek(0);
    if (FrameBlock().copy(*stream, *result.writer, result.frames)) {
        result.file = target_;
    }
    return result;
}

bool AudioCopier::nameTarget(IHostFile* original) {
    return target_ && target_->append(nameOf(original).c_str(), 0) == kResultOk && target_->makeUnique() == kResultOk;
}

} // namespace tessera
