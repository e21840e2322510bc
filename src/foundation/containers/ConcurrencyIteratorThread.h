// ConcurrencyIteratorThread: calls a functor for one stretch of a container, beside other threads with theirs.
//
// All of them share one flag: it is looked at before each element, and set when the functor gives false. The container
// must not change meanwhile; functor and flag belong to the one who starts and joins the thread.
#pragma once

#include "foundation/containers/CmFunctor.h"
#include "foundation/containers/CmIterator.h"
#include "foundation/threads/FThread.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace tessera {

class ConcurrencyIteratorThread : public FThread {
public:
    // The iterator stands on the first of so many elements.
    ConcurrencyIteratorThread(std::unique_ptr<CmIterator> iterator, std::int32_t count, CmFunctor functor,
                              std::atomic<bool>& stop);

    std::uint32_t run() override;

private:
    std::unique_ptr<CmIterator> iterator_;
    std::int32_t count_;
    CmFunctor functor_;
    std::atomic<bool>& stop_;
};

} // namespace tessera
