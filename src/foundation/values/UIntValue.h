// UIntValue: a value that holds an integer in a range, from 0 to 1 at first.
//
// setValue limits what it is given, does nothing when that is the present value or checkChange forbids the change, and
// else stores it, calls applyChange and, unless reporting is off, notify.
//
// limit without wrapping gives the nearer end of the range. With wrapping a value outside comes out as minimum - 1 plus
// its distance from the minimum modulo the width of the range (maximum - minimum), or, below the minimum, as
// maximum + 1 less as much. So in the range 0 to 3, 5 becomes 1 and -1 becomes 3; and each exact multiple of the width
// ends one below the minimum: 6 and -3 become -1. That is how wrapping values have always behaved, and what is stored
// depends on it.
//
// Saved as "Value", "Min" and "Max"; the range is restored first, so that the value meets its own. Written to documents
// as "Binding::IntValue".
#pragma once

#include "foundation/values/UValue.h"

namespace tessera {

class UIntValue : public CmClass<UIntValue, UValue> {
public:
    static FMetaClass metaClass;
    static constexpr const char* kBindingName = "Binding::IntValue";

    UIntValue();
    explicit UIntValue(std::int32_t value, std::int32_t minimum, std::int32_t maximum);

    bool isTypeOf(const char* className, bool askBase) const override;
    UIntValue* clone() const override;
    bool storeAttributes(FAttributes& attributes) const override;
    // Each of the three may be missing, and is left as it is then. The value is set as by setValue.
    bool restoreAttributes(FAttributes& attributes) override;

    std::int32_t limit(std::int32_t value) const override;
    void setValue(std::int32_t value) override;
    std::int32_t getValue() const override;
    std::int32_t getMinimum() const override;
    void setMinimum(std::int32_t minimum) override;
    std::int32_t getMaximum() const override;
    void setMaximum(std::int32_t maximum) override;
    bool getString(FString& text) const override;
    // A plain number becomes the value. A number followed by one of * + - / is reckoned with the present value: "2*"
    // doubles it, "5-" takes 5 off, "-5" is the number. The result is cut to an integer. False, and nothing changed,
    // for anything else: no number, "inf" and "nan", a division by 0.
    bool setString(const FStringRef& text) override;

private:
    std::int32_t value_ = 0;
    std::int32_t minimum_ = 0;
    std::int32_t maximum_ = 1;
};

} // namespace tessera
