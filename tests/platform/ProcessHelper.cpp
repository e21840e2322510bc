// A program to start, find and kill. Arguments: "report <file>" writes what it was given to a file and ends; "wait"
// stays until it is killed; "lines" answers "id" and stays until the end of its input; "exit" ends at once.
#include "common/Utf8Path.h"
#include "platform/InheritedThings.h"
#include "platform/Processes.h"
#include "platform/ProgramArguments.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

namespace {

void report(const char* path, int count, char** arguments) {
    // Before there is a file of this process's own.
    std::ostringstream inherited;
    tessera::platform::reportInheritedThings(inherited);
    const std::string unfinished = std::string(path) + ".part";
    std::ofstream out(tessera::programs::nativePath(unfinished), std::ios::binary);
    for (int i = 0; i < count; ++i) {
        out << "argument=" << arguments[i] << "\n";
    }
    out << inherited.str();
    out.close();
    std::filesystem::rename(tessera::programs::nativePath(unfinished), tessera::programs::nativePath(path));
}

} // namespace

int main(int argc, char** argv) {
    tessera::platform::ProgramArguments arguments(argc, argv);
    char** words = arguments.values();
    const std::string command = arguments.count() > 1 ? words[1] : "";
    if (command == "report" && arguments.count() > 2) {
        report(words[2], arguments.count() - 3, words + 3);
    } else if (command == "wait") {
        for (;;) {
            std::this_thread::sleep_for(std::chrono::hours(1));
        }
    } else if (command == "lines") {
        std::cout << tessera::platform::ownProcessId() << std::endl;
        std::string line;
        while (std::getline(std::cin, line)) {
        }
    }
    return 0;
}
