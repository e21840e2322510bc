// FakeSelection: what is selected, by kind, and which kinds of processing the events hold.
#pragma once

#include "shell/hostapi/UnusedSlots.h"
#include "support/host/FakeObject.h"
#include "support/host/HostScript.h"

#include <array>
#include <map>
#include <vector>

namespace tessera::test {

class FakeSelection final : public FakeObject<UnusedSlots<ISelection>, UnusedSlots<IEventRestrictions>> {
public:
    struct Item {
        FRefPtr<IBaseUnknown> object;
        std::uint64_t scope = 0;
    };

    explicit FakeSelection(HostScript& script) : script_(script) {}

    void select(std::int32_t kind, IProjectObject* object, std::uint64_t scope = 0) {
        kinds_[kind].push_back({FRefPtr<IBaseUnknown>(object), scope});
    }
    void clear() { kinds_.clear(); }
    void restrict(int slot) { restrictions_[static_cast<std::size_t>(slot)] = 1; }
    void offerRestrictions(bool offered) { offersRestrictions_ = offered; }

    std::uint64_t currentScope() override { return 77; }
    FResult selectKind(std::uint64_t scope, std::int32_t kind) override {
        script_.note("selection.selectKind(" + std::to_string(scope) + ", " + std::to_string(kind) + ")");
        if (script_.fails("selection.selectKind")) {
            return kResultFalse;
        }
        selected_ = kind;
        return kResultOk;
    }
    std::int32_t count() override { return static_cast<std::int32_t>(kinds_[selected_].size()); }
    FResult item(std::int32_t index, void** object, std::uint64_t* scope) override {
        *object = nullptr;
        if (script_.fails("selection.item")) {
            return kInvalidArgument;
        }
        const Item& item = kinds_[selected_].at(static_cast<std::size_t>(index));
        *object = FRefPtr<IBaseUnknown>(item.object).detach();
        *scope = item.scope;
        return kResultOk;
    }
    std::uint8_t restriction3(IProjectObject*) override { return asked(3); }
    std::uint8_t restriction4(IProjectObject*) override { return asked(4); }
    std::uint8_t restriction5(IProjectObject*) override { return asked(5); }
    std::uint8_t restriction8(IProjectObject*) override { return asked(8); }
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (uid == IEventRestrictions::iid && !offersRestrictions_) {
            *out = nullptr;
            return kNoInterface;
        }
        return FakeObject::queryInterface(uid, out);
    }

private:
    std::uint8_t asked(int slot) {
        script_.note("restriction" + std::to_string(slot));
        return restrictions_[static_cast<std::size_t>(slot)];
    }

    HostScript& script_;
    std::map<std::int32_t, std::vector<Item>> kinds_;
    std::int32_t selected_ = 0;
    std::array<std::uint8_t, 9> restrictions_{};
    bool offersRestrictions_ = true;
};

} // namespace tessera::test
