// FPluginWrapper: holds one object of a component, and gives it back, with the use of its module, at the end of its own
// life.
#pragma once

#include "components/FComponentDescription.h"
#include "foundation/object/FRefPtr.h"

namespace tessera {

class FPluginWrapper : public CmClass<FPluginWrapper, CmObject> {
public:
    static FMetaClass metaClass;

    // With a new object of the component, which is shared; null when it makes none. One reference for the caller.
    static FPluginWrapper* create(FComponentDescription& component);

    FPluginWrapper(const FPluginWrapper&) = delete;
    FPluginWrapper& operator=(const FPluginWrapper&) = delete;
    ~FPluginWrapper() override { component_->releaseInstance(instance_); }

    // Both borrowed; never null.
    IBaseUnknown* getInstance() const { return instance_; }
    FComponentDescription* getComponent() const { return component_.get(); }

private:
    FPluginWrapper(FComponentDescription& component, IBaseUnknown* instance)
        : component_(&component), instance_(instance) {}

    FRefPtr<FComponentDescription> component_;
    // The reference that its creation gave.
    IBaseUnknown* instance_;
};

} // namespace tessera
