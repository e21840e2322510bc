// NamedEvent: a flag that the processes of one user share under a name. One sets it, one that waits for it wakes and
// clears it. Signals aren't counted: several before a wait are one.
//
// It exists as long as some process has it open, and starts unset; a crash leaves nothing set behind. Each opener has
// an object of its own. Move-only; any thread may use it while no other moves or closes it. Waits in milliseconds.
//
// On Windows it is the system's own event of that name.
//
// On Linux it is the file "<temporary folder>/Marlgrove/Events/<name>": four bytes, mapped shared by all. Bit 0 of that
// little-endian word is the flag; the bits above count those who are asleep on it, since a signal that wakes nobody
// needn't ask the kernel. To set it: an atomic or with 1, and, if the old value was above 1, a shared futex wake of
// all. To wait: clear bit 0 if it's set; else add 2, sleep while the word stays as it is, take 2 off, and look again.
// Whoever has it open holds a shared flock on the file. Whoever gets the exclusive flock at once is the first: it cuts
// the file to four zero bytes and goes over to the shared flock. A sleeper that was killed leaves its count behind:
// that costs a needless wake per signal until the last holder goes.
#pragma once

#include "platform/TimeLimit.h"

#include <cstdint>
#include <utility>

namespace tessera::platform {

class NamedEvent {
public:
    // What clears the flag at the end of a wait. On Windows the system's object is of one kind, settled by whoever
    // makes it; on Linux there is one kind, and every wait clears.
    enum class Reset { byWaiter, bySystem };
    enum class WaitResult { signalled, timedOut, failed };

    NamedEvent() = default;
    NamedEvent(NamedEvent&& other) noexcept;
    NamedEvent& operator=(NamedEvent&& other) noexcept;
    ~NamedEvent() { close(); }

    // Makes the event or opens the existing one. Null and "" give an event without a name. Not open when the name can't
    // be used: on Linux when it can't be a file's (a "/" in it, "." or "..", above 255 bytes) or the folder can't be
    // made or used, on Windows when it holds a backslash, has 260 characters or more, or is that of another kind of
    // object.
    static NamedEvent open(const char* name, Reset reset);

    bool isOpen() const { return event_ != nullptr; }
    // False when it isn't open.
    bool signal();
    // Failed when it isn't open. There is no other way out of a wait without limit than a signal.
    WaitResult wait(std::uint32_t timeoutMs);
    void close();
    // Lets go of it without closing: the event lives on to the end of this process.
    void abandon();

private:
    static constexpr int kNoDetail = -1;

    // Linux: the mapped word and the file. Windows: the event's handle and its kind.
    void* event_ = nullptr;
    int detail_ = kNoDetail;
};

} // namespace tessera::platform
