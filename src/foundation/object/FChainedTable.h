// FChainedTable: the private chained hash table of pointers, with a fixed number of buckets. It owns its list nodes and
// not what they point at, and holds no CmObjects; CmHashTable is the container of objects.
//
// Traits gives the two facts about keys: hash(key, bucketCount), below bucketCount, and matches(key, element). Elements
// of one key are kept in the order in which they were added, and the first is found. Not synchronised.
#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace tessera {

template <class Element, class Key, class Traits>
class FChainedTable {
public:
    explicit FChainedTable(std::uint32_t size) : size_(size), buckets_(new Bucket[size]) {}
    FChainedTable(const FChainedTable&) = delete;
    FChainedTable& operator=(const FChainedTable&) = delete;
    ~FChainedTable() {
        for (std::uint32_t i = 0; i < size_; ++i) {
            clear(buckets_[i]);
        }
    }

    std::uint32_t getCount() const { return count_; }

    // Says nothing when there is no memory for the node: the element is just not found later.
    void add(const Key& key, Element* element) {
        Node* node = new (std::nothrow) Node{nullptr, element};
        if (node == nullptr) {
            return;
        }
        Bucket& bucket = bucketOf(key);
        (bucket.tail != nullptr ? bucket.tail->next : bucket.head) = node;
        bucket.tail = node;
        ++bucket.count;
        ++count_;
    }

    Element* find(const Key& key) const {
        for (const Node* node = bucketOf(key).head; node != nullptr; node = node->next) {
            if (Traits::matches(key, *node->element)) {
                return node->element;
            }
        }
        return nullptr;
    }

    // Takes this very element out; false when it isn't there.
    bool remove(const Key& key, const Element* element) {
        Bucket& bucket = bucketOf(key);
        Node* before = nullptr;
        for (Node* node = bucket.head; node != nullptr; before = node, node = node->next) {
            if (node->element != element) {
                continue;
            }
            (before != nullptr ? before->next : bucket.head) = node->next;
            if (bucket.tail == node) {
                bucket.tail = before;
            }
            delete node;
            --bucket.count;
            --count_;
            return true;
        }
        return false;
    }

    template <class Function>
    void forEach(Function&& function) const {
        for (std::uint32_t i = 0; i < size_; ++i) {
            for (const Node* node = buckets_[i].head; node != nullptr; node = node->next) {
                function(*node->element);
            }
        }
    }

private:
    struct Node {
        Node* next;
        Element* element;
    };
    struct Bucket {
        std::uint32_t count = 0;
        Node* head = nullptr;
        Node* tail = nullptr;
    };

    Bucket& bucketOf(const Key& key) const { return buckets_[Traits::hash(key, size_)]; }

    static void clear(Bucket& bucket) {
        while (bucket.head != nullptr) {
            delete std::exchange(bucket.head, bucket.head->next);
        }
    }

    std::uint32_t size_;
    std::uint32_t count_ = 0;
    std::unique_ptr<Bucket[]> buckets_;
};

} // namespace tessera
