#include "foundation/values/UIntDefValue.h"

#include <string_view>

namespace tessera {

UIntDefValue::UIntDefValue(std::int32_t defaultValue, std::int32_t minimum, std::int32_t maximum)
    : CmClass(defaultValue, minimum, maximum), defaultValue_(defaultValue) {}

bool UIntDefValue::isTypeOf(const char* className, bool askBase) const {
    return CmClass::isTypeOf(className, askBase) ||
           (className != nullptr && (std::string_view(className) == kBindingName ||
                                     (askBase && (std::string_view(className) == UIntValue::kBindingName ||
                                                  std::string_view(className) == UValue::kBindingName))));
}

UIntDefValue* UIntDefValue::clone() const {
    return new UIntDefValue(*this);
}

std::int32_t UIntDefValue::getDefault() const {
    return defaultValue_;
}

void UIntDefValue::setDefault(std::int32_t value) {
    defaultValue_ = value;
}

} // namespace tessera
