#include "platform/Processes.h"

#include "platform/linux/ProcessFile.h"
#include "platform/linux/ProcessWatcher.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <spawn.h>

namespace tessera::platform {

namespace {

constexpr int kFirstPrivateFile = 3;

// The settings under which a child begins: no file but the standard ones, no signal blocked or ignored, whatever the
// calling thread of the host has.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&files_);
        posix_spawn_file_actions_addclosefrom_np(&files_, kFirstPrivateFile);
        posix_spawnattr_init(&attributes_);
        sigset_t set;
        sigemptyset(&set);
        posix_spawnattr_setsigmask(&attributes_, &set);
        sigfillset(&set);
        posix_spawnattr_setsigdefault(&attributes_, &set);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&files_);
    }

    const posix_spawn_file_actions_t* files() const { return &files_; }
    const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t files_;
    posix_spawnattr_t attributes_;
};

std::vector<char*> argumentVector(const std::string& executable, const std::vector<std::string>& arguments) {
    std::vector<char*> vector;
    vector.reserve(arguments.size() + 2);
    vector.push_back(const_cast<char*>(executable.c_str()));
    for (const std::string& argument : arguments) {
        vector.push_back(const_cast<char*>(argument.c_str()));
    }
    vector.push_back(nullptr);
    return vector;
}

bool endsWith(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

std::string_view baseNameOf(std::string_view path) {
    // The system marks a program whose file was replaced or removed while it runs.
    constexpr std::string_view kMark = " (deleted)";
    if (endsWith(path, kMark)) {
        path.remove_suffix(kMark.size());
    }
    return path.substr(path.rfind('/') + 1);
}

} // namespace

Process Process::start(const std::string& executable, const std::vector<std::string>& arguments) {
    const SpawnSettings settings;
    pid_t id = -1;
    if (posix_spawnp(&id, executable.c_str(), settings.files(), settings.attributes(),
                     argumentVector(executable, arguments).data(), environ) != 0) {
        return {};
    }
    // No descriptor: the program has ended already, and this process takes no notice of its children.
    const int file = openProcessFile(id);
    if (file != -1) {
        ProcessWatcher::instance().addChild(fcntl(file, F_DUPFD_CLOEXEC, 0));
    }
    return Process(file, id);
}

Process Process::open(int processId) {
    const int file = openProcessFile(processId);
    return file == -1 ? Process() : Process(file, processId);
}

bool Process::isRunning() const {
    pollfd asked{static_cast<int>(handle_), POLLIN, 0};
    return handle_ != -1 && poll(&asked, 1, 0) == 0;
}

void Process::kill() {
    if (handle_ != -1) {
        sendSignal(static_cast<int>(handle_), SIGKILL);
    }
    close();
}

bool Process::showWindow() {
    return false;
}

void Process::close() {
    if (handle_ != -1) {
        ::close(static_cast<int>(std::exchange(handle_, -1)));
    }
    id_ = -1;
}

int ownProcessId() {
    return getpid();
}

std::string processBaseName(int processId) {
    const std::string link = "/proc/" + std::to_string(processId) + "/exe";
    char path[PATH_MAX];
    const ssize_t length = readlink(link.c_str(), path, sizeof path);
    return length > 0 ? std::string(baseNameOf({path, static_cast<std::size_t>(length)})) : std::string();
}

std::string ownBaseName() {
    return processBaseName(ownProcessId());
}

int findProcess(const std::function<bool(int processId, std::string_view baseName)>& visit) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc"), closedir);
    while (folder != nullptr) {
        const dirent* entry = readdir(folder.get());
        if (entry == nullptr) {
            break;
        }
        int id = 0;
        const char* end = entry->d_name + std::strlen(entry->d_name);
        if (std::from_chars(entry->d_name, end, id).ptr != end) {
            continue;
        }
        const std::string name = processBaseName(id);
        if (!name.empty() && visit(id, name)) {
            return id;
        }
    }
    return -1;
}

} // namespace tessera::platform
