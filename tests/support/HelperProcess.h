// HelperProcess: a program beside a test, spoken to in lines over its standard streams. It is killed, if it still
// runs, when the object goes; no read waits longer than its deadline. Texts are UTF-8.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace tessera::testing_support {

class HelperProcess {
public:
    // Where the messages go that aren't output: where this program's own go, or among the lines that it says.
    enum class Messages { apart, amongLines };

    explicit HelperProcess(const std::string& program, const std::vector<std::string>& arguments = {},
                           Messages messages = Messages::apart);
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;
    ~HelperProcess();

    // -1 once it has been waited for, or when it couldn't be started.
    int id() const { return id_; }

    void say(const std::string& line);

    // The next line; "(nothing)" when none came in time, "(end)" when the helper has gone.
    std::string hear(std::chrono::milliseconds limit = std::chrono::seconds(20));

    std::string ask(const std::string& line) {
        say(line);
        return hear();
    }

    // At once, as by kill -9, and waits until it has gone.
    void kill();
    // The same, but the system keeps its entry of the dead process until kill() or the end of this object.
    void killAndKeep() const;

    // Ends it by the end of its input, and gives its exit code; -1 when it didn't exit by itself.
    int finish();
    // The same, with all that it says until then and nobody has heard. Programs that it has started may go on to write
    // to the pipe, for as long as this object lives; nobody waits for them.
    int finish(std::string& said);

private:
    enum class Heard { something, nothing, end };

    // Waits for more of what the helper says and puts it behind pending_.
    Heard hearMore(std::chrono::milliseconds limit);
    void endInput();
    bool hasEnded() const;

    static constexpr std::intptr_t kNone = -1;

    int id_ = -1;
    // Descriptors or handles, as the system has it; the process is its number where that is all there is.
    std::intptr_t process_ = kNone;
    std::intptr_t input_ = kNone;
    std::intptr_t output_ = kNone;
    std::string pending_;
};

} // namespace tessera::testing_support
