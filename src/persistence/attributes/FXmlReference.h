// FXmlReference: the ID of an object that the document defines elsewhere. It finds its target when the whole document
// is read; an ID that nothing in the document has leaves it without one, and it gives null then.
//
// A reference of the target is held. So objects of a document that refer to each other in a circle hold each other: who
// drops such a tree without building its objects breaks the circle by setTarget(nullptr).
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/attributes/FXmlObject.h"

namespace tessera {

class FXmlReference : public CmClass<FXmlReference, FXmlObject> {
public:
    static FMetaClass metaClass;

    explicit FXmlReference(std::uint64_t id = 0) : CmClass(id) {}
    FXmlReference(const FXmlReference& other) = default;
    FXmlReference& operator=(const FXmlReference&) = delete;

    // Borrowed.
    FXmlObject* getTarget() const { return target_.get(); }
    void setTarget(FXmlObject* target) { target_ = target; }

    CmObject* getObject() override { return target_ ? target_->getObject() : nullptr; }
    bool isClass(const char* className) const override { return target_ && target_->isClass(className); }
    FXmlReference* clone() const override { return new FXmlReference(*this); }

private:
    FRefPtr<FXmlObject> target_;
};

} // namespace tessera
