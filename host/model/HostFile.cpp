#include "host/model/HostFile.h"

#include "common/Utf8Path.h"
#include "host/text/Text16.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace tessera::host {
namespace {

using programs::nativePath;
using programs::utf8Text;

// What file systems take for one name, in bytes.
constexpr std::size_t kLongestName = 255;
constexpr int kMostTries = 10000;

// "take.wav", 2: "take-2.wav". A stem that leaves no room for the number is cut between two characters.
std::string numberedName(const std::filesystem::path& name, int number) {
    const std::string suffix = "-" + std::to_string(number) + utf8Text(name.extension());
    std::string stem = utf8Text(name.stem());
    while (!stem.empty() && stem.size() + suffix.size() > kLongestName) {
        while (!stem.empty() && (static_cast<unsigned char>(stem.back()) & 0xC0) == 0x80) {
            stem.pop_back();
        }
        if (!stem.empty()) {
            stem.pop_back();
        }
    }
    return stem + suffix;
}

} // namespace

HostFile::HostFile(std::shared_ptr<HostCore> core, std::string path, bool isFolder)
    : HostObject(core->watch, "HostFile"), core_(std::move(core)), path_(std::move(path)), isFolder_(isFolder) {}

void HostFile::path(char16_t* buffer) {
    if (!guestMay("path") || buffer == nullptr) {
        return;
    }
    writeText16(path_, buffer, kHostPathUnits);
}

FResult HostFile::setPath(const char16_t* path, std::int32_t isFolder) {
    if (!guestMay("setPath")) {
        return kResultFailure;
    }
    const std::optional<std::string> text = path == nullptr ? std::nullopt : toUtf8(path);
    if (!text || text->empty()) {
        return kInvalidArgument;
    }
    path_ = *text;
    isFolder_ = isFolder != 0;
    return kResultOk;
}

void HostFile::name(char16_t* buffer) {
    if (!guestMay("name") || buffer == nullptr) {
        return;
    }
    writeText16(utf8Text(nativePath(path_).filename()), buffer, kHostPathUnits);
}

FResult HostFile::append(const char16_t* name, std::int32_t isFolder) {
    if (!guestMay("append")) {
        return kResultFailure;
    }
    const std::optional<std::string> text = name == nullptr ? std::nullopt : toUtf8(name);
    if (!text || text->empty()) {
        return kInvalidArgument;
    }
    if (!isFolder_) {
        return kResultFalse;
    }
    path_ = utf8Text(nativePath(path_) / nativePath(*text));
    isFolder_ = isFolder != 0;
    return kResultOk;
}

FResult HostFile::makeUnique() {
    if (!guestMay("makeUnique")) {
        return kResultFailure;
    }
    const std::filesystem::path wanted = nativePath(path_);
    for (int number = 1; number < kMostTries; ++number) {
        const std::filesystem::path candidate =
            number == 1 ? wanted : wanted.parent_path() / nativePath(numberedName(wanted.filename(), number));
        std::error_code error;
        // A link that leads nowhere is a taken name, too.
        const std::filesystem::file_status status = std::filesystem::symlink_status(candidate, error);
        if (status.type() == std::filesystem::file_type::not_found) {
            path_ = utf8Text(candidate);
            return kResultOk;
        }
        if (error) {
            return kResultFailure;
        }
    }
    return kResultFailure;
}

FResult HostFile::clone(void** out) {
    if (!guestMay("clone") || out == nullptr) {
        return kInvalidArgument;
    }
    const auto copy = std::make_shared<HostFile>(core_, path_, isFolder_);
    return copy->queryInterface(IUrlFactory::iid, out);
}

} // namespace tessera::host
