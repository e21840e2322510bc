// One file per value: <settings>/Marlgrove/Registry/<name of the key>/.../<value name>.txt, the text as UTF-8 and a
// line feed.
//
// In file names, letters, digits, blanks and "-_()," stand for themselves; every other byte of a name's UTF-8 is "%"
// and two digits. A dot is kept in value names alone, and not as their first character: so a folder never has the name
// of a file, nothing is hidden, and "..", "/" and the like are names as any other. What a file system would find too
// long is cut, and "%~" with the digest of the whole name follows.
#include "platform/RegistryValues.h"

#include "platform/KnownFolders.h"
#include "platform/Md5.h"
#include "platform/NativePath.h"
#include "platform/SmallFile.h"
#include "platform/Utf8Text.h"
#include "platform/linux/UnfinishedName.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace tessera::platform {

namespace {

constexpr std::string_view kFolder = "/Marlgrove/Registry";
constexpr std::string_view kValueExtension = ".txt";
// With the digest, its mark and the extension it stays below the 255 bytes of a file name.
constexpr std::size_t kLongestName = 200;

enum class NameKind { key, value };

std::string toUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            appendUtf8(result, joined(text[i], text[i + 1]));
            ++i;
        } else {
            appendUtf8(result, text[i]);
        }
    }
    return result;
}

std::optional<std::u16string> fromUtf8(std::string_view bytes) {
    std::u16string result;
    result.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::optional<char32_t> c = takeUtf8(bytes, LoneSurrogates::allowed);
        if (!c) {
            return std::nullopt;
        }
        appendUtf16(result, *c);
    }
    return result;
}

bool standsForItself(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view(" -_(),").find(c) != std::string_view::npos;
}

void appendHex(std::string& text, std::uint8_t byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    text.push_back(kDigits[byte >> 4]);
    text.push_back(kDigits[byte & 15]);
}

std::string fileName(std::u16string_view name, NameKind kind) {
    if (name.empty()) {
        return "%";
    }
    const std::string bytes = toUtf8(name);
    std::string result;
    for (const char c : bytes) {
        if (standsForItself(c) || (c == '.' && kind == NameKind::value && !result.empty())) {
            result.push_back(c);
        } else {
            result.push_back('%');
            appendHex(result, static_cast<std::uint8_t>(c));
        }
    }
    if (result.size() > kLongestName) {
        result.resize(kLongestName);
        result += "%~";
        for (const std::uint8_t byte : md5(bytes)) {
            appendHex(result, byte);
        }
    }
    return result;
}

std::optional<std::string> folderOf(std::u16string_view key) {
    const std::optional<std::u16string> settings = knownFolder(KnownFolder::userData);
    std::optional<std::string> folder = settings ? toNativePath(*settings) : std::nullopt;
    if (!folder) {
        return std::nullopt;
    }
    folder->append(kFolder);
    while (!key.empty()) {
        const std::u16string_view name = key.substr(0, key.find(u'\\'));
        key.remove_prefix(std::min(name.size() + 1, key.size()));
        if (!name.empty()) {
            *folder += "/" + fileName(name, NameKind::key);
        }
    }
    return folder;
}

std::string valueFile(const std::string& folder, std::u16string_view name) {
    return folder + "/" + fileName(name, NameKind::value) + std::string(kValueExtension);
}

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// A new file with all of the bytes, on the disk before it gets a name that counts.
bool writeWhole(const std::string& path, std::string_view bytes) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) {
        return false;
    }
    const bool written = writeAll(file, bytes) && ::fdatasync(file) == 0;
    return ::close(file) == 0 && written;
}

} // namespace

std::optional<std::u16string> readRegistryValue(std::u16string_view key, std::u16string_view name, RegistryScope) {
    const std::optional<std::string> folder = folderOf(key);
    if (!folder) {
        return std::nullopt;
    }
    std::optional<std::string> bytes = readSmallFile(valueFile(*folder, name), kLongestRegistryValue + 2);
    if (!bytes || bytes->size() > kLongestRegistryValue + 1) {
        return std::nullopt;
    }
    // Ours, or that of the editor in which somebody has looked at the file.
    if (bytes->ends_with('\n')) {
        bytes->pop_back();
    }
    return fromUtf8(*bytes);
}

bool writeRegistryValue(std::u16string_view key, std::u16string_view name, std::u16string_view text) {
    const std::optional<std::string> folder = folderOf(key);
    const std::string bytes = toUtf8(text);
    if (!folder || bytes.size() > kLongestRegistryValue) {
        return false;
    }
    std::error_code ignored;
    std::filesystem::create_directories(*folder, ignored);
    const std::string unfinished = *folder + "/" + unfinishedName();
    if (!writeWhole(unfinished, bytes + "\n") || ::rename(unfinished.c_str(), valueFile(*folder, name).c_str()) != 0) {
        ::unlink(unfinished.c_str());
        return false;
    }
    return true;
}

bool deleteRegistryValue(std::u16string_view key, std::u16string_view name) {
    const std::optional<std::string> folder = folderOf(key);
    if (!folder) {
        return false;
    }
    return ::unlink(valueFile(*folder, name).c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

} // namespace tessera::platform
