// IAllocator: the process heap of this module, for modules that hand over blocks which this one will free.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IAllocator : IBaseUnknown {
    static constexpr FUIDBytes iid = "{306627A6-94D0-4879-828E-0215647EA9A3}"_uid;

    // Null when there is no memory.
    virtual void* allocate(std::uint64_t size) = 0;
    // Null when there is no memory; the block is untouched then.
    virtual void* reallocate(void* block, std::uint64_t size) = 0;
    virtual void free(void* block) = 0;

protected:
    ~IAllocator() = default;
};

} // namespace tessera
