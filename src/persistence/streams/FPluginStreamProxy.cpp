#include "persistence/streams/FPluginStreamProxy.h"

#include <string_view>

namespace tessera {

namespace {

struct NamedCapability {
    std::string_view key;
    FPluginStreamProxy::Capability bit;
};

constexpr NamedCapability kCapabilities[] = {
    {"CanRead", FPluginStreamProxy::canRead},
    {"CanWrite", FPluginStreamProxy::canWrite},
    {"CanIterate", FPluginStreamProxy::canIterate},
};

} // namespace

FResult FPluginStreamProxy::read(void* buffer, std::int32_t size, std::int32_t* count) {
    return (capabilities_ & canRead) != 0 ? stream_->read(buffer, size, count) : kResultFailure;
}

FResult FPluginStreamProxy::write(const void* buffer, std::int32_t size, std::int32_t* count) {
    return (capabilities_ & canWrite) != 0 ? stream_->write(buffer, size, count) : kResultFailure;
}

FResult FPluginStreamProxy::seek(std::int64_t offset, std::int32_t mode, std::int64_t* position) {
    return stream_->seek(offset, mode, position);
}

FResult FPluginStreamProxy::tell(std::int64_t* position) {
    return stream_->tell(position);
}

FResult FPluginStreamProxy::isSupported(const char* key) {
    for (const NamedCapability& capability : kCapabilities) {
        if (key != nullptr && capability.key == key) {
            return (capabilities_ & capability.bit) != 0 ? kResultOk : kResultFalse;
        }
    }
    return kResultFalse;
}

} // namespace tessera
