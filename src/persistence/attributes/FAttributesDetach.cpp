// Trees that are made independent of live objects.
#include "persistence/attributes/FAttrBuffer.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/attributes/FSubList.h"
#include "persistence/attributes/FXmlInstance.h"
#include "persistence/attributes/FXmlReference.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/streams/FMemoryStream.h"

#include <unordered_map>
#include <unordered_set>

namespace tessera {

using namespace AttributeBits;

namespace {

class Detacher {
public:
    bool detachTree(FAttributes& tree) {
        if (depth_ >= FAttributes::kDeepest) {
            return false;
        }
        ++depth_;
        bool complete = true;
        for (std::int32_t i = 0; complete && i < tree.getCount(); ++i) {
            complete = detachRecord(*tree.at(i));
        }
        --depth_;
        return complete;
    }

private:
    struct Snapshot {
        // Held to the end, so that no other object gets its address, which is the ID.
        FRefPtr<CmObject> object;
        FRefPtr<FXmlInstance> instance;
    };

    bool detachRecord(FStringIDAttribute& record) {
        if (record.hasType(kText)) {
            if (record.hasType(kByReference)) {
                record.setText(record.getText());
            }
            return true;
        }
        // Bare pointers and foreign interfaces mean nothing to whoever reads the tree, here or elsewhere.
        CmObject* const object = record.getObject();
        if (object == nullptr) {
            return true;
        }
        if (auto* tree = cmCast<FAttributes>(object)) {
            hold(record, tree);
            return detachTree(*tree);
        }
        if (cmCast<FAttrList>(object) != nullptr) {
            return detachList(record);
        }
        FBinaryView bytes;
        if (FBinaryView::of(object, bytes)) {
            return detachBinary(record, bytes);
        }
        const FRefPtr<CmObject> standIn = standInFor(object);
        if (!standIn) {
            return false;
        }
        replace(record, standIn.get(), kByReference);
        return true;
    }

    // What is only pointed at gets a reference.
    static void hold(FStringIDAttribute& record, CmObject* object) {
        if (!record.hasType(kOwned | kByReference)) {
            replace(record, object, kByReference);
        }
    }

    static void replace(FStringIDAttribute& record, CmObject* object, std::uint16_t holding) {
        const FRefPtr<CmObject> keep(record.getObject());
        record.clear();
        record.setObject(object, holding);
    }

    bool detachList(FStringIDAttribute& record) {
        auto* list = static_cast<FAttrList*>(record.getObject());
        switch (list->getKind()) {
        case FAttrListKind::objects:
            return detachObjectList(record, static_cast<const FObjectList&>(*list));
        case FAttrListKind::subs: {
            hold(record, list);
            const auto& trees = static_cast<const FSubList&>(*list);
            for (std::int32_t i = 0; i < trees.count(); ++i) {
                if (!detachTree(*trees.at(i))) {
                    return false;
                }
            }
            return true;
        }
        case FAttrListKind::strings:
            // A copy owns its texts, in 16 bits.
            if (!static_cast<const FStringList*>(list)->ownsText()) {
                replace(record, list->clone(), kOwned);
                return true;
            }
            break;
        case FAttrListKind::integers:
        case FAttrListKind::floats:
            break;
        }
        hold(record, list);
        return true;
    }

    bool detachObjectList(FStringIDAttribute& record, const FObjectList& list) {
        auto detached = FRefPtr<FObjectList>::adopt(new FObjectList);
        for (std::int32_t i = 0; i < list.count(); ++i) {
            FRefPtr<CmObject> standIn = standInFor(list.at(i));
            if (!standIn) {
                return false;
            }
            detached->append(standIn.detach());
        }
        replace(record, detached.detach(), kOwned);
        return true;
    }

    // Buffers and streams stay what they are; bytes that are only pointed at become a stream.
    static bool detachBinary(FStringIDAttribute& record, const FBinaryView& bytes) {
        CmObject* const object = record.getObject();
        const auto* stream = cmCast<FMemoryStream>(object);
        const bool isForeign = cmCast<FAttrBuffer>(object) != nullptr || (stream != nullptr && !stream->ownsMemory());
        if (!isForeign && record.hasType(kOwned)) {
            return true;
        }
        const auto copy = isForeign ? streamOf(bytes) : FRefPtr<CmObject>::adopt(object->clone());
        FBinaryView copied;
        if (!FBinaryView::of(copy.get(), copied) || copied.size != bytes.size) {
            return false;
        }
        replace(record, FRefPtr<CmObject>(copy).detach(), kOwned);
        return true;
    }

    static FRefPtr<CmObject> streamOf(const FBinaryView& bytes) {
        const auto stream = FRefPtr<FMemoryStream>::adopt(new FMemoryStream);
        stream->write(bytes.data, bytes.size);
        stream->rewind();
        return FRefPtr<CmObject>(stream.get());
    }

    // What takes the object's place; null when it can't be stored.
    FRefPtr<CmObject> standInFor(CmObject* object) {
        auto* reference = cmCast<FXmlReference>(object);
        auto* standIn = cmCast<FXmlObject>(reference != nullptr ? reference->getTarget() : object);
        if (reference != nullptr && standIn == nullptr) {
            return FRefPtr<CmObject>(object);
        }
        if (standIn != nullptr) {
            if (FAttributes* tree = standIn->getAttributes()) {
                // It's a snapshot already, of whatever its tree holds.
                const bool complete = !visited_.insert(standIn).second || detachTree(*tree);
                return FRefPtr<CmObject>(complete ? object : nullptr);
            }
            if (standIn->getObject() == nullptr) {
                return FRefPtr<CmObject>(object);
            }
            object = standIn->getObject();
        }
        return snapshotOf(object);
    }

    FRefPtr<CmObject> snapshotOf(CmObject* object) {
        const auto id = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(object));
        const auto found = snapshots_.find(id);
        if (found != snapshots_.end()) {
            auto reference = FRefPtr<FXmlReference>::adopt(new FXmlReference(id));
            reference->setTarget(found->second.instance.get());
            return FRefPtr<CmObject>(reference.get());
        }
        const FRefPtr<FAttributes> tree = FRefPtr<FAttributes>::adopt(new FAttributes);
        const auto instance = FRefPtr<FXmlInstance>::adopt(
            new FXmlInstance(id, storedClassName(*object), FRefPtr<FAttributes>(tree).detach()));
        // Entered before it is filled: what the object stores may lead back to the object.
        snapshots_.emplace(id, Snapshot{FRefPtr<CmObject>(object), instance});
        if (!object->storeAttributes(*tree) || !detachTree(*tree)) {
            return {};
        }
        return FRefPtr<CmObject>(instance.get());
    }

    int depth_ = 0;
    std::unordered_map<std::uint64_t, Snapshot> snapshots_;
    // Instances that were in the tree before.
    std::unordered_set<const CmObject*> visited_;
};

} // namespace

bool FAttributes::detachObjects(FAttributes& tree) {
    return Detacher().detachTree(tree);
}

} // namespace tessera
