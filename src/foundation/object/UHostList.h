// UHostList: a list of reference-counted objects of any module, by their interface pointers.
//
// Adding takes a reference, removing and the end of the list give it back; a copy shares the entries. compare decides
// element by element for as long as this list has elements, so a list equals each one that it begins.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FArray.h"
#include "foundation/object/IHostList.h"

namespace tessera {

class UHostList : public CmClass<UHostList, CmObject, IHostList> {
public:
    static FMetaClass metaClass;

    UHostList() = default;
    UHostList(const UHostList& other);
    UHostList& operator=(const UHostList&) = delete;
    ~UHostList() override;

    std::int32_t getCount() override { return entries_.getCount(); }
    IBaseUnknown* getAt(std::int32_t index) override { return entries_.at(index); }
    void add(IBaseUnknown* object) override;
    void remove(IBaseUnknown* object) override;

    int compare(const CmObject* other) const override;
    UHostList* clone() const override;

private:
    FArray<IBaseUnknown*> entries_{10};
};

} // namespace tessera
