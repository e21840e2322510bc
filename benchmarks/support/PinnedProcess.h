// Wake-ups between two threads or processes are measured with both on one processor: where the scheduler puts them
// decides otherwise.
#pragma once

#include <sched.h>

// The whole process from here on: threads that start later inherit it.
inline void pinToOneProcessor() {
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(0, &set);
    sched_setaffinity(0, sizeof set, &set);
}
