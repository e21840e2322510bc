#include "platform/DesktopOpener.h"

#include "platform/NativePath.h"
#include "platform/Processes.h"

#include <optional>

namespace tessera::platform {

namespace {

constexpr const char* kOpener = "xdg-open";

bool open(const std::string& what) {
    return static_cast<bool>(Process::start(kOpener, {what}));
}

// An absolute path, so that no name is taken for a switch.
std::optional<std::string> absolutePath(std::u16string_view path) {
    std::optional<std::string> native = toNativePath(path);
    return native && native->front() == '/' ? native : std::nullopt;
}

} // namespace

bool openDocument(std::u16string_view path) {
    const auto native = absolutePath(path);
    return native && open(*native);
}

bool showInFolder(std::u16string_view path) {
    const auto native = absolutePath(path);
    return native && open(native->substr(0, native->rfind('/') + 1));
}

bool openAddress(const std::string& address) {
    return !address.empty() && address.front() != '-' && open(address);
}

} // namespace tessera::platform
