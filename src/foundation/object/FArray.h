// FArray: the private growable array of plain values, pointers or 32-bit integers, that the foundation's own tables are
// made of. It holds no CmObjects and knows no ownership; CmArray is the container of objects.
//
// growth: -1 doubles the capacity, starting from 10; above 0 adds that many; any other value refuses to grow. A bad
// index gives the empty element. Failed allocations give false and leave the array as it was. Not synchronised.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

namespace tessera {

template <class T>
class FArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    explicit FArray(std::int32_t growth = 10, T empty = T()) : empty_(empty), growth_(growth) {}
    FArray(const FArray& other) : FArray(other.growth_, other.empty_) { copyFrom(other); }
    FArray& operator=(const FArray& other) {
        if (this != &other) {
            count_ = 0;
            copyFrom(other);
        }
        return *this;
    }
    virtual ~FArray() = default;

    std::int32_t getCount() const { return count_; }
    std::int32_t getCapacity() const { return capacity_; }
    T at(std::int32_t index) const { return contains(index) ? data_[index] : empty_; }
    T* begin() const { return data_.get(); }
    T* end() const { return data_.get() + count_; }

    bool add(T value) { return insertAt(count_, value); }
    bool insertAt(std::int32_t index, T value) {
        if (index < 0 || index > count_ || (count_ == capacity_ && !grow())) {
            return false;
        }
        std::copy_backward(begin() + index, end(), end() + 1);
        data_[index] = value;
        ++count_;
        return true;
    }
    bool setAt(std::int32_t index, T value) {
        if (!contains(index)) {
            return false;
        }
        data_[index] = value;
        return true;
    }
    bool removeAt(std::int32_t index) {
        if (!contains(index)) {
            return false;
        }
        std::copy(begin() + index + 1, end(), begin() + index);
        --count_;
        return true;
    }
    // The first such element, or -1.
    std::int32_t indexOf(T value) const {
        const T* found = std::find(begin(), end(), value);
        return found != end() ? static_cast<std::int32_t>(found - begin()) : -1;
    }
    bool remove(T value) { return removeAt(indexOf(value)); }
    // Gives the memory back as well.
    void removeAll() {
        data_.reset();
        count_ = 0;
        capacity_ = 0;
    }
    bool setCapacity(std::int32_t capacity) {
        if (capacity < count_) {
            return false;
        }
        std::unique_ptr<T[]> data(new (std::nothrow) T[static_cast<std::size_t>(capacity)]);
        if (!data) {
            return false;
        }
        std::copy(begin(), end(), data.get());
        data_ = std::move(data);
        capacity_ = capacity;
        return true;
    }

private:
    bool contains(std::int32_t index) const { return index >= 0 && index < count_; }

    bool grow() {
        constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
        const std::int32_t step = growth_ == -1 ? (capacity_ == 0 ? 10 : capacity_) : growth_;
        return step > 0 && capacity_ <= kLargest - step && setCapacity(capacity_ + step);
    }

    void copyFrom(const FArray& other) {
        if (capacity_ < other.count_ && !setCapacity(other.count_)) {
            return;
        }
        std::copy(other.begin(), other.end(), begin());
        count_ = other.count_;
    }

    T empty_;
    std::int32_t capacity_ = 0;
    std::int32_t growth_;
    std::int32_t count_ = 0;
    std::unique_ptr<T[]> data_;
};

} // namespace tessera
