// FileStore: a host's audio on real files, as little as there can be to it: 44 bytes of header, then frames as they
// are. What is measured over it is the module's own share of a copy.
#pragma once

#include "shell/hostapi/UnusedSlots.h"
#include "support/host/AudioStore.h"
#include "support/host/FakeObject.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>

namespace tessera::test {

inline constexpr SoundFormat kStereo24{2, 48000, 24};
inline constexpr off_t kHeaderSize = 44;

inline std::string narrow(const std::u16string& path) {
    return {path.begin(), path.end()};
}

class FileStream final : public FakeObject<UnusedSlots<IAudioStream>> {
public:
    FileStream(const std::u16string& path, int flags) : path_(narrow(path)), flags_(flags) {}
    ~FileStream() override { close(file_); }

    bool open() override {
        if (file_ == -1) {
            file_ = ::open(path_.c_str(), flags_, 0644);
            seek(0);
        }
        return file_ != -1;
    }
    void attach(IAudioStream*) override {}
    std::int64_t frames() override {
        struct stat facts {};
        fstat(file_, &facts);
        return (facts.st_size - kHeaderSize) / kStereo24.bytesPerFrame();
    }
    float sampleRate() override { return kStereo24.sampleRate; }
    std::int32_t bytesPerFrame() override { return kStereo24.bytesPerFrame(); }
    std::int32_t bitsPerSample() override { return kStereo24.bitsPerSample; }
    std::int32_t channels() override { return kStereo24.channels; }
    std::int32_t read(std::int32_t count, void* buffer) override {
        const auto bytes = ::read(file_, buffer, static_cast<std::size_t>(count) * width());
        return static_cast<std::int32_t>(bytes / static_cast<ssize_t>(width()));
    }
    std::int32_t write(std::int32_t count, const void* buffer, bool) override {
        const auto bytes = ::write(file_, buffer, static_cast<std::size_t>(count) * width());
        return static_cast<std::int32_t>(bytes / static_cast<ssize_t>(width()));
    }
    bool seek(std::int64_t frame) override {
        return lseek(file_, kHeaderSize + frame * static_cast<off_t>(width()), SEEK_SET) >= 0;
    }

private:
    static constexpr std::size_t width() { return static_cast<std::size_t>(kStereo24.bytesPerFrame()); }

    std::string path_;
    int flags_;
    int file_ = -1;
};

class FileStore final : public AudioStore {
public:
    bool exists(const std::u16string& path) override { return access(narrow(path).c_str(), F_OK) == 0; }
    SoundFormat formatOf(const std::u16string&) override { return kStereo24; }
    std::int64_t framesOf(const std::u16string& path) override {
        const auto stream = reader(path);
        stream->open();
        return stream->frames();
    }
    FRefPtr<IAudioStream> reader(const std::u16string& path) override { return stream(path, O_RDONLY); }
    FRefPtr<IAudioStream> writer(const std::u16string& path, const SoundFormat&) override {
        return stream(path, O_WRONLY | O_CREAT | O_TRUNC);
    }

private:
    static FRefPtr<IAudioStream> stream(const std::u16string& path, int flags) {
        return FRefPtr<IAudioStream>(makeFake<FileStream>(path, flags).get());
    }
};

} // namespace tessera::test
