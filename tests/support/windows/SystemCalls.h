// SystemCalls: the calls into the system that this process makes while the object lives, with what they are given; and
// answers in the system's place. At most one object at a time, on one thread; calls of all threads are noted.
//
// A test program gets it by naming SystemCalls.cpp among its sources: that defines the places through which programs
// reach the calls that are noted, and the linker then takes those instead of the system's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessera::testing_support {

class SystemCalls {
public:
    SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;
    ~SystemCalls();

    // All calls since the last time, each as "Name(argument, argument)". Numbers are decimal, texts stand in quotes in
    // UTF-8, a number that is pointed to is "[number]", what is there but has no value that a test could know is "...",
    // a null "null". A record that tells its own size is "(size)", with "..." behind it when it holds more than that.
    std::vector<std::string> take();
    // Of those alone; the others are forgotten as well.
    std::vector<std::string> take(const std::vector<std::string_view>& names);

    // The next call of that name isn't made but gives this, and "access denied" as the error.
    void answer(std::string_view name, std::intptr_t result);
    // What the last call of that name was given; 0 when there was none.
    std::uintptr_t argument(std::string_view name, std::size_t index) const;
};

} // namespace tessera::testing_support
