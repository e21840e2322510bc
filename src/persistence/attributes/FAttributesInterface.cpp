// FAttributes as other modules see it.
#include "foundation/object/CmDelegatingUnknown.h"
#include "foundation/text/FVariant.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FFloatList.h"
#include "persistence/attributes/FIntList.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/RecordVariant.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace tessera {

namespace {

FResult resultOf(bool done) {
    return done ? kResultOk : kResultFalse;
}

// Objects of other modules are held in the wrapper that can be saved.
FRefPtr<CmObject> holdable(IBaseUnknown* object) {
    if (CmObject* own = asCmObject(object)) {
        return FRefPtr<CmObject>(own);
    }
    return FRefPtr<CmObject>::adopt(object != nullptr ? new CmDelegatingUnknown(object) : nullptr);
}

// The tree has a reference of its own by now, so the variant's can go.
void takeFrom(FVariant& value) {
    if (value.isOwner()) {
        value.setObject(value.object(), 0);
    }
}

} // namespace

FResult FAttributes::set(const char* name, FVariant& value) {
    if (name == nullptr) {
        return kResultFalse;
    }
    switch (value.type()) {
    case FVariant::kInteger:
        return resultOf(setInt(name, value.integer()));
    case FVariant::kFloat:
        return resultOf(setFloat(name, value.real()));
    case FVariant::kText8:
        return resultOf(setString(name, value.text8()));
    case FVariant::kText16:
        return resultOf(setString(name, value.text16()));
    case FVariant::kObject: {
        const bool done = setObject(name, holdable(value.object()).get());
        if (done) {
            takeFrom(value);
        }
        return resultOf(done);
    }
    default:
        return kResultFalse;
    }
}

FResult FAttributes::queue(const char* name, FVariant& value) {
    if (name == nullptr) {
        return kResultFalse;
    }
    switch (value.type()) {
    case FVariant::kInteger:
        return resultOf(appendInt(name, value.integer()));
    case FVariant::kFloat:
        return resultOf(appendFloat(name, value.real()));
    case FVariant::kText8:
        return resultOf(appendString(name, value.text8()));
    case FVariant::kText16:
        return resultOf(appendString(name, value.text16()));
    case FVariant::kObject: {
        auto object = holdable(value.object());
        auto* tree = cmCast<FAttributes>(object.get());
        const bool done =
            tree != nullptr ? appendSub(name, FRefPtr<FAttributes>(tree).detach()) : appendObject(name, object.get());
        if (done) {
            takeFrom(value);
        }
        return resultOf(done);
    }
    default:
        return kResultFalse;
    }
}

FResult FAttributes::setBinary(const char* name, const void* data, std::uint32_t size, bool copy) {
    if (name == nullptr || size > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) {
        return kResultFalse;
    }
    return resultOf(setBinary(FStringRef(name), data, static_cast<std::int32_t>(size),
                              copy ? BinaryHolding::copied : BinaryHolding::byReference));
}

FResult FAttributes::get(const char* name, FVariant& out) {
    const FStringIDAttribute* record = find(name);
    return resultOf(record != nullptr && recordToVariant(*record, out));
}

FResult FAttributes::unqueue(const char* name, FVariant& out) {
    FAttrList* list = getList(name);
    if (list == nullptr) {
        return kResultFalse;
    }
    switch (list->getKind()) {
    case FAttrListKind::integers: {
        std::int64_t value = 0;
        if (!static_cast<FIntList*>(list)->next(value)) {
            return kResultFalse;
        }
        out.setInteger(value);
        return kResultOk;
    }
    case FAttrListKind::floats: {
        double value = 0;
        if (!static_cast<FFloatList*>(list)->next(value)) {
            return kResultFalse;
        }
        out.setFloat(value);
        return kResultOk;
    }
    case FAttrListKind::strings: {
        FStringRef text;
        if (!static_cast<FStringList*>(list)->next(text)) {
            return kResultFalse;
        }
        text.toVariant(out);
        return kResultOk;
    }
    case FAttrListKind::objects: {
        CmObject* object = nullptr;
        if (!static_cast<FObjectList*>(list)->next(object)) {
            return kResultFalse;
        }
        objectToVariant(object, out);
        return kResultOk;
    }
    case FAttrListKind::subs: {
        FAttributes* tree = static_cast<FSubList*>(list)->next();
        objectToVariant(tree, out);
        return resultOf(tree != nullptr);
    }
    }
    return kResultFalse;
}

std::int32_t FAttributes::queuedCount(const char* name) {
    return listCount(name);
}

FResult FAttributes::resetQueue(const char* name) {
    FAttrList* list = getList(name);
    if (list != nullptr) {
        list->reset();
    }
    return resultOf(list != nullptr);
}

FResult FAttributes::resetAllQueues() {
    for (std::int32_t i = 0; i < getCount(); ++i) {
        if (auto* list = cmCast<FAttrList>(at(i)->getObject())) {
            list->reset();
        }
    }
    return kResultOk;
}

FResult FAttributes::getBinary(const char* name, void* buffer, std::uint32_t size) {
    FBinaryView bytes;
    if (buffer == nullptr || !getBinary(FStringRef(name), bytes)) {
        return kResultFalse;
    }
    const auto copied = std::min(size, static_cast<std::uint32_t>(bytes.size));
    if (copied > 0) {
        std::memcpy(buffer, bytes.data, copied);
    }
    return kResultOk;
}

FResult FAttributes::getBinarySize(const char* name, std::uint32_t* size) {
    const std::int32_t bytes = getBinarySize(FStringRef(name));
    if (size == nullptr || bytes < 0) {
        return kResultFalse;
    }
    *size = static_cast<std::uint32_t>(bytes);
    return kResultOk;
}

const char* FAttributes::getName(std::int32_t index) {
    const FStringIDAttribute* record = at(index);
    return record != nullptr ? record->getKey().text8() : nullptr;
}

} // namespace tessera
