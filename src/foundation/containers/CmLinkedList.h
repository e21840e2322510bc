// CmLinkedList: a singly linked list of objects; base of CmQueue and CmStack.
//
// Adding at either end and taking the head cost the same at any length. Everything by index or element walks from the
// head, and so does an iterator's step back.
#pragma once

#include "foundation/containers/CmContainer.h"

namespace tessera {

class CmLinkedList : public CmClass<CmLinkedList, CmContainer> {
public:
    static FMetaClass metaClass;

    CmLinkedList() = default;
    ~CmLinkedList() override;

    CmLinkedList* clone() const override;

    std::int32_t getCount() const override { return size_; }
    // At the end.
    bool add(CmObject* element) override;
    bool removeAtIterator(CmIterator& iterator) override;
    bool remove(CmObject* element) override;
    bool removeAt(std::int32_t index) override;
    void removeAll() override;
    CmObject* at(std::int32_t index) const override;
    CmObject* find(const CmObject* element) const override;
    std::unique_ptr<CmIterator> newIterator() const override;

    bool prepend(CmObject* element);
    // Before the element at the index; at the count it's the end.
    bool insertAt(std::int32_t index, CmObject* element);
    // Takes the first element out and hands it over without a release: what the list held of it is the caller's now.
    CmObject* takeFirst();
    // Hands the first element over to the end of the other list, or of this one, with what this list held of it. Needs
    // no memory and can't fail; nothing happens to an empty list.
    void moveFirstTo(CmLinkedList& other);

private:
    struct Node {
        Node* next;
        CmObject* element;
    };
    class Iterator;

    Node* nodeBeforeIndex(std::int32_t index) const;
    static Node* newNode(CmObject* element, Node* next);
    bool insertAfter(Node* before, CmObject* element);
    CmObject* takeAfter(Node* before);

    Node* head_ = nullptr;
    Node* tail_ = nullptr;
};

} // namespace tessera
