// ArchiveComponent: a component that understands an archive format, held until it is given back to where it came from.
//
// It comes from the component source, and is given back at the end of its life, which ends the use of its module. On
// another thread than the one that had it made it is merely released, and its module stays loaded: the source belongs
// to one thread.
#pragma once

#include "foundation/object/FObject.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/archives/IVirtualFileSystem.h"

#include <cstdint>

namespace tessera {

class FFileType;

class ArchiveComponent final : public FObject {
public:
    // The first component whose type it is; null for none. A type without a name for anything is equal to none.
    static FRefPtr<ArchiveComponent> forType(const FFileType& type);

    // Takes over the reference of what the source has made.
    explicit ArchiveComponent(IBaseUnknown& made);
    ArchiveComponent(const ArchiveComponent&) = delete;
    ArchiveComponent& operator=(const ArchiveComponent&) = delete;
    ~ArchiveComponent() override;

    IVirtualFileSystem* operator->() const { return component_.get(); }

private:
    bool understands(const FFileType& type) const;

    IBaseUnknown* made_;
    FRefPtr<IVirtualFileSystem> component_;
    std::uint32_t thread_;
};

} // namespace tessera
