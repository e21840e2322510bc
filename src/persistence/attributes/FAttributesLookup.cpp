// Look-up by a path through the trees of FAttributes.
#include "foundation/text/FVariant.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlObject.h"
#include "persistence/attributes/RecordVariant.h"

namespace tessera {

namespace {

// The tree that an object is, or that an object still waits to be built from; null for every other one.
FAttributes* treeIn(CmObject* object) {
    if (auto* tree = cmCast<FAttributes>(object)) {
        return tree;
    }
    auto* standIn = cmCast<FXmlObject>(object);
    return standIn != nullptr ? standIn->getAttributes() : nullptr;
}

// Calls visit with the trees behind the object, in their order, until it accepts one.
template <class Visit>
bool findTree(CmObject* object, Visit visit) {
    if (FAttributes* tree = treeIn(object)) {
        return visit(*tree);
    }
    if (const auto* subs = cmCast<FSubList>(object)) {
        for (std::int32_t i = 0; i < subs->count(); ++i) {
            if (visit(*subs->at(i))) {
                return true;
            }
        }
    } else if (const auto* objects = cmCast<FObjectList>(object)) {
        for (std::int32_t i = 0; i < objects->count(); ++i) {
            FAttributes* tree = treeIn(objects->at(i));
            if (tree != nullptr && visit(*tree)) {
                return true;
            }
        }
    }
    return false;
}

// Calls accept with each record that the path leads to, in their order, until it accepts one.
template <class Accept>
bool findByPath(const FAttributes& tree, const FStringRef& path, const Accept& accept) {
    const std::int32_t separator = path.indexOf(0, FAttributes::kPathSeparator);
    const FStringRef name(path, 0, separator);
    for (std::int32_t i = 0; i < tree.getCount(); ++i) {
        const FStringIDAttribute& record = *tree.at(i);
        if (!(record.getKey() == name)) {
            continue;
        }
        if (separator < 0) {
            if (accept(record)) {
                return true;
            }
            continue;
        }
        const FStringRef rest(path, separator + 1);
        if (findTree(record.getObject(), [&](const FAttributes& next) { return findByPath(next, rest, accept); })) {
            return true;
        }
    }
    return false;
}

} // namespace

FAttributes* FAttributes::lookupAttributes(const FStringRef& path) const {
    FAttributes* found = nullptr;
    findByPath(*this, path, [&found](const FStringIDAttribute& record) {
        return findTree(record.getObject(), [&found](FAttributes& tree) {
            found = &tree;
            return true;
        });
    });
    return found;
}

bool FAttributes::lookupValue(const FStringRef& path, FVariant& out) const {
    return findByPath(*this, path, [&out](const FStringIDAttribute& record) { return recordToVariant(record, out); });
}

} // namespace tessera
