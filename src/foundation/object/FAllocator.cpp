#include "foundation/object/FAllocator.h"

#include <cstdlib>

namespace tessera {

FAllocator& FAllocator::getInstance() {
    static constinit FAllocator instance;
    return instance;
}

void* FAllocator::allocate(std::uint64_t size) {
    return std::malloc(size);
}

void* FAllocator::reallocate(void* block, std::uint64_t size) {
    return std::realloc(block, size);
}

void FAllocator::free(void* block) {
    std::free(block);
}

} // namespace tessera
