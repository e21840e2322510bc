// FHostPathView: the host-visible face of an FPath. It is a part of the path and shares its reference count.
#pragma once

#include "persistence/paths/IHostPath.h"

namespace tessera {

class FPath;

class FHostPathView final : public IHostPath {
public:
    explicit FHostPathView(FPath& owner) : owner_(owner) {}
    FHostPathView(const FHostPathView&) = delete;
    FHostPathView& operator=(const FHostPathView&) = delete;

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override;
    std::uint32_t release() override;

    FResult path(char16_t* buffer) override;
    FResult setPath(const char16_t* text, std::int32_t isFolder) override;
    FResult setName(const char16_t* text) override;
    FResult name(char16_t* buffer) override;
    FResult extension(char16_t* buffer) override;
    FResult kind(std::int32_t* kind) override;
    FResult append(const char16_t* name, std::int32_t isFolder) override;
    FResult setKind(std::int32_t kind) override;
    FResult ascend() override;
    FResult fileType(HostTypeRecord* record) override;
    FResult makeUnique() override;
    FResult clone(IHostPath** out) override;
    FResult setFileType(const HostTypeRecord* record) override;

private:
    FPath& owner_;
};

} // namespace tessera
