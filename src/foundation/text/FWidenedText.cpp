#include "foundation/text/FWidenedText.h"

#include "foundation/text/FTextConversion.h"

#include <cstdlib>

namespace tessera {

FWidenedText::FWidenedText(const FStringRef& source) {
    if (source.isWide() || source.isEmpty()) {
        view_ = source.view16();
        return;
    }
    const std::string_view text = source.view8();
    const std::ptrdiff_t length = FTextConversion::widenedLength(CodePage::system, text);
    char16_t* target = local_;
    if (length > kShort) {
        heap_ = static_cast<char16_t*>(std::malloc(static_cast<std::size_t>(length) * sizeof(char16_t)));
        target = heap_;
    }
    valid_ = length > 0 && target != nullptr &&
             FTextConversion::widen(CodePage::system, text, target, static_cast<std::size_t>(length)) == length;
    if (valid_) {
        view_ = std::u16string_view(target, static_cast<std::size_t>(length));
        view_ = view_.substr(0, view_.find(u'\0'));
    }
}

FWidenedText::~FWidenedText() {
    std::free(heap_);
}

} // namespace tessera
