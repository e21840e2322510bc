#include "platform/ProgramRun.h"

#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessera::platform {
namespace {

constexpr auto kPollPeriod = std::chrono::milliseconds(20);

// A process group of its own, so that what the program starts can be ended with it; default signal handling, as it has
// no use for ours; no descriptor of ours beyond the standard streams.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawnattr_init(&attributes_);
        sigset_t all;
        sigfillset(&all);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    int start(pid_t* child, const std::string& executable, const std::vector<std::string>& arguments) {
        std::vector<char*> words{const_cast<char*>(executable.c_str())};
        for (const std::string& argument : arguments) {
            words.push_back(const_cast<char*>(argument.c_str()));
        }
        words.push_back(nullptr);
        return posix_spawnp(child, executable.c_str(), &actions_, &attributes_, words.data(), environ);
    }

private:
    posix_spawnattr_t attributes_;
    posix_spawn_file_actions_t actions_;
};

ProgramEnd endOf(int status, bool stopped) {
    if (stopped) {
        return {ProgramEnd::Kind::Stopped, 0};
    }
    if (WIFEXITED(status)) {
        return {ProgramEnd::Kind::Exited, WEXITSTATUS(status)};
    }
    return {ProgramEnd::Kind::Crashed, WIFSIGNALED(status) ? WTERMSIG(status) : 0};
}

} // namespace

ProgramEnd runProgram(const std::string& executable, const std::vector<std::string>& arguments,
                      const std::atomic<bool>& stop) {
    pid_t child = -1;
    if (const int error = SpawnSettings().start(&child, executable, arguments); error != 0) {
        return {ProgramEnd::Kind::NotStarted, error};
    }
    bool stopped = false;
    for (;;) {
        int status = 0;
        const pid_t ended = waitpid(child, &status, WNOHANG);
        if (ended == child) {
            return endOf(status, stopped);
        }
        if (ended < 0 && errno != EINTR) {
            return {ProgramEnd::Kind::Crashed, 0};
        }
        if (!stopped && stop.load()) {
            stopped = true;
            kill(-child, SIGKILL);
        }
        std::this_thread::sleep_for(kPollPeriod);
    }
}

std::string systemErrorText(int code) {
    return std::generic_category().message(code);
}

} // namespace tessera::platform
