// FNFileIterator: walks a native folder. A folder that isn't there has no entries.
//
// Each entry is an FNPath with its kind (1 folder, 2 for a name ending in ".lnk", else 0), the hidden mark and the low
// 32 bits of its size. Links are followed for kind and size, those that end in ".lnk" are not. "." and ".." are left
// out, and so is a name without a path form: one with a backslash, or of bytes that are no UTF-8.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/paths/FNPath.h"
#include "platform/Folder.h"

namespace tessera {

class FNFileIterator : public CmClass<FNFileIterator, FFileIterator> {
public:
    static FMetaClass metaClass;

    // With resolveLinks a link that leads somewhere is given as what it leads to. With fillFileTypes each entry has its
    // file type from its extension; otherwise that is found out when it is asked for.
    FNFileIterator(const FPath& folder, bool resolveLinks, bool fillFileTypes);

    FPath* next() override;
    void reset() override;

private:
    FNPath* resolved();

    FRefPtr<FNPath> folder_;
    FString text_;
    FNPath current_;
    FNPath linkTarget_;
    bool resolveLinks_;
    bool fillFileTypes_;
    platform::Folder find_;
    bool atEnd_ = false;
};

} // namespace tessera
