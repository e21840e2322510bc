// HostBorder: where a call of the host enters this module, exceptions end. The host is built by another compiler and
// can't unwind through our frames.
#pragma once

#include <utility>

namespace tessera {

// What the function returns, or the fallback when it throws.
template <class Result, class Function>
Result atHostBorder(Result fallback, Function&& function) noexcept {
    try {
        return std::forward<Function>(function)();
    } catch (...) {
        return fallback;
    }
}

template <class Function>
void atHostBorder(Function&& function) noexcept {
    try {
        std::forward<Function>(function)();
    } catch (...) {
        // Nobody on the other side could make use of it; the module prints nothing.
    }
}

} // namespace tessera
