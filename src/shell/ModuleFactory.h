// ModuleFactory: describes the module and its classes to the host, and makes the objects.
//
// It lives from the first GetPluginFactory to the release of its last reference; then the next GetPluginFactory makes a
// new one. Classes are registered by the module itself, before the host sees the factory. The host calls from one
// thread; only the count is atomic.
#pragma once

#include "shell/ClassEntry.h"
#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IModuleFactory3.h"

#include <atomic>

namespace tessera {

class ModuleFactory final : public IModuleFactory3 {
public:
    explicit ModuleFactory(const FactoryInfo& info) : info_(info) {}
    ModuleFactory(const ModuleFactory&) = delete;
    ModuleFactory& operator=(const ModuleFactory&) = delete;

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override;
    std::uint32_t release() override;
    FResult describeFactory(FactoryInfo* info) override;
    std::int32_t classCount() override { return count_; }
    FResult describeClass(std::int32_t index, ClassInfo* info) override;
    FResult createObject(const FUIDBytes& classId, const FUIDBytes& interfaceId, void** out) override;
    FResult describeClassEx(std::int32_t index, ClassInfoEx* info) override;
    FResult describeClassWide(std::int32_t index, ClassInfoWide* info) override;
    FResult attachHost(IBaseUnknown* hostContext) override;
    virtual ~ModuleFactory();

    // The records are copied. False without a record or a create function, or without memory; nothing is registered
    // then. The 16-bit texts of the first two are the bytes of the 8-bit ones, sign-extended.
    bool addClass(const ClassInfoEx* info, CreateFunction create, std::uintptr_t context);
    bool addClass(const ClassInfo* info, CreateFunction create, std::uintptr_t context);
    bool addClass(const ClassInfoWide* info, CreateFunction create, std::uintptr_t context);

    std::int32_t capacity() const { return capacity_; }

private:
    bool hasIndex(std::int32_t index) const { return index >= 0 && index < count_; }
    const ClassEntry* find(const FUIDBytes& classId) const;
    bool grow();
    bool append(const ClassEntry& entry);

    std::atomic<std::uint32_t> references_{1};
    FactoryInfo info_;
    ClassEntry* entries_ = nullptr;
    std::int32_t count_ = 0;
    std::int32_t capacity_ = 0;
};

} // namespace tessera
