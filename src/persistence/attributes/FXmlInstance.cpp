#include "persistence/attributes/FXmlInstance.h"

#include "foundation/object/ClassFactory.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/objects/PersistenceHooks.h"

#include <utility>

namespace tessera {

namespace {

constexpr std::int32_t kUnknownClass = -98;

thread_local int buildDepth = 0;

} // namespace

FXmlInstance::FXmlInstance(std::uint64_t id, FString className, FAttributes* attributes)
    : CmClass(id), attributes_(FRefPtr<FAttributes>::adopt(attributes)), className_(std::move(className)) {}

FXmlInstance::~FXmlInstance() = default;

CmObject* FXmlInstance::getObject() {
    if (!object_ && attributes_ && !className_.isEmpty() && buildDepth < kDeepestBuild) {
        ++buildDepth;
        build();
        --buildDepth;
    }
    return object_.get();
}

void FXmlInstance::build() {
    // Out of the way first: the tree may lead back here.
    const FRefPtr<FAttributes> attributes = std::move(attributes_);
    const ClassFactory* registry = ClassFactory::getInstance(false);
    if (registry == nullptr) {
        return;
    }
    object_ = FRefPtr<CmObject>::adopt(registry->createObject(className_.text8()));
    if (!object_) {
        reportError(kUnknownClass, className_);
    } else if (!object_->restoreAttributes(*attributes)) {
        object_.reset();
    }
}

bool FXmlInstance::isClass(const char* className) const {
    return className != nullptr && className_ == FStringRef(className);
}

FXmlInstance* FXmlInstance::clone() const {
    auto* self = const_cast<FXmlInstance*>(this);
    self->addRef();
    return self;
}

} // namespace tessera
