#include "host/audio/ReservedName.h"

#include "platform/Files.h"
#include "platform/NativePath.h"

#include <optional>

namespace tessera::host {
namespace {

constexpr int kMostTries = 100;

} // namespace

bool reserveName(const std::string& path, std::int32_t& error) {
    const std::optional<std::u16string> name = platform::fromNativePath(path);
    platform::FileOpenFlags flags;
    flags.write = true;
    return name && platform::File::open(*name, flags, platform::FileDisposition::createNew, error).isOpen();
}

std::string reserveNameBeside(const std::string& path, std::int32_t& error) {
    for (int number = 1; number <= kMostTries; ++number) {
        const std::string name = path + (number == 1 ? "" : "." + std::to_string(number)) + ".part";
        if (reserveName(name, error)) {
            return name;
        }
    }
    return {};
}

} // namespace tessera::host
