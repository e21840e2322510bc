// slotOf: where in its class's table a virtual operation stands, so that tests can compare it with the number that
// others call it by.
#pragma once

#include <cstddef>
#include <cstring>

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

} // namespace tessera::test
