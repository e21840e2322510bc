#include "host/model/SafeSave.h"

#include "common/Utf8Path.h"
#include "host/audio/ReservedName.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "platform/Files.h"
#include "platform/NativePath.h"
#include "platform/SystemErrors.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

namespace tessera::host {
namespace {

class PlatformSaveSteps final : public SaveSteps {
public:
    std::string writeAndFlush(const std::string& path, std::string_view content) override {
        const std::optional<std::u16string> name = platform::fromNativePath(path);
        if (!name) {
            return message(hostTexts.nameNotUtf8);
        }
        platform::FileOpenFlags flags;
        flags.write = true;
        std::int32_t error = 0;
        platform::File file = platform::File::open(*name, flags, platform::FileDisposition::createAlways, error);
        if (!file.isOpen()) {
            return platform::describeError(error);
        }
        const auto size = static_cast<std::int64_t>(content.size());
        const bool stored = file.write(content.data(), size, error) == size && file.flush(error) && file.close(error);
        return stored ? std::string() : platform::describeError(error);
    }
    std::string rename(const std::string& from, const std::string& to) override {
        std::error_code error;
        std::filesystem::rename(programs::nativePath(from), programs::nativePath(to), error);
        return error ? error.message() : std::string();
    }
    void remove(const std::string& path) override {
        std::error_code ignored;
        std::filesystem::remove(programs::nativePath(path), ignored);
    }
};

} // namespace

SaveSteps& platformSaveSteps() {
    static PlatformSaveSteps steps;
    return steps;
}

std::string safeSave(const std::string& path, std::string_view content, SaveSteps& steps) {
    std::int32_t error = 0;
    const std::string beside = reserveNameBeside(path, error);
    if (beside.empty()) {
        return error == 0 ? message(hostTexts.nameNotUtf8) : platform::describeError(error);
    }
    std::string reason = steps.writeAndFlush(beside, content);
    if (reason.empty()) {
        reason = steps.rename(beside, path);
    }
    if (!reason.empty()) {
        steps.remove(beside);
    }
    return reason;
}

} // namespace tessera::host
