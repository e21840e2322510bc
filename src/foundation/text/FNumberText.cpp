#include "foundation/text/FNumberText.h"

#include <charconv>

namespace tessera {

FNumberText FNumberText::integer(std::int64_t value) {
    FNumberText number;
    number.length_ =
        static_cast<std::int32_t>(std::to_chars(number.text_, number.text_ + kRoom - 1, value).ptr - number.text_);
    return number;
}

FNumberText FNumberText::unsignedInteger(std::uint64_t value) {
    FNumberText number;
    number.length_ =
        static_cast<std::int32_t>(std::to_chars(number.text_, number.text_ + kRoom - 1, value).ptr - number.text_);
    return number;
}

FNumberText FNumberText::exact(double value) {
    FNumberText number;
    const auto end = std::to_chars(number.text_, number.text_ + kRoom - 1, value, std::chars_format::general, 50).ptr;
    number.length_ = static_cast<std::int32_t>(end - number.text_);
    return number;
}

FNumberText FNumberText::shortest(double value) {
    FNumberText number;
    number.length_ =
        static_cast<std::int32_t>(std::to_chars(number.text_, number.text_ + kRoom - 1, value).ptr - number.text_);
    return number;
}

} // namespace tessera
