#include "host/audio/AudioFormat.h"

#include "common/Utf8Path.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <sndfile.h>
#include <string_view>

namespace tessera::host {
namespace {

struct Encoding {
    int subtype;
    SampleKind kind;
};

constexpr Encoding kEncodings[] = {
    {SF_FORMAT_PCM_S8, SampleKind::int8},    {SF_FORMAT_PCM_U8, SampleKind::int8},
    {SF_FORMAT_PCM_16, SampleKind::int16},   {SF_FORMAT_PCM_24, SampleKind::int24},
    {SF_FORMAT_PCM_32, SampleKind::int32},   {SF_FORMAT_FLOAT, SampleKind::float32},
    {SF_FORMAT_DOUBLE, SampleKind::float64},
};

struct FileType {
    std::string_view extension;
    std::string_view name;
    int major;
};

// The first row of a type is what is written when the source tells nothing better.
constexpr FileType kFileTypes[] = {
    {".wav", "WAV", SF_FORMAT_WAV},    {".wav", "WAV", SF_FORMAT_WAVEX},  {".wav", "RF64", SF_FORMAT_RF64},
    {".aif", "AIFF", SF_FORMAT_AIFF},  {".aiff", "AIFF", SF_FORMAT_AIFF}, {".aifc", "AIFF", SF_FORMAT_AIFF},
    {".flac", "FLAC", SF_FORMAT_FLAC}, {".w64", "W64", SF_FORMAT_W64},    {".rf64", "RF64", SF_FORMAT_RF64},
};

// Room for the chunks around the samples below the limit of a 32-bit size.
constexpr std::int64_t kLargestPlainData = 0xFFFFFFFFLL - 0x100000;

bool isPlainWave(int major) {
    return major == SF_FORMAT_WAV || major == SF_FORMAT_WAVEX;
}

std::string lowerExtension(const std::string& path) {
    std::string extension = programs::utf8Text(programs::nativePath(path).extension());
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

bool isOfType(const FileType& type, std::string_view extension, int major) {
    return type.extension == extension && type.major == major;
}

int majorFor(std::string_view extension, int sourceMajor, std::int64_t dataBytes) {
    int major = 0;
    for (const FileType& type : kFileTypes) {
        if (isOfType(type, extension, sourceMajor)) {
            major = sourceMajor;
            break;
        }
        if (major == 0 && type.extension == extension) {
            major = type.major;
        }
    }
    if (major == 0) {
        major = sourceMajor != 0 ? sourceMajor : SF_FORMAT_WAV;
    }
    return isPlainWave(major) && dataBytes > kLargestPlainData ? SF_FORMAT_RF64 : major;
}

bool canBeWritten(const AudioFormat& format) {
    SF_INFO info = {};
    info.format = format.container;
    info.channels = format.channels;
    info.samplerate = format.sampleRate;
    return sf_format_check(&info) != 0;
}

} // namespace

std::optional<SampleKind> sampleKindOf(int container) {
    for (const Encoding& encoding : kEncodings) {
        if (encoding.subtype == (container & SF_FORMAT_SUBMASK)) {
            return encoding.kind;
        }
    }
    return std::nullopt;
}

bool hasKnownExtension(const std::string& path) {
    const std::string extension = lowerExtension(path);
    return std::any_of(std::begin(kFileTypes), std::end(kFileTypes),
                       [&](const FileType& type) { return type.extension == extension; });
}

std::string describe(const AudioFormat& format) {
    std::string name = message(hostTexts.soundFile);
    for (const FileType& type : kFileTypes) {
        if (type.major == (format.container & SF_FORMAT_TYPEMASK)) {
            name = type.name;
            break;
        }
    }
    const SampleKindFacts& facts = factsOf(format.kind);
    const std::string kind = message(facts.isFloat ? hostTexts.floatBits : hostTexts.bits, facts.bits);
    return message(format.channels == 1 ? hostTexts.formatMono : hostTexts.format, name, kind, format.channels,
                   format.sampleRate);
}

std::int64_t largestDataBytes(int container) {
    const int major = container & SF_FORMAT_TYPEMASK;
    return isPlainWave(major) || major == SF_FORMAT_AIFF ? kLargestPlainData : std::numeric_limits<std::int64_t>::max();
}

std::optional<AudioFormat> formatForFile(const std::string& path, const AudioFormat& wanted, std::int64_t dataBytes) {
    const int sourceMajor = wanted.container & SF_FORMAT_TYPEMASK;
    const int major = majorFor(lowerExtension(path), sourceMajor, dataBytes);
    AudioFormat result = wanted;
    // The byte order belongs to the source's kind of file, and means nothing in another.
    const int byteOrder = major == sourceMajor ? wanted.container & SF_FORMAT_ENDMASK : 0;
    for (const Encoding& encoding : kEncodings) {
        if (encoding.kind != wanted.kind) {
            continue;
        }
        result.container = major | encoding.subtype | byteOrder;
        if (canBeWritten(result)) {
            return result;
        }
    }
    return std::nullopt;
}

} // namespace tessera::host
