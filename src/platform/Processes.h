// Starting, finding, ending and naming processes. Paths and names are UTF-8 in the platform's own form. Any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessera::platform {

// A process that was started or found. Move-only; letting it go leaves the process alone. Holds on to that very
// process: a number that is used again for another one is no trap.
class Process {
public:
    Process() = default;
    Process(Process&& other) noexcept : handle_(std::exchange(other.handle_, -1)), id_(std::exchange(other.id_, -1)) {}
    Process& operator=(Process&& other) noexcept;
    ~Process() { close(); }

    // Starts a program with these arguments, its own path aside, without waiting for it. A name without a separator is
    // searched for where the system looks for programs. The child gets the standard streams (on Windows those of a
    // console alone) and no other open file, default signal handling, and this process's environment and working
    // folder. Nothing is left behind in this process when it ends, kept or not. Empty when it can't be started.
    static Process start(const std::string& executable, const std::vector<std::string>& arguments);
    // Empty when there is no such process or it may not be reached.
    static Process open(int processId);

    explicit operator bool() const { return id_ != -1; }
    int id() const { return id_; }
    bool isRunning() const;
    // Ends it at once, with no chance to clean up, and lets it go.
    void kill();
    // Brings its first window to the front. False where it has none, and on Linux, where there is no such thing.
    bool showWindow();
    void close();

private:
    Process(std::intptr_t handle, int id) : handle_(handle), id_(id) {}

    std::intptr_t handle_ = -1;
    int id_ = -1;
};

int ownProcessId();
// The executable's base name, the extension included. Empty when there is no such process or it may not be asked.
std::string processBaseName(int processId);
std::string ownBaseName();

// Calls `visit` for each process whose executable can be told, with its number and base name, until it gives true.
// Gives the number at which it stopped, or -1.
int findProcess(const std::function<bool(int processId, std::string_view baseName)>& visit);

} // namespace tessera::platform
