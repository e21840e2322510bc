// slotOf: where in its class's table a virtual operation stands, so that tests can compare it with the number that
// others call it by.
#pragma once

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>

namespace tessera::test {

// The common table layout of our platforms keeps, in a pointer to a virtual operation, where in the table it stands:
// the offset of its entry plus one.
template <class Operation>
std::size_t slotOf(Operation operation) {
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof operation == sizeof words);
    std::memcpy(words, &operation, sizeof words);
    return static_cast<std::size_t>(words[0] - 1) / sizeof(void*);
}

// For operations that are declared in the order of a contract: each stands behind the one before it.
inline void expectConsecutive(std::initializer_list<std::size_t> slots) {
    std::size_t expected = *slots.begin();
    for (const std::size_t slot : slots) {
        EXPECT_EQ(slot, expected);
        ++expected;
    }
}

} // namespace tessera::test
