#include "peer/SoundFacts.h"

#include "common/AiffHeader.h"
#include "common/OpenSound.h"
#include "common/Utf8Path.h"

#include <sndfile.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

namespace tessera::peer {
namespace {

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using Sound = std::unique_ptr<SNDFILE, CloseSound>;

constexpr int kFormatMask = SF_FORMAT_TYPEMASK | SF_FORMAT_SUBMASK;
constexpr sf_count_t kBlockFrames = 16384;

std::string formatName(int format) {
    SF_FORMAT_INFO info = {};
    info.format = format;
    return sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 && info.name != nullptr ? info.name : "?";
}

// Formats that hold whole numbers of up to 32 bits; FLAC's are among them. What floats and what lossy formats decode to
// may lie above full scale.
bool isInteger(int format) {
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_ALAC_16:
    case SF_FORMAT_ALAC_20:
    case SF_FORMAT_ALAC_24:
    case SF_FORMAT_ALAC_32:
        return true;
    default:
        return false;
    }
}

void removeFile(const std::string& path) {
    std::error_code ignored;
    std::filesystem::remove(programs::nativePath(path), ignored);
}

// Integers travel as left-aligned 32-bit words and all else as doubles: neither loses a bit on the way.
// The number of frames, or nothing when a read or a write failed.
template <class Sample>
std::optional<sf_count_t> copyFrames(SNDFILE* from, SNDFILE* to, int channels,
                                     sf_count_t (*read)(SNDFILE*, Sample*, sf_count_t),
                                     sf_count_t (*write)(SNDFILE*, const Sample*, sf_count_t)) {
    std::vector<Sample> block(static_cast<std::size_t>(kBlockFrames) * static_cast<std::size_t>(channels));
    for (sf_count_t total = 0;;) {
        const sf_count_t frames = read(from, block.data(), kBlockFrames);
        if (frames <= 0) {
            return sf_error(from) == SF_ERR_NO_ERROR ? std::optional(total) : std::nullopt;
        }
        if (write(to, block.data(), frames) != frames) {
            return std::nullopt;
        }
        total += frames;
    }
}

// 8-bit samples in AIFF are the only ones that can fill an odd number of bytes.
bool is8BitAiff(int format) {
    return (format & kFormatMask) == (SF_FORMAT_AIFF | SF_FORMAT_PCM_S8) ||
           (format & kFormatMask) == (SF_FORMAT_AIFF | SF_FORMAT_PCM_U8);
}

} // namespace

bool SoundFacts::sameFormat(const SoundFacts& other) const {
    return (format & kFormatMask) == (other.format & kFormatMask);
}

std::string SoundFacts::text() const {
    return std::to_string(rate) + " Hz, " + std::to_string(channels) + (channels == 1 ? " channel, " : " channels, ") +
           formatName(format & SF_FORMAT_TYPEMASK) + ", " + formatName(format & SF_FORMAT_SUBMASK);
}

std::optional<SoundFacts> readSoundFacts(const std::string& path, std::string* problem) {
    SF_INFO info = {};
    const Sound file(programs::openSound(path, SFM_READ, &info));
    if (!file) {
        *problem = sf_strerror(nullptr);
        return std::nullopt;
    }
    return SoundFacts{info.frames, info.samplerate, info.channels, info.format};
}

bool convertSound(const std::string& source, const std::string& target, const SoundFacts& wanted,
                  std::string* problem) {
    SF_INFO sourceInfo = {};
    const Sound from(programs::openSound(source, SFM_READ, &sourceInfo));
    if (!from) {
        *problem = sf_strerror(nullptr);
        return false;
    }
    SF_INFO targetInfo = {};
    targetInfo.samplerate = wanted.rate;
    targetInfo.channels = wanted.channels;
    targetInfo.format = wanted.format & kFormatMask;
    Sound to(programs::openSound(target, SFM_WRITE, &targetInfo));
    if (!to) {
        *problem = sf_strerror(nullptr);
        removeFile(target);
        return false;
    }
    // A peak above full scale has to clip, not wrap around.
    sf_command(to.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    const bool integers = isInteger(sourceInfo.format) && isInteger(wanted.format);
    const std::optional<sf_count_t> copied =
        integers ? copyFrames<int>(from.get(), to.get(), wanted.channels, sf_readf_int, sf_writef_int)
                 : copyFrames<double>(from.get(), to.get(), wanted.channels, sf_readf_double, sf_writef_double);
    const bool closed = sf_close(to.release()) == 0;
    if (!copied || !closed) {
        *problem = "the frames could not be converted";
        removeFile(target);
        return false;
    }
    if (is8BitAiff(wanted.format) && *copied * wanted.channels % 2 != 0) {
        programs::mendAiffLength(target, *copied, *copied * wanted.channels);
    }
    return true;
}

} // namespace tessera::peer
