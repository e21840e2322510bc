#include "foundation/messages/DeferredChanges.h"

#include <algorithm>

namespace tessera {

void DeferredChanges::append(const Change& change) {
    auto& places = places_[change.object];
    const bool waits = std::any_of(places.begin(), places.end(),
                                   [&](Order::iterator place) { return place->message == change.message; });
    if (!waits) {
        places.push_back(order_.insert(order_.end(), change));
    }
}

std::optional<DeferredChanges::Change> DeferredChanges::takeFirst(IBaseUnknown* object) {
    if (order_.empty()) {
        return std::nullopt;
    }
    const auto found = places_.find(object != nullptr ? object : order_.front().object);
    if (found == places_.end()) {
        return std::nullopt;
    }
    // The front of the whole order is the first of its object, too.
    const Order::iterator place = found->second.front();
    const Change change = *place;
    found->second.erase(found->second.begin());
    if (found->second.empty()) {
        places_.erase(found);
    }
    order_.erase(place);
    return change;
}

void DeferredChanges::cancel(IBaseUnknown* object) {
    if (order_.empty()) {
        return;
    }
    const auto found = places_.find(object);
    if (found == places_.end()) {
        return;
    }
    for (const Order::iterator place : found->second) {
        order_.erase(place);
    }
    places_.erase(found);
}

void DeferredChanges::appendAll(DeferredChanges& other) {
    while (const auto change = other.takeFirst(nullptr)) {
        append(*change);
    }
}

} // namespace tessera
