// FComponentDescription: what is known of one class of one module, and the way to its objects.
//
// An object that was created is given back through releaseInstance, of the description or the registry, which ends the
// use of the module as well; FPluginWrapper does so at the end of its life. An object that is merely released keeps its
// module loaded. Main thread.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FUID.h"
#include "foundation/text/FStringRef.h"
#include "shell/hostapi/ClassInfoWide.h"

namespace tessera {

class FModule;

class FComponentDescription : public CmClass<FComponentDescription, CmObject> {
public:
    static FMetaClass metaClass;

    explicit FComponentDescription(const ClassInfoWide& info);
    FComponentDescription(const FComponentDescription&) = delete;
    FComponentDescription& operator=(const FComponentDescription&) = delete;
    ~FComponentDescription() override = default;

    // A new object with one reference for the caller; null when none can be made.
    virtual IBaseUnknown* createInstance() = 0;
    // Gives up the caller's reference; false, and nothing is released, for an object that was made elsewhere.
    virtual bool releaseInstance(IBaseUnknown* instance);
    // Borrowed; null for a class of the program itself.
    virtual FModule* getModule() const;

    const ClassInfoWide& getInfo() const { return info_; }
    const FUID& getUID() const { return uid_; }
    // Views into the record; the first and the last are 8-bit.
    FStringRef getCategory() const;
    FStringRef getName() const;
    FStringRef getVersion() const;
    FStringRef getSdkVersion() const;
    FStringRef getSubCategories() const;
    // Whether the user wants it; true at first.
    bool isAvailable() const { return available_; }
    void setAvailable(bool on) { available_ = on; }

private:
    ClassInfoWide info_;
    bool available_ = true;
    FUID uid_;
};

} // namespace tessera
