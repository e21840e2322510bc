#include "components/FComponentDescription.h"

#include "components/RecordText.h"

namespace tessera {

FComponentDescription::FComponentDescription(const ClassInfoWide& info) : info_(info), uid_(info.classId) {}

bool FComponentDescription::releaseInstance(IBaseUnknown* instance) {
    if (instance == nullptr) {
        return false;
    }
    instance->release();
    return true;
}

FModule* FComponentDescription::getModule() const {
    return nullptr;
}

FStringRef FComponentDescription::getCategory() const {
    return fieldText(info_.category);
}

FStringRef FComponentDescription::getName() const {
    return fieldText(info_.name);
}

FStringRef FComponentDescription::getVersion() const {
    return fieldText(info_.version);
}

FStringRef FComponentDescription::getSdkVersion() const {
    return fieldText(info_.sdkVersion);
}

FStringRef FComponentDescription::getSubCategories() const {
    return fieldText(info_.subcategories);
}

} // namespace tessera
