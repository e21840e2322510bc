// The other process of the tests of NamedEvent. Commands, one per line: "open <name>", "close", "signal", "wait",
// "echo <other> <rounds>" (wait here, signal there, as often as told). Each is answered by a line when it's done.
#include "platform/NamedEvent.h"

#include <iostream>
#include <sstream>
#include <string>

using tessera::platform::NamedEvent;

namespace {

const char* waitOnce(NamedEvent& event) {
    switch (event.wait(tessera::platform::kNoTimeLimit)) {
    case NamedEvent::WaitResult::signalled:
        return "woken";
    case NamedEvent::WaitResult::timedOut:
        return "timed out";
    case NamedEvent::WaitResult::failed:
        break;
    }
    return "failed";
}

} // namespace

int main() {
    NamedEvent event;
    std::string line;
    while (std::getline(std::cin, line)) {
        std::istringstream words(line);
        std::string command;
        std::string name;
        int rounds = 0;
        words >> command >> name >> rounds;
        if (command == "open") {
            event = NamedEvent::open(name.c_str(), NamedEvent::Reset::byWaiter);
            std::cout << (event.isOpen() ? "open" : "refused") << std::endl;
        } else if (command == "close") {
            event.close();
            std::cout << "closed" << std::endl;
        } else if (command == "signal") {
            std::cout << (event.signal() ? "signalled" : "failed") << std::endl;
        } else if (command == "wait") {
            std::cout << waitOnce(event) << std::endl;
        } else if (command == "echo") {
            NamedEvent other = NamedEvent::open(name.c_str(), NamedEvent::Reset::byWaiter);
            for (int i = 0; i < rounds; ++i) {
                waitOnce(event);
                other.signal();
            }
            std::cout << "echoed" << std::endl;
        }
    }
}
