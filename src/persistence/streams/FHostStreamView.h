// FHostStreamView: the host-visible face of an FStream. It is a part of the stream and shares its reference count, so
// queryInterface on either leads to the other.
#pragma once

#include "persistence/streams/IHostStream.h"

namespace tessera {

class FStream;

class FHostStreamView final : public IHostStream {
public:
    explicit FHostStreamView(FStream& stream) : stream_(stream) {}
    FHostStreamView(const FHostStreamView&) = delete;
    FHostStreamView& operator=(const FHostStreamView&) = delete;

    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override;
    std::uint32_t release() override;

    FResult read(void* buffer, std::int32_t size, std::int32_t* count) override;
    FResult write(const void* buffer, std::int32_t size, std::int32_t* count) override;
    FResult seek(std::int64_t offset, std::int32_t mode, std::int64_t* position) override;
    FResult tell(std::int64_t* position) override;

private:
    FStream& stream_;
};

} // namespace tessera
