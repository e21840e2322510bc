#include "foundation/containers/CmBTreeNode.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tessera {

namespace {

// Looks for an element by its own compare and isEqual.
struct ElementProbe {
    const CmObject* element;
    int compare(const CmObject* key) const { return element->compare(key); }
    bool isEqual(const CmObject* key) const { return key->isEqual(element); }
};

template <class Node>
Node* leftmost(Node* node) {
    while (!node->isLeaf()) {
        node = node->children()[0];
    }
    return node;
}

template <class Node>
Node* rightmost(Node* node) {
    while (!node->isLeaf()) {
        node = node->children()[node->n];
    }
    return node;
}

template <class Position>
Position successor(Position position) {
    auto* node = position.node;
    if (!node->isLeaf()) {
        return {leftmost(node->children()[position.index + 1]), 0};
    }
    if (position.index + 1 < node->n) {
        return {node, position.index + 1};
    }
    for (; node->parent != nullptr; node = node->parent) {
        const std::int32_t index = node->indexInParent();
        if (index < node->parent->n) {
            return {node->parent, index};
        }
    }
    return {};
}

template <class Position>
Position predecessor(Position position) {
    auto* node = position.node;
    if (!node->isLeaf()) {
        auto* leaf = rightmost(node->children()[position.index]);
        return {leaf, leaf->n - 1};
    }
    if (position.index > 0) {
        return {node, position.index - 1};
    }
    for (; node->parent != nullptr; node = node->parent) {
        const std::int32_t index = node->indexInParent();
        if (index > 0) {
            return {node->parent, index - 1};
        }
    }
    return {};
}

} // namespace

class CmBTree::Iterator final : public CmIterator {
public:
    explicit Iterator(const CmBTree& tree) : CmIterator(tree), tree_(tree), position_(tree.firstPosition()) {}

    bool isDone() const override { return position_.node == nullptr; }
    CmObject* next() override {
        CmObject* element = current();
        if (element != nullptr) {
            position_ = successor(position_);
        }
        return element;
    }
    CmObject* previous() override {
        CmObject* element = current();
        if (element != nullptr) {
            position_ = predecessor(position_);
        }
        return element;
    }
    CmObject* current() const override { return tree_.elementAt(position_); }
    void first() override { position_ = tree_.firstPosition(); }
    void last() override { position_ = tree_.lastPosition(); }

    const Position& position() const { return position_; }
    void setPosition(const Position& position) { position_ = position; }

private:
    const CmBTree& tree_;
    Position position_;
};

CmBTree::CmBTree(std::int32_t order) : order_(std::max(order, kMinimumOrder)) {}

CmBTree::~CmBTree() {
    CmBTree::removeAll();
}

CmBTree* CmBTree::clone() const {
    auto* copy = new CmBTree(order_);
    copy->copyFrom(*this);
    return copy;
}

bool CmBTree::add(CmObject* element) {
    return element != nullptr && insertAtPlace(placeFor(ElementProbe{element}, nullptr), element);
}

bool CmBTree::removeAtIterator(CmIterator& iterator) {
    if (&iterator.container() != this || iterator.isDone()) {
        return false;
    }
    auto& walker = static_cast<Iterator&>(iterator);
    const Position following = successor(walker.position());
    const CmObject* follower = elementAt(following);
    CmObject* element = take(walker.position());
    // Keys move between nodes as the tree shrinks, so the follower is looked up anew, behind those that equal it.
    Position position = follower != nullptr ? lowerBound(follower) : Position{};
    while (position.node != nullptr && elementAt(position) != follower) {
        position = successor(position);
    }
    walker.setPosition(position);
    if (follower != nullptr && position.node == nullptr) {
        // The elements' compare is no order; the follower is there all the same.
        walker.seek(follower);
    }
    dropKey(element);
    return true;
}

bool CmBTree::remove(CmObject* element) {
    return removeAtPosition(locate(element));
}

bool CmBTree::removeAt(std::int32_t index) {
    return removeAtPosition(positionAt(index));
}

void CmBTree::removeAll() {
    Node* node = std::exchange(root_, nullptr);
    size_ = 0;
    // Leaf after leaf, without recursion: what is done is cut off its parent.
    while (node != nullptr) {
        Node* child = node->isLeaf() ? nullptr : node->children()[node->n];
        if (child != nullptr) {
            node = child;
            continue;
        }
        if (node->n > 0) {
            dropKey(node->keys()[--node->n]);
            continue;
        }
        Node* parent = node->parent;
        std::free(node);
        if (parent != nullptr) {
            parent->children()[parent->n] = nullptr;
        }
        node = parent;
    }
}

CmObject* CmBTree::at(std::int32_t index) const {
    return elementAt(positionAt(index));
}

CmObject* CmBTree::find(const CmObject* element) const {
    return elementAt(locate(element));
}

std::unique_ptr<CmIterator> CmBTree::newIterator() const {
    return std::make_unique<Iterator>(*this);
}

std::int32_t CmBTree::height() const {
    std::int32_t levels = 0;
    for (const Node* node = root_; node != nullptr; node = node->children()[0]) {
        ++levels;
    }
    return levels;
}

std::int32_t CmBTree::rootKeyCount() const {
    return root_ != nullptr ? root_->n : 0;
}

CmBTree::Position CmBTree::locate(const CmObject* element) const {
    Position equal;
    if (element != nullptr) {
        placeFor(ElementProbe{element}, &equal);
    }
    return equal;
}

CmObject* CmBTree::elementAt(const Position& position) const {
    return position.node != nullptr ? position.node->keys()[position.index] : nullptr;
}

bool CmBTree::insertAtPlace(const Place& place, CmObject* element) {
    // All memory first, so that a tree without memory stays as it was.
    Node* spare = nullptr;
    if (place.leaf == nullptr || place.leaf->n == order_ - 1) {
        spare = newNodesFor(place.leaf);
        if (spare == nullptr) {
            return false;
        }
    }
    if (place.leaf == nullptr) {
        root_ = spare;
        root_->insert(0, element, nullptr);
    } else {
        insertKey(place.leaf, place.index, element, spare);
    }
    ++size_;
    retainKey(element);
    return true;
}

bool CmBTree::removeAtPosition(const Position& position) {
    if (position.node == nullptr) {
        return false;
    }
    dropKey(take(position));
    return true;
}

CmBTree::Node* CmBTree::newNode() const {
    auto* node = static_cast<Node*>(std::calloc(1, Node::sizeFor(order_)));
    if (node != nullptr) {
        node->order = order_;
    }
    return node;
}

// As many nodes as an insertion into the full leaf can need, chained by their parent field: one beside each full node
// on the way up, and a new root when the way ends there. All of them, or null.
CmBTree::Node* CmBTree::newNodesFor(const Node* leaf) const {
    std::int32_t needed = 0;
    const Node* node = leaf;
    for (; node != nullptr && node->n == order_ - 1; node = node->parent) {
        ++needed;
    }
    needed += node == nullptr ? 1 : 0;
    Node* chain = nullptr;
    for (; needed > 0; --needed) {
        Node* added = newNode();
        if (added == nullptr) {
            while (chain != nullptr) {
                std::free(std::exchange(chain, chain->parent));
            }
            return nullptr;
        }
        added->parent = chain;
        chain = added;
    }
    return chain;
}

void CmBTree::insertKey(Node* node, std::int32_t index, CmObject* key, Node*& spare) {
    const auto takeSpare = [&spare] {
        Node* taken = std::exchange(spare, spare->parent);
        taken->parent = nullptr;
        return taken;
    };
    Node* right = nullptr;
    for (;;) {
        node->insert(index, key, right);
        if (node->n <= order_ - 1) {
            return;
        }
        const std::int32_t middle = node->n / 2;
        Node* sibling = takeSpare();
        CmObject* median = node->keys()[middle];
        sibling->setChild(0, node->children()[middle + 1]);
        for (std::int32_t moved = middle + 1; moved < node->n; ++moved) {
            sibling->keys()[sibling->n++] = std::exchange(node->keys()[moved], nullptr);
            sibling->setChild(sibling->n, std::exchange(node->children()[moved + 1], nullptr));
        }
        node->keys()[middle] = nullptr;
        node->children()[middle + 1] = nullptr;
        node->n = middle;
        if (node->parent == nullptr) {
            root_ = takeSpare();
            root_->setChild(0, node);
        }
        // The place beside the node that was split, not the one that a search would find: among equal keys they differ.
        index = node->indexInParent();
        key = median;
        right = sibling;
        node = node->parent;
    }
}

CmObject* CmBTree::take(const Position& position) {
    Node* node = position.node;
    std::int32_t index = position.index;
    CmObject* element = node->keys()[index];
    if (!node->isLeaf()) {
        Node* leaf = leftmost(node->children()[index + 1]);
        node->keys()[index] = leaf->keys()[0];
        node = leaf;
        index = 0;
    }
    node->erase(index);
    --size_;
    rebalance(node);
    shrinkRoot();
    return element;
}

void CmBTree::rebalance(Node* node) {
    const std::int32_t minimum = node->minimum();
    while (node->parent != nullptr && node->n < minimum) {
        Node* parent = node->parent;
        const std::int32_t index = node->indexInParent();
        if (index < parent->n) {
            Node* sibling = parent->children()[index + 1];
            if (sibling->n > minimum) {
                node->insert(node->n, parent->keys()[index], sibling->children()[0]);
                parent->keys()[index] = sibling->keys()[0];
                // erase takes the child right of the key, so the one that stays goes into the first slot before.
                sibling->children()[0] = sibling->children()[1];
                sibling->erase(0);
                return;
            }
            node->absorb(parent->keys()[index], sibling);
            parent->erase(index);
            std::free(sibling);
        } else {
            Node* sibling = parent->children()[index - 1];
            if (sibling->n > minimum) {
                // insert puts the child right of the key, so the old first child moves over into that slot.
                node->insert(0, parent->keys()[index - 1], node->children()[0]);
                node->setChild(0, sibling->children()[sibling->n]);
                parent->keys()[index - 1] = sibling->keys()[sibling->n - 1];
                sibling->erase(sibling->n - 1);
                return;
            }
            sibling->absorb(parent->keys()[index - 1], node);
            parent->erase(index - 1);
            std::free(node);
        }
        node = parent;
    }
}

void CmBTree::shrinkRoot() {
    if (root_->n > 0) {
        return;
    }
    Node* child = root_->children()[0];
    std::free(std::exchange(root_, child));
    if (child != nullptr) {
        child->parent = nullptr;
    }
}

CmBTree::Position CmBTree::positionAt(std::int32_t index) const {
    if (index < 0 || index >= size_) {
        return {};
    }
    Position position = firstPosition();
    for (; index > 0; --index) {
        position = successor(position);
    }
    return position;
}

CmBTree::Position CmBTree::firstPosition() const {
    return root_ != nullptr ? Position{leftmost(root_), 0} : Position{};
}

CmBTree::Position CmBTree::lastPosition() const {
    if (root_ == nullptr) {
        return {};
    }
    Node* leaf = rightmost(root_);
    return {leaf, leaf->n - 1};
}

// The leftmost key that doesn't sort below the element.
CmBTree::Position CmBTree::lowerBound(const CmObject* element) const {
    Position found;
    Node* node = root_;
    while (node != nullptr) {
        std::int32_t index = 0;
        while (index < node->n && element->compare(node->keys()[index]) > 0) {
            ++index;
        }
        if (index < node->n) {
            found = {node, index};
        }
        node = node->children()[index];
    }
    return found;
}

} // namespace tessera
