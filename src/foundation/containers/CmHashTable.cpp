#include "foundation/containers/CmHashTable.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tessera {

class CmHashTable::Iterator final : public CmIterator {
public:
    explicit Iterator(const CmHashTable& table) : CmIterator(table), table_(table) { Iterator::first(); }

    bool isDone() const override { return position_.node == nullptr; }
    CmObject* next() override {
        CmObject* element = current();
        if (element == nullptr) {
            return nullptr;
        }
        position_.before = position_.node;
        position_.node = position_.node->next;
        skipEmptyBuckets();
        return element;
    }
    CmObject* previous() override {
        CmObject* element = current();
        if (element != nullptr) {
            stepBack();
        }
        return element;
    }
    CmObject* current() const override { return position_.node != nullptr ? position_.node->element : nullptr; }
    void first() override {
        position_ = {0, nullptr, table_.buckets_ ? table_.buckets_[0].head : nullptr};
        skipEmptyBuckets();
    }
    void last() override {
        position_ = {table_.size_, nullptr, nullptr};
        lastOfEarlierBucket();
    }

    const Position& position() const { return position_; }
    // What the iterator stands on is about to go.
    void stepOver() {
        position_.node = position_.node->next;
        skipEmptyBuckets();
    }

private:
    void skipEmptyBuckets() {
        while (position_.node == nullptr && position_.bucket + 1 < table_.size_) {
            ++position_.bucket;
            position_.before = nullptr;
            position_.node = table_.buckets_[position_.bucket].head;
        }
    }
    void lastOfEarlierBucket() {
        position_.node = nullptr;
        while (position_.node == nullptr && position_.bucket > 0) {
            --position_.bucket;
            position_.node = table_.buckets_[position_.bucket].tail;
        }
        findBefore();
    }
    void stepBack() {
        if (position_.before == nullptr) {
            lastOfEarlierBucket();
            return;
        }
        position_.node = position_.before;
        findBefore();
    }
    void findBefore() {
        position_.before = nullptr;
        if (position_.node == nullptr) {
            return;
        }
        for (Node* node = table_.buckets_[position_.bucket].head; node != position_.node; node = node->next) {
            position_.before = node;
        }
    }

    const CmHashTable& table_;
    Position position_;
};

CmHashTable::CmHashTable(std::int32_t size, bool autoGrow, HashFunction hashFunction)
    : autoGrow_(autoGrow), hashFunction_(hashFunction) {
    rehash(size < 1 ? kDefaultSize : std::min(size, kMaximumSize));
}

CmHashTable::~CmHashTable() {
    CmHashTable::removeAll();
}

CmHashTable* CmHashTable::clone() const {
    auto* copy = new CmHashTable(size_, autoGrow_, hashFunction_);
    copy->copyFrom(*this);
    return copy;
}

bool CmHashTable::add(CmObject* element) {
    constexpr std::int32_t kFullBucket = 2;
    constexpr std::int32_t kGrowth = 10;
    if (element == nullptr || size_ == 0) {
        return false;
    }
    if (autoGrow_ && count_ / size_ >= kFullBucket && size_ < kMaximumSize) {
        // A table that can't grow goes on with longer lists.
        rehash(size_ > kMaximumSize / kGrowth ? kMaximumSize : size_ * kGrowth);
    }
    auto* node = static_cast<Node*>(std::malloc(sizeof(Node)));
    if (node == nullptr) {
        return false;
    }
    *node = {nullptr, element};
    append(buckets_[bucketOf(element)], node);
    ++count_;
    retain(element);
    return true;
}

bool CmHashTable::removeAtIterator(CmIterator& iterator) {
    if (&iterator.container() != this || iterator.isDone()) {
        return false;
    }
    auto& walker = static_cast<Iterator&>(iterator);
    const Position position = walker.position();
    walker.stepOver();
    removeNode(position);
    return true;
}

bool CmHashTable::remove(CmObject* element) {
    const Position position = positionOf(element);
    if (position.node == nullptr) {
        return false;
    }
    removeNode(position);
    return true;
}

bool CmHashTable::removeAt(std::int32_t index) {
    const Position position = positionAt(index);
    if (position.node == nullptr) {
        return false;
    }
    removeNode(position);
    return true;
}

void CmHashTable::removeAll() {
    for (std::int32_t index = 0; count_ > 0 && index < size_; ++index) {
        while (buckets_[index].head != nullptr) {
            removeNode({index, nullptr, buckets_[index].head});
        }
    }
}

CmObject* CmHashTable::at(std::int32_t index) const {
    const Position position = positionAt(index);
    return position.node != nullptr ? position.node->element : nullptr;
}

CmObject* CmHashTable::find(const CmObject* element) const {
    if (element == nullptr || size_ == 0) {
        return nullptr;
    }
    for (const Node* node = buckets_[bucketOf(element)].head; node != nullptr; node = node->next) {
        if (node->element->isEqual(element)) {
            return node->element;
        }
    }
    return nullptr;
}

bool CmHashTable::containsInstance(const CmObject* element) const {
    return positionOf(element).node != nullptr;
}

std::int32_t CmHashTable::countOf(const CmObject* element) const {
    std::int32_t count = 0;
    if (element != nullptr && size_ > 0) {
        for (const Node* node = buckets_[bucketOf(element)].head; node != nullptr; node = node->next) {
            count += node->element->isEqual(element) ? 1 : 0;
        }
    }
    return count;
}

std::unique_ptr<CmIterator> CmHashTable::newIterator() const {
    return std::make_unique<Iterator>(*this);
}

bool CmHashTable::rehash(std::int32_t size) {
    if (size < 1 || size > kMaximumSize) {
        return false;
    }
    // Zeroed by the system and not by us: of a large block only the buckets that are used take memory. The size may
    // come from a stream that holds nothing else.
    Buckets buckets(static_cast<Bucket*>(std::calloc(static_cast<std::size_t>(size), sizeof(Bucket))));
    if (buckets == nullptr) {
        return false;
    }
    const Buckets old = std::exchange(buckets_, std::move(buckets));
    const std::int32_t oldSize = std::exchange(size_, size);
    for (std::int32_t index = 0; index < oldSize; ++index) {
        for (Node* node = old[index].head; node != nullptr;) {
            Node* following = std::exchange(node->next, nullptr);
            append(buckets_[bucketOf(node->element)], node);
            node = following;
        }
    }
    return true;
}

void CmHashTable::append(Bucket& bucket, Node* node) {
    (bucket.tail != nullptr ? bucket.tail->next : bucket.head) = node;
    bucket.tail = node;
    ++bucket.count;
}

std::int32_t CmHashTable::bucketOf(const CmObject* element) const {
    const auto size = static_cast<std::uint32_t>(size_);
    const std::uint32_t hash = hashFunction_ != nullptr ? hashFunction_(element, size) : element->hash(size);
    // A hash in range is the rule; one that isn't must not lead out of the table.
    return static_cast<std::int32_t>(hash < size ? hash : hash % size);
}

CmHashTable::Position CmHashTable::positionIn(std::int32_t bucket, const CmObject* element) const {
    Node* before = nullptr;
    for (Node* node = buckets_[bucket].head; node != nullptr; before = node, node = node->next) {
        if (node->element == element) {
            return {bucket, before, node};
        }
    }
    return {};
}

// By identity: where its hash says, then everywhere, since the hash may have changed while it was in here.
CmHashTable::Position CmHashTable::positionOf(const CmObject* element) const {
    if (element == nullptr || size_ == 0) {
        return {};
    }
    Position position = positionIn(bucketOf(element), element);
    for (std::int32_t bucket = 0; position.node == nullptr && bucket < size_; ++bucket) {
        position = positionIn(bucket, element);
    }
    return position;
}

CmHashTable::Position CmHashTable::positionAt(std::int32_t index) const {
    if (index < 0 || index >= count_) {
        return {};
    }
    std::int32_t bucket = 0;
    for (; index >= buckets_[bucket].count; ++bucket) {
        index -= buckets_[bucket].count;
    }
    Position position{bucket, nullptr, buckets_[bucket].head};
    for (; index > 0; --index) {
        position.before = position.node;
        position.node = position.node->next;
    }
    return position;
}

void CmHashTable::removeNode(const Position& position) {
    Bucket& bucket = buckets_[position.bucket];
    Node* following = position.node->next;
    (position.before != nullptr ? position.before->next : bucket.head) = following;
    if (following == nullptr) {
        bucket.tail = position.before;
    }
    --bucket.count;
    --count_;
    CmObject* element = position.node->element;
    std::free(position.node);
    drop(element);
}

} // namespace tessera
