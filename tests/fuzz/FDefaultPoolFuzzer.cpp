// Settings files. What was read and saved is read again, with the same groups and values, and saved to the same bytes:
// whatever a file held, the settings never write one that they can't read. Objects among the values are left out of
// that, since they write what they like; long inputs too, since a text may grow beyond what a reader takes for a name.
#include "appservices/defaults/FDefaultPool.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/streams/FMemoryStream.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace tessera;

constexpr const char* kRootTag = "Defaults";

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class Pool : public FDefaultPool {
public:
    std::size_t valueCount() const {
        std::size_t count = 0;
        groups().forEach([&count](std::string_view, const FDefaults& group) {
            count += static_cast<std::size_t>(group.getCount());
            return true;
        });
        return count;
    }

    bool hasObjects() const {
        return !groups().forEach([](std::string_view, const FDefaults& group) {
            for (std::int32_t i = 0; i < group.getCount(); ++i) {
                if (group.at(i)->hasType(AttributeBits::kObject)) {
                    return false;
                }
            }
            return true;
        });
    }
};

std::string_view bytesOf(const FMemoryStream& stream) {
    return {reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize())};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 100000) {
        return 0;
    }
    FMemoryStream stream(static_cast<const void*>(data), static_cast<std::int32_t>(size));
    Pool pool;
    if (!FObjectDocument::loadObject(stream, kRootTag, pool) || pool.hasObjects()) {
        return 0;
    }
    FMemoryStream first;
    require(FObjectDocument::saveObject(first, kRootTag, pool));
    first.rewind();
    Pool again;
    require(FObjectDocument::loadObject(first, kRootTag, again));
    require(again.valueCount() == pool.valueCount());
    FMemoryStream second;
    require(FObjectDocument::saveObject(second, kRootTag, again));
    require(bytesOf(second) == bytesOf(first));
    return 0;
}
