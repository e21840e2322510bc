// CmContainer: a collection of CmObjects that is itself a CmObject, so that collections nest, copy and are saved.
//
// The forms: CmLinkedList with CmQueue and CmStack, CmArray, CmOrderedArray, CmBTree with CmBTreeDictionary,
// CmHashTable. Who owns the elements is told by getOwnership(), see CmOwnership. Indices and counts are signed and 32
// bits wide; null is refused everywhere, a bad index gives null or false, and so does a failing allocation, which
// leaves the container as it was. Nothing here locks: one thread at a time, except that forEachConcurrent reads from
// several.
#pragma once

#include "foundation/containers/CmFunctor.h"
#include "foundation/containers/CmIterator.h"
#include "foundation/containers/CmOwnership.h"
#include "foundation/object/CmClass.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tessera {

class CmContainer : public CmClass<CmContainer, CmObject> {
public:
    static FMetaClass metaClass;

    ~CmContainer() override = default;

    CmOwnership getOwnership() const { return ownership_; }
    // Not retroactive: elements that are in already were retained, or not, when they came.
    void setOwnership(CmOwnership ownership) { ownership_ = ownership; }

    // Adds what the stream holds to what is there, and takes over its ownership. When an element can't be read the
    // container stays as it was.
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    // The ownership as "ownership", if there is one, and the elements as a list of objects, "obj". Restoring adds the
    // elements that can be built to what is there, each with a reference of its own, and takes the ownership over.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

    // What size means differs: elements of a list or tree, capacity of an array, buckets of a hash table.
    virtual std::int32_t getCapacity() const { return size_; }
    virtual std::int32_t getCount() const = 0;
    virtual bool isEmpty() const { return getCount() == 0; }
    // At the natural place of the form. False for null, and when an array can't grow.
    virtual bool add(CmObject* element) = 0;
    // Removes the iterator's current element; the iterator then stands on the one that followed. False when it is done
    // or belongs to another container.
    virtual bool removeAtIterator(CmIterator& iterator) = 0;
    // The first that is this very object; the sorted forms remove one that is equal.
    virtual bool remove(CmObject* element) = 0;
    virtual bool removeAt(std::int32_t index) = 0;
    virtual void removeAll() = 0;
    virtual CmObject* at(std::int32_t index) const = 0;
    // The next four go by isEqual of the elements.
    virtual CmObject* find(const CmObject* element) const = 0;
    virtual bool contains(const CmObject* element) const;
    virtual bool containsInstance(const CmObject* element) const;
    virtual std::int32_t countOf(const CmObject* element) const;
    // -1 when there is none.
    virtual std::int32_t indexOf(const CmObject* element) const;
    virtual std::unique_ptr<CmIterator> newIterator() const = 0;
    // Takes over the other's ownership, then adds each of its elements, cloned when that is owner. False when one
    // couldn't be added, and for this container itself.
    virtual bool copyFrom(const CmContainer& other);

    // Stops at the first false, and gives false then.
    bool forEach(CmFunctor functor) const;
    CmObject* findFirst(CmFunctor accept) const;
    CmObject* findLast(CmFunctor accept) const;
    // Adds the accepted elements to another container; whether there were any.
    bool select(CmFunctor accept, CmContainer& result) const;
    // Splits the elements among so many threads, the calling one among them; below 1 means one for each logical
    // processor, and no thread gets fewer than minPerThread elements. The functor must bear parallel calls. Mind the
    // sense of the result: run in parallel it is true when the functor stopped the run, run serially (too few elements,
    // or one thread) it is false then.
    bool forEachConcurrent(CmFunctor functor, std::int32_t threads, std::int32_t minPerThread) const;

protected:
    CmContainer() = default;
    CmContainer(const CmContainer&) = delete;
    CmContainer& operator=(const CmContainer&) = delete;

    // What every way in and every way out calls: a reference for a shared element; the release of an owned or shared
    // one.
    void retain(CmObject* element) const;
    void drop(CmObject* element) const;

    // Gives up an element that was made for this container, as a copy or out of a stream, and didn't get in.
    virtual void discard(CmObject* element) const { element->release(); }

    // The stream form behind what an array puts first.
    bool readElements(FStream& stream);
    bool writeElements(FStream& stream) const;
    // Removes and discards these; nothing may be owned meanwhile.
    void takeBack(std::vector<CmObject*> added);

    std::int32_t size_ = 0;
    CmOwnership ownership_ = CmOwnership::none;
};

} // namespace tessera
