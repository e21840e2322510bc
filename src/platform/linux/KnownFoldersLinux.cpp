#include "platform/KnownFolders.h"

#include "platform/NativePath.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tessera::platform {

namespace {

using OptionalPath = std::optional<std::string>;

constexpr std::string_view kVendorFolder = "Marlgrove";
constexpr std::string_view kDefaultDataFolders = "/usr/local/share:/usr/share";
// A password entry larger than this is no honest one.
constexpr std::size_t kLargestEntry = std::size_t{1} << 20;

bool isAbsolute(std::string_view path) {
    return !path.empty() && path[0] == '/';
}

// A relative path in one of these variables is invalid, and is to be ignored.
OptionalPath pathVariable(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr || !isAbsolute(value)) {
        return std::nullopt;
    }
    return value;
}

OptionalPath homeFolder() {
    if (OptionalPath home = pathVariable("HOME")) {
        return home;
    }
    struct passwd entry;
    struct passwd* found = nullptr;
    std::vector<char> buffer(1024);
    while (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE &&
           buffer.size() < kLargestEntry) {
        buffer.resize(buffer.size() * 2);
    }
    if (found == nullptr || !isAbsolute(found->pw_dir)) {
        return std::nullopt;
    }
    return found->pw_dir;
}

OptionalPath belowHome(std::string_view step) {
    OptionalPath home = homeFolder();
    if (home) {
        home->append(step);
    }
    return home;
}

OptionalPath variableOrBelowHome(const char* variable, std::string_view step) {
    OptionalPath path = pathVariable(variable);
    return path ? path : belowHome(step);
}

OptionalPath configurationFolder() {
    return variableOrBelowHome("XDG_CONFIG_HOME", "/.config");
}

bool isFolder(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The first of the shared data folders that holds something of ours; without one, the first of all.
OptionalPath commonDataFolder() {
    const char* variable = std::getenv("XDG_DATA_DIRS");
    std::string_view rest = variable != nullptr && *variable != '\0' ? std::string_view(variable) : kDefaultDataFolders;
    OptionalPath first;
    while (!rest.empty()) {
        const std::string path(rest.substr(0, rest.find(':')));
        rest.remove_prefix(std::min(path.size() + 1, rest.size()));
        if (!isAbsolute(path)) {
            continue;
        }
        if (isFolder(path + "/" + std::string(kVendorFolder))) {
            return path;
        }
        if (!first) {
            first = path;
        }
    }
    return first;
}

// What stands in front of the closing quote, as a shell would read it.
OptionalPath untilQuote(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '"') {
            return text;
        }
        if (value[i] == '\\' && i + 1 < value.size()) {
            ++i;
        }
        text.push_back(value[i]);
    }
    return std::nullopt;
}

// The folder that the value of one line names: "$HOME/Music" or "/srv/music", quotes included. One that is the home
// folder itself means that the user has no such folder.
OptionalPath folderOf(std::string_view value) {
    constexpr std::string_view kHome = "\"$HOME";
    const bool inHome = value.starts_with(kHome);
    if (!inHome && !value.starts_with('"')) {
        return std::nullopt;
    }
    const OptionalPath path = untilQuote(value.substr(inHome ? kHome.size() : 1));
    if (!path || !isAbsolute(*path)) {
        return std::nullopt;
    }
    if (!inHome) {
        return path;
    }
    return path->find_first_not_of('/') != std::string::npos ? belowHome(*path) : std::nullopt;
}

// The last line for the key counts, as in the shell scripts that read this file.
OptionalPath userFolder(std::string_view key) {
    const OptionalPath folder = configurationFolder();
    if (!folder) {
        return std::nullopt;
    }
    std::ifstream file(*folder + "/user-dirs.dirs");
    const std::string start = std::string(key) + "=";
    OptionalPath result;
    for (std::string line; std::getline(file, line);) {
        std::string_view text = line;
        text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
        if (text.starts_with(start)) {
            result = folderOf(text.substr(start.size()));
        }
    }
    return result;
}

OptionalPath nativeFolder(KnownFolder folder) {
    switch (folder) {
    case KnownFolder::userData:
    case KnownFolder::roamingData:
        return configurationFolder();
    case KnownFolder::localData:
        return variableOrBelowHome("XDG_DATA_HOME", "/.local/share");
    case KnownFolder::commonData:
        return commonDataFolder();
    case KnownFolder::programFiles:
    case KnownFolder::programFilesNative:
    case KnownFolder::programFilesOther:
    case KnownFolder::programFilesOrCommon:
        return "/usr/local/lib";
    case KnownFolder::commonFiles:
    case KnownFolder::commonFilesOther:
    case KnownFolder::sharedFiles:
        return "/usr/local/lib/common";
    case KnownFolder::system:
        return "/usr/lib";
    case KnownFolder::profile:
        return homeFolder();
    case KnownFolder::documents:
        return userFolder("XDG_DOCUMENTS_DIR");
    case KnownFolder::pictures:
        return userFolder("XDG_PICTURES_DIR");
    case KnownFolder::music:
        return userFolder("XDG_MUSIC_DIR");
    case KnownFolder::videos:
        return userFolder("XDG_VIDEOS_DIR");
    }
    return std::nullopt;
}

} // namespace

std::optional<std::u16string> knownFolder(KnownFolder folder) {
    OptionalPath path = nativeFolder(folder);
    if (!path) {
        return std::nullopt;
    }
    while (path->size() > 1 && path->back() == '/') {
        path->pop_back();
    }
    return fromNativePath(*path);
}

} // namespace tessera::platform
