#include "platform/Threads.h"

#include "platform/windows/LateEntry.h"
#include "platform/windows/WindowsHandle.h"

#include <atomic>
#include <memory>
#include <new>
#include <objbase.h>
#include <tlhelp32.h>
#include <windows.h>

namespace tessera::platform {

namespace {

enum Gate : int { kClosed, kOpen, kCancelled };

// What a thread that has been stopped may take to be gone; one that the system holds takes longer.
constexpr DWORD kLongestEndMs = 1000;

// How a thread tells a debugger its name.
constexpr DWORD kThreadNameException = 0x406d1388;
constexpr DWORD kThreadNameRecord = 0x1000;
constexpr DWORD kThisThread = 0xffffffff;
struct ThreadNameRecord {
    DWORD kind;
    const char* name;
    DWORD thread;
    DWORD flags;
};
static_assert(sizeof(ThreadNameRecord) == 24);

LONG CALLBACK passThreadName(EXCEPTION_POINTERS* exception) {
    return exception->ExceptionRecord->ExceptionCode == kThreadNameException ? EXCEPTION_CONTINUE_EXECUTION
                                                                             : EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

// Shared by the handle and the thread; the last one deletes it. The system tells the end of the thread by its handle.
struct ThreadHandle::Control {
    std::atomic<int> references{2};
    Entry entry = nullptr;
    void* argument = nullptr;
    WindowsHandle native;
    DWORD id = 0;
    std::atomic<int> gate{kClosed};
    std::atomic<bool> heldByThread{true};

    static DWORD WINAPI run(void* self);

    void release() {
        if (references.fetch_sub(1) == 1) {
            delete this;
        }
    }
    // The thread's part: its last act, and done for one that won't come to that.
    void releaseForThread() {
        if (heldByThread.exchange(false)) {
            release();
        }
    }
    // True when this call has opened the gate: it is opened once.
    bool letGo(Gate to) {
        int closed = kClosed;
        return gate.compare_exchange_strong(closed, to) && ResumeThread(native.get()) != static_cast<DWORD>(-1);
    }
    // The system takes some orders for a thread that has ended, to no effect.
    bool isAlive() const { return WaitForSingleObject(native.get(), 0) == WAIT_TIMEOUT; }
};

DWORD WINAPI ThreadHandle::Control::run(void* self) {
    auto* control = static_cast<Control*>(self);
    DWORD code = 0;
    if (control->gate.load() == kOpen) {
        // Every thread may use the system's objects, such as shell links.
        const HRESULT initialized = CoInitialize(nullptr);
        code = control->entry(control->argument);
        if (SUCCEEDED(initialized)) {
            CoUninitialize();
        }
    }
    control->releaseForThread();
    return code;
}

ThreadHandle ThreadHandle::createSuspended(Entry entry, void* argument) {
    auto control = std::unique_ptr<Control>(new (std::nothrow) Control);
    if (control == nullptr) {
        return {};
    }
    control->entry = entry;
    control->argument = argument;
    control->native =
        WindowsHandle(CreateThread(nullptr, 0, Control::run, control.get(), CREATE_SUSPENDED, &control->id));
    return control->native ? ThreadHandle(control.release()) : ThreadHandle();
}

std::uint32_t ThreadHandle::id() const {
    return control_ != nullptr ? control_->id : 0;
}

bool ThreadHandle::resume() {
    return control_ != nullptr && control_->letGo(kOpen);
}

bool ThreadHandle::wait(std::uint32_t timeoutMs) const {
    return control_ != nullptr && WaitForSingleObject(control_->native.get(), timeoutMs) == WAIT_OBJECT_0;
}

bool ThreadHandle::terminate() {
    if (control_ == nullptr || !control_->isAlive() || TerminateThread(control_->native.get(), 0) == FALSE) {
        return false;
    }
    // The thread may still be on its way to its end, and only there has no more use for what it shares with the handle.
    if (wait(kLongestEndMs)) {
        control_->releaseForThread();
    }
    return true;
}

void ThreadHandle::close() {
    Control* control = std::exchange(control_, nullptr);
    if (control == nullptr) {
        return;
    }
    control->letGo(kCancelled);
    control->release();
}

bool ThreadHandle::setPriority(std::int32_t value) {
    return control_ != nullptr && control_->isAlive() && SetThreadPriority(control_->native.get(), value) != FALSE;
}

bool ThreadHandle::setAffinity(std::uint64_t mask) {
    return control_ != nullptr && control_->isAlive() && SetThreadAffinityMask(control_->native.get(), mask) != 0;
}

std::int32_t ThreadHandle::setIdealProcessor(std::int32_t number) {
    return control_ == nullptr
               ? -1
               : static_cast<std::int32_t>(SetThreadIdealProcessor(control_->native.get(), static_cast<DWORD>(number)));
}

std::uint32_t currentThreadId() {
    return GetCurrentThreadId();
}

void setCurrentThreadName(const char* name) {
    // A debugger listens for the exception; without one it comes back through the handler, and nothing has happened.
    const ThreadNameRecord record{kThreadNameRecord, name, kThisThread, 0};
    void* handler = AddVectoredExceptionHandler(0, passThreadName);
    RaiseException(kThreadNameException, 0, sizeof record / sizeof(ULONG_PTR),
                   reinterpret_cast<const ULONG_PTR*>(&record));
    RemoveVectoredExceptionHandler(handler);
}

void sleepFor(std::uint32_t ms) {
    Sleep(ms);
}

std::uint64_t processAffinityMask() {
    DWORD_PTR process = 0;
    DWORD_PTR machine = 0;
    return GetProcessAffinityMask(GetCurrentProcess(), &process, &machine) != FALSE ? process : 0;
}

int listThreads(std::uint32_t* ids, int capacity) {
    const WindowsHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    if (!snapshot) {
        return -1;
    }
    const DWORD ownProcess = GetCurrentProcessId();
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = Thread32First(snapshot.get(), &entry); more != FALSE && count < capacity;
         more = Thread32Next(snapshot.get(), &entry)) {
        if (entry.th32OwnerProcessID == ownProcess) {
            ids[count++] = entry.th32ThreadID;
        }
    }
    return count;
}

std::uintptr_t openThread(std::uint32_t id) {
    using OpenThreadEntry = HANDLE(WINAPI*)(DWORD, BOOL, DWORD);
    const auto open = lateEntry<OpenThreadEntry>(L"Kernel32", "OpenThread");
    static_assert(THREAD_SET_INFORMATION == 32);
    return open != nullptr ? reinterpret_cast<std::uintptr_t>(open(THREAD_SET_INFORMATION, FALSE, id)) : 0;
}

} // namespace tessera::platform
