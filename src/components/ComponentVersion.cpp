#include "components/ComponentVersion.h"

#include "foundation/text/FNumberScan.h"
#include "foundation/text/FStringRef.h"

#include <algorithm>
#include <limits>

namespace tessera {
namespace {

std::int32_t narrowed(std::int64_t number) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

template <class View>
ComponentVersion parseView(View text) {
    ComponentVersion version;
    const auto* at = text.data();
    const auto* const end = at + text.size();
    for (std::int32_t& part : version.parts) {
        std::int64_t number = 0;
        at = FNumberScan::signedDecimal(at, end, number);
        if (at == nullptr) {
            break;
        }
        part = narrowed(number);
        if (at == end || *at != '.') {
            break;
        }
        ++at;
    }
    return version;
}

} // namespace

ComponentVersion ComponentVersion::parse(const FStringRef& text) {
    if (text.isEmpty()) {
        return {};
    }
    return text.isWide() ? parseView(text.view16()) : parseView(text.view8());
}

} // namespace tessera
