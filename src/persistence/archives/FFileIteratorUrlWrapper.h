// FFileIteratorUrlWrapper: walks a mount on behalf of a path of another scheme, and gives out paths under that scheme.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/paths/FNPath.h"

namespace tessera {

class FFileIteratorUrlWrapper : public CmClass<FFileIteratorUrlWrapper, FFileIterator> {
public:
    static FMetaClass metaClass;

    // The prefix takes the place of the folder in which the mount's own entries stand. Takes the caller's reference of
    // the iterator over.
    FFileIteratorUrlWrapper(const FStringRef& prefix, FFileIterator* inner);
    ~FFileIteratorUrlWrapper() override;

    FPath* next() override;
    void reset() override;

private:
    FString prefix_;
    FRefPtr<FNPath> currentPath_;
    FRefPtr<FFileIterator> inner_;
    std::uint8_t first_ = 1; // the walk begins with a reset
};

} // namespace tessera
