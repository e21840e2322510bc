// FAttributeListObject: an ordered array of attributes with a reference count of its own. The attributes belong to it.
#pragma once

#include "foundation/containers/CmOrderedArray.h"
#include "foundation/messages/IAttributeList.h"

#include <atomic>

namespace tessera {

class FAttributeListObject final : public IAttributeList {
public:
    FAttributeListObject() { attributes_.setOwnership(CmOwnership::owner); }
    FAttributeListObject(const FAttributeListObject&) = delete;
    FAttributeListObject& operator=(const FAttributeListObject&) = delete;

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override;
    std::uint32_t release() override;

    CmOrderedArray& attributes() { return attributes_; }

private:
    ~FAttributeListObject() = default;

    CmOrderedArray attributes_;
    std::atomic<std::uint32_t> count_{1};
};

} // namespace tessera
