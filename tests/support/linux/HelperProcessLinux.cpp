#include "support/HelperProcess.h"

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace tessera::testing_support {

namespace {

void closeIfOpen(std::intptr_t& descriptor) {
    if (descriptor != -1) {
        close(static_cast<int>(std::exchange(descriptor, -1)));
    }
}

} // namespace

HelperProcess::HelperProcess(const std::string& program, const std::vector<std::string>& arguments, Messages messages) {
    int toChild[2];
    int fromChild[2];
    if (pipe(toChild) != 0 || pipe(fromChild) != 0) {
        return;
    }
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, toChild[0], 0);
    posix_spawn_file_actions_adddup2(&files, fromChild[1], 1);
    if (messages == Messages::amongLines) {
        posix_spawn_file_actions_adddup2(&files, fromChild[1], 2);
    }
    posix_spawn_file_actions_addclosefrom_np(&files, 3);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    if (posix_spawn(&id_, program.c_str(), &files, nullptr, argv.data(), environ) != 0) {
        id_ = -1;
    }
    posix_spawn_file_actions_destroy(&files);
    close(toChild[0]);
    close(fromChild[1]);
    process_ = id_;
    input_ = toChild[1];
    output_ = fromChild[0];
}

HelperProcess::~HelperProcess() {
    kill();
    closeIfOpen(input_);
    closeIfOpen(output_);
}

void HelperProcess::say(const std::string& line) {
    const std::string sent = line + '\n';
    // A helper that has gone shows at the next read.
    const auto old = std::signal(SIGPIPE, SIG_IGN);
    static_cast<void>(!write(static_cast<int>(input_), sent.data(), sent.size()));
    std::signal(SIGPIPE, old);
}

HelperProcess::Heard HelperProcess::hearMore(std::chrono::milliseconds limit) {
    pollfd asked{static_cast<int>(output_), POLLIN, 0};
    if (poll(&asked, 1, static_cast<int>(limit.count())) == 0) {
        return Heard::nothing;
    }
    char buffer[4096];
    const ssize_t count = read(static_cast<int>(output_), buffer, sizeof buffer);
    if (count > 0) {
        pending_.append(buffer, static_cast<std::size_t>(count));
    }
    return count > 0 || (count < 0 && errno == EINTR) ? Heard::something : Heard::end;
}

void HelperProcess::kill() {
    if (process_ != kNone) {
        killAndKeep();
        waitpid(static_cast<pid_t>(std::exchange(process_, kNone)), nullptr, 0);
    }
    id_ = -1;
}

void HelperProcess::killAndKeep() const {
    if (process_ != kNone) {
        ::kill(static_cast<pid_t>(process_), SIGKILL);
    }
}

void HelperProcess::endInput() {
    closeIfOpen(input_);
}

bool HelperProcess::hasEnded() const {
    siginfo_t ended = {};
    // It stays to be waited for.
    return waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT) != 0 || ended.si_pid != 0;
}

int HelperProcess::finish() {
    endInput();
    int status = 0;
    const bool waited = waitpid(static_cast<pid_t>(std::exchange(process_, kNone)), &status, 0) > 0;
    id_ = -1;
    return waited && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace tessera::testing_support
