// The lists of FAttributes.
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"

namespace tessera {

template <class List>
static List* listOf(const FStringIDAttribute* record) {
    return record != nullptr ? cmCast<List>(record->getObject()) : nullptr;
}

template <class List, class... Arguments>
List* FAttributes::obtainList(const FStringRef& name, Arguments... arguments) {
    if (const FStringIDAttribute* record = find(name)) {
        return listOf<List>(record);
    }
    auto* list = new List(arguments...);
    return setObject(name, list, AttributeHolding::owned, AttributeFlags::kAppend) ? list : nullptr;
}

bool FAttributes::appendInt(const FStringRef& name, std::int64_t value) {
    auto* list = obtainList<FIntList>(name);
    if (list == nullptr) {
        return false;
    }
    list->append(value);
    return true;
}

bool FAttributes::appendFloat(const FStringRef& name, double value) {
    auto* list = obtainList<FFloatList>(name);
    if (list == nullptr) {
        return false;
    }
    list->append(value);
    return true;
}

bool FAttributes::appendString(const FStringRef& name, const FStringRef& text, TextHolding holding) {
    auto* list = obtainList<FStringList>(name, holding);
    return list != nullptr && list->append(text, holding);
}

bool FAttributes::appendObject(const FStringRef& name, CmObject* object, AttributeHolding holding) {
    auto keep = holding == AttributeHolding::owned ? FRefPtr<CmObject>::adopt(object) : FRefPtr<CmObject>(object);
    if (object == nullptr) {
        return false;
    }
    const bool owning = holding != AttributeHolding::none;
    auto* list = obtainList<FObjectList>(name, owning ? FObjectList::Owning::yes : FObjectList::Owning::no);
    if (list == nullptr || list->isOwning() != owning) {
        return false;
    }
    return list->append(owning ? keep.detach() : object);
}

bool FAttributes::appendSub(const FStringRef& name, FAttributes* tree) {
    auto keep = FRefPtr<FAttributes>::adopt(tree);
    auto* list = tree != nullptr ? obtainList<FSubList>(name) : nullptr;
    return list != nullptr && list->append(keep.detach());
}

bool FAttributes::nextInt(const FStringRef& name, std::int64_t& out) {
    auto* list = listOf<FIntList>(find(name));
    return list != nullptr && list->next(out);
}

bool FAttributes::nextFloat(const FStringRef& name, double& out) {
    auto* list = listOf<FFloatList>(find(name));
    return list != nullptr && list->next(out);
}

bool FAttributes::nextString(const FStringRef& name, FStringRef& out) {
    auto* list = listOf<FStringList>(find(name));
    return list != nullptr && list->next(out);
}

bool FAttributes::nextObject(const FStringRef& name, CmObject*& out) {
    auto* list = listOf<FObjectList>(find(name));
    return list != nullptr && list->next(out);
}

FAttributes* FAttributes::nextSub(const FStringRef& name) {
    auto* list = listOf<FSubList>(find(name));
    return list != nullptr ? list->next() : nullptr;
}

FAttrList* FAttributes::getList(const FStringRef& name) const {
    return listOf<FAttrList>(find(name));
}

std::int32_t FAttributes::listCount(const FStringRef& name) const {
    const FAttrList* list = getList(name);
    return list != nullptr ? list->count() : 0;
}

void FAttributes::resetList(const FStringRef& name) {
    if (FAttrList* list = getList(name)) {
        list->reset();
    }
}

} // namespace tessera
