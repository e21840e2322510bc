#include "support/windows/SystemCalls.h"

#include "platform/windows/WideText.h"

// Before those that need it.
#include <windows.h>

#include <objbase.h>
#include <psapi.h>
#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>

namespace tessera::testing_support {

namespace {

struct Call {
    std::string name;
    std::string text;
    std::vector<std::uintptr_t> arguments;
};

struct Record {
    std::vector<Call> calls;
    std::map<std::string, Call, std::less<>> last;
    std::multimap<std::string, std::intptr_t, std::less<>> answers;
};

// Not one of the library's: those make calls of the system themselves.
class Guard {
public:
    Guard() {
        while (taken_.test_and_set(std::memory_order_acquire)) {
        }
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    ~Guard() { taken_.clear(std::memory_order_release); }

private:
    static inline constinit std::atomic_flag taken_{};
};

// Null while nobody listens, which is so before any of the program's own code has run.
constinit std::atomic<Record*> record{nullptr};

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

// A record whose first word is its size.
template <class Sized>
std::string sizedText(const Sized* sized) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(sized);
    const DWORD size = *reinterpret_cast<const DWORD*>(sized);
    const bool plain = size == sizeof *sized &&
                       std::all_of(bytes + sizeof size, bytes + sizeof *sized, [](unsigned char b) { return b == 0; });
    return "(" + std::to_string(size) + (plain ? ")" : ", ...)");
}

template <class Argument>
std::string textOf(std::string_view call, Argument argument) {
    if constexpr (std::is_integral_v<Argument> || std::is_enum_v<Argument>) {
        return std::to_string(argument);
    } else if (argument == nullptr) {
        return "null";
    } else if constexpr (std::is_same_v<Argument, const wchar_t*>) {
        return inQuotes(platform::utf8Of(argument));
    } else if constexpr (std::is_same_v<Argument, wchar_t*>) {
        // Elsewhere it is a buffer that is to be filled.
        return call == "CreateProcessW" ? inQuotes(platform::utf8Of(argument)) : "...";
    } else if constexpr (std::is_same_v<Argument, const char*>) {
        return inQuotes(argument);
    } else if constexpr (std::is_same_v<Argument, STARTUPINFOW*> || std::is_same_v<Argument, OSVERSIONINFOW*> ||
                         std::is_same_v<Argument, PROCESSENTRY32W*>) {
        return sizedText(argument);
    } else if constexpr (std::is_same_v<Argument, DWORD*>) {
        return "[" + std::to_string(*argument) + "]";
    } else if constexpr (std::is_same_v<Argument, HANDLE>) {
        return argument == INVALID_HANDLE_VALUE ? "-1" : "...";
    } else {
        return "...";
    }
}

template <class Argument>
std::uintptr_t wordOf(Argument argument) {
    if constexpr (std::is_integral_v<Argument> || std::is_enum_v<Argument>) {
        return static_cast<std::uintptr_t>(argument);
    } else {
        return reinterpret_cast<std::uintptr_t>(argument);
    }
}

template <class Result>
Result resultOf(std::intptr_t answer) {
    if constexpr (std::is_void_v<Result>) {
        return;
    } else if constexpr (std::is_pointer_v<Result>) {
        return reinterpret_cast<Result>(answer);
    } else {
        return static_cast<Result>(answer);
    }
}

// True, with the answer, when the test answers in the system's place.
template <class... Arguments>
bool note(std::string_view name, std::intptr_t& answer, Arguments... arguments) {
    if (record.load(std::memory_order_acquire) == nullptr) {
        return false;
    }
    const Guard guard;
    Record* const here = record.load(std::memory_order_acquire);
    if (here == nullptr) {
        return false;
    }
    Call call{std::string(name), std::string(name) + "(", {wordOf(arguments)...}};
    std::string_view between;
    ((call.text.append(between).append(textOf(name, arguments)), between = ", "), ...);
    call.text += ")";
    here->last[call.name] = call;
    here->calls.push_back(std::move(call));
    const auto given = here->answers.find(name);
    if (given == here->answers.end()) {
        return false;
    }
    answer = given->second;
    here->answers.erase(given);
    return true;
}

extern "C" __declspec(dllimport) NTSTATUS NTAPI
    LdrGetProcedureAddress(HMODULE module, const ANSI_STRING* name, ULONG ordinal, void** entry);

void* realEntry(HMODULE module, const char* name) {
    ANSI_STRING text = {};
    text.Buffer = const_cast<char*>(name);
    text.Length = static_cast<USHORT>(std::char_traits<char>::length(name));
    text.MaximumLength = static_cast<USHORT>(text.Length + 1);
    void* entry = nullptr;
    return LdrGetProcedureAddress(module, &text, 0, &entry) == 0 ? entry : nullptr;
}

// As a place for a template's argument.
template <std::size_t size>
struct Name {
    consteval Name(const char (&text)[size]) { std::copy_n(text, size, characters); }
    char characters[size];
};

template <Name name, class Signature>
struct Noted;

template <Name name, class Result, class... Arguments>
struct Noted<name, Result WINAPI(Arguments...)> {
    static Result WINAPI call(Arguments... arguments) {
        std::intptr_t answer = 0;
        if (note(name.characters, answer, arguments...)) {
            SetLastError(ERROR_ACCESS_DENIED);
            return resultOf<Result>(answer);
        }
        return real()(arguments...);
    }

private:
    using Entry = Result(WINAPI*)(Arguments...);

    // Of the libraries that every program here has loaded from its start.
    static Entry real() {
        static constinit std::atomic<void*> found{nullptr};
        void* entry = found.load(std::memory_order_relaxed);
        for (const wchar_t* library : {L"kernel32", L"user32", L"ole32", L"advapi32"}) {
            if (entry == nullptr) {
                entry = realEntry(GetModuleHandleW(library), name.characters);
            }
        }
        found.store(entry, std::memory_order_relaxed);
        return reinterpret_cast<Entry>(entry);
    }
};

// What is looked up late is noted as well.
FARPROC WINAPI lookUp(HMODULE module, const char* name) {
    std::intptr_t answer = 0;
    if (note("GetProcAddress", answer, module, name)) {
        return resultOf<FARPROC>(answer);
    }
    const std::string_view wanted = name;
    void* entry =
        wanted == "OpenThread" ? reinterpret_cast<void*>(Noted<"OpenThread", decltype(OpenThread)>::call)
        : wanted == "SetProcessPriorityBoost"
            ? reinterpret_cast<void*>(Noted<"SetProcessPriorityBoost", decltype(SetProcessPriorityBoost)>::call)
            : realEntry(module, name);
    return reinterpret_cast<FARPROC>(entry);
}

} // namespace

SystemCalls::SystemCalls() {
    record.store(new Record, std::memory_order_release);
}

SystemCalls::~SystemCalls() {
    const Guard guard;
    delete record.exchange(nullptr);
}

std::vector<std::string> SystemCalls::take() {
    const Guard guard;
    std::vector<std::string> texts;
    for (Call& call : std::exchange(record.load()->calls, {})) {
        texts.push_back(std::move(call.text));
    }
    return texts;
}

std::vector<std::string> SystemCalls::take(const std::vector<std::string_view>& names) {
    std::vector<std::string> texts = take();
    std::erase_if(texts, [&names](const std::string& text) {
        return std::find(names.begin(), names.end(), std::string_view(text).substr(0, text.find('('))) == names.end();
    });
    return texts;
}

void SystemCalls::answer(std::string_view name, std::intptr_t result) {
    const Guard guard;
    record.load()->answers.emplace(name, result);
}

std::uintptr_t SystemCalls::argument(std::string_view name, std::size_t index) const {
    const Guard guard;
    const auto found = record.load()->last.find(name);
    return found == record.load()->last.end() ? 0 : found->second.arguments.at(index);
}

} // namespace tessera::testing_support

// The places through which calls of other libraries go.
extern "C" {
auto* __imp_CloseHandle = &tessera::testing_support::Noted<"CloseHandle", decltype(CloseHandle)>::call;
auto* __imp_CoInitialize = &tessera::testing_support::Noted<"CoInitialize", decltype(CoInitialize)>::call;
auto* __imp_CoUninitialize = &tessera::testing_support::Noted<"CoUninitialize", decltype(CoUninitialize)>::call;
auto* __imp_CreateEventA = &tessera::testing_support::Noted<"CreateEventA", decltype(CreateEventA)>::call;
auto* __imp_CreateEventW = &tessera::testing_support::Noted<"CreateEventW", decltype(CreateEventW)>::call;
auto* __imp_CreateFileW = &tessera::testing_support::Noted<"CreateFileW", decltype(CreateFileW)>::call;
auto* __imp_CreateIoCompletionPort =
    &tessera::testing_support::Noted<"CreateIoCompletionPort", decltype(CreateIoCompletionPort)>::call;
auto* __imp_CreateMutexW = &tessera::testing_support::Noted<"CreateMutexW", decltype(CreateMutexW)>::call;
auto* __imp_CreateProcessW = &tessera::testing_support::Noted<"CreateProcessW", decltype(CreateProcessW)>::call;
auto* __imp_CreateSemaphoreW = &tessera::testing_support::Noted<"CreateSemaphoreW", decltype(CreateSemaphoreW)>::call;
auto* __imp_CreateThread = &tessera::testing_support::Noted<"CreateThread", decltype(CreateThread)>::call;
auto* __imp_FindWindowW = &tessera::testing_support::Noted<"FindWindowW", decltype(FindWindowW)>::call;
auto* __imp_FreeLibrary = &tessera::testing_support::Noted<"FreeLibrary", decltype(FreeLibrary)>::call;
auto* __imp_GetComputerNameW = &tessera::testing_support::Noted<"GetComputerNameW", decltype(GetComputerNameW)>::call;
auto* __imp_GetModuleFileNameW =
    &tessera::testing_support::Noted<"GetModuleFileNameW", decltype(GetModuleFileNameW)>::call;
auto* __imp_GetPriorityClass = &tessera::testing_support::Noted<"GetPriorityClass", decltype(GetPriorityClass)>::call;
auto* __imp_GetProcessAffinityMask =
    &tessera::testing_support::Noted<"GetProcessAffinityMask", decltype(GetProcessAffinityMask)>::call;
auto* __imp_GetQueuedCompletionStatus =
    &tessera::testing_support::Noted<"GetQueuedCompletionStatus", decltype(GetQueuedCompletionStatus)>::call;
auto* __imp_GetUserNameW = &tessera::testing_support::Noted<"GetUserNameW", decltype(GetUserNameW)>::call;
auto* __imp_GetVersionExW = &tessera::testing_support::Noted<"GetVersionExW", decltype(GetVersionExW)>::call;
auto* __imp_KillTimer = &tessera::testing_support::Noted<"KillTimer", decltype(KillTimer)>::call;
auto* __imp_LoadLibraryW = &tessera::testing_support::Noted<"LoadLibraryW", decltype(LoadLibraryW)>::call;
auto* __imp_OpenProcess = &tessera::testing_support::Noted<"OpenProcess", decltype(OpenProcess)>::call;
auto* __imp_OutputDebugStringA =
    &tessera::testing_support::Noted<"OutputDebugStringA", decltype(OutputDebugStringA)>::call;
auto* __imp_PostQueuedCompletionStatus =
    &tessera::testing_support::Noted<"PostQueuedCompletionStatus", decltype(PostQueuedCompletionStatus)>::call;
auto* __imp_RaiseException = &tessera::testing_support::Noted<"RaiseException", decltype(RaiseException)>::call;
auto* __imp_ReadDirectoryChangesW =
    &tessera::testing_support::Noted<"ReadDirectoryChangesW", decltype(ReadDirectoryChangesW)>::call;
auto* __imp_RegisterWaitForSingleObject =
    &tessera::testing_support::Noted<"RegisterWaitForSingleObject", decltype(RegisterWaitForSingleObject)>::call;
auto* __imp_ReleaseMutex = &tessera::testing_support::Noted<"ReleaseMutex", decltype(ReleaseMutex)>::call;
auto* __imp_ReleaseSemaphore = &tessera::testing_support::Noted<"ReleaseSemaphore", decltype(ReleaseSemaphore)>::call;
auto* __imp_ResetEvent = &tessera::testing_support::Noted<"ResetEvent", decltype(ResetEvent)>::call;
auto* __imp_ResumeThread = &tessera::testing_support::Noted<"ResumeThread", decltype(ResumeThread)>::call;
auto* __imp_SetConsoleCtrlHandler =
    &tessera::testing_support::Noted<"SetConsoleCtrlHandler", decltype(SetConsoleCtrlHandler)>::call;
auto* __imp_SetEvent = &tessera::testing_support::Noted<"SetEvent", decltype(SetEvent)>::call;
auto* __imp_SetForegroundWindow =
    &tessera::testing_support::Noted<"SetForegroundWindow", decltype(SetForegroundWindow)>::call;
auto* __imp_SetPriorityClass = &tessera::testing_support::Noted<"SetPriorityClass", decltype(SetPriorityClass)>::call;
auto* __imp_SetThreadAffinityMask =
    &tessera::testing_support::Noted<"SetThreadAffinityMask", decltype(SetThreadAffinityMask)>::call;
auto* __imp_SetThreadIdealProcessor =
    &tessera::testing_support::Noted<"SetThreadIdealProcessor", decltype(SetThreadIdealProcessor)>::call;
auto* __imp_SetThreadPriority =
    &tessera::testing_support::Noted<"SetThreadPriority", decltype(SetThreadPriority)>::call;
auto* __imp_SetTimer = &tessera::testing_support::Noted<"SetTimer", decltype(SetTimer)>::call;
auto* __imp_ShowWindow = &tessera::testing_support::Noted<"ShowWindow", decltype(ShowWindow)>::call;
auto* __imp_Sleep = &tessera::testing_support::Noted<"Sleep", decltype(Sleep)>::call;
auto* __imp_TerminateProcess = &tessera::testing_support::Noted<"TerminateProcess", decltype(TerminateProcess)>::call;
auto* __imp_TerminateThread = &tessera::testing_support::Noted<"TerminateThread", decltype(TerminateThread)>::call;
auto* __imp_TlsAlloc = &tessera::testing_support::Noted<"TlsAlloc", decltype(TlsAlloc)>::call;
auto* __imp_TlsFree = &tessera::testing_support::Noted<"TlsFree", decltype(TlsFree)>::call;
auto* __imp_UnregisterWaitEx = &tessera::testing_support::Noted<"UnregisterWaitEx", decltype(UnregisterWaitEx)>::call;
auto* __imp_WaitForMultipleObjects =
    &tessera::testing_support::Noted<"WaitForMultipleObjects", decltype(WaitForMultipleObjects)>::call;
auto* __imp_WaitForSingleObject =
    &tessera::testing_support::Noted<"WaitForSingleObject", decltype(WaitForSingleObject)>::call;
auto* __imp_GetProcAddress = &tessera::testing_support::lookUp;

// The system's headers know no such place of these.
HANDLE WINAPI CreateToolhelp32Snapshot(DWORD flags, DWORD process) {
    return tessera::testing_support::Noted<"CreateToolhelp32Snapshot", decltype(CreateToolhelp32Snapshot)>::call(
        flags, process);
}
DWORD WINAPI K32GetModuleBaseNameW(HANDLE process, HMODULE module, wchar_t* name, DWORD units) {
    return tessera::testing_support::Noted<"K32GetModuleBaseNameW", decltype(K32GetModuleBaseNameW)>::call(
        process, module, name, units);
}
BOOL WINAPI Process32FirstW(HANDLE snapshot, PROCESSENTRY32W* entry) {
    return tessera::testing_support::Noted<"Process32FirstW", decltype(Process32FirstW)>::call(snapshot, entry);
}
BOOL WINAPI Process32NextW(HANDLE snapshot, PROCESSENTRY32W* entry) {
    return tessera::testing_support::Noted<"Process32NextW", decltype(Process32NextW)>::call(snapshot, entry);
}
BOOL WINAPI Thread32First(HANDLE snapshot, THREADENTRY32* entry) {
    return tessera::testing_support::Noted<"Thread32First", decltype(Thread32First)>::call(snapshot, entry);
}
BOOL WINAPI Thread32Next(HANDLE snapshot, THREADENTRY32* entry) {
    return tessera::testing_support::Noted<"Thread32Next", decltype(Thread32Next)>::call(snapshot, entry);
}
}
