#include "appservices/translation/TextStore.h"

#include <algorithm>
#include <utility>

namespace tessera {

const char16_t* TextStore::add(std::u16string_view text) {
    const std::size_t needed = text.size() + 1;
    if (needed > left_) {
        const std::size_t size = std::max(needed, kBlockSize);
        // Every character that is handed out gets written: no need to clear the block.
        blocks_.emplace_back(new char16_t[size]);
        free_ = blocks_.back().get();
        left_ = size;
    }
    char16_t* const place = std::exchange(free_, free_ + needed);
    left_ -= needed;
    *std::copy(text.begin(), text.end(), place) = u'\0';
    return place;
}

void TextStore::clear() {
    blocks_.clear();
    free_ = nullptr;
    left_ = 0;
}

} // namespace tessera
