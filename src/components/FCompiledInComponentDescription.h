// FCompiledInComponentDescription: a class that the program itself makes.
#pragma once

#include "components/FComponentDescription.h"

namespace tessera {

class FCompiledInComponentDescription : public CmClass<FCompiledInComponentDescription, FComponentDescription> {
public:
    static FMetaClass metaClass;

    // A new object with one reference for the caller, or null.
    using Factory = IBaseUnknown* (*)();

    // Without a factory there are no objects.
    FCompiledInComponentDescription(const ClassInfoWide& info, Factory factory) : CmClass(info), factory_(factory) {}

    IBaseUnknown* createInstance() override { return factory_ != nullptr ? factory_() : nullptr; }

private:
    Factory factory_;
};

} // namespace tessera
