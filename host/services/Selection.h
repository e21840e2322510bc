// Selection: the events that the user has selected (kind 1), and the stretches of the timeline on events (kind 9). Main
// thread.
#pragma once

#include "host/model/Event.h"
#include "host/model/Restrictions.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IEventRestrictions.h"
#include "shell/hostapi/ISelection.h"

#include <memory>
#include <vector>

namespace tessera::host {

class Selection final : public HostObject<Selection, UnusedSlots<ISelection>, UnusedSlots<IEventRestrictions>> {
public:
    static constexpr std::int32_t kEvents = 1;
    static constexpr std::int32_t kRanges = 9;

    explicit Selection(std::shared_ptr<HostCore> core);

    void clear();
    void selectEvents(std::vector<std::shared_ptr<Event>> events);
    // Selects the events and this stretch of the timeline on each of them.
    void selectRange(std::vector<std::shared_ptr<Event>> events, TimeRange range);
    std::vector<std::shared_ptr<Event>> selectedEvents() const;

    std::uint64_t currentScope() override { return guestMay("currentScope") ? kUserScope : 0; }
    FResult selectKind(std::uint64_t scope, std::int32_t kind) override;
    std::int32_t count() override;
    FResult item(std::int32_t index, void** object, std::uint64_t* scope) override;

    std::uint8_t restriction3(IProjectObject* event) override;
    std::uint8_t restriction4(IProjectObject* event) override;
    std::uint8_t restriction5(IProjectObject* event) override;
    std::uint8_t restriction8(IProjectObject* event) override;

private:
    struct Item {
        std::shared_ptr<Event> event;
        std::uint64_t scope;
    };
    static constexpr std::uint64_t kUserScope = 0x5C0FE;

    std::uint8_t holds(const char* slot, IProjectObject* event, std::uint32_t restriction);
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<HostCore> core_;
    std::vector<Item> events_;
    std::vector<Item> ranges_;
    const std::vector<Item>* listed_ = nullptr; // what selectKind chose
};

} // namespace tessera::host
