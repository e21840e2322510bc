#include "foundation/object/ClassFactory.h"

#include "foundation/object/CmObject.h"
#include "foundation/object/FChainedTable.h"
#include "foundation/object/FMetaClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/FSingletonList.h"
#include "foundation/object/IPersistentObject.h"
#include "foundation/text/FTextHash.h"
#include "foundation/text/IStringSource.h"

#include <cstring>
#include <string_view>

namespace tessera {
namespace {

constexpr char kClassName[] = "ClassFactory";
constexpr std::uint32_t kNameBuckets = 50;
constexpr std::uint32_t kIdentifierBuckets = 20;

struct ByName {
    static std::uint32_t hash(std::string_view name, std::uint32_t size) { return hashText(name, size); }
    // Mostly it is the record's own text that is asked for.
    static bool matches(std::string_view name, const FMetaClass& record) {
        return name.data() == record.getName() || name == record.getName();
    }
};

struct ByIdentifier {
    static std::uint32_t hash(const FUIDBytes& uid, std::uint32_t size) {
        std::uint32_t l1 = 0;
        std::uint32_t l2 = 0;
        std::uint32_t l3 = 0;
        std::uint32_t l4 = 0;
        FUID(uid).getLongs(l1, l2, l3, l4);
        return (l1 + l2 + l3 + l4) % size;
    }
    static bool matches(const FUIDBytes& uid, const FMetaClass& record) { return record.getClassUID() == uid; }
};

} // namespace

class ClassFactory::Tables {
public:
    FChainedTable<FMetaClass, std::string_view, ByName> byName{kNameBuckets};
    FChainedTable<FMetaClass, FUIDBytes, ByIdentifier> byIdentifier{kIdentifierBuckets};
};

ClassFactory* ClassFactory::getInstance(bool create) {
    static constinit FSingleton<ClassFactory> instance([] { return new ClassFactory; });
    return instance.get(create);
}

ClassFactory::ClassFactory() : tables_(new Tables) {}

ClassFactory::~ClassFactory() = default;

const char* ClassFactory::getClassName() const {
    return kClassName;
}

bool ClassFactory::isTypeOf(const char* className, bool askBase) const {
    if (className != nullptr && std::strcmp(className, kClassName) == 0) {
        return true;
    }
    return askBase && FObject::isTypeOf(className, true);
}

void ClassFactory::addClass(FMetaClass* record) {
    if (record->getName() != nullptr) {
        tables_->byName.add(record->getName(), record);
    }
    if (record->getClassUID().isValid()) {
        tables_->byIdentifier.add(record->getClassUID(), record);
    }
}

void ClassFactory::removeClass(FMetaClass* record) {
    if (record->getName() != nullptr) {
        tables_->byName.remove(record->getName(), record);
    }
    if (record->getClassUID().isValid()) {
        tables_->byIdentifier.remove(record->getClassUID(), record);
    }
}

FMetaClass* ClassFactory::findByName(const char* name) const {
    return name != nullptr ? tables_->byName.find(name) : nullptr;
}

FMetaClass* ClassFactory::findByUID(const FUIDBytes& uid) const {
    return tables_->byIdentifier.find(uid);
}

FMetaClass* ClassFactory::recordOf(const char* name) const {
    if (FMetaClass* record = findByName(name)) {
        return record;
    }
    FUID uid;
    return uid.fromString(name) ? findByUID(uid) : nullptr;
}

void* ClassFactory::createInstance(const FUIDBytes& uid) const {
    const FMetaClass* record = findByUID(uid);
    return record != nullptr && record->getFactory() != nullptr ? record->getFactory()() : nullptr;
}

void* ClassFactory::createInstance(const char* name) const {
    const FMetaClass* record = recordOf(name);
    return record != nullptr && record->getFactory() != nullptr ? record->getFactory()() : nullptr;
}

CmObject* ClassFactory::createObject(const char* name) const {
    const FMetaClass* record = findByName(name);
    if (record == nullptr || record->getFactory() == nullptr || record->getClassUID().isValid()) {
        return nullptr;
    }
    return static_cast<CmObject*>(record->getFactory()());
}

bool ClassFactory::getPersistentClassName(IBaseUnknown* object, IStringSource* target, bool useRegistry) const {
    if (object == nullptr || target == nullptr) {
        return false;
    }
    void* own = nullptr;
    if (object->queryInterface(FObject::privateUID(), &own) == kResultOk && own != nullptr) {
        const auto known = FRefPtr<FObject>::adopt(static_cast<FObject*>(own));
        const FMetaClass* record = useRegistry ? findByName(known->getClassName()) : nullptr;
        if (!useRegistry || record != nullptr) {
            target->setText8(useRegistry ? record->getPersistentName() : known->getClassName());
            return true;
        }
    }
    FUIDBytes uid;
    const auto persistent = queryFor<IPersistentObject>(object);
    if (!persistent || persistent->getClassUID(uid) != kResultOk || (useRegistry && findByUID(uid) == nullptr)) {
        return false;
    }
    char text[FUID::kTextSize];
    FUID(uid).toString(text);
    target->setText8(text);
    return true;
}

std::vector<const FMetaClass*> ClassFactory::getRecords() const {
    std::vector<const FMetaClass*> records;
    tables_->byName.forEach([&](const FMetaClass& record) { records.push_back(&record); });
    tables_->byIdentifier.forEach([&](const FMetaClass& record) {
        if (record.getName() == nullptr) {
            records.push_back(&record);
        }
    });
    return records;
}

} // namespace tessera
