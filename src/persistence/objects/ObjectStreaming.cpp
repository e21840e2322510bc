#include "persistence/objects/ObjectStreaming.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FMetaClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/text/FString.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/streams/FStream.h"

namespace tessera {

namespace {

constexpr std::int32_t kWrongClass = -98;
// Far beyond what any document has, and far below what a thread's stack bears.
constexpr int kDeepest = 256;

thread_local int depth = 0;

struct DepthGuard {
    DepthGuard() { ++depth; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;
    ~DepthGuard() { --depth; }
};

CmObject* createObject(const char* name, const char* className) {
    const ClassFactory* registry = ClassFactory::getInstance(false);
    if (registry == nullptr) {
        return nullptr;
    }
    const FMetaClass* record = registry->findByName(name);
    if (record == nullptr) {
        return nullptr;
    }
    FRefPtr<CmObject> object = FRefPtr<CmObject>::adopt(registry->createObject(name));
    // The object's word and not the record's: an alias has no parents.
    return object && object->isTypeOf(className, true) ? object.detach() : nullptr;
}

} // namespace

const char* storedClassName(const CmObject& object) {
    const FMetaClass* record = object.getMetaClass();
    return record != nullptr ? record->getPersistentName() : object.getClassName();
}

bool writeObject(FStream& stream, const CmObject* object) {
    return object == nullptr ? FString("").writeString(stream)
                             : FString(storedClassName(*object)).writeString(stream) && object->write(stream);
}

bool readObject(FStream& stream, const char* className, CmObject*& object) {
    object = nullptr;
    const DepthGuard guard;
    FString name;
    if (depth > kDeepest || !name.readString(stream)) {
        return false;
    }
    if (name.isEmpty()) {
        return true;
    }
    FRefPtr<CmObject> made = FRefPtr<CmObject>::adopt(createObject(name.text8(), className));
    if (!made) {
        reportError(kWrongClass, name);
        return false;
    }
    if (!made->read(stream)) {
        return false;
    }
    object = made.detach();
    return true;
}

} // namespace tessera
