#include "persistence/attributes/FStringList.h"

#include <algorithm>
#include <cstdlib>

namespace tessera {

FStringList::FStringList(const FStringList& other) : CmClass(other), ownsText_(true) {
    texts_.reserve(other.texts_.size());
    for (const FStringRef& text : other.texts_) {
        append(text);
    }
}

FStringList::~FStringList() {
    if (!ownsText_) {
        return;
    }
    for (const FStringRef& text : texts_) {
        std::free(const_cast<void*>(text.rawText()));
    }
}

bool FStringList::isWide() const {
    return ownsText_ || std::any_of(texts_.begin(), texts_.end(), [](const FStringRef& text) { return text.isWide(); });
}

bool FStringList::append(const FStringRef& text, TextHolding holding) {
    if (ownsText_ != (holding == TextHolding::copied)) {
        return false;
    }
    if (!ownsText_) {
        texts_.push_back(text);
        return true;
    }
    FString copy;
    if (!copy.assign(text)) {
        return false;
    }
    copy.toWide();
    const std::int32_t length = copy.length();
    const bool wide = copy.isWide();
    void* const buffer = copy.release();
    texts_.push_back(wide ? FStringRef(static_cast<const char16_t*>(buffer), length)
                          : FStringRef(static_cast<const char*>(buffer), length));
    return true;
}

FStringRef FStringList::at(std::int32_t index) const {
    return index >= 0 && index < count() ? texts_[static_cast<std::size_t>(index)] : FStringRef();
}

bool FStringList::next(FStringRef& out) {
    if (cursor_ >= count()) {
        return false;
    }
    out = at(cursor_++);
    return true;
}

} // namespace tessera
