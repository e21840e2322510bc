#include "persistence/attributes/FSubList.h"

#include "persistence/attributes/FAttributes.h"

namespace tessera {

FSubList::FSubList(const FSubList& other) : CmClass(other) {
    trees_.reserve(other.trees_.size());
    for (const FAttributes* tree : other.trees_) {
        append(tree->clone());
    }
}

FSubList::~FSubList() {
    for (FAttributes* tree : trees_) {
        tree->release();
    }
}

bool FSubList::append(FAttributes* tree) {
    if (tree == nullptr) {
        return false;
    }
    trees_.push_back(tree);
    return true;
}

FAttributes* FSubList::at(std::int32_t index) const {
    return index >= 0 && index < count() ? trees_[static_cast<std::size_t>(index)] : nullptr;
}

FAttributes* FSubList::next() {
    if (cursor_ >= count()) {
        reset();
        return nullptr;
    }
    return at(cursor_++);
}

} // namespace tessera
