// OneProcessor: pins the whole process to one processor for a scope, and what it starts meanwhile with it. Wake-ups
// are measured so: the way between two processors differs from run to run by more than what is compared.
#pragma once

#include <cstdlib>
#include <dirent.h>
#include <sched.h>

namespace tessera::benchmarks {

class OneProcessor {
public:
    OneProcessor() {
        sched_getaffinity(0, sizeof before_, &before_);
        cpu_set_t one;
        CPU_ZERO(&one);
        int last = 0;
        for (int cpu = 0; cpu < CPU_SETSIZE; ++cpu) {
            last = CPU_ISSET(cpu, &before_) ? cpu : last;
        }
        CPU_SET(last, &one);
        applyToAllThreads(one);
    }
    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;
    ~OneProcessor() { applyToAllThreads(before_); }

private:
    static void applyToAllThreads(const cpu_set_t& set) {
        DIR* tasks = opendir("/proc/self/task");
        for (const dirent* entry = readdir(tasks); entry != nullptr; entry = readdir(tasks)) {
            if (const int id = std::atoi(entry->d_name); id > 0) {
                sched_setaffinity(id, sizeof set, &set);
            }
        }
        closedir(tasks);
    }

    cpu_set_t before_;
};

} // namespace tessera::benchmarks
