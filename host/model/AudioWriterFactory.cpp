#include "host/model/AudioWriterFactory.h"

#include "host/model/HostFile.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"

#include <cmath>
#include <optional>
#include <utility>

namespace tessera::host {
namespace {

struct WidthRow {
    std::int32_t bits;
    SampleKind kind;
};

// 32 bits mean float until a source that attaches says that they are integers.
constexpr WidthRow kWidths[] = {
    {8, SampleKind::int8},     {16, SampleKind::int16},   {24, SampleKind::int24},
    {32, SampleKind::float32}, {64, SampleKind::float64},
};

std::optional<SampleKind> kindOfWidth(std::int32_t bits) {
    for (const WidthRow& row : kWidths) {
        if (row.bits == bits) {
            return row.kind;
        }
    }
    return std::nullopt;
}

} // namespace

AudioWriterFactory::AudioWriterFactory(std::shared_ptr<HostCore> core)
    : HostObject(core->watch, "AudioWriterFactory"), core_(std::move(core)) {}

void AudioWriterFactory::setFile(IHostFile* file) {
    const HostFile* const own = guestMay("setFile") ? ownObject<HostFile>(file) : nullptr;
    if (own == nullptr) {
        reportMisuse("setFile", "the file is no file object of this host");
        return;
    }
    path_ = own->pathText();
}

IAudioStream* AudioWriterFactory::create() {
    const std::optional<SampleKind> kind = kindOfWidth(bits_);
    if (!guestMay("create") || path_.empty() || !kind || channels_ < 1 || !(sampleRate_ >= 1)) {
        return nullptr;
    }
    constexpr std::int32_t kFloatKind = 2;
    if (bits_ == 32 && sampleKind_ != kFloatKind) {
        reportMisuse("create", "32 bits were asked for without setSampleKind(2)");
    }
    const AudioFormat wanted{0, *kind, channels_, static_cast<int>(std::lround(sampleRate_))};
    const std::shared_ptr<WriteStream> stream = WriteStream::create(core_, path_, wanted);
    if (stream == nullptr) {
        core_->note(message(hostTexts.notWritable, path_));
        return nullptr;
    }
    stream->addRef();
    return stream.get();
}

} // namespace tessera::host
