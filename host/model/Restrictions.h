// Restrictions: kinds of processing that an audio event may hold beside its clip. An event with any of them isn't what
// its file says, and has to be rendered before another program can edit it.
#pragma once

#include <cstdint>

namespace tessera::host {

struct Restrictions {
    static constexpr std::uint32_t kEffects = 1;
    static constexpr std::uint32_t kEnvelopes = 2;
    static constexpr std::uint32_t kStretched = 4;
    static constexpr std::uint32_t kTransposed = 8;

    struct Row {
        const char* name;
        std::uint32_t bit;
    };
    static constexpr Row kRows[] = {
        {"effects", kEffects}, {"envelopes", kEnvelopes}, {"stretched", kStretched}, {"transposed", kTransposed}};
};

} // namespace tessera::host
