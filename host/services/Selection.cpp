#include "host/services/Selection.h"

#include <utility>

namespace tessera::host {

Selection::Selection(std::shared_ptr<HostCore> core) : HostObject(core->watch, "Selection"), core_(std::move(core)) {}

void Selection::clear() {
    events_.clear();
    ranges_.clear();
}

void Selection::selectEvents(std::vector<std::shared_ptr<Event>> events) {
    clear();
    for (auto& event : events) {
        events_.push_back({std::move(event), ScopeTable::kWholeEvent});
    }
}

void Selection::selectRange(std::vector<std::shared_ptr<Event>> events, TimeRange range) {
    const std::uint64_t scope = core_->scopes.add(range);
    selectEvents(std::move(events));
    for (const Item& item : events_) {
        ranges_.push_back({item.event, scope});
    }
}

std::vector<std::shared_ptr<Event>> Selection::selectedEvents() const {
    std::vector<std::shared_ptr<Event>> result;
    for (const Item& item : events_) {
        result.push_back(item.event);
    }
    return result;
}

FResult Selection::selectKind(std::uint64_t scope, std::int32_t kind) {
    if (!guestMay("selectKind")) {
        return kResultFailure;
    }
    listed_ = nullptr;
    if (scope != kUserScope) {
        reportMisuse("selectKind", "the scope is not the one that currentScope gave");
        return kInvalidArgument;
    }
    if (kind == kEvents) {
        listed_ = &events_;
    } else if (kind == kRanges) {
        listed_ = &ranges_;
    }
    return listed_ == nullptr ? kResultFalse : kResultOk;
}

std::int32_t Selection::count() {
    return guestMay("count") && listed_ != nullptr ? static_cast<std::int32_t>(listed_->size()) : 0;
}

FResult Selection::item(std::int32_t index, void** object, std::uint64_t* scope) {
    if (!guestMay("item") || object == nullptr || scope == nullptr) {
        return kInvalidArgument;
    }
    *object = nullptr;
    *scope = 0;
    if (index < 0 || index >= count()) {
        return kInvalidArgument;
    }
    const Item& item = (*listed_)[static_cast<std::size_t>(index)];
    *scope = item.scope;
    return item.event->queryInterface(IBaseUnknown::iid, object);
}

std::uint8_t Selection::holds(const char* slot, IProjectObject* event, std::uint32_t restriction) {
    const Event* const own = guestMay(slot) ? ownObject<Event>(event) : nullptr;
    return own != nullptr && (own->restrictions() & restriction) != 0 ? 1 : 0;
}

std::uint8_t Selection::restriction3(IProjectObject* event) {
    return holds("restriction3", event, Restrictions::kStretched);
}

std::uint8_t Selection::restriction4(IProjectObject* event) {
    return holds("restriction4", event, Restrictions::kTransposed);
}

std::uint8_t Selection::restriction5(IProjectObject* event) {
    return holds("restriction5", event, Restrictions::kEnvelopes);
}

std::uint8_t Selection::restriction8(IProjectObject* event) {
    return holds("restriction8", event, Restrictions::kEffects);
}

} // namespace tessera::host
