// ObjectRegistry: who wants to know of changes of which object. Main thread.
#pragma once

#include "host/objects/GuestCall.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "host/services/ObjectTest.h"
#include "shell/hostapi/IObjectObserver.h"
#include "shell/hostapi/IObjectRegistry.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace tessera::host {

class ObjectRegistry final : public HostObject<ObjectRegistry, IObjectRegistry> {
public:
    static constexpr std::int32_t kChanged = 1;

    explicit ObjectRegistry(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "ObjectRegistry") {}

    std::size_t observerCount() const { return entries_.size(); }
    void tell(IBaseUnknown* subject, std::int32_t code) {
        const std::vector<Entry> told = entries_;
        for (const Entry& entry : told) {
            if (isSameObject(entry.object, subject) && isEntered(entry)) {
                callGuest(*watch(), "IObjectObserver.update", [&] { entry.observer->update(subject, code); });
            }
        }
    }

    FResult addObserver(IBaseUnknown* object, IObjectObserver* observer) override {
        if (!guestMay("addObserver") || object == nullptr || observer == nullptr) {
            return kInvalidArgument;
        }
        entries_.push_back({object, observer});
        return kResultOk;
    }
    FResult removeObserver(IBaseUnknown* object, IObjectObserver* observer) override {
        if (!guestMayLate("removeObserver")) {
            return kResultFailure;
        }
        const auto removed = std::erase_if(entries_, [&](const Entry& entry) {
            return entry.observer == observer && isSameObject(entry.object, object);
        });
        return removed > 0 ? kResultOk : kResultFalse;
    }

private:
    // Neither is held: whoever goes takes its entries out first.
    struct Entry {
        IBaseUnknown* object;
        IObjectObserver* observer;

        friend bool operator==(const Entry&, const Entry&) = default;
    };

    bool isEntered(const Entry& entry) const {
        return std::find(entries_.begin(), entries_.end(), entry) != entries_.end();
    }

    std::vector<Entry> entries_;
};

} // namespace tessera::host
