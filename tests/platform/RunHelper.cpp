// A program to run to its end. Arguments: "exit <code>" ends so; "crash"; "write <file> <text>" writes the text;
// "lock <file>" ends with 0 if it got the lock, else 1; "hold <file>" gets the lock and crashes with it; "beat <file>"
// starts itself as "write-on <file>" and waits for ever; "write-on <file>" writes the file again and again.
#include "common/Utf8Path.h"
#include "platform/InstanceLock.h"
#include "platform/Processes.h"
#include "platform/ProgramArguments.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

namespace {

using namespace tessera;
using namespace tessera::platform;

[[noreturn]] void crash() {
    __builtin_trap();
}

[[noreturn]] void stay() {
    for (;;) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

[[noreturn]] void writeOn(const std::string& file) {
    for (;;) {
        std::ofstream(programs::nativePath(file)) << "alive";
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

} // namespace

int main(int argc, char** argv) {
    ProgramArguments arguments(argc, argv);
    if (arguments.count() < 3) {
        crash();
    }
    char** words = arguments.values();
    const std::string command = words[1];
    const std::string what = words[2];
    if (command == "exit") {
        return std::atoi(what.c_str());
    }
    if (command == "write") {
        std::ofstream(programs::nativePath(what), std::ios::binary) << words[3];
        return 0;
    }
    if (command == "write-on") {
        writeOn(what);
    }
    if (command == "beat") {
        const Process child = Process::start(words[0], {"write-on", what});
        stay();
    }
    const auto lock = InstanceLock::tryAcquire(what);
    if (command == "hold") {
        crash();
    }
    return lock ? 0 : 1;
}
