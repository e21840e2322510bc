#include "foundation/containers/CmOrderedArray.h"

#include <algorithm>

namespace tessera {

CmOrderedArray* CmOrderedArray::clone() const {
    auto* copy = new CmOrderedArray(capacityOfCopy(), growth_);
    copy->copyFrom(*this);
    return copy;
}

bool CmOrderedArray::add(CmObject* element) {
    if (element == nullptr || !makeRoom()) {
        return false;
    }
    insertUnchecked(insertionIndex(element), element);
    return true;
}

bool CmOrderedArray::remove(CmObject* element) {
    return removeAt(indexOf(element));
}

std::int32_t CmOrderedArray::indexOf(const CmObject* element) const {
    constexpr std::int32_t kLinearBelow = 3;
    if (element == nullptr || count_ < kLinearBelow) {
        return CmArrayForm::indexOf(element);
    }
    std::int32_t low = 0;
    std::int32_t index = count_;
    int orderAtIndex = 1;
    while (low < index) {
        const std::int32_t middle = low + (index - low) / 2;
        const int order = element->compare(data_[middle]);
        if (order > 0) {
            low = middle + 1;
        } else {
            index = middle;
            orderAtIndex = order;
        }
    }
    if (orderAtIndex != 0) {
        return -1;
    }
    while (index > 0 && data_[index - 1]->isEqual(element)) {
        --index;
    }
    return index;
}

bool CmOrderedArray::insertAt(std::int32_t index, CmObject* element) {
    return element != nullptr && index >= 0 && index <= count_ && fitsBetween(index - 1, element, index) &&
           CmArrayForm::insertAt(index, element);
}

bool CmOrderedArray::setAt(std::int32_t index, CmObject* element) {
    return element != nullptr && isIndex(index) && fitsBetween(index - 1, element, index + 1) &&
           CmArrayForm::setAt(index, element);
}

std::int32_t CmOrderedArray::insertionIndex(const CmObject* element) const {
    // The end first: lists are often filled in order.
    if (count_ == 0 || element->compare(data_[count_ - 1]) >= 0) {
        return count_;
    }
    const auto sortsBelow = [](const CmObject* a, const CmObject* b) { return a->compare(b) < 0; };
    return static_cast<std::int32_t>(std::upper_bound(data_, data_ + count_ - 1, element, sortsBelow) - data_);
}

bool CmOrderedArray::fitsBetween(std::int32_t below, const CmObject* element, std::int32_t above) const {
    return (!isIndex(below) || element->compare(data_[below]) >= 0) &&
           (!isIndex(above) || element->compare(data_[above]) <= 0);
}

} // namespace tessera
