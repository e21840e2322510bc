// CmHashTable: objects by hash in an array of counted lists; equal elements may stand more than once.
//
// The bucket is what the hash function answers for an element and the number of buckets, or the element's own hash when
// no function is set. Order by index and iterator is bucket by bucket. With autoGrow the table grows tenfold when it
// holds two elements per bucket, up to kMaximumSize buckets.
#pragma once

#include "foundation/containers/CmContainer.h"

#include <cstdlib>
#include <memory>

namespace tessera {

class CmHashTable : public CmClass<CmHashTable, CmContainer> {
public:
    static FMetaClass metaClass;

    using HashFunction = std::uint32_t (*)(const CmObject* element, std::uint32_t size);

    static constexpr std::int32_t kDefaultSize = 10;
    static constexpr std::int32_t kMaximumSize = 1 << 20;

    // A size below 1 is the default.
    explicit CmHashTable(std::int32_t size = kDefaultSize, bool autoGrow = false, HashFunction hashFunction = nullptr);
    ~CmHashTable() override;

    // The number of buckets stands before the common form; below 1 means 10, above kMaximumSize is refused.
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    CmHashTable* clone() const override;

    std::int32_t getCount() const override { return count_; }
    // At the end of its bucket.
    bool add(CmObject* element) override;
    bool removeAtIterator(CmIterator& iterator) override;
    bool remove(CmObject* element) override;
    bool removeAt(std::int32_t index) override;
    void removeAll() override;
    CmObject* at(std::int32_t index) const override;
    CmObject* find(const CmObject* element) const override;
    bool contains(const CmObject* element) const override { return find(element) != nullptr; }
    bool containsInstance(const CmObject* element) const override;
    std::int32_t countOf(const CmObject* element) const override;
    std::unique_ptr<CmIterator> newIterator() const override;

    bool getAutoGrow() const { return autoGrow_; }
    void setAutoGrow(bool autoGrow) { autoGrow_ = autoGrow; }
    // Another number of buckets; false for one out of range, or without memory.
    bool rehash(std::int32_t size);

private:
    struct Node {
        Node* next;
        CmObject* element;
    };
    // All zero when empty.
    struct Bucket {
        std::int32_t count;
        Node* head;
        Node* tail;
    };
    struct FreeBlock {
        void operator()(Bucket* block) const { std::free(block); }
    };
    using Buckets = std::unique_ptr<Bucket[], FreeBlock>;
    struct Position {
        std::int32_t bucket = 0;
        Node* before = nullptr;
        Node* node = nullptr;
    };
    class Iterator;

    static void append(Bucket& bucket, Node* node);
    // There must be buckets.
    std::int32_t bucketOf(const CmObject* element) const;
    Position positionIn(std::int32_t bucket, const CmObject* element) const;
    Position positionOf(const CmObject* element) const;
    Position positionAt(std::int32_t index) const;
    void removeNode(const Position& position);

    bool autoGrow_;
    std::int32_t count_ = 0;
    Buckets buckets_;
    HashFunction hashFunction_;
};

} // namespace tessera
