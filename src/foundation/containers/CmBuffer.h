// CmBuffer: a byte buffer that is an object, so that it can be saved, copied and passed along. Equality compares the
// used part.
#pragma once

#include "foundation/containers/FByteBuffer.h"
#include "foundation/object/CmClass.h"

namespace tessera {

class CmBuffer : public FByteBuffer, public CmClass<CmBuffer, CmObject> {
public:
    static FMetaClass metaClass;

    explicit CmBuffer(std::int32_t delta = kDefaultDelta) : FByteBuffer(delta) {}

    bool isEqual(const CmObject* other) const override;
    // size, fill, then size bytes. False, and empty, when the stream ends early or the counts make no sense.
    bool read(FStream& stream) override;
    // Bytes between fill and size go out as zero.
    bool write(FStream& stream) const override;
    CmBuffer* clone() const override;
};

} // namespace tessera
