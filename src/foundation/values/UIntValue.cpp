#include "foundation/values/UIntValue.h"

#include "foundation/text/FNumberScan.h"
#include "foundation/values/CutToInteger.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace tessera {
namespace {

// The number that the text is from its first character to its last.
std::optional<double> wholeNumber(const FStringRef& text) {
    double number = 0;
    const auto readsAll = [&number](auto view) {
        const auto* end = view.data() + view.size();
        return FNumberScan::anyFloat(view.data(), end, number) == end;
    };
    if (text.isEmpty() || !(text.isWide() ? readsAll(text.view16()) : readsAll(text.view8()))) {
        return std::nullopt;
    }
    return number;
}

// The number in front of the operator that ends the text, reckoned with the value.
std::optional<double> operationOn(double value, const FStringRef& text) {
    const std::int32_t last = text.length() - 1;
    double number = 0;
    if (last < 1 || !FStringRef(text, 0, last).getFloat(number) || !std::isfinite(number)) {
        return std::nullopt;
    }
    switch (text.isWide() ? text.view16().back() : static_cast<char16_t>(text.view8().back())) {
    case u'*':
        return value * number;
    case u'+':
        return number + value;
    case u'-':
        return value - number;
    case u'/':
        return number != 0 ? std::optional<double>(value / number) : std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace

UIntValue::UIntValue() : CmClass(static_cast<std::uint32_t>(kIntegerKind)) {}

UIntValue::UIntValue(std::int32_t value, std::int32_t minimum, std::int32_t maximum)
    : CmClass(static_cast<std::uint32_t>(kIntegerKind)), value_(value), minimum_(minimum), maximum_(maximum) {}

bool UIntValue::isTypeOf(const char* className, bool askBase) const {
    return CmClass::isTypeOf(className, askBase) ||
           (className != nullptr && (std::string_view(className) == kBindingName ||
                                     (askBase && std::string_view(className) == UValue::kBindingName)));
}

UIntValue* UIntValue::clone() const {
    return new UIntValue(*this);
}

std::int32_t UIntValue::limit(std::int32_t value) const {
    if (value >= minimum_ && value <= maximum_) {
        return value;
    }
    const std::int64_t minimum = minimum_;
    const std::int64_t maximum = maximum_;
    const std::int64_t width = maximum - minimum;
    if (!hasState(kWraps) || width <= 0) {
        return value < minimum_ ? minimum_ : maximum_;
    }
    const std::int64_t rest = (value - minimum) % width;
    const std::int64_t wrapped = rest >= 0 ? minimum - 1 + rest : maximum + 1 + rest;
    // One below the smallest integer there is.
    return static_cast<std::int32_t>(std::max<std::int64_t>(wrapped, std::numeric_limits<std::int32_t>::min()));
}

void UIntValue::setValue(std::int32_t value) {
    const std::int32_t limited = limit(value);
    if (limited == value_ || !checkChange()) {
        return;
    }
    value_ = limited;
    applyChange();
    if (!hasState(kUnreported)) {
        notify();
    }
}

std::int32_t UIntValue::getValue() const {
    return value_;
}

std::int32_t UIntValue::getMinimum() const {
    return minimum_;
}

void UIntValue::setMinimum(std::int32_t minimum) {
    minimum_ = minimum;
}

std::int32_t UIntValue::getMaximum() const {
    return maximum_;
}

void UIntValue::setMaximum(std::int32_t maximum) {
    maximum_ = maximum;
}

bool UIntValue::getString(FString& text) const {
    return text.printf("%d", value_);
}

bool UIntValue::setString(const FStringRef& text) {
    std::optional<double> number = wholeNumber(text);
    if (!number) {
        number = operationOn(value_, text);
    } else if (!std::isfinite(*number)) {
        return false;
    }
    if (!number) {
        return false;
    }
    setValue(cutToInteger(*number));
    return true;
}

} // namespace tessera
