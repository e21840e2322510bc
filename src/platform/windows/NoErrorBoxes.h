// NoErrorBoxes: for one scope on this thread the system reports by its results alone that a drive is empty or a file is
// no library. Without it the system would show the user a box about it, and wait for an answer.
#pragma once

#include <windows.h>

namespace tessera::platform {

class NoErrorBoxes {
public:
    NoErrorBoxes() { ::SetThreadErrorMode(::GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &before_); }
    NoErrorBoxes(const NoErrorBoxes&) = delete;
    NoErrorBoxes& operator=(const NoErrorBoxes&) = delete;
    ~NoErrorBoxes() { ::SetThreadErrorMode(before_, nullptr); }

private:
    DWORD before_ = 0;
};

} // namespace tessera::platform
