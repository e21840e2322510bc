#include "foundation/object/FMetaClass.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FObject.h"
#include "foundation/object/FSingletonList.h"

#include <cstring>

namespace tessera {
namespace {

constexpr char kRootName[] = "FObject";

} // namespace

FMetaClass::FMetaClass(const char* name, const FMetaClass* parent, Factory factory, const FUIDBytes& classUID)
    : name_(name), persistentName_(name), classUID_(classUID), factory_(factory), parent_(parent) {
    enter();
}

FMetaClass::FMetaClass(const char* alias, FMetaClass& aliased)
    : name_(alias), persistentName_(alias), factory_(aliased.factory_), parent_(nullptr) {
    aliased.persistentName_ = alias;
    enter();
}

FMetaClass::~FMetaClass() {
    classUID_ = FUID();
}

void FMetaClass::enter() {
    // Whichever record comes first makes these, so the order of the tables among themselves doesn't matter: the exit
    // handler of the singleton list runs behind the end of every record.
    FSingletonList::touch();
    static_cast<void>(FObject::privateUID());
    if (factory_ == nullptr && parent_ == nullptr) {
        return;
    }
    if (ClassFactory* registry = ClassFactory::getInstance(true)) {
        registry->addClass(this);
    }
}

bool FMetaClass::isTypeOf(const char* className, bool askBase) const {
    if (className == nullptr) {
        return false;
    }
    // Most questions are asked with the very text of a record, which needs no comparison of characters.
    const FMetaClass* const end = askBase ? nullptr : parent_;
    for (const FMetaClass* record = this; record != end; record = record->parent_) {
        if (record->name_ == className) {
            return true;
        }
    }
    for (const FMetaClass* record = this; record != end; record = record->parent_) {
        if (record->name_ != nullptr && std::strcmp(record->name_, className) == 0) {
            return true;
        }
    }
    return askBase && std::strcmp(className, kRootName) == 0;
}

} // namespace tessera
