// The other process of the tests of WinIPCSemaphore. Commands, one per line: "create <name>", "signal", "wait". Each is
// answered by a line when it's done.
#include "discovery/events/IIPCSemaphore.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FRefPtr.h"

#include <iostream>
#include <string>

using namespace tessera;

int main() {
    const auto semaphore = FRefPtr<IIPCSemaphore>::adopt(
        static_cast<IIPCSemaphore*>(ClassFactory::getInstance(true)->createInstance(IIPCSemaphore::iid)));
    std::string line;
    while (std::getline(std::cin, line)) {
        constexpr std::string_view kCreate = "create ";
        if (line.starts_with(kCreate)) {
            std::cout << "create " << semaphore->create(line.c_str() + kCreate.size()) << std::endl;
        } else if (line == "signal") {
            std::cout << "signal " << semaphore->signal() << std::endl;
        } else if (line == "wait") {
            std::cout << "wait " << semaphore->wait() << std::endl;
        }
    }
}
