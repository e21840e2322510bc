// FakeFile: a host file object over an AudioStore: makeUnique looks there for names that are taken.
#pragma once

#include "shell/hostapi/UnusedSlots.h"
#include "support/host/AudioStore.h"
#include "support/host/FakeObject.h"
#include "support/host/HostScript.h"

#include <algorithm>

namespace tessera::test {

class FakeFile final : public FakeObject<UnusedSlots<IUrlFactory>> {
public:
    FakeFile(AudioStore& store, HostScript& script, std::u16string path = {})
        : store_(store), script_(script), path_(std::move(path)) {}

    const std::u16string& text() const { return path_; }

    void path(char16_t* buffer) override { write(path_, buffer); }
    FResult setPath(const char16_t* path, std::int32_t isFolder) override {
        if (script_.fails("file.setPath")) {
            return kInvalidArgument;
        }
        path_ = path;
        isFolder_ = isFolder != 0;
        return path_.empty() ? kInvalidArgument : kResultOk;
    }
    void name(char16_t* buffer) override { write(path_.substr(path_.rfind(u'/') + 1), buffer); }
    FResult append(const char16_t* name, std::int32_t isFolder) override {
        if (script_.fails("file.append")) {
            return kResultFailure;
        }
        path_ += u'/';
        path_ += name;
        isFolder_ = isFolder != 0;
        return kResultOk;
    }
    FResult makeUnique() override {
        if (script_.fails("file.makeUnique")) {
            return kResultFailure;
        }
        const std::u16string original = path_;
        const std::size_t dot = original.rfind(u'.');
        for (char16_t number = u'2'; store_.exists(path_); ++number) {
            path_ = original.substr(0, dot) + u" " + number + original.substr(dot);
        }
        return kResultOk;
    }
    FResult clone(void** out) override {
        *out = nullptr;
        if (script_.fails("file.clone")) {
            return kResultFailure;
        }
        *out = static_cast<IHostFile*>(makeFake<FakeFile>(store_, script_, path_).detach());
        return kResultOk;
    }

private:
    static void write(const std::u16string& text, char16_t* buffer) {
        *std::copy_n(text.begin(), std::min<std::size_t>(text.size(), kHostPathUnits - 1), buffer) = 0;
    }

    AudioStore& store_;
    HostScript& script_;
    std::u16string path_;
    bool isFolder_ = false;
};

} // namespace tessera::test
