// What this process holds of the system.
#pragma once

#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <map>
#include <string>

namespace tessera::testing_support {

// The number of its open handles. Asked of the list of all handles, since not every system that runs these programs
// answers the call for a single process.
std::size_t openHandles();

// The same by kind: "Event", "Thread", "File" and so on, for a message that tells what was left.
std::map<std::string, std::size_t> openHandlesByKind();

// What each turn leaves is a leak, and the rounds show it. What is made once stays, and isn't one: much of it comes in
// the first turns, the event of a lock whenever two threads first want that lock at once.
template <class Act>
void expectNoHandleLeftBy(Act act) {
    constexpr int kRounds = 4;
    std::map<std::string, std::size_t> kinds;
    for (int round = 0; round < kRounds; ++round) {
        kinds = openHandlesByKind();
        const std::size_t before = openHandles();
        for (int i = 0; i < 8; ++i) {
            act();
        }
        // A thread that has ended may take a moment to be gone.
        if (eventually([&] { return openHandles() <= before; }, std::chrono::seconds(3))) {
            return;
        }
    }
    ADD_FAILURE() << "each round leaves handles: " << testing::PrintToString(openHandlesByKind())
                  << ", before the last " << testing::PrintToString(kinds);
}

} // namespace tessera::testing_support
