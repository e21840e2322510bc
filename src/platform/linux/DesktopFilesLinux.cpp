#include "platform/DesktopFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The trash is two folders side by side: files/ holds what was thrown away, info/ one "<name>.trashinfo" for each with
// its old path and the time. The information file is made first and exclusively: it reserves the name.
namespace tessera::platform {

namespace {

std::error_code lastError() {
    return {errno, std::system_category()};
}

std::string dataHome() {
    const char* named = std::getenv("XDG_DATA_HOME");
    if (named != nullptr && named[0] == '/') {
        return named;
    }
    const char* home = std::getenv("HOME");
    return home != nullptr && home[0] == '/' ? std::string(home) + "/.local/share" : std::string();
}

bool makeFolders(const std::string& path) {
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        if (mkdir(path.substr(0, end).c_str(), 0700) != 0 && errno != EEXIST) {
            return false;
        }
        if (end == std::string::npos) {
            return true;
        }
    }
}

std::string percentEncoded(const std::string& path) {
    std::string text;
    for (const char c : path) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/' ||
                           c == '-' || c == '_' || c == '.' || c == '~';
        if (plain) {
            text += c;
            continue;
        }
        char code[4];
        std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(c));
        text += code;
    }
    return text;
}

std::string trashInfo(const std::string& path) {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    localtime_r(&now, &local);
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + percentEncoded(path) + "\nDeletionDate=" + date + "\n";
}

std::error_code writeNew(const std::string& path, const std::string& text) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0) {
        return lastError();
    }
    const bool whole = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    const std::error_code error = whole ? std::error_code() : lastError();
    close(file);
    if (!whole) {
        unlink(path.c_str());
    }
    return error;
}

constexpr int kNamesToTry = 1000;

} // namespace

std::error_code createShortcut(const std::string& target, const std::string& shortcut) {
    return symlink(target.c_str(), shortcut.c_str()) == 0 ? std::error_code() : lastError();
}

std::error_code moveToTrash(const std::string& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        return lastError();
    }
    const std::string home = dataHome();
    if (home.empty()) {
        return {ENOENT, std::system_category()};
    }
    const std::string trash = home + "/Trash";
    if (!makeFolders(trash + "/files") || !makeFolders(trash + "/info")) {
        return lastError();
    }
    const std::string base = path.substr(path.find_last_of('/') + 1);
    for (int number = 1; number <= kNamesToTry; ++number) {
        const std::string name = number == 1 ? base : base + "." + std::to_string(number);
        const std::string info = trash + "/info/" + name + ".trashinfo";
        if (const std::error_code error = writeNew(info, trashInfo(path)); error.value() == EEXIST) {
            continue;
        } else if (error) {
            return error;
        }
        if (rename(path.c_str(), (trash + "/files/" + name).c_str()) == 0) {
            return {};
        }
        const std::error_code error = lastError();
        unlink(info.c_str());
        return error;
    }
    return {EEXIST, std::system_category()};
}

} // namespace tessera::platform
