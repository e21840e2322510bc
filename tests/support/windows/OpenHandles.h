// What this process holds of the system.
#pragma once

#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>

namespace tessera::testing_support {

// The number of its open handles. Asked of the list of all handles, since not every system that runs these programs
// answers the call for a single process.
std::size_t openHandles();

// Some turns come first: what is made once stays.
template <class Act>
void expectNoHandleLeftBy(Act act) {
    for (int i = 0; i < 3; ++i) {
        act();
    }
    const std::size_t before = openHandles();
    for (int i = 0; i < 8; ++i) {
        act();
    }
    // A thread that has ended may take a moment to be gone.
    EXPECT_TRUE(eventually([&] { return openHandles() <= before; }, std::chrono::seconds(3)))
        << openHandles() << " handles, before " << before;
}

} // namespace tessera::testing_support
