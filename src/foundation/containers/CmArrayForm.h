// CmArrayForm: what CmArray and CmOrderedArray share: a growing block of element pointers. It has no class record; both
// forms are children of CmContainer.
//
// growth tells how the block grows when it's full: -1 doubles it (10 from nothing), 0 keeps it, above 0 adds that many.
// One that is kept stays as long as the array.
#pragma once

#include "foundation/containers/CmContainer.h"

namespace tessera {

class CmArrayForm : public CmContainer {
public:
    static constexpr std::int32_t kDoubling = -1;
    static constexpr std::int32_t kFixed = 0;
    static constexpr std::int32_t kDefaultGrowth = 10;

    ~CmArrayForm() override;

    // The growth stands before the common form; a negative one is written as 10.
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;

    std::int32_t getCount() const override { return count_; }
    bool isEmpty() const override { return count_ == 0; }
    bool removeAtIterator(CmIterator& iterator) override;
    bool remove(CmObject* element) override;
    bool removeAt(std::int32_t index) override;
    void removeAll() override;
    CmObject* at(std::int32_t index) const override { return isIndex(index) ? data_[index] : nullptr; }
    CmObject* find(const CmObject* element) const override;
    std::int32_t indexOf(const CmObject* element) const override;
    std::unique_ptr<CmIterator> newIterator() const override;

    // Before the element at the index; at the count it's the end.
    virtual bool insertAt(std::int32_t index, CmObject* element);
    // Exactly this capacity; elements beyond it leave. False for a negative one, or without memory.
    virtual bool setCapacity(std::int32_t count);
    // At least this capacity.
    virtual bool reserve(std::int32_t count);
    // By compare; a merge sort, since it stays inside the block whatever an odd compare answers.
    virtual void sort();
    // Puts an element in another's place, which is dropped. False for a bad index.
    virtual bool setAt(std::int32_t index, CmObject* element);
    virtual std::int32_t indexOfInstance(const CmObject* element) const;

    std::int32_t getGrowth() const { return growth_; }
    void setGrowth(std::int32_t growth) { growth_ = growth; }

protected:
    CmArrayForm(std::int32_t capacity, std::int32_t growth);

    // The capacity that a copy begins with.
    std::int32_t capacityOfCopy() const { return growth_ == kFixed ? size_ : count_; }
    bool isIndex(std::int32_t index) const { return index >= 0 && index < count_; }
    // Room for one more; false when the growth or the memory doesn't allow it.
    bool makeRoom() { return count_ < size_ || grow(); }
    // Moves the tail up and stores. There must be room.
    void insertUnchecked(std::int32_t index, CmObject* element);

    std::int32_t growth_ = kDefaultGrowth;
    std::int32_t count_ = 0;
    CmObject** data_ = nullptr;

private:
    class Iterator;

    bool reallocate(std::int32_t capacity);
    bool grow();
};

} // namespace tessera
