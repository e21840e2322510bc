// OpenedArchive: an archive that a component has opened. The mount, its iterators and the streams that it has handed
// out share it: what a component gives may lean on the volume, and that on the component and on the archive's file.
#pragma once

#include "foundation/object/FObject.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/archives/ArchiveComponent.h"
#include "persistence/archives/IVirtualFileSystem.h"
#include "persistence/streams/FStream.h"

namespace tessera {

class OpenedArchive final : public FObject {
public:
    // Takes references of all three. The stream is the archive's file.
    OpenedArchive(IVirtualVolume& volume, ArchiveComponent& component, FStream* stream)
        : volume_(&volume), component_(&component), stream_(stream) {}
    ~OpenedArchive() override {
        volume_.reset();
        component_.reset();
    }

    IVirtualVolume& volume() const { return *volume_; }

private:
    FRefPtr<IVirtualVolume> volume_;
    FRefPtr<ArchiveComponent> component_;
    FRefPtr<FStream> stream_;
};

} // namespace tessera
