// FakeArchive: a component for files of the type "pak", and the source that offers it. What an archive holds is told by
// the test; the archive's own file may hold anything but the word "broken".
#pragma once

#include "foundation/object/FMetaClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/IComponentSource.h"
#include "persistence/archives/IVirtualFileSystem.h"
#include "persistence/paths/PathKind.h"
#include "persistence/streams/FMemoryStream.h"
#include "support/ForeignObject.h"
#include "support/VirtualEntryList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tessera::test {

struct FakeArchiveState {
    std::map<std::u16string, std::string> files; // by path; a folder ends in a backslash
    bool canRead = true;
    bool canWrite = false;
    bool canIterate = true;
    FResult initialized = kResultOk;
    FResult existsAnswer = kResultOk; // kResultOk looks the path up
    std::int64_t claimed = 0;         // added to the sizes of files
    int volumes = 0;                  // alive
    int made = 0;                     // components
    int components = 0;               // alive
    int givenBack = 0;                // components
    IBaseUnknown* context = nullptr;
    IHostStream* file = nullptr; // of the volume that was opened last
    std::vector<std::u16string> changes;
    std::function<void()> opening;    // called once, while a volume is opened
    std::function<void()> streamGone; // called by each stream of a file that goes
};

class FakeFileStream final : public FMemoryStream {
public:
    explicit FakeFileStream(FakeArchiveState& state) : state_(state) {}
    ~FakeFileStream() override {
        if (state_.streamGone) {
            state_.streamGone();
        }
    }

private:
    FakeArchiveState& state_;
};

class FakeVolume final : public Counted<IVirtualVolume> {
public:
    FakeVolume(FakeArchiveState& state, IHostStream* stream) : state_(state), stream_(stream) {
        ++state_.volumes;
        state_.file = stream;
    }
    ~FakeVolume() override { --state_.volumes; }

    FResult openFile(const char16_t* path, std::uint32_t mode, IHostStream** out) override {
        const auto found = state_.files.find(path);
        if (found == state_.files.end() || mode != 5) {
            return kResultFailure;
        }
        auto* stream = new FakeFileStream(state_);
        stream->write(found->second.data(), static_cast<std::int32_t>(found->second.size()));
        stream->rewind();
        *out = &stream->hostView();
        return kResultOk;
    }
    FResult exists(const char16_t* path, std::int16_t* kind, std::int64_t* modified) override {
        if (state_.existsAnswer != kResultOk) {
            return state_.existsAnswer;
        }
        const bool isFolder = *path == 0 || state_.files.count(std::u16string(path) + u"\\") != 0;
        if (kind != nullptr) {
            *kind = isFolder ? 1 : 0;
        }
        if (modified != nullptr) {
            *modified = 1'000'000;
        }
        return isFolder || state_.files.count(path) != 0 ? kResultOk : kResultFalse;
    }
    FResult getSize(const char16_t* path, std::int64_t* size) override {
        const auto found = state_.files.find(path);
        *size = found == state_.files.end() ? 0 : static_cast<std::int64_t>(found->second.size()) + state_.claimed;
        return found == state_.files.end() ? kResultFailure : kResultOk;
    }
    IVirtualIterator* iterate(bool recursive, const char16_t* path) override {
        const std::u16string folder = *path == 0 ? std::u16string() : std::u16string(path) + u"\\";
        std::vector<VirtualEntry> entries;
        for (const auto& [name, bytes] : state_.files) {
            if (!name.starts_with(folder) || name == folder) {
                continue;
            }
            std::u16string rest = name.substr(folder.size());
            const bool isFolder = rest.ends_with(u'\\');
            rest.resize(rest.size() - (isFolder ? 1 : 0));
            if (recursive || rest.find(u'\\') == rest.npos) {
                VirtualEntry entry{};
                std::copy(rest.begin(), rest.end(), entry.name);
                entry.kind = isFolder ? 1 : 0;
                entry.size = static_cast<std::int64_t>(bytes.size());
                entries.push_back(entry);
            }
        }
        return new VirtualEntryList(std::move(entries));
    }
    FResult createFile(const char16_t* path, std::uint32_t, IHostStream** out) override {
        note(u"create ", path);
        *out = &(new FMemoryStream)->hostView();
        return kResultOk;
    }
    FResult deleteFile(const char16_t* path) override { return note(u"delete ", path); }
    FResult createFolder(const char16_t* path) override { return note(u"folder ", path); }
    FResult deleteFolder(const char16_t* path) override { return note(u"delete folder ", path); }
    FResult rename(const char16_t* path, const char16_t* newPath) override {
        return note(u"rename ", (std::u16string(path) + u" to " + newPath).c_str());
    }

private:
    FResult note(const char16_t* what, const char16_t* path) {
        state_.changes.push_back(std::u16string(what) + path);
        return kResultOk;
    }

    FakeArchiveState& state_;
    FRefPtr<IHostStream> stream_;
};

class FakeComponent final : public Counted<IVirtualFileSystem> {
public:
    FakeComponent(FakeArchiveState& state, const char* extension) : state_(state), extension_(extension) {
        ++state_.made;
        ++state_.components;
    }
    ~FakeComponent() override { --state_.components; }

    FResult initialize(IBaseUnknown* context) override {
        state_.context = context;
        return state_.initialized;
    }
    FResult getFileType(HostTypeRecord* record) override {
        *record = {};
        std::strcpy(record->extension, extension_);
        std::strcpy(record->name, "Fake Archive");
        return kResultOk;
    }
    FResult isSupported(const char* key) override {
        const std::string name(key);
        const bool can = name == "CanRead"      ? state_.canRead
                         : name == "CanWrite"   ? state_.canWrite
                         : name == "CanIterate" ? state_.canIterate
                                                : false;
        return can ? kResultOk : kResultFalse;
    }
    IVirtualVolume* openVolume(IHostStream* stream) override {
        if (const auto opening = std::exchange(state_.opening, nullptr)) {
            opening();
        }
        char bytes[6] = {};
        std::int32_t count = 0;
        stream->read(bytes, 6, &count);
        return std::string_view(bytes, static_cast<std::size_t>(count)) == "broken" ? nullptr
                                                                                    : new FakeVolume(state_, stream);
    }

private:
    FakeArchiveState& state_;
    const char* extension_;
};

// Three components: one for another type, one that is no file system at all, and the one for "pak".
class FakeSource : public ForeignObject<IComponentSource> {
public:
    explicit FakeSource(FakeArchiveState& state) : state_(state) { present = this; }
    ~FakeSource() override { present = nullptr; }

    IBaseUnknown* createByIdentifier(const FUIDBytes&) override { return nullptr; }
    std::int32_t count(const char* category) override {
        return std::strcmp(category, "VirtualFileSystem") == 0 ? 3 : 0;
    }
    IBaseUnknown* createAt(const char*, std::int32_t index) override {
        switch (index) {
        case 0:
            return static_cast<IVirtualFileSystem*>(new FakeComponent(state_, "other"));
        case 1:
            return nullptr;
        default:
            return static_cast<IVirtualFileSystem*>(new FakeComponent(state_, "pak"));
        }
    }
    void releaseInstance(IBaseUnknown* instance) override {
        ++state_.givenBack;
        EXPECT_EQ(instance->release(), 0u) << "nobody else has it";
    }

    static inline FakeSource* present = nullptr;

private:
    FakeArchiveState& state_;
};

inline void* shareFakeSource() {
    if (FakeSource::present == nullptr) {
        return nullptr;
    }
    FakeSource::present->addRef();
    return static_cast<IComponentSource*>(FakeSource::present);
}

inline const FMetaClass fakeSourceRecord(nullptr, nullptr, &shareFakeSource, IComponentSource::iid);

} // namespace tessera::test
