// Atomic operations on plain words, sequentially consistent all.
#pragma once

#include <atomic>
#include <cstdint>

namespace tessera {

// Gives the value before.
inline std::int32_t atomicAdd(std::int32_t& word, std::int32_t value) {
    return std::atomic_ref(word).fetch_add(value);
}

// Gives the value after, as reference counts need it.
inline std::int32_t atomicAddAfter(std::int32_t& word, std::int32_t value) {
    // Counts wrap; signed addition outside the atomic operation may not.
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::atomic_ref(word).fetch_add(value)) +
                                     static_cast<std::uint32_t>(value));
}

inline std::int32_t atomicIncrement(std::int32_t& word) {
    return atomicAdd(word, 1);
}

inline std::int32_t atomicDecrement(std::int32_t& word) {
    return atomicAdd(word, -1);
}

// Whether the word held `expected` and now holds `value`.
inline bool atomicCompareExchange(std::int32_t& word, std::int32_t expected, std::int32_t value) {
    return std::atomic_ref(word).compare_exchange_strong(expected, value);
}

template <class T>
bool atomicCompareExchange(T*& word, T* expected, T* value) {
    return std::atomic_ref<T*>(word).compare_exchange_strong(expected, value);
}

} // namespace tessera
