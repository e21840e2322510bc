#include "foundation/values/UIntValue.h"
#include "persistence/attributes/FAttributes.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace tessera {
namespace {

constexpr char kValue[] = "Value";
constexpr char kMinimum[] = "Min";
constexpr char kMaximum[] = "Max";

std::optional<std::int32_t> integerOf(const FAttributes& attributes, const char* name) {
    using Limits = std::numeric_limits<std::int32_t>;
    std::int64_t number = 0;
    if (!attributes.getInt(name, number)) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

} // namespace

bool UIntValue::storeAttributes(FAttributes& attributes) const {
    return attributes.setInt(kValue, getValue()) && attributes.setInt(kMinimum, getMinimum()) &&
           attributes.setInt(kMaximum, getMaximum());
}

bool UIntValue::restoreAttributes(FAttributes& attributes) {
    if (const auto minimum = integerOf(attributes, kMinimum)) {
        setMinimum(*minimum);
    }
    if (const auto maximum = integerOf(attributes, kMaximum)) {
        setMaximum(*maximum);
    }
    if (const auto value = integerOf(attributes, kValue)) {
        setValue(*value);
    }
    return true;
}

} // namespace tessera
