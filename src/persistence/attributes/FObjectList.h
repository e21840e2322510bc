// FObjectList: a list of objects as the value of an attribute.
//
// An owning list takes over the reference that comes with each object; another one only points at them. What was read
// from a document stands in here as FXmlInstance and FXmlReference; at gives the element as it is, next the live object
// behind it.
#pragma once

#include "persistence/attributes/FAttrList.h"

#include <vector>

namespace tessera {

class FObjectList : public CmClass<FObjectList, FAttrList> {
public:
    static FMetaClass metaClass;

    enum class Owning : std::uint16_t { no = 0, yes = 1 };

    explicit FObjectList(Owning owning = Owning::yes) : owning_(owning) {}
    // Of an owning list the copy holds references of its own.
    FObjectList(const FObjectList& other);
    ~FObjectList() override;

    FAttrListKind getKind() const override { return FAttrListKind::objects; }
    std::int32_t count() const override { return static_cast<std::int32_t>(objects_.size()); }
    bool isOwning() const { return owning_ == Owning::yes; }
    // False for null, whose reference nobody has.
    bool append(CmObject* object);
    // Borrowed; null for a bad index.
    CmObject* at(std::int32_t index) const;
    // False at the end. The object is borrowed, and null when the element stands for one that can't be had: its class
    // isn't known, its own restoring failed, or a reference found nothing.
    bool next(CmObject*& out);

    FObjectList* clone() const override { return new FObjectList(*this); }

private:
    std::vector<CmObject*> objects_;
    Owning owning_;
};

} // namespace tessera
