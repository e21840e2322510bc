// UIntDefValue: an integer value that remembers its default. The default isn't saved: it belongs to the program, not to
// the document.
#pragma once

#include "foundation/values/UIntValue.h"

namespace tessera {

class UIntDefValue : public CmClass<UIntDefValue, UIntValue> {
public:
    static FMetaClass metaClass;
    static constexpr const char* kBindingName = "Binding::IntDefValue";

    UIntDefValue() = default;
    // Starts with the default as its value.
    explicit UIntDefValue(std::int32_t defaultValue, std::int32_t minimum, std::int32_t maximum);

    bool isTypeOf(const char* className, bool askBase) const override;
    UIntDefValue* clone() const override;
    std::int32_t getDefault() const override;
    void setDefault(std::int32_t value) override;

private:
    std::int32_t defaultValue_ = 0;
};

} // namespace tessera
