// The other process of the registry's tests. Commands, one per line, each answered by a line:
//   register <name>, unregister <name>, observe <name>, stop <name>, scan: "done"
//   turn: runs the small tasks; "<count> records"
//   next: waits for the next coming or going of an observed service and tells it: "available <name>"
#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/messages/FTaskList.h"

#include <chrono>
#include <deque>
#include <iostream>
#include <string>
#include <thread>

using namespace tessera;

namespace {

std::deque<std::string> events;

std::string nextEvent() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (events.empty()) {
        FTaskList::process().runTasks();
        if (std::chrono::steady_clock::now() > end) {
            return "nothing";
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    std::string event = events.front();
    events.pop_front();
    return event;
}

std::string answer(ServiceDiscovery& registry, const std::string& command, const ServiceId& id) {
    if (command == "turn") {
        FTaskList::process().runTasks();
        return std::to_string(registry.records().size()) + " records";
    }
    if (command == "next") {
        return nextEvent();
    }
    if (command == "register") {
        registry.registerService(id);
    } else if (command == "unregister") {
        registry.unregisterService(id);
    } else if (command == "observe") {
        registry.observe(
            id, [](const ServiceRecord& record) { events.push_back("available " + record.name); },
            [](const ServiceRecord& record) { events.push_back("unavailable " + record.name); });
    } else if (command == "stop") {
        registry.stopObserving(id);
    } else if (command == "scan") {
        registry.scan();
    } else {
        return "what?";
    }
    return "done";
}

} // namespace

int main(int argc, char** argv) {
    ServiceDiscovery registry;
    registry.start(argc > 1 ? argv[1] : "");
    std::cout << "ready" << std::endl;
    std::string line;
    while (std::getline(std::cin, line)) {
        const std::size_t blank = line.find(' ');
        const std::string name = blank == std::string::npos ? "" : line.substr(blank + 1);
        std::cout << answer(registry, line.substr(0, blank), {name, kLinkServiceType}) << std::endl;
    }
}
