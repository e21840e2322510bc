// UPlugTarget: a target that passes the edit brackets of its values on to their owner in another module, through
// IValueOwner. Other modules create one by identifier and give it its owner (IPlugTarget).
//
// A value whose target this is leaves the notification of the brackets to the owner.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/values/IPlugTarget.h"

namespace tessera {

struct IAttributes;

class UPlugTarget : public CmClass<UPlugTarget, CmObject, IPlugTarget> {
public:
    static FMetaClass metaClass;

    explicit UPlugTarget(IBaseUnknown* owner = nullptr) : owner_(owner) {}

    void setOwner(IBaseUnknown* owner) override { owner_ = owner; }
    IBaseUnknown* getOwner() override { return owner_.get(); }

    // Whether the attributes are of a value that has a plug target.
    static bool isPlugTarget(IAttributes& attributes);

    // 1 for "BeginEdit" and "EndEdit", whether somebody could be told or not; 0 for any other message.
    std::int32_t receiveMessage(FMessage* message) override;
    UPlugTarget* clone() const override { return new UPlugTarget(owner_.get()); }

private:
    FRefPtr<IBaseUnknown> owner_;
};

} // namespace tessera
