#include "host/audio/ReadStream.h"

#include "host/audio/WriteStream.h"

#include <algorithm>
#include <utility>

namespace tessera::host {

ReadStream::ReadStream(std::shared_ptr<HostCore> core, std::string path, const AudioFormat& format,
                       std::int64_t frameCount)
    : HostObject(core->watch, "ReadStream"),
      core_(std::move(core)),
      path_(std::move(path)),
      format_(format),
      frames_(frameCount) {}

bool ReadStream::openFile() {
    if (reader_ != nullptr) {
        return true;
    }
    core_->writers.finish(path_);
    std::string error;
    reader_ = SoundFileReader::open(path_, &error);
    if (reader_ == nullptr) {
        core_->note("warning: " + error);
        return false;
    }
    format_ = reader_->format();
    frames_ = reader_->frames();
    return true;
}

bool ReadStream::open() {
    return guestMay("open") && openFile();
}

FrameShape ReadStream::deliveredShape() const {
    const std::shared_ptr<WriteStream> target = target_.lock();
    return target == nullptr ? ownShape() : target->shape();
}

void ReadStream::attach(IAudioStream* other) {
    if (!guestMay("attach")) {
        return;
    }
    WriteStream* const writer = ownObject<WriteStream>(other);
    if (writer == nullptr) {
        reportMisuse("attach", "the other stream is no writer of this host");
        return;
    }
    writer->noteSource(*this);
    target_ = writer->self();
}

std::int32_t ReadStream::read(std::int32_t count, void* buffer) {
    if (!guestMay("read")) {
        return 0;
    }
    if (count < 0 || (buffer == nullptr && count > 0)) {
        reportMisuse("read", "the count is negative or the buffer is null");
        return 0;
    }
    if (!openFile()) {
        return 0;
    }
    if (deliveredShape() != ownShape()) {
        return readConverted(count, buffer);
    }
    return static_cast<std::int32_t>(reader_->read(count, buffer));
}

std::int32_t ReadStream::readConverted(std::int32_t count, void* buffer) {
    constexpr std::int32_t kBlockFrames = 4096;
    unconverted_.resize(static_cast<std::size_t>(kBlockFrames) * static_cast<std::size_t>(format_.bytesPerFrame()));
    const FrameShape delivered = deliveredShape();
    auto* out = static_cast<std::uint8_t*>(buffer);
    std::int32_t done = 0;
    while (done < count) {
        const auto got =
            static_cast<std::int32_t>(reader_->read(std::min(count - done, kBlockFrames), unconverted_.data()));
        if (got <= 0) {
            break;
        }
        convertFrames(unconverted_.data(), ownShape(), out, delivered, got);
        out += static_cast<std::ptrdiff_t>(got) * delivered.bytesPerFrame();
        done += got;
    }
    return done;
}

std::int32_t ReadStream::write(std::int32_t, const void*, bool) {
    reportMisuse("write", "this stream reads");
    return 0;
}

bool ReadStream::seek(std::int64_t frame) {
    return guestMay("seek") && openFile() && reader_->seek(frame);
}

} // namespace tessera::host
