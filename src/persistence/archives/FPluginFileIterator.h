// FPluginFileIterator: walks a folder within a mounted archive. Its entries are virtual paths in full, with kind and
// size, ready for the file system.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/archives/OpenedArchive.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/paths/FNPath.h"

namespace tessera {

class FPluginFileIterator : public CmClass<FPluginFileIterator, FFileIterator> {
public:
    static FMetaClass metaClass;

    // Shares the archive, which may be dropped meanwhile.
    FPluginFileIterator(const FPath& folder, OpenedArchive& archive, FRefPtr<IVirtualIterator> entries);
    ~FPluginFileIterator() override;

    FPath* next() override;
    void reset() override;

private:
    FNPath current_;
    FRefPtr<OpenedArchive> archive_;
    FRefPtr<IVirtualIterator> entries_;
};

} // namespace tessera
