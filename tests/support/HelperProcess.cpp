#include "support/HelperProcess.h"

#include <algorithm>
#include <utility>

namespace tessera::testing_support {

std::string HelperProcess::hear(std::chrono::milliseconds limit) {
    using std::chrono::milliseconds;
    const auto end = std::chrono::steady_clock::now() + limit;
    std::size_t newline = 0;
    while ((newline = pending_.find('\n')) == std::string::npos) {
        const auto left = std::chrono::duration_cast<milliseconds>(end - std::chrono::steady_clock::now());
        const Heard heard = hearMore(std::max(left, milliseconds(0)));
        if (heard != Heard::something) {
            return heard == Heard::nothing ? "(nothing)" : "(end)";
        }
    }
    std::string line = pending_.substr(0, newline);
    pending_.erase(0, newline + 1);
    // Where a program's standard streams are text, its lines end so.
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

int HelperProcess::finish(std::string& said) {
    constexpr std::chrono::milliseconds kLook(10);
    endInput();
    while (!hasEnded() && hearMore(kLook) != Heard::end) {
    }
    while (hearMore(std::chrono::milliseconds(0)) == Heard::something) {
    }
    said = std::exchange(pending_, {});
    return finish();
}

} // namespace tessera::testing_support
