#include "host/audio/WriteStream.h"

#include "common/Utf8Path.h"
#include "host/audio/ReadStream.h"
#include "host/audio/ReservedName.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tessera::host {

std::shared_ptr<WriteStream> WriteStream::create(std::shared_ptr<HostCore> core, const std::string& path,
                                                 const AudioFormat& wanted) {
    std::int32_t ignored = 0;
    if (!formatForFile(path, wanted, 0) || !reserveName(path, ignored)) {
        return nullptr;
    }
    auto stream = std::make_shared<WriteStream>(core, path, wanted);
    core->writers.enter(path, stream);
    return stream;
}

WriteStream::WriteStream(std::shared_ptr<HostCore> core, std::string path, const AudioFormat& wanted)
    : HostObject(core->watch, "WriteStream"), core_(std::move(core)), path_(std::move(path)), wanted_(wanted) {}

// The first source decides what the numbers left open; of the others only the size matters.
void WriteStream::noteSource(ReadStream& source) {
    const AudioFormat& format = source.format();
    sourceBytes_ += source.dataBytes();
    if (format.sampleRate != wanted_.sampleRate) {
        core_->note(message(hostTexts.otherRate, format.sampleRate, path_, wanted_.sampleRate));
    }
    if (sourceKnown_ || life_ != Life::reserved) {
        return;
    }
    sourceKnown_ = true;
    if (factsOf(format.kind).bits != factsOf(wanted_.kind).bits) {
        return;
    }
    AudioFormat exact = wanted_;
    exact.container = format.container;
    exact.kind = format.kind;
    if (formatForFile(path_, exact, sourceBytes_)) {
        wanted_ = exact;
    }
}

bool WriteStream::begin() {
    if (life_ != Life::reserved) {
        return life_ == Life::writing;
    }
    life_ = Life::failed;
    const std::optional<AudioFormat> format = formatForFile(path_, wanted_, sourceBytes_);
    if (!format) {
        return false;
    }
    std::string error;
    writer_ = SoundFileWriter::create(path_, *format, &error);
    if (writer_ == nullptr) {
        core_->note(message(hostTexts.warning, error));
        return false;
    }
    life_ = Life::writing;
    return true;
}

void WriteStream::giveUp() {
    core_->note(message(hostTexts.writingStopped, path_));
    writer_.reset();
    life_ = Life::failed;
    std::error_code ignored;
    std::filesystem::resize_file(programs::nativePath(path_), 0, ignored);
}

void WriteStream::complete() {
    // A stream that never got a frame leaves a sound file of no length rather than an empty file.
    if (!begin()) {
        return;
    }
    if (!writer_->close()) {
        giveUp();
        return;
    }
    writer_.reset();
    life_ = Life::complete;
}

bool WriteStream::open() {
    return guestMay("open") && (life_ == Life::reserved || life_ == Life::writing);
}

void WriteStream::attach(IAudioStream* other) {
    if (!guestMay("attach")) {
        return;
    }
    ReadStream* const source = ownObject<ReadStream>(other);
    if (source == nullptr) {
        reportMisuse("attach", "the other stream is no reader of this host");
        return;
    }
    noteSource(*source);
}

std::int32_t WriteStream::read(std::int32_t, void*) {
    reportMisuse("read", "this stream writes");
    return 0;
}

std::int32_t WriteStream::write(std::int32_t count, const void* buffer, bool isLast) {
    if (!guestMay("write")) {
        return 0;
    }
    if (count < 0 || (buffer == nullptr && count > 0)) {
        reportMisuse("write", "the count is negative or the buffer is null");
        return 0;
    }
    if (life_ == Life::complete) {
        reportMisuse("write", "the file is complete: it has been opened for reading");
        return 0;
    }
    if (!begin()) {
        return 0;
    }
    const auto written = static_cast<std::int32_t>(writer_->write(count, buffer));
    if (written < count) {
        giveUp();
    } else if (isLast) {
        writer_->flush();
    }
    return written;
}

bool WriteStream::seek(std::int64_t frame) {
    return guestMay("seek") && frame == 0 && (writer_ == nullptr || writer_->frames() == 0) &&
           (life_ == Life::reserved || life_ == Life::writing);
}

} // namespace tessera::host
