// The module that offers tar archives: one class of the category "VirtualFileSystem".
#include "TarVolume.h"

#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IModuleFactory.h"

#include <cstring>

namespace {

using namespace tessera;

constexpr FUIDBytes kClassId = "{0D5E7B1C-94A2-4C0E-8F6B-3A57D2E019C4}"_uid;

class TarFileSystem final : public test::Counted<IVirtualFileSystem> {
public:
    FResult initialize(IBaseUnknown*) override { return kResultOk; }
    FResult getFileType(HostTypeRecord* record) override {
        *record = {};
        std::strcpy(record->extension, "tar");
        std::strcpy(record->name, "Tar Archive");
        return kResultOk;
    }
    FResult isSupported(const char* key) override {
        const bool can = key != nullptr && (std::strcmp(key, "CanRead") == 0 || std::strcmp(key, "CanIterate") == 0);
        return can ? kResultOk : kResultFalse;
    }
    IVirtualVolume* openVolume(IHostStream* stream) override { return tar::TarVolume::open(stream); }
};

class Factory final : public test::Counted<IModuleFactory> {
public:
    FResult describeFactory(FactoryInfo* info) override {
        *info = {};
        std::strcpy(info->vendor, "Marlgrove");
        return kResultOk;
    }
    std::int32_t classCount() override { return 1; }
    FResult describeClass(std::int32_t index, ClassInfo* info) override {
        if (index != 0) {
            return kInvalidArgument;
        }
        *info = {};
        info->classId = kClassId;
        info->cardinality = 0x7fffffff;
        std::strcpy(info->category, "VirtualFileSystem");
        std::strcpy(info->name, "Tar Archives");
        return kResultOk;
    }
    FResult createObject(const FUIDBytes& uid, const FUIDBytes& interfaceId, void** out) override {
        *out = nullptr;
        if (!(uid == kClassId)) {
            return kNoInterface;
        }
        const auto made = FRefPtr<TarFileSystem>::adopt(new TarFileSystem);
        return made->queryInterface(interfaceId, out);
    }
};

} // namespace

extern "C" [[gnu::visibility("default")]] bool InitDll() {
    return true;
}

extern "C" [[gnu::visibility("default")]] bool ExitDll() {
    return true;
}

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new Factory;
}
