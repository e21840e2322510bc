// MemoryStore: audio files that exist in memory alone, and their streams.
#pragma once

#include "shell/hostapi/UnusedSlots.h"
#include "support/host/AudioStore.h"
#include "support/host/FakeObject.h"
#include "support/host/HostScript.h"

#include <cstring>
#include <map>
#include <memory>
#include <vector>

namespace tessera::test {

struct MemorySound {
    SoundFormat format;
    std::vector<std::uint8_t> bytes;
    // A write with the mark of the last block has come, or the writer has gone.
    bool complete = true;
    // Reads deliver no more than so many frames in all, so that a source gives out early.
    std::int64_t readable = INT64_MAX;

    std::int64_t frames() const { return static_cast<std::int64_t>(bytes.size()) / format.bytesPerFrame(); }
};

class MemoryStream final : public FakeObject<UnusedSlots<IAudioStream>> {
public:
    MemoryStream(std::shared_ptr<MemorySound> sound, HostScript& script, const char* name)
        : sound_(std::move(sound)), script_(script), name_(name) {}
    ~MemoryStream() override { sound_->complete = true; }

    bool open() override { return open_ = !script_.fails((name_ + ".open").c_str()); }
    void attach(IAudioStream* other) override {
        script_.note(name_ + (other == nullptr ? ".attach(null)" : ".attach"));
    }
    std::int64_t frames() override { return sound_->frames(); }
    float sampleRate() override { return sound_->format.sampleRate; }
    std::int32_t bytesPerFrame() override { return sound_->format.bytesPerFrame(); }
    std::int32_t bitsPerSample() override { return sound_->format.bitsPerSample; }
    std::int32_t channels() override { return sound_->format.channels; }
    std::int32_t read(std::int32_t count, void* buffer) override {
        if (!open_ || script_.fails((name_ + ".read").c_str())) {
            return 0;
        }
        const std::int64_t left = std::min(sound_->frames(), sound_->readable) - position_;
        const auto frames = static_cast<std::int32_t>(std::max<std::int64_t>(0, std::min<std::int64_t>(count, left)));
        const std::size_t width = static_cast<std::size_t>(bytesPerFrame());
        if (frames > 0) {
            std::memcpy(buffer, sound_->bytes.data() + static_cast<std::size_t>(position_) * width,
                        static_cast<std::size_t>(frames) * width);
        }
        position_ += frames;
        return frames;
    }
    std::int32_t write(std::int32_t count, const void* buffer, bool isLast) override {
        const auto* bytes = static_cast<const std::uint8_t*>(buffer);
        sound_->bytes.insert(sound_->bytes.end(), bytes, bytes + count * bytesPerFrame());
        script_.note(name_ + ".write(" + std::to_string(count) + (isLast ? ", last)" : ")"));
        return count;
    }
    bool seek(std::int64_t frame) override {
        script_.note(name_ + ".seek(" + std::to_string(frame) + ")");
        position_ = frame;
        return true;
    }

private:
    std::shared_ptr<MemorySound> sound_;
    HostScript& script_;
    std::string name_;
    std::int64_t position_ = 0;
    bool open_ = false;
};

class MemoryStore final : public AudioStore {
public:
    explicit MemoryStore(HostScript& script) : script_(script) {}

    std::shared_ptr<MemorySound> add(const std::u16string& path, SoundFormat format, std::vector<std::uint8_t> bytes) {
        return sounds_[path] = std::make_shared<MemorySound>(MemorySound{format, std::move(bytes)});
    }
    std::shared_ptr<MemorySound> find(const std::u16string& path) const {
        const auto found = sounds_.find(path);
        return found == sounds_.end() ? nullptr : found->second;
    }
    const std::map<std::u16string, std::shared_ptr<MemorySound>>& sounds() const { return sounds_; }

    bool exists(const std::u16string& path) override { return sounds_.contains(path); }
    SoundFormat formatOf(const std::u16string& path) override { return sounds_.at(path)->format; }
    std::int64_t framesOf(const std::u16string& path) override { return sounds_.at(path)->frames(); }
    FRefPtr<IAudioStream> reader(const std::u16string& path) override {
        return FRefPtr<IAudioStream>(makeFake<MemoryStream>(sounds_.at(path), script_, "reader").get());
    }
    FRefPtr<IAudioStream> writer(const std::u16string& path, const SoundFormat& format) override {
        auto sound = std::make_shared<MemorySound>(MemorySound{format, {}, false});
        sounds_[path] = sound;
        return FRefPtr<IAudioStream>(makeFake<MemoryStream>(sound, script_, "writer").get());
    }

private:
    HostScript& script_;
    std::map<std::u16string, std::shared_ptr<MemorySound>> sounds_;
};

} // namespace tessera::test
