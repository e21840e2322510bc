// CmIterator: a position in a container, made by CmContainer::newIterator and standing on the first element at first.
//
// An iterator that has left the container at either end is done: its current element is null, it gives null and stays
// done until first, last or seek. The container must outlive it, and while it is in use nothing may be removed other
// than through CmContainer::removeAtIterator with this very iterator.
#pragma once

#include <cstdint>

namespace tessera {

class CmContainer;
class CmObject;

class CmIterator {
public:
    virtual ~CmIterator() = default;

    virtual bool isDone() const = 0;
    // The current element; then moves on, or back.
    virtual CmObject* next() = 0;
    virtual CmObject* previous() = 0;
    virtual CmObject* current() const = 0;
    virtual void first() = 0;
    virtual void last() = 0;
    // From the front to the first element that is this very object; done, and false, when there is none.
    virtual bool seek(const CmObject* element);
    // Moves by so many elements and gives the element reached, null past either end. A negative count moves the other
    // way.
    virtual CmObject* advance(std::int32_t count);
    virtual CmObject* retreat(std::int32_t count);

    const CmContainer& container() const { return container_; }

protected:
    explicit CmIterator(const CmContainer& container) : container_(container) {}
    CmIterator(const CmIterator&) = delete;
    CmIterator& operator=(const CmIterator&) = delete;

private:
    const CmContainer& container_;
};

} // namespace tessera
