#include "support/HelperProcess.h"

#include <algorithm>

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

} // namespace tessera::testing_support
