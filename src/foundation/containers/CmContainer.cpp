#include "foundation/containers/CmContainer.h"

#include "foundation/containers/ConcurrencyIteratorThread.h"
#include "platform/Threads.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace tessera {

namespace {

struct Division {
    std::int32_t threads;
    std::int32_t perThread;
};

Division divide(std::int32_t count, std::int32_t threads, std::int32_t minPerThread) {
    if (threads < 1) {
        threads = std::max(1, std::popcount(platform::processAffinityMask()));
    }
    Division division{threads, count / threads};
    while (division.perThread < minPerThread && division.threads >= 2) {
        --division.threads;
        division.perThread = count / division.threads;
    }
    return division;
}

} // namespace

bool CmContainer::contains(const CmObject* element) const {
    return find(element) != nullptr;
}

bool CmContainer::containsInstance(const CmObject* element) const {
    return element != nullptr && newIterator()->seek(element);
}

std::int32_t CmContainer::countOf(const CmObject* element) const {
    std::int32_t count = 0;
    if (element != nullptr) {
        const auto iterator = newIterator();
        while (const CmObject* candidate = iterator->next()) {
            count += candidate->isEqual(element) ? 1 : 0;
        }
    }
    return count;
}

std::int32_t CmContainer::indexOf(const CmObject* element) const {
    if (element == nullptr) {
        return -1;
    }
    const auto iterator = newIterator();
    std::int32_t index = 0;
    while (const CmObject* candidate = iterator->next()) {
        if (candidate->isEqual(element)) {
            return index;
        }
        ++index;
    }
    return -1;
}

bool CmContainer::copyFrom(const CmContainer& other) {
    if (&other == this) {
        return false;
    }
    ownership_ = other.ownership_;
    const bool clones = ownership_ == CmOwnership::owner;
    bool complete = true;
    const auto iterator = other.newIterator();
    while (CmObject* element = iterator->next()) {
        CmObject* copy = clones ? element->clone() : element;
        if (add(copy)) {
            continue;
        }
        complete = false;
        if (clones && copy != nullptr) {
            discard(copy);
        }
    }
    return complete;
}

bool CmContainer::forEach(CmFunctor functor) const {
    const auto iterator = newIterator();
    while (CmObject* element = iterator->next()) {
        if (!functor(element)) {
            return false;
        }
    }
    return true;
}

CmObject* CmContainer::findFirst(CmFunctor accept) const {
    const auto iterator = newIterator();
    while (CmObject* element = iterator->next()) {
        if (accept(element)) {
            return element;
        }
    }
    return nullptr;
}

CmObject* CmContainer::findLast(CmFunctor accept) const {
    // Gathered first: an iterator's step back is linear in a list, and the functor is to see the last elements first.
    std::vector<CmObject*> elements;
    elements.reserve(static_cast<std::size_t>(getCount()));
    const auto iterator = newIterator();
    while (CmObject* element = iterator->next()) {
        elements.push_back(element);
    }
    for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
        if (accept(*element)) {
            return *element;
        }
    }
    return nullptr;
}

bool CmContainer::select(CmFunctor accept, CmContainer& result) const {
    bool any = false;
    const auto iterator = newIterator();
    while (CmObject* element = iterator->next()) {
        if (accept(element)) {
            result.add(element);
            any = true;
        }
    }
    return any;
}

bool CmContainer::forEachConcurrent(CmFunctor functor, std::int32_t threads, std::int32_t minPerThread) const {
    const Division division = divide(getCount(), threads, minPerThread);
    if (division.threads == 1 || division.perThread < minPerThread) {
        return forEach(functor);
    }
    std::atomic<bool> stop = false;
    std::vector<std::unique_ptr<ConcurrencyIteratorThread>> helpers;
    std::int32_t start = 0;
    for (std::int32_t index = 1; index < division.threads && !stop.load(std::memory_order_relaxed); ++index) {
        auto iterator = newIterator();
        iterator->advance(start);
        auto helper =
            std::make_unique<ConcurrencyIteratorThread>(std::move(iterator), division.perThread, functor, stop);
        helper->start();
        if (!helper->getHandle()) {
            // Without a thread its elements are still to be visited.
            helper->run();
        }
        helpers.push_back(std::move(helper));
        start += division.perThread;
    }
    auto iterator = newIterator();
    iterator->advance(start);
    ConcurrencyIteratorThread(std::move(iterator), getCount() - start, functor, stop).run();
    for (const auto& helper : helpers) {
        helper->join();
    }
    // Kept as it has always been: the reverse of what the serial run answers.
    return stop;
}

void CmContainer::retain(CmObject* element) const {
    if (ownership_ == CmOwnership::shared) {
        element->addRef();
    }
}

void CmContainer::drop(CmObject* element) const {
    if (ownership_ == CmOwnership::owner || ownership_ == CmOwnership::shared) {
        element->release();
    }
}

} // namespace tessera
