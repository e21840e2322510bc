// A program to start, find and kill. Arguments: "report <file>" writes what it was given to a file and ends; "wait"
// stays until it is killed; "lines" answers "id" and stays until the end of its input; "exit" ends at once.
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace {

void report(const char* path, int count, char** arguments) {
    const std::string unfinished = std::string(path) + ".part";
    std::string files;
    for (int file = 3; file < 1024; ++file) {
        if (fcntl(file, F_GETFD) != -1) {
            files += " " + std::to_string(file);
        }
    }
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    struct sigaction pipe {};
    sigaction(SIGPIPE, nullptr, &pipe);
    std::ofstream out(unfinished);
    for (int i = 0; i < count; ++i) {
        out << "argument=" << arguments[i] << "\n";
    }
    out << "files=" << files << "\n";
    out << "blocked=" << (sigismember(&mask, SIGTERM) == 1 || sigismember(&mask, SIGUSR1) == 1) << "\n";
    out << "pipe ignored=" << (pipe.sa_handler == SIG_IGN) << "\n";
    out.close();
    std::rename(unfinished.c_str(), path);
}

} // namespace

int main(int argc, char** argv) {
    const std::string command = argc > 1 ? argv[1] : "";
    if (command == "report" && argc > 2) {
        report(argv[2], argc - 3, argv + 3);
    } else if (command == "wait") {
        for (;;) {
            pause();
        }
    } else if (command == "lines") {
        std::cout << getpid() << std::endl;
        std::string line;
        while (std::getline(std::cin, line)) {
        }
    }
    return 0;
}
