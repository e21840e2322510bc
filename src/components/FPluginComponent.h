// FPluginComponent: a class of a module. Each object that was created and not given back counts as one use of the
// module, so the module is loaded as long as there is one.
#pragma once

#include "components/FComponentDescription.h"
#include "components/FModule.h"
#include "foundation/object/FArray.h"
#include "foundation/object/FRefPtr.h"

namespace tessera {

class FPluginComponent : public CmClass<FPluginComponent, FComponentDescription> {
public:
    static FMetaClass metaClass;

    // Shares the module.
    FPluginComponent(const ClassInfoWide& info, FModule& module) : CmClass(info), module_(&module) {}

    IBaseUnknown* createInstance() override;
    bool releaseInstance(IBaseUnknown* instance) override;
    FModule* getModule() const override { return module_.get(); }
    // Not given back yet.
    std::int32_t getInstanceCount() const { return instances_.getCount(); }

private:
    FRefPtr<FModule> module_;
    // Not referenced: whoever had them created may release them.
    FArray<IBaseUnknown*> instances_;
};

} // namespace tessera
