// FModule: a library that makes classes: it exports "GetPluginFactory".
//
// Who made it and what its factory can do is known as FactoryInfo, from the factory or from what was remembered of it.
// The factory is handed the program's host context, if there is one and it takes one.
#pragma once

#include "components/FModuleBase.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IModuleFactory.h"

namespace tessera {

class FModule : public CmClass<FModule, FModuleBase> {
public:
    static FMetaClass metaClass;

    // Flags of the factory information. The first two say that what the classes are can't be remembered.
    static constexpr std::int32_t kClassesDependOnProgram = 1;
    static constexpr std::int32_t kClassesDependOnUser = 2;
    // Once loaded, the library stays.
    static constexpr std::int32_t kStayLoadedOnceKnown = 8;
    // What is remembered of the classes may be used without loading the library. A factory that has this bit for its
    // 16-bit records says both with it.
    static constexpr std::int32_t kUsableUnloaded = 16;

    using CmClass::CmClass;
    ~FModule() override;

    // Borrowed, and there as long as the library is: the caller counts itself among the users first. Null when it isn't
    // loaded, or can't be.
    virtual IModuleFactory* getFactory(bool loadIfNeeded);
    virtual void setInfo(const FactoryInfo& info);
    const FactoryInfo& getInfo() const { return info_; }

    bool onLoaded() override;
    void onUnloading() override;

private:
    FactoryInfo info_;
    FRefPtr<IModuleFactory> factory_;
};

} // namespace tessera
