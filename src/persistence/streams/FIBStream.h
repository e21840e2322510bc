// FIBStream: a stream of the host, or of a plug-in, as an FStream. Holds one reference of it.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/streams/FStream.h"

#include <cstdint>

namespace tessera {

class FIBStream : public CmClass<FIBStream, FStream> {
public:
    static FMetaClass metaClass;

    // A null stream reads and writes nothing.
    explicit FIBStream(IHostStream* stream) : stream_(stream) {}
    ~FIBStream() override;

    using FStream::read;
    using FStream::write;
    std::int32_t read(void* buffer, std::int32_t size) override;
    std::int32_t write(const void* buffer, std::int32_t size) override;
    std::int64_t seek(std::int64_t offset, SeekMode mode) override;
    std::int64_t tell() override;

private:
    FRefPtr<IHostStream> stream_;
};

} // namespace tessera
