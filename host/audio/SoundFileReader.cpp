#include "host/audio/SoundFileReader.h"

#include "common/OpenSound.h"
#include "common/Utf8Path.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <algorithm>
#include <filesystem>
#include <sndfile.h>

namespace tessera::host {
namespace {

constexpr std::int64_t kNarrowBlockFrames = 4096;

std::unique_ptr<SoundFileReader> refuse(std::string* error, const std::string& reason) {
    if (error != nullptr) {
        *error = reason;
    }
    return nullptr;
}

} // namespace

std::unique_ptr<SoundFileReader> SoundFileReader::open(const std::string& path, std::string* error) {
    const std::filesystem::path native = programs::nativePath(path);
    std::error_code ignored;
    if (!std::filesystem::exists(native, ignored)) {
        return refuse(error, message(hostTexts.noSuchFile, path));
    }
    if (std::filesystem::is_directory(native, ignored)) {
        return refuse(error, message(hostTexts.folderNoSound, path));
    }
    SF_INFO info = {};
    sf_private_tag* const file = programs::openSound(path, SFM_READ, &info);
    if (file == nullptr) {
        return refuse(error, message(hostTexts.noSoundFile, path, sf_strerror(nullptr)));
    }
    const std::optional<SampleKind> kind = sampleKindOf(info.format);
    if (!kind || info.seekable == 0) {
        sf_close(file);
        return refuse(error, message(hostTexts.lossySound, path));
    }
    if (info.frames < 0 || info.frames == SF_COUNT_MAX) {
        sf_close(file);
        return refuse(error, message(hostTexts.lengthUnknown, path));
    }
    const AudioFormat format{info.format, *kind, info.channels, info.samplerate};
    return std::unique_ptr<SoundFileReader>(new SoundFileReader(file, format, info.frames));
}

SoundFileReader::SoundFileReader(sf_private_tag* file, const AudioFormat& format, std::int64_t frames)
    : file_(file), format_(format), frames_(frames) {}

SoundFileReader::~SoundFileReader() {
    sf_close(file_);
}

// Each call of the library is the one that carries this kind of sample through unchanged; the library has none for 8
// and 24 bits, where samples stand in the upper bits of 32.
std::int64_t SoundFileReader::read(std::int64_t count, void* buffer) {
    switch (format_.kind) {
    case SampleKind::int16:
        return sf_readf_short(file_, static_cast<short*>(buffer), count);
    case SampleKind::int32:
        return sf_readf_int(file_, static_cast<int*>(buffer), count);
    case SampleKind::float32:
        return sf_readf_float(file_, static_cast<float*>(buffer), count);
    case SampleKind::float64:
        return sf_readf_double(file_, static_cast<double*>(buffer), count);
    case SampleKind::int8:
    case SampleKind::int24:
        return readNarrow(count, static_cast<std::uint8_t*>(buffer));
    }
    return 0;
}

std::int64_t SoundFileReader::readNarrow(std::int64_t count, std::uint8_t* out) {
    wide_.resize(static_cast<std::size_t>(kNarrowBlockFrames * format_.channels));
    const int bytes = factsOf(format_.kind).bytes;
    std::int64_t done = 0;
    while (done < count) {
        const std::int64_t got = sf_readf_int(file_, wide_.data(), std::min(count - done, kNarrowBlockFrames));
        for (std::int64_t i = 0; i < got * format_.channels; ++i) {
            const auto sample = static_cast<std::uint32_t>(wide_[static_cast<std::size_t>(i)]);
            for (int byte = 0; byte < bytes; ++byte) {
                *out++ = static_cast<std::uint8_t>(sample >> (8 * (4 - bytes + byte)));
            }
        }
        if (got <= 0) {
            break;
        }
        done += got;
    }
    return done;
}

bool SoundFileReader::seek(std::int64_t frame) {
    return frame >= 0 && frame <= frames_ && sf_seek(file_, frame, SEEK_SET) == frame;
}

} // namespace tessera::host
