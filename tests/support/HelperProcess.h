// HelperProcess: a tiny program beside a test, spoken to in lines over its standard streams. It is killed, if it still
// runs, when the object goes; no read waits longer than its deadline.
#pragma once

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tessera::testing_support {

class HelperProcess {
public:
    explicit HelperProcess(const char* program, std::vector<std::string> arguments = {}) {
        int toChild[2];
        int fromChild[2];
        if (pipe(toChild) != 0 || pipe(fromChild) != 0) {
            return;
        }
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        posix_spawn_file_actions_adddup2(&files, toChild[0], 0);
        posix_spawn_file_actions_adddup2(&files, fromChild[1], 1);
        posix_spawn_file_actions_addclosefrom_np(&files, 3);
        std::vector<char*> argv{const_cast<char*>(program)};
        for (std::string& argument : arguments) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        if (posix_spawn(&id_, program, &files, nullptr, argv.data(), environ) != 0) {
            id_ = -1;
        }
        posix_spawn_file_actions_destroy(&files);
        close(toChild[0]);
        close(fromChild[1]);
        input_ = toChild[1];
        output_ = fromChild[0];
    }
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;
    ~HelperProcess() {
        kill();
        close(input_);
        close(output_);
    }

    int id() const { return id_; }

    void say(std::string line) {
        line += '\n';
        // A helper that has gone shows at the next read.
        const auto old = std::signal(SIGPIPE, SIG_IGN);
        static_cast<void>(!write(input_, line.data(), line.size()));
        std::signal(SIGPIPE, old);
    }

    // The next line; "(nothing)" when none came in time, "(end)" when the helper has gone.
    std::string hear(std::chrono::milliseconds limit = std::chrono::seconds(20)) {
        const auto end = std::chrono::steady_clock::now() + limit;
        for (;;) {
            const std::size_t newline = pending_.find('\n');
            if (newline != std::string::npos) {
                std::string line = pending_.substr(0, newline);
                pending_.erase(0, newline + 1);
                return line;
            }
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
            pollfd asked{output_, POLLIN, 0};
            if (poll(&asked, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0) == 0) {
                return "(nothing)";
            }
            char buffer[4096];
            const ssize_t count = read(output_, buffer, sizeof buffer);
            if (count == 0 || (count < 0 && errno != EINTR)) {
                return "(end)";
            }
            if (count > 0) {
                pending_.append(buffer, static_cast<std::size_t>(count));
            }
        }
    }

    std::string ask(std::string line) {
        say(std::move(line));
        return hear();
    }

    // At once, as by kill -9, and waits until it has gone.
    void kill() {
        if (id_ != -1) {
            ::kill(id_, SIGKILL);
            waitpid(std::exchange(id_, -1), nullptr, 0);
        }
    }

    // Ends it by the end of its input, and gives its exit code; -1 when it didn't exit by itself.
    int finish() {
        close(std::exchange(input_, -1));
        int status = 0;
        const bool waited = waitpid(std::exchange(id_, -1), &status, 0) > 0;
        return waited && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t id_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string pending_;
};

} // namespace tessera::testing_support
