// TestNode: a class whose objects hold each other, for documents.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FMetaClass.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"

#include <vector>

namespace tessera::test {

// A node of a graph: a title, a number, perhaps a next node and children.
class TestNode : public CmClass<TestNode, CmObject> {
public:
    static FMetaClass metaClass;

    TestNode() { ++living; }
    explicit TestNode(const char* text, std::int64_t value = 0) : title(text), number(value) { ++living; }
    ~TestNode() override { --living; }

    bool storeAttributes(FAttributes& attributes) const override {
        attributes.setString("title", title);
        attributes.setInt("number", number);
        if (next) {
            attributes.setObject("next", next.get());
        }
        for (const FRefPtr<CmObject>& child : children) {
            attributes.appendObject("children", child.get());
        }
        return !refusesToStore;
    }
    bool restoreAttributes(FAttributes& attributes) override {
        attributes.getString("title", title);
        attributes.getInt("number", number);
        next = attributes.getObject("next");
        CmObject* child = nullptr;
        while (attributes.nextObject("children", child)) {
            children.emplace_back(child);
        }
        return !(title == FStringRef("refuses to be restored"));
    }

    TestNode* nextNode() const { return cmCast<TestNode>(next.get()); }

    FString title{""};
    std::int64_t number = 0;
    FRefPtr<CmObject> next;
    std::vector<FRefPtr<CmObject>> children;
    bool refusesToStore = false;
    static inline int living = 0;
};

inline FMetaClass TestNode::metaClass("TestNode", &CmObject::metaClass, createCmObject<TestNode>);

inline FRefPtr<TestNode> newNode(const char* title, std::int64_t number = 0) {
    return FRefPtr<TestNode>::adopt(new TestNode(title, number));
}

// A node with children; by default so many that its document takes several writes to a file.
inline FRefPtr<TestNode> newFamily(int number, int children = 200) {
    const auto node = newNode("parent", number);
    for (int i = 0; i < children; ++i) {
        node->children.emplace_back(newNode("child", i).get());
    }
    return node;
}

} // namespace tessera::test
