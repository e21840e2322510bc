// StoredNode: an object for the persistence tests: a number, and links to further nodes, which it holds by references
// and stores as a list, or, the first of them, as a value of its own. Counted while alive.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/objects/PersistenceHooks.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tessera::test {

class StoredNode : public CmClass<StoredNode, CmObject> {
public:
    static inline FMetaClass metaClass{"StoredNode", &CmObject::metaClass, &createCmObject<StoredNode>};
    static inline int alive = 0;

    explicit StoredNode(std::int64_t itsNumber = 0) : number(itsNumber) { ++alive; }
    StoredNode(const StoredNode&) = delete;
    StoredNode& operator=(const StoredNode&) = delete;
    ~StoredNode() override { --alive; }

    bool storeAttributes(FAttributes& attributes) const override {
        if (refusesStoring) {
            return false;
        }
        attributes.setInt("number", number);
        if (next) {
            attributes.setObject("next", next.get());
        }
        for (const auto& link : links) {
            attributes.appendObject("links", link.get());
        }
        return true;
    }
    bool restoreAttributes(FAttributes& attributes) override {
        next = static_cast<StoredNode*>(attributes.getObject("next"));
        CmObject* link = nullptr;
        while (attributes.nextObject("links", link)) {
            if (link != nullptr) {
                links.emplace_back(static_cast<StoredNode*>(link));
            }
        }
        // Without a number it's no node.
        return attributes.getInt("number", number);
    }

    void linkTo(StoredNode& node) { links.emplace_back(&node); }

    std::int64_t number;
    FRefPtr<StoredNode> next;
    std::vector<FRefPtr<StoredNode>> links;
    bool refusesStoring = false;
};

inline FRefPtr<StoredNode> newNode(std::int64_t number) {
    return FRefPtr<StoredNode>::adopt(new StoredNode(number));
}

// Writes down what is reported while it stands.
class ReportedErrors {
public:
    using Error = std::pair<std::int32_t, std::string>;

    ReportedErrors() : before_(persistenceHooks.report) {
        errors().clear();
        persistenceHooks.report = [](std::int32_t code, const FStringRef& text) {
            errors().emplace_back(code, FString(text).text8());
        };
    }
    ReportedErrors(const ReportedErrors&) = delete;
    ReportedErrors& operator=(const ReportedErrors&) = delete;
    ~ReportedErrors() { persistenceHooks.report = before_; }

    static std::vector<Error>& errors() {
        static std::vector<Error> list;
        return list;
    }

private:
    void (*before_)(std::int32_t, const FStringRef&);
};

} // namespace tessera::test
