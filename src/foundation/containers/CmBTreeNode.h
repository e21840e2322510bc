// CmBTreeNode: a node of CmBTree, and the way down. For the tree and those derived from it alone.
//
// The way down is a template, so that a dictionary looks at the keys in its associations without asking each one for
// its class. A probe has compare(key), how what is looked for sorts against a key, and isEqual(key).
#pragma once

#include "foundation/containers/CmBTree.h"

#include <cstddef>

namespace tessera {

// keys and children follow the head in one block. There is one key slot more than a full node needs, so that an
// insertion can overfill the node before it is split. All slots start zeroed; in a leaf no child is ever set.
struct CmBTree::Node {
    std::int32_t n;
    std::int32_t order;
    Node* parent;

    static std::size_t sizeFor(std::int32_t order) {
        const auto slots = static_cast<std::size_t>(order);
        return sizeof(Node) + slots * sizeof(CmObject*) + (slots + 1) * sizeof(Node*);
    }

    CmObject** keys() { return reinterpret_cast<CmObject**>(this + 1); }
    CmObject* const* keys() const { return reinterpret_cast<CmObject* const*>(this + 1); }
    Node** children() { return reinterpret_cast<Node**>(keys() + order); }
    Node* const* children() const { return reinterpret_cast<Node* const*>(keys() + order); }

    bool isLeaf() const { return children()[0] == nullptr; }
    // A node with fewer keys borrows or merges.
    std::int32_t minimum() const { return order / 2 - (order % 2 == 0 ? 1 : 0); }

    std::int32_t indexInParent() const {
        std::int32_t index = 0;
        while (parent->children()[index] != this) {
            ++index;
        }
        return index;
    }

    void setChild(std::int32_t index, Node* child) {
        children()[index] = child;
        if (child != nullptr) {
            child->parent = this;
        }
    }

    // Opens a slot for a key, and one for the child to its right.
    void insert(std::int32_t index, CmObject* key, Node* right) {
        // One by one: in most nodes it's no or one key, for which a call would cost more than the move.
        CmObject** const key0 = keys();
        Node** const child0 = children();
        for (std::int32_t slot = n; slot > index; --slot) {
            key0[slot] = key0[slot - 1];
            child0[slot + 1] = child0[slot];
        }
        key0[index] = key;
        setChild(index + 1, right);
        ++n;
    }

    // Takes a key out, and the child to its right.
    void erase(std::int32_t index) {
        CmObject** const key0 = keys();
        Node** const child0 = children();
        --n;
        for (std::int32_t slot = index; slot < n; ++slot) {
            key0[slot] = key0[slot + 1];
            child0[slot + 1] = child0[slot + 2];
        }
        key0[n] = nullptr;
        child0[n + 1] = nullptr;
    }

    // A key from the parent, then all of the right-hand sibling.
    void absorb(CmObject* between, const Node* sibling) {
        keys()[n++] = between;
        setChild(n, sibling->children()[0]);
        for (std::int32_t index = 0; index < sibling->n; ++index) {
            keys()[n++] = sibling->keys()[index];
            setChild(n, sibling->children()[index + 1]);
        }
    }
};

namespace detail {

// The child under which the probe belongs, and how it compares with the key to that child's left.
struct TreeStep {
    std::int32_t child;
    int orderToLeft;
};

// While the first key is being asked, the children come nearer: in a large tree each of them is a trip to the memory.
template <class Node>
inline void fetchChildren(const Node* node) {
    Node* const* children = node->children();
    __builtin_prefetch(children[0]);
    __builtin_prefetch(children[1]);
    __builtin_prefetch(children[node->n]);
}

// Whether a second key is to be asked is the one thing here that a processor can't foresee; all else is arithmetic.
template <class Node, class Probe>
inline TreeStep stepDown(const Node* node, const Probe& probe) {
    CmObject* const* keys = node->keys();
    const int toFirst = probe.compare(keys[0]);
    TreeStep step{toFirst >= 0 ? 1 : 0, toFirst};
    if ((static_cast<int>(toFirst >= 0) & static_cast<int>(node->n > 1)) == 0) {
        return step;
    }
    for (std::int32_t index = node->n - 1; index > 0; --index) {
        const int order = probe.compare(keys[index]);
        if (order >= 0) {
            return {index + 1, order};
        }
    }
    return step;
}

} // namespace detail

template <class Probe>
CmBTree::Place CmBTree::placeFor(const Probe& probe, Position* equal) const {
    // A small one is in the cache as a whole.
    const bool large = size_ > 4096;
    Place place;
    for (Node* node = root_; node != nullptr; node = node->children()[place.index]) {
        if (large) {
            detail::fetchChildren(node);
        }
        const detail::TreeStep step = detail::stepDown(node, probe);
        place = {node, step.child};
        if (equal != nullptr && step.orderToLeft == 0 && probe.isEqual(node->keys()[step.child - 1])) {
            *equal = {node, step.child - 1};
            break;
        }
    }
    return place;
}

} // namespace tessera
