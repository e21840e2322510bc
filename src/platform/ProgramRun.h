// ProgramRun: a program that is run to its end, with its result. For programs of ours that wait for others on a thread
// of their own; whatever must not wait uses Processes.h.
#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace tessera::platform {

struct ProgramEnd {
    enum class Kind {
        NotStarted, // code is the system's error number
        Exited,     // code is what the program gave
        Crashed,    // code is the number of the signal or exception
        Stopped,    // it was ended because `stop` became true
    };
    Kind kind;
    int code;
};

// Starts the program and waits for its end. Executable and arguments are UTF-8 in the platform's own form; a name
// without a separator is searched for where the system looks for programs. The child gets the standard streams and no
// other open file. Once `stop` is true the program and what it has started are ended, within about 50 ms.
ProgramEnd runProgram(const std::string& executable, const std::vector<std::string>& arguments,
                      const std::atomic<bool>& stop);

// The system's own text for an error number.
std::string systemErrorText(int code);

} // namespace tessera::platform
