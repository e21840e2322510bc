// eventually(condition): asks until it holds or a generous deadline is over; for what another thread or process does,
// and no event tells of.
#pragma once

#include <chrono>
#include <thread>

namespace tessera::testing_support {

template <class Condition>
bool eventually(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace tessera::testing_support
