#include "platform/Semaphore.h"

#include <windows.h>

namespace tessera::platform {

namespace {

HANDLE handleIn(std::uint64_t state) {
    return reinterpret_cast<HANDLE>(state);
}

} // namespace

Semaphore::Semaphore(std::int32_t initial)
    : state_(reinterpret_cast<std::uint64_t>(CreateSemaphoreW(nullptr, initial, kMaximum, nullptr))) {}

Semaphore::~Semaphore() {
    if (isValid()) {
        CloseHandle(handleIn(state_));
    }
}

bool Semaphore::isValid() const {
    return state_ != 0;
}

bool Semaphore::wait(std::uint32_t timeoutMs) {
    return isValid() && WaitForSingleObject(handleIn(state_), timeoutMs) == WAIT_OBJECT_0;
}

bool Semaphore::release(std::int32_t count) {
    return isValid() && count > 0 && ReleaseSemaphore(handleIn(state_), count, nullptr) != FALSE;
}

} // namespace tessera::platform
