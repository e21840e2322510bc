// Doubles of the host's audio objects: clip, clip access, audio part, writer factory, all over one AudioStore.
#pragma once

#include "shell/hostapi/IAudioClipAccess.h"
#include "shell/hostapi/IAudioClipFactory.h"
#include "shell/hostapi/IFolderNode.h"
#include "support/host/FakeFile.h"

#include <memory>

namespace tessera::test {

class FakeClip final : public FakeObject<UnusedSlots<IAudioClip>> {
public:
    FakeClip(AudioStore& store, HostScript& script, std::u16string path)
        : store_(store), script_(script), path_(path), file_(makeFake<FakeFile>(store, script, path)) {}

    const std::u16string& text() const { return path_; }

    IHostFile* file() override { return file_.get(); }
    std::int32_t channels() override { return store_.formatOf(path_).channels; }
    float sampleRate() override { return store_.formatOf(path_).sampleRate; }
    std::int64_t frames() override { return store_.framesOf(path_); }
    std::int32_t bitsPerSample() override { return store_.formatOf(path_).bitsPerSample; }
    IAudioStream* stream() override {
        if (script_.fails("clip.stream")) {
            return nullptr;
        }
        stream_ = store_.reader(path_);
        return stream_.get();
    }

private:
    AudioStore& store_;
    HostScript& script_;
    std::u16string path_;
    FRefPtr<FakeFile> file_;
    FRefPtr<IAudioStream> stream_;
};

class FakePart final : public FakeObject<IAudioClipFactory, IFolderNode> {
public:
    explicit FakePart(HostScript& script, FRefPtr<IAudioClip> clip = {}) : script_(script), clip_(std::move(clip)) {}

    IAudioClip* clip() override { return clip_.get(); }
    bool bind(IAudioClip* clip) override {
        if (script_.fails("part.bind")) {
            return false;
        }
        clip_ = clip;
        return true;
    }
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (uid == IFolderNode::iid && script_.fails("part.folderNode")) {
            *out = nullptr;
            return kNoInterface;
        }
        return FakeObject::queryInterface(uid, out);
    }

private:
    HostScript& script_;
    FRefPtr<IAudioClip> clip_;
};

class FakeClipAccess final : public FakeObject<IAudioClipAccess> {
public:
    FakeClipAccess(AudioStore& store, HostScript& script) : store_(store), script_(script) {}

    bool bind(IHostFile* file) override {
        char16_t path[kHostPathUnits] = {};
        file->path(path);
        if (script_.fails("clipAccess.bind") || !store_.exists(path)) {
            return false;
        }
        clip_ = makeFake<FakeClip>(store_, script_, path);
        return true;
    }
    bool failed() override { return script_.fails("clipAccess.failed") || !clip_; }
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (!(uid == IAudioClip::iid)) {
            return FakeObject::queryInterface(uid, out);
        }
        *out = nullptr;
        if (!clip_ || script_.fails("clipAccess.clip")) {
            return kNoInterface;
        }
        *out = static_cast<IAudioClip*>(FRefPtr<FakeClip>(clip_).detach());
        return kResultOk;
    }

private:
    AudioStore& store_;
    HostScript& script_;
    FRefPtr<FakeClip> clip_;
};

class FakeWriterFactory final : public FakeObject<UnusedSlots<IAudioWriterFactory>> {
public:
    FakeWriterFactory(AudioStore& store, HostScript& script) : store_(store), script_(script) {}

    void setFile(IHostFile* file) override {
        char16_t path[kHostPathUnits] = {};
        file->path(path);
        path_ = path;
        script_.note("writerFactory.setFile");
    }
    void setSampleKind(std::int32_t kind) override {
        script_.note("writerFactory.setSampleKind(" + std::to_string(kind) + ")");
    }
    void setChannels(std::int32_t channels) override {
        format_.channels = channels;
        script_.note("writerFactory.setChannels(" + std::to_string(channels) + ")");
    }
    void setSampleRate(float rate) override {
        format_.sampleRate = rate;
        script_.note("writerFactory.setSampleRate(" + std::to_string(static_cast<int>(rate)) + ")");
    }
    void setBitsPerSample(std::int32_t bits) override {
        format_.bitsPerSample = bits;
        script_.note("writerFactory.setBitsPerSample(" + std::to_string(bits) + ")");
    }
    IAudioStream* create() override {
        script_.note("writerFactory.create");
        return script_.fails("writerFactory.create") ? nullptr : store_.writer(path_, format_).detach();
    }

private:
    AudioStore& store_;
    HostScript& script_;
    std::u16string path_;
    SoundFormat format_;
};

} // namespace tessera::test
