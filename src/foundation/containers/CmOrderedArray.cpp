#include "foundation/containers/CmOrderedArray.h"

namespace tessera {

CmOrderedArray* CmOrderedArray::clone() const {
    auto* copy = new CmOrderedArray(count_, growth_);
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
    std::int32_t high = count_;
    while (low < high) {
        std::int32_t middle = low + (high - low) / 2;
        const int order = element->compare(data_[middle]);
        if (order == 0) {
            while (middle > 0 && data_[middle - 1]->isEqual(element)) {
                --middle;
            }
            return middle;
        }
        (order < 0 ? high : low) = order < 0 ? middle : middle + 1;
    }
    return -1;
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
    // The ends first: lists are often filled in order, one way or the other.
    if (count_ == 0 || element->compare(data_[0]) < 0) {
        return 0;
    }
    if (element->compare(data_[count_ - 1]) >= 0) {
        return count_;
    }
    std::int32_t low = 1;
    std::int32_t high = count_ - 1;
    while (low < high) {
        const std::int32_t middle = low + (high - low) / 2;
        if (element->compare(data_[middle]) < 0) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return low;
}

bool CmOrderedArray::fitsBetween(std::int32_t below, const CmObject* element, std::int32_t above) const {
    return (!isIndex(below) || element->compare(data_[below]) >= 0) &&
           (!isIndex(above) || element->compare(data_[above]) <= 0);
}

} // namespace tessera
