// DeferredChanges: changes that wait to be told, in order, each pair of object and message at most once.
//
// Appending, taking the first and cancelling an object's changes cost the same however many wait. Objects are keys here
// and are neither referenced nor called. Not synchronised: UpdateHandler guards it.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <list>
#include <optional>
#include <unordered_map>
#include <vector>

namespace tessera {

class DeferredChanges {
public:
    struct Change {
        IBaseUnknown* object;
        std::int32_t message;
    };

    bool isEmpty() const { return order_.empty(); }
    void append(const Change& change);
    // Takes out the first change of the object, of any object for null.
    std::optional<Change> takeFirst(IBaseUnknown* object);
    void cancel(IBaseUnknown* object);
    // All that other holds, behind what is here.
    void appendAll(DeferredChanges& other);

private:
    using Order = std::list<Change>;

    Order order_;
    // Where each object's changes stand, in their order.
    std::unordered_map<IBaseUnknown*, std::vector<Order::iterator>> places_;
};

} // namespace tessera
