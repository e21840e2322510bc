// FAllocator: the allocator service of this module, on the C heap; one static object.
#pragma once

#include "foundation/object/FStaticService.h"
#include "foundation/object/IAllocator.h"

namespace tessera {

class FAllocator final : public FStaticService<IAllocator> {
public:
    static FAllocator& getInstance();

    void* allocate(std::uint64_t size) override;
    void* reallocate(void* block, std::uint64_t size) override;
    void free(void* block) override;
};

} // namespace tessera
