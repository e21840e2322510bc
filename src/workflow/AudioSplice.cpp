#include "workflow/AudioSplice.h"

#include "shell/hostapi/IAudioClipAccess.h"
#include "shell/hostapi/IAudioStream.h"
#include "workflow/AudioFormat.h"
#include "workflow/FrameBlock.h"
#include "workflow/HostServices.h"
#include "workflow/HostText.h"

namespace tessera {

namespace {

FRefPtr<IAudioStream> openStream(IAudioClip* clip) {
    FRefPtr<IAudioStream> stream(clip == nullptr ? nullptr : clip->stream());
    return stream && stream->open() ? stream : FRefPtr<IAudioStream>();
}

// The outcome of the three copies isn't looked at: a source that gives out early makes a shorter result, which the user
// hears and undoes, and never a failed edit.
void join(IAudioStream& target, IAudioStream& whole, IAudioStream& edited, std::int64_t rangeStart,
          std::int64_t rangeFrames) {
    target.seek(0);
    whole.attach(&target);
    edited.attach(&target);
    whole.seek(0);
    edited.seek(0);
    FrameBlock block;
    block.copy(whole, target, rangeStart);
    block.copy(edited, target, edited.frames());
    const std::int64_t tail = whole.frames() - rangeFrames - rangeStart;
    whole.seek(whole.frames() - tail);
    block.copy(whole, target, tail);
}

} // namespace

FRefPtr<IAudioClip> openClip(IHostServices* services, IHostFile* file) {
    const auto access = queryService<IAudioClipAccess>(services);
    if (file == nullptr || !access || !access->bind(file) || access->failed()) {
        return {};
    }
    return queryFor<IAudioClip>(access.get());
}

AudioSplice::AudioSplice(IHostServices* services, FRefPtr<IHostFile> whole, FRefPtr<IHostFile> edited)
    : services_(services), whole_(std::move(whole)), edited_(std::move(edited)) {}

FRefPtr<IHostFile> AudioSplice::spliceInto(FRefPtr<IHostFile> folder, std::int64_t rangeStart,
                                           std::int64_t rangeFrames) {
    if (!folder || !whole_ || !edited_ || !nameTarget(*folder) || !write(*folder, rangeStart, rangeFrames)) {
        return {};
    }
    return folder;
}

bool AudioSplice::nameTarget(IHostFile& folder) const {
    // Without a name of its own the file would overwrite one of the user's.
    return folder.append(nameOf(whole_.get()).c_str(), 0) == kResultOk && folder.makeUnique() == kResultOk;
}

bool AudioSplice::write(IHostFile& target, std::int64_t rangeStart, std::int64_t rangeFrames) {
    const auto wholeClip = openClip(services_, whole_.get());
    if (!wholeClip) {
        return false;
    }
    const auto writer = AudioFormat::of(*wholeClip, &target).createWriter(services_);
    if (!writer) {
        return false;
    }
    const auto editedClip = openClip(services_, edited_.get());
    const auto whole = openStream(wholeClip.get());
    const auto edited = openStream(editedClip.get());
    if (!whole || !edited) {
        return false;
    }
    join(*writer, *whole, *edited, rangeStart, rangeFrames);
    return true;
}

} // namespace tessera
