#include "foundation/containers/CmArrayForm.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

namespace tessera {

namespace {

bool sortsBelow(const CmObject* a, const CmObject* b) {
    return a->compare(b) < 0;
}

void insertionSort(CmObject** begin, CmObject** end) {
    for (CmObject** next = begin; next != end; ++next) {
        CmObject* element = *next;
        CmObject** place = next;
        for (; place != begin && sortsBelow(element, place[-1]); --place) {
            *place = place[-1];
        }
        *place = element;
    }
}

// From the whole down, and not in passes over all of it as the library does: a part that fits into the processor's
// cache is finished before the next one is touched, and with pointers it's the objects behind them that count. The
// spare holds half of the range.
void mergeSort(CmObject** begin, CmObject** end, CmObject** spare) {
    constexpr std::ptrdiff_t kShort = 8;
    if (end - begin <= kShort) {
        insertionSort(begin, end);
        return;
    }
    CmObject** const middle = begin + (end - begin) / 2;
    mergeSort(begin, middle, spare);
    mergeSort(middle, end, spare);
    if (!sortsBelow(*middle, middle[-1])) {
        return;
    }
    CmObject** const spareEnd = std::copy(begin, middle, spare);
    CmObject** left = spare;
    CmObject** right = middle;
    CmObject** target = begin;
    while (left != spareEnd && right != end) {
        *target++ = sortsBelow(*right, *left) ? *right++ : *left++;
    }
    std::copy(left, spareEnd, target);
}

} // namespace

class CmArrayForm::Iterator final : public CmIterator {
public:
    explicit Iterator(const CmArrayForm& array) : CmIterator(array), array_(array) { moveTo(0); }

    bool isDone() const override { return !array_.isIndex(index_); }
    CmObject* next() override {
        CmObject* element = current();
        moveTo(element != nullptr ? index_ + 1 : kDone);
        return element;
    }
    CmObject* previous() override {
        CmObject* element = current();
        moveTo(element != nullptr ? index_ - 1 : kDone);
        return element;
    }
    CmObject* current() const override { return array_.at(index_); }
    void first() override { moveTo(0); }
    void last() override { moveTo(array_.count_ - 1); }
    bool seek(const CmObject* element) override {
        moveTo(array_.indexOfInstance(element));
        return index_ != kDone;
    }
    CmObject* advance(std::int32_t count) override {
        moveTo(isDone() ? kDone : static_cast<std::int64_t>(index_) + count);
        return current();
    }
    CmObject* retreat(std::int32_t count) override {
        moveTo(isDone() ? kDone : static_cast<std::int64_t>(index_) - count);
        return current();
    }
    std::int32_t index() const { return index_; }
    // One place for done, so that an element appended later doesn't bring the iterator back.
    void moveTo(std::int64_t index) {
        index_ = index >= 0 && index < array_.count_ ? static_cast<std::int32_t>(index) : kDone;
    }

private:
    static constexpr std::int32_t kDone = -1;

    const CmArrayForm& array_;
    std::int32_t index_ = kDone;
};

CmArrayForm::CmArrayForm(std::int32_t capacity, std::int32_t growth) : growth_(growth) {
    if (capacity > 0) {
        reallocate(capacity);
    }
}

CmArrayForm::~CmArrayForm() {
    CmArrayForm::removeAll();
    std::free(data_);
}

bool CmArrayForm::removeAtIterator(CmIterator& iterator) {
    if (&iterator.container() != this) {
        return false;
    }
    auto& walker = static_cast<Iterator&>(iterator);
    if (!removeAt(walker.index())) {
        return false;
    }
    // The following element has moved to the iterator's index; behind the last one there is none.
    walker.moveTo(walker.index());
    return true;
}

bool CmArrayForm::remove(CmObject* element) {
    return removeAt(indexOfInstance(element));
}

bool CmArrayForm::removeAt(std::int32_t index) {
    if (!isIndex(index)) {
        return false;
    }
    CmObject* element = data_[index];
    std::copy(data_ + index + 1, data_ + count_, data_ + index);
    --count_;
    drop(element);
    return true;
}

void CmArrayForm::removeAll() {
    // Taken out first: an element's destructor may look at this array.
    CmObject** elements = std::exchange(data_, nullptr);
    const std::int32_t count = std::exchange(count_, 0);
    const std::int32_t size = std::exchange(size_, 0);
    for (std::int32_t index = 0; index < count; ++index) {
        drop(elements[index]);
    }
    if (growth_ == kFixed && data_ == nullptr) {
        // The only block that such an array will have.
        data_ = elements;
        size_ = size;
    } else {
        std::free(elements);
    }
}

CmObject* CmArrayForm::find(const CmObject* element) const {
    return at(indexOf(element));
}

std::int32_t CmArrayForm::indexOf(const CmObject* element) const {
    if (element == nullptr) {
        return -1;
    }
    for (std::int32_t index = 0; index < count_; ++index) {
        if (data_[index]->isEqual(element)) {
            return index;
        }
    }
    return -1;
}

std::unique_ptr<CmIterator> CmArrayForm::newIterator() const {
    return std::make_unique<Iterator>(*this);
}

bool CmArrayForm::insertAt(std::int32_t index, CmObject* element) {
    if (element == nullptr || index < 0 || index > count_ || !makeRoom()) {
        return false;
    }
    insertUnchecked(index, element);
    return true;
}

bool CmArrayForm::setCapacity(std::int32_t count) {
    if (count < 0) {
        return false;
    }
    while (count_ > count) {
        drop(data_[--count_]);
    }
    return reallocate(count);
}

bool CmArrayForm::reserve(std::int32_t count) {
    return count <= size_ || reallocate(count);
}

void CmArrayForm::sort() {
    // Without memory the library sorts in place, more slowly.
    const std::unique_ptr<CmObject*[]> spare(new (std::nothrow) CmObject*[static_cast<std::size_t>(count_ / 2 + 1)]);
    if (spare != nullptr) {
        mergeSort(data_, data_ + count_, spare.get());
    } else {
        std::stable_sort(data_, data_ + count_, sortsBelow);
    }
}

bool CmArrayForm::setAt(std::int32_t index, CmObject* element) {
    if (element == nullptr || !isIndex(index)) {
        return false;
    }
    // The new one first: it may be the one that stands there.
    retain(element);
    drop(std::exchange(data_[index], element));
    return true;
}

std::int32_t CmArrayForm::indexOfInstance(const CmObject* element) const {
    const auto* end = data_ + count_;
    const auto* found = std::find(data_, data_ + count_, element);
    return found != end ? static_cast<std::int32_t>(found - data_) : -1;
}

void CmArrayForm::insertUnchecked(std::int32_t index, CmObject* element) {
    std::copy_backward(data_ + index, data_ + count_, data_ + count_ + 1);
    data_[index] = element;
    ++count_;
    retain(element);
}

bool CmArrayForm::grow() {
    const std::int32_t step = growth_ == kDoubling ? (size_ == 0 ? kDefaultGrowth : size_) : growth_;
    return step > 0 && size_ <= std::numeric_limits<std::int32_t>::max() - step && reallocate(size_ + step);
}

bool CmArrayForm::reallocate(std::int32_t capacity) {
    if (capacity == 0) {
        std::free(std::exchange(data_, nullptr));
        size_ = 0;
        return true;
    }
    // realloc, because it remaps a big block where new and copy would touch every page.
    void* block = std::realloc(static_cast<void*>(data_), static_cast<std::size_t>(capacity) * sizeof(CmObject*));
    if (block == nullptr) {
        return false;
    }
    data_ = static_cast<CmObject**>(block);
    size_ = capacity;
    return true;
}

} // namespace tessera
