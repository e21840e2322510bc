// FCpuAffinity: where a thread is to run, as FThread.setCpuAffinity takes it.
#pragma once

#include <cstdint>

namespace tessera {

struct FCpuAffinity {
    std::int32_t cpu = -1;      // index of the processor
    std::uint8_t useCpu = 0;    // 0: no fixed processor, `cpu` doesn't count
    std::uint8_t idealOnly = 0; // not 0: state a preference and leave the choice to the scheduler
};

} // namespace tessera
