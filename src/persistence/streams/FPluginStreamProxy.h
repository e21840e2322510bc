// FPluginStreamProxy: stands between a plug-in and a stream, so that the plug-in may keep it and does no more with it
// than it was given for. Wraps an FStream (by its hostView) or a stream of the host, and holds one reference of it.
//
// Reading without the bit for it, and writing without its bit, give kResultFailure and touch nothing.
#pragma once

#include "foundation/object/CmClass.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/streams/IHostStream.h"
#include "persistence/streams/IStreamProxy.h"

#include <cstdint>

namespace tessera {

class FPluginStreamProxy final : public FImplements<FObject, IHostStream, IStreamProxy> {
public:
    enum Capability : std::uint32_t { canRead = 1, canWrite = 2, canIterate = 4 };

    FPluginStreamProxy(IHostStream& stream, std::uint32_t capabilities)
        : stream_(&stream), capabilities_(capabilities) {}

    FResult read(void* buffer, std::int32_t size, std::int32_t* count) override;
    FResult write(const void* buffer, std::int32_t size, std::int32_t* count) override;
    FResult seek(std::int64_t offset, std::int32_t mode, std::int64_t* position) override;
    FResult tell(std::int64_t* position) override;

    FResult isSupported(const char* key) override;

private:
    FRefPtr<IHostStream> stream_;
    std::uint32_t capabilities_;
};

} // namespace tessera
