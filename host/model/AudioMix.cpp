#include "host/model/AudioMix.h"

#include "common/Utf8Path.h"
#include "host/audio/FrameShape.h"
#include "host/audio/ReservedName.h"
#include "host/audio/SoundFileReader.h"
#include "host/audio/SoundFileWriter.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "platform/SystemErrors.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <vector>

namespace tessera::host {
namespace {

constexpr std::int64_t kBlockFrames = 8192;

// One event on its way into the mix. The file is open only while the mix is inside the event.
class Voice {
public:
    Voice(const Event& event, int sampleRate)
        : clip_(*event.ownClip()),
          start_(toFrames(event.place().start, sampleRate)),
          length_(toFrames(event.place().length, sampleRate)),
          offset_(toFrames(event.place().offset, sampleRate)) {}

    std::int64_t end() const { return start_ + length_; }

    // Adds its part of the block that starts at that frame.
    Complaint addTo(std::vector<double>& block, int channels, std::int64_t blockStart, std::int64_t blockFrames) {
        const std::int64_t from = std::max(blockStart, start_);
        const std::int64_t to = std::min(blockStart + blockFrames, end());
        if (from >= to) {
            reader_.reset();
            return {};
        }
        if (reader_ == nullptr) {
            std::string error;
            reader_ = SoundFileReader::open(clip_.path(), &error);
            if (reader_ == nullptr) {
                return error;
            }
            if (format().channels != clip_.format().channels || format().sampleRate != clip_.format().sampleRate) {
                return message(hostTexts.soundChanged, clip_.path());
            }
            reader_->seek(std::min(offset_ + (from - start_), reader_->frames()));
        }
        read(to - from);
        mix(block, channels, from - blockStart);
        return {};
    }

private:
    static std::int64_t toFrames(double seconds, int sampleRate) { return std::llround(seconds * sampleRate); }

    // Of the file as it is now, which another may have replaced since it became a clip.
    const AudioFormat& format() const { return reader_->format(); }

    void read(std::int64_t frames) {
        raw_.resize(static_cast<std::size_t>(frames * format().bytesPerFrame()));
        frames_ = std::max<std::int64_t>(reader_->read(frames, raw_.data()), 0);
        samples_.resize(static_cast<std::size_t>(frames_ * format().channels));
        convertFrames(raw_.data(), {format().kind, format().channels}, samples_.data(),
                      {SampleKind::float64, format().channels}, frames_);
    }

    void mix(std::vector<double>& block, int channels, std::int64_t at) const {
        const int own = format().channels;
        for (std::int64_t frame = 0; frame < frames_; ++frame) {
            for (int channel = 0; channel < channels; ++channel) {
                const int source = own == 1 ? 0 : channel;
                if (source < own) {
                    block[static_cast<std::size_t>((at + frame) * channels + channel)] +=
                        samples_[static_cast<std::size_t>(frame * own + source)];
                }
            }
        }
    }

    const AudioClip& clip_;
    const std::int64_t start_;
    const std::int64_t length_;
    const std::int64_t offset_;
    std::unique_ptr<SoundFileReader> reader_;
    std::vector<std::uint8_t> raw_;
    std::vector<double> samples_;
    std::int64_t frames_ = 0;
};

struct MixFacts {
    int sampleRate = 0;
    int channels = 1;
};

Complaint findFacts(const std::vector<std::shared_ptr<Event>>& events, MixFacts& facts) {
    for (const auto& event : events) {
        const AudioFormat& format = event->ownClip()->format();
        if (facts.sampleRate != 0 && facts.sampleRate != format.sampleRate) {
            return message(hostTexts.differentRates, event->ownClip()->path(), format.sampleRate, facts.sampleRate);
        }
        facts.sampleRate = format.sampleRate;
        facts.channels = std::max(facts.channels, format.channels);
    }
    return {};
}

Complaint writeMix(std::vector<Voice>& voices, const MixFacts& facts, SoundFileWriter& writer) {
    const SampleKind kind = writer.format().kind;
    std::int64_t end = 0;
    for (const Voice& voice : voices) {
        end = std::max(end, voice.end());
    }
    std::vector<double> block(static_cast<std::size_t>(kBlockFrames * facts.channels));
    std::vector<std::uint8_t> packed(static_cast<std::size_t>(kBlockFrames * writer.format().bytesPerFrame()));
    for (std::int64_t at = 0; at < end; at += kBlockFrames) {
        const std::int64_t frames = std::min(kBlockFrames, end - at);
        std::fill(block.begin(), block.end(), 0.0);
        for (Voice& voice : voices) {
            const Complaint complaint = voice.addTo(block, facts.channels, at, frames);
            if (!complaint.empty()) {
                return complaint;
            }
        }
        convertFrames(block.data(), {SampleKind::float64, facts.channels}, packed.data(), {kind, facts.channels},
                      frames);
        if (writer.write(frames, packed.data()) != frames) {
            return message(hostTexts.exportStopped);
        }
    }
    return writer.close() ? Complaint() : message(hostTexts.exportStopped);
}

// Undo may bring an event back whose clip no track plays now, and a missing file may come back too: the pool has both.
bool isOwnSound(Project& project, const std::string& path) {
    const auto isClip = [&](const AudioClip& clip) {
        std::error_code ignored;
        return clip.path() == path ||
               std::filesystem::equivalent(programs::nativePath(clip.path()), programs::nativePath(path), ignored);
    };
    const auto& parts = project.ownPool().parts();
    const auto events = project.events();
    return std::any_of(parts.begin(), parts.end(), [&](const auto& part) { return isClip(*part->ownClip()); }) ||
           std::any_of(events.begin(), events.end(),
                       [&](const auto& event) { return event->isAudio() && isClip(*event->ownClip()); });
}

} // namespace

Complaint mixProject(Project& project, const std::string& path, const std::string& comment) {
    std::vector<std::shared_ptr<Event>> events = project.events();
    std::erase_if(events, [](const auto& event) { return !event->isAudio(); });
    if (events.empty()) {
        return message(hostTexts.nothingToExport);
    }
    if (!hasKnownExtension(path)) {
        return message(hostTexts.noKindOfFile, path);
    }
    if (isOwnSound(project, path)) {
        return message(hostTexts.exportOntoOwnSound, path);
    }
    MixFacts facts;
    if (const Complaint complaint = findFacts(events, facts); !complaint.empty()) {
        return complaint;
    }
    std::vector<Voice> voices;
    for (const auto& event : events) {
        voices.emplace_back(*event, facts.sampleRate);
    }
    std::optional<AudioFormat> format;
    for (const SampleKind kind : {SampleKind::float32, SampleKind::int24}) {
        if (!format) {
            const AudioFormat wanted{0, kind, facts.channels, facts.sampleRate};
            const auto mostBytes = static_cast<std::int64_t>(project.end() * facts.sampleRate) * wanted.bytesPerFrame();
            format = formatForFile(path, wanted, mostBytes);
        }
    }
    if (!format) {
        return message(hostTexts.tooManyChannels, path, facts.channels);
    }
    std::int32_t reason = 0;
    const std::string unfinished = reserveNameBeside(path, reason);
    if (unfinished.empty()) {
        return message(hostTexts.notWritableAs, path, describe(*format), platform::describeError(reason));
    }
    Complaint complaint;
    if (const auto writer = SoundFileWriter::create(unfinished, *format, &complaint)) {
        if (!comment.empty()) {
            writer->setComment(comment);
        }
        complaint = writeMix(voices, facts, *writer);
    }
    std::error_code error;
    if (complaint.empty()) {
        std::filesystem::rename(programs::nativePath(unfinished), programs::nativePath(path), error);
        complaint = error ? message(hostTexts.notReplaced, path, error.message()) : Complaint();
    }
    if (!complaint.empty()) {
        std::filesystem::remove(programs::nativePath(unfinished), error);
    }
    return complaint;
}

} // namespace tessera::host
