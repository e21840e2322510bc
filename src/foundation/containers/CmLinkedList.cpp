#include "foundation/containers/CmLinkedList.h"

#include <cstdlib>
#include <utility>

namespace tessera {

class CmLinkedList::Iterator final : public CmIterator {
public:
    explicit Iterator(const CmLinkedList& list) : CmIterator(list), list_(list), node_(list.head_) {}

    bool isDone() const override { return node_ == nullptr; }
    CmObject* next() override {
        if (node_ == nullptr) {
            return nullptr;
        }
        CmObject* element = node_->element;
        before_ = node_;
        node_ = node_->next;
        return element;
    }
    CmObject* previous() override {
        CmObject* element = current();
        if (element != nullptr) {
            moveTo(nodeBefore(node_));
        }
        return element;
    }
    CmObject* current() const override { return node_ != nullptr ? node_->element : nullptr; }
    void first() override { moveTo(list_.head_); }
    void last() override { moveTo(list_.tail_); }
    // Links run forward only: the target is counted from the head, once for all steps.
    CmObject* retreat(std::int32_t count) override {
        if (count < 0) {
            return CmIterator::retreat(count);
        }
        std::int32_t index = 0;
        for (const Node* node = list_.head_; node != node_ && node != nullptr; node = node->next) {
            ++index;
        }
        if (node_ == nullptr || index < count) {
            moveTo(nullptr);
            return nullptr;
        }
        moveTo(list_.head_);
        return advance(index - count);
    }

    // The node before the current one; null at the head. What next() left behind is only a hint.
    Node* before() const { return before_ != nullptr && before_->next == node_ ? before_ : nodeBefore(node_); }
    Node* node() const { return node_; }
    void replaceNode(Node* node) { node_ = node; }

private:
    void moveTo(Node* node) {
        before_ = nullptr;
        node_ = node;
    }
    Node* nodeBefore(const Node* node) const {
        Node* before = node == list_.head_ ? nullptr : list_.head_;
        while (before != nullptr && before->next != node) {
            before = before->next;
        }
        return before;
    }

    const CmLinkedList& list_;
    Node* before_ = nullptr;
    Node* node_;
};

CmLinkedList::~CmLinkedList() {
    CmLinkedList::removeAll();
}

CmLinkedList* CmLinkedList::clone() const {
    auto* copy = new CmLinkedList;
    copy->copyFrom(*this);
    return copy;
}

bool CmLinkedList::add(CmObject* element) {
    Node* node = element != nullptr ? newNode(element, nullptr) : nullptr;
    if (node == nullptr) {
        return false;
    }
    (tail_ != nullptr ? tail_->next : head_) = node;
    tail_ = node;
    ++size_;
    retain(element);
    return true;
}

bool CmLinkedList::prepend(CmObject* element) {
    return insertAfter(nullptr, element);
}

bool CmLinkedList::insertAt(std::int32_t index, CmObject* element) {
    if (index < 0 || index > size_) {
        return false;
    }
    if (index == size_) {
        return add(element);
    }
    return insertAfter(nodeBeforeIndex(index), element);
}

bool CmLinkedList::removeAtIterator(CmIterator& iterator) {
    if (&iterator.container() != this || iterator.isDone()) {
        return false;
    }
    auto& position = static_cast<Iterator&>(iterator);
    Node* following = position.node()->next;
    CmObject* element = takeAfter(position.before());
    position.replaceNode(following);
    drop(element);
    return true;
}

bool CmLinkedList::remove(CmObject* element) {
    Node* before = nullptr;
    for (Node* node = head_; node != nullptr; before = node, node = node->next) {
        if (node->element == element) {
            drop(takeAfter(before));
            return true;
        }
    }
    return false;
}

bool CmLinkedList::removeAt(std::int32_t index) {
    if (index < 0 || index >= size_) {
        return false;
    }
    drop(takeAfter(nodeBeforeIndex(index)));
    return true;
}

void CmLinkedList::removeAll() {
    // One at a time from the head: an element's destructor may look at this list.
    while (head_ != nullptr) {
        drop(takeAfter(nullptr));
    }
}

CmObject* CmLinkedList::at(std::int32_t index) const {
    if (index < 0 || index >= size_) {
        return nullptr;
    }
    const Node* node = head_;
    for (; index > 0; --index) {
        node = node->next;
    }
    return node->element;
}

CmObject* CmLinkedList::find(const CmObject* element) const {
    if (element == nullptr) {
        return nullptr;
    }
    for (const Node* node = head_; node != nullptr; node = node->next) {
        if (node->element->isEqual(element)) {
            return node->element;
        }
    }
    return nullptr;
}

std::unique_ptr<CmIterator> CmLinkedList::newIterator() const {
    return std::make_unique<Iterator>(*this);
}

CmObject* CmLinkedList::takeFirst() {
    return head_ != nullptr ? takeAfter(nullptr) : nullptr;
}

void CmLinkedList::moveFirstTo(CmLinkedList& other) {
    Node* node = head_;
    if (node == nullptr) {
        return;
    }
    head_ = node->next;
    if (head_ == nullptr) {
        tail_ = nullptr;
    }
    --size_;
    node->next = nullptr;
    (other.tail_ != nullptr ? other.tail_->next : other.head_) = node;
    other.tail_ = node;
    ++other.size_;
}

// Null for index 0, whose node has none before it.
CmLinkedList::Node* CmLinkedList::nodeBeforeIndex(std::int32_t index) const {
    Node* before = nullptr;
    for (; index > 0; --index) {
        before = before != nullptr ? before->next : head_;
    }
    return before;
}

CmLinkedList::Node* CmLinkedList::newNode(CmObject* element, Node* next) {
    auto* node = static_cast<Node*>(std::malloc(sizeof(Node)));
    if (node != nullptr) {
        *node = {next, element};
    }
    return node;
}

bool CmLinkedList::insertAfter(Node* before, CmObject* element) {
    if (element == nullptr) {
        return false;
    }
    Node* following = before != nullptr ? before->next : head_;
    Node* node = newNode(element, following);
    if (node == nullptr) {
        return false;
    }
    (before != nullptr ? before->next : head_) = node;
    if (following == nullptr) {
        tail_ = node;
    }
    ++size_;
    retain(element);
    return true;
}

CmObject* CmLinkedList::takeAfter(Node* before) {
    Node*& link = before != nullptr ? before->next : head_;
    Node* node = link;
    link = node->next;
    if (link == nullptr) {
        tail_ = before;
    }
    --size_;
    CmObject* element = node->element;
    std::free(node);
    return element;
}

} // namespace tessera
