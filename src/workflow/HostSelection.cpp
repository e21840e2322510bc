#include "workflow/HostSelection.h"

#include "shell/hostapi/IAudioEvent.h"
#include "shell/hostapi/IEventRestrictions.h"
#include "workflow/HostServices.h"

namespace tessera {

namespace {

constexpr std::int32_t kEventKind = 1;
constexpr std::int32_t kRangeKind = 9;

} // namespace

HostSelection::HostSelection(IHostServices* services) : selection_(queryService<ISelection>(services)) {}

std::vector<SelectedItem> HostSelection::selectedEvents() const {
    return read(kEventKind);
}

std::vector<SelectedItem> HostSelection::selectedRanges() const {
    return read(kRangeKind);
}

SelectedItem HostSelection::firstSelectedEvent() const {
    const std::vector<SelectedItem> events = selectedEvents();
    return events.empty() ? SelectedItem() : events.front();
}

bool HostSelection::isRestricted(IProjectObject* object) const {
    const auto restrictions = queryFor<IEventRestrictions>(selection_.get());
    if (!restrictions || object == nullptr) {
        return false;
    }
    return restrictions->restriction8(object) != 0 || restrictions->restriction5(object) != 0 ||
           restrictions->restriction3(object) != 0 || restrictions->restriction4(object) != 0;
}

std::vector<SelectedItem> HostSelection::read(std::int32_t kind) const {
    std::vector<SelectedItem> items;
    if (!selection_ || selection_->selectKind(selection_->currentScope(), kind) != kResultOk) {
        return items;
    }
    // The count is asked in each round: the host may change the selection while its objects are looked at.
    for (std::int32_t index = 0; index < selection_->count(); ++index) {
        FRefPtr<IBaseUnknown> object;
        std::uint64_t scope = 0;
        if (selection_->item(index, object.receive(), &scope) != kResultOk) {
            static_cast<void>(object.detach());
            continue;
        }
        SelectedItem item{queryFor<IProjectObject>(object.get()), scope};
        if (queryFor<IAudioEvent>(item.object.get())) {
            items.push_back(std::move(item));
        }
    }
    return items;
}

} // namespace tessera
