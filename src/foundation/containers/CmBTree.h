// CmBTree: objects sorted by compare in a tree of nodes with up to order - 1 keys; order 3, the default, makes it a 2-3
// tree. An element that is equal to one that is there goes to its right.
//
// Adding, finding and removing are logarithmic; by index the tree is walked in order. An order below 3 is raised to 3:
// below it nodes without keys would come up.
#pragma once

#include "foundation/containers/CmContainer.h"

namespace tessera {

class CmBTree : public CmClass<CmBTree, CmContainer> {
public:
    static FMetaClass metaClass;

    static constexpr std::int32_t kMinimumOrder = 3;

    explicit CmBTree(std::int32_t order = kMinimumOrder);
    ~CmBTree() override;

    CmBTree* clone() const override;

    std::int32_t getCount() const override { return size_; }
    bool add(CmObject* element) override;
    bool removeAtIterator(CmIterator& iterator) override;
    // One that is equal.
    bool remove(CmObject* element) override;
    bool removeAt(std::int32_t index) override;
    void removeAll() override;
    CmObject* at(std::int32_t index) const override;
    // Any equal element: the first met on the way down.
    CmObject* find(const CmObject* element) const override;
    bool contains(const CmObject* element) const override { return find(element) != nullptr; }
    std::unique_ptr<CmIterator> newIterator() const override;

    std::int32_t getOrder() const { return order_; }
    // For inspection: levels of nodes, 0 for an empty tree, and the keys of the root.
    std::int32_t height() const;
    std::int32_t rootKeyCount() const;

protected:
    struct Node;
    // A key's place; no node means none.
    struct Position {
        Node* node = nullptr;
        std::int32_t index = 0;
    };

    // Where a new element goes: behind how many keys of which leaf. No leaf in an empty tree.
    struct Place {
        Node* leaf = nullptr;
        std::int32_t index = 0;
    };

    Position locate(const CmObject* element) const;
    CmObject* elementAt(const Position& position) const;
    // With equal given, the way down ends at the first equal element, which is stored there.
    template <class Probe>
    Place placeFor(const Probe& probe, Position* equal) const;
    bool insertAtPlace(const Place& place, CmObject* element);
    bool removeAtPosition(const Position& position);

    // Every way in and every way out of the tree; the dictionary keeps more than the element.
    virtual void retainKey(CmObject* element) const { retain(element); }
    virtual void dropKey(CmObject* element) const { drop(element); }

private:
    class Iterator;

    Node* newNode() const;
    Node* newNodesFor(const Node* leaf) const;
    void insertKey(Node* node, std::int32_t index, CmObject* key, Node*& spare);
    CmObject* take(const Position& position);
    void rebalance(Node* node);
    void shrinkRoot();
    Position positionAt(std::int32_t index) const;
    Position firstPosition() const;
    Position lastPosition() const;
    Position lowerBound(const CmObject* element) const;

    std::int32_t order_;
    Node* root_ = nullptr;
};

} // namespace tessera
