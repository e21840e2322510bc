// BenchmarkKey: the element of the container benchmarks: ordered, equal and hashed by a number. The rivals hold
// pointers to the same objects and ask the same virtual operations, so what is compared is the containers.
#pragma once

#include "foundation/object/CmObject.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace tessera::benchmarks {

class BenchmarkKey : public CmObject {
public:
    explicit BenchmarkKey(std::int64_t number = 0) : number_(number) {}

    bool isEqual(const CmObject* other) const override { return number_ == numberOf(other); }
    int compare(const CmObject* other) const override {
        const std::int64_t others = numberOf(other);
        return number_ < others ? -1 : number_ > others ? 1 : 0;
    }
    std::uint32_t hash(std::uint32_t tableSize) const override {
        return static_cast<std::uint32_t>(static_cast<std::uint64_t>(number_) % tableSize);
    }

private:
    static std::int64_t numberOf(const CmObject* object) { return static_cast<const BenchmarkKey*>(object)->number_; }

    std::int64_t number_;
};

struct Below {
    bool operator()(const CmObject* a, const CmObject* b) const { return a->compare(b) < 0; }
};

// Distinct keys in an order that is random and always the same.
class Keys {
public:
    explicit Keys(std::int64_t count) {
        std::vector<std::int64_t> numbers(static_cast<std::size_t>(count));
        for (std::int64_t number = 0; number < count; ++number) {
            numbers[static_cast<std::size_t>(number)] = number * 7;
        }
        std::shuffle(numbers.begin(), numbers.end(), std::mt19937_64(42));
        objects_.reserve(numbers.size());
        for (const std::int64_t number : numbers) {
            objects_.push_back(std::make_unique<BenchmarkKey>(number));
            order_.push_back(objects_.back().get());
        }
        std::shuffle(order_.begin(), order_.end(), std::mt19937_64(43));
    }

    std::size_t size() const { return objects_.size(); }
    auto begin() const { return order_.begin(); }
    auto end() const { return order_.end(); }
    // In another order than begin() to end().
    BenchmarkKey* at(std::size_t index) const { return objects_[index].get(); }

private:
    std::vector<std::unique_ptr<BenchmarkKey>> objects_;
    std::vector<BenchmarkKey*> order_;
};

// Benchmarks are called anew for each repetition, and several times before the first to find out how long they take.
// What they only read is made once for each size, and never taken down: a million keys cost more than most of what is
// measured with them.
inline const Keys& keysOf(std::int64_t count) {
    static auto& made = *new std::map<std::int64_t, Keys>;
    return made.try_emplace(count, count).first->second;
}

// A container with all of the keys in it, likewise; fill(container, keys) makes it.
template <class Side, class Fill>
Side& filledWith(std::int64_t count, Fill fill) {
    static auto& made = *new std::map<std::int64_t, Side>;
    const auto [place, isNew] = made.try_emplace(count);
    if (isNew) {
        fill(place->second, keysOf(count));
    }
    return place->second;
}

} // namespace tessera::benchmarks
