#include "foundation/containers/ConcurrencyIteratorThread.h"

#include <utility>

namespace tessera {

ConcurrencyIteratorThread::ConcurrencyIteratorThread(std::unique_ptr<CmIterator> iterator, std::int32_t count,
                                                     CmFunctor functor, std::atomic<bool>& stop)
    : FThread("ConcurrencyIteratorThread"),
      iterator_(std::move(iterator)),
      count_(count),
      functor_(functor),
      stop_(stop) {}

std::uint32_t ConcurrencyIteratorThread::run() {
    for (std::int32_t left = count_; left > 0 && !stop_.load(std::memory_order_relaxed); --left) {
        CmObject* element = iterator_->next();
        if (element == nullptr) {
            break;
        }
        if (!functor_(element)) {
            stop_.store(true, std::memory_order_relaxed);
        }
    }
    return 0;
}

} // namespace tessera
