#include "host/audio/SoundFileWriter.h"

#include "common/AiffHeader.h"
#include "common/OpenSound.h"
#include "host/audio/SoundFileReader.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <algorithm>
#include <sndfile.h>
#include <utility>

namespace tessera::host {
namespace {

constexpr std::int64_t kNarrowBlockFrames = 4096;

} // namespace

std::unique_ptr<SoundFileWriter> SoundFileWriter::create(const std::string& path, const AudioFormat& format,
                                                         std::string* error) {
    SF_INFO info = {};
    info.format = format.container;
    info.channels = format.channels;
    info.samplerate = format.sampleRate;
    sf_private_tag* const file = programs::openSound(path, SFM_WRITE, &info);
    if (file == nullptr) {
        if (error != nullptr) {
            *error = message(hostTexts.notWritableAs, path, describe(format), sf_strerror(nullptr));
        }
        return nullptr;
    }
    // The peak chunk holds the time of writing: two copies of one sound would differ.
    sf_command(file, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    return std::unique_ptr<SoundFileWriter>(new SoundFileWriter(file, path, format));
}

SoundFileWriter::SoundFileWriter(sf_private_tag* file, std::string path, const AudioFormat& format)
    : file_(file), path_(std::move(path)), format_(format) {}

SoundFileWriter::~SoundFileWriter() {
    finish();
}

bool SoundFileWriter::finish() {
    if (file_ == nullptr) {
        return false;
    }
    const bool isClosed = sf_close(std::exchange(file_, nullptr)) == 0;
    const std::int64_t dataBytes = frames_ * format_.bytesPerFrame();
    if ((format_.container & SF_FORMAT_TYPEMASK) == SF_FORMAT_AIFF && dataBytes % 2 != 0) {
        programs::mendAiffLength(path_, frames_, dataBytes);
    }
    return isClosed;
}

// The library keeps to itself that a last block didn't fit, so the file is asked. Without a frame there is nothing to
// lose, and FLAC has no such file.
bool SoundFileWriter::close() {
    if (!finish()) {
        return false;
    }
    const auto written = frames_ == 0 ? nullptr : SoundFileReader::open(path_, nullptr);
    return frames_ == 0 || (written != nullptr && written->frames() == frames_);
}

void SoundFileWriter::setComment(const std::string& text) {
    sf_set_string(file_, SF_STR_COMMENT, text.c_str());
}

std::int64_t SoundFileWriter::write(std::int64_t count, const void* buffer) {
    // The library writes on beyond what the sizes in the file can tell.
    count = std::min(count, largestDataBytes(format_.container) / format_.bytesPerFrame() - frames_);
    std::int64_t written = 0;
    switch (format_.kind) {
    case SampleKind::int16:
        written = sf_writef_short(file_, static_cast<const short*>(buffer), count);
        break;
    case SampleKind::int32:
        written = sf_writef_int(file_, static_cast<const int*>(buffer), count);
        break;
    case SampleKind::float32:
        written = sf_writef_float(file_, static_cast<const float*>(buffer), count);
        break;
    case SampleKind::float64:
        written = sf_writef_double(file_, static_cast<const double*>(buffer), count);
        break;
    case SampleKind::int8:
    case SampleKind::int24:
        written = writeNarrow(count, static_cast<const std::uint8_t*>(buffer));
        break;
    }
    frames_ += std::max<std::int64_t>(written, 0);
    return written;
}

std::int64_t SoundFileWriter::writeNarrow(std::int64_t count, const std::uint8_t* in) {
    wide_.resize(static_cast<std::size_t>(kNarrowBlockFrames * format_.channels));
    const int bytes = factsOf(format_.kind).bytes;
    std::int64_t done = 0;
    while (done < count) {
        const std::int64_t block = std::min(count - done, kNarrowBlockFrames);
        for (std::int64_t i = 0; i < block * format_.channels; ++i) {
            std::uint32_t sample = 0;
            for (int byte = 0; byte < bytes; ++byte) {
                sample |= static_cast<std::uint32_t>(*in++) << (8 * (4 - bytes + byte));
            }
            wide_[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(sample);
        }
        const std::int64_t written = sf_writef_int(file_, wide_.data(), block);
        done += std::max<std::int64_t>(written, 0);
        if (written < block) {
            break;
        }
    }
    return done;
}

void SoundFileWriter::flush() {
    if ((format_.container & SF_FORMAT_TYPEMASK) != SF_FORMAT_FLAC) {
        sf_command(file_, SFC_UPDATE_HEADER_NOW, nullptr, 0);
    }
    sf_write_sync(file_);
}

} // namespace tessera::host
