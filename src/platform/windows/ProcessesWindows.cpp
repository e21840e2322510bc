#include "platform/Processes.h"

#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHandle.h"

// Before the two that need it.
#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <array>

namespace tessera::platform {

namespace {

constexpr DWORD kAllRights = 0x1fffff;
constexpr DWORD kRightsToAskForName = 1040;
static_assert(kRightsToAskForName == (PROCESS_QUERY_INFORMATION | PROCESS_VM_READ));
constexpr DWORD kNormalPriority = 32;
static_assert(kNormalPriority == NORMAL_PRIORITY_CLASS);
constexpr DWORD kNameUnits = 260;
constexpr DWORD kProcesses = 2;
static_assert(kProcesses == TH32CS_SNAPPROCESS);

static_assert(sizeof(std::intptr_t) == sizeof(HANDLE));

HANDLE handleOf(std::intptr_t value) {
    return reinterpret_cast<HANDLE>(value);
}

// Everything stands in quotes, blanks or not. Quotes inside an argument aren't escaped: the programs that are started
// here have always been given their arguments so.
std::wstring commandLine(const std::string& executable, const std::vector<std::string>& arguments) {
    std::string line = "\"" + executable + "\"";
    for (const std::string& argument : arguments) {
        line += " \"" + argument + "\"";
    }
    return wideText(line);
}

std::string baseNameOf(HANDLE process) {
    std::array<wchar_t, kNameUnits> name = {};
    const DWORD units = K32GetModuleBaseNameW(process, nullptr, name.data(), kNameUnits);
    return utf8Of({name.data(), units});
}

struct WindowSearch {
    DWORD processId;
    bool found;
};

BOOL CALLBACK showIfItsOwn(HWND window, LPARAM context) {
    auto* search = reinterpret_cast<WindowSearch*>(context);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search->processId) {
        return TRUE;
    }
    // Hidden and shown, it comes up in front of the others.
    ShowWindow(window, SW_HIDE);
    ShowWindow(window, SW_SHOW);
    search->found = true;
    return FALSE;
}

} // namespace

Process Process::start(const std::string& executable, const std::vector<std::string>& arguments) {
    std::wstring line = commandLine(executable, arguments);
    STARTUPINFOW setup = {};
    static_assert(sizeof setup == 104);
    setup.cb = sizeof setup;
    PROCESS_INFORMATION started = {};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, kNormalPriority, nullptr, nullptr, &setup,
                       &started) != TRUE) {
        return {};
    }
    CloseHandle(started.hThread);
    return Process(reinterpret_cast<std::intptr_t>(started.hProcess), static_cast<int>(started.dwProcessId));
}

Process Process::open(int processId) {
    HANDLE handle = OpenProcess(kAllRights, FALSE, static_cast<DWORD>(processId));
    return handle == nullptr ? Process() : Process(reinterpret_cast<std::intptr_t>(handle), processId);
}

bool Process::isRunning() const {
    // The value of no handle is that of this process itself in the system's eyes.
    return handle_ != -1 && WaitForSingleObject(handleOf(handle_), 0) != WAIT_OBJECT_0;
}

void Process::kill() {
    if (handle_ != -1) {
        TerminateProcess(handleOf(handle_), 0);
    }
    close();
}

bool Process::showWindow() {
    WindowSearch search{static_cast<DWORD>(id_), false};
    if (handle_ != -1) {
        EnumWindows(showIfItsOwn, reinterpret_cast<LPARAM>(&search));
    }
    return search.found;
}

void Process::close() {
    if (handle_ != -1) {
        CloseHandle(handleOf(std::exchange(handle_, -1)));
    }
    id_ = -1;
}

int ownProcessId() {
    return static_cast<int>(GetCurrentProcessId());
}

std::string processBaseName(int processId) {
    const WindowsHandle process(OpenProcess(kRightsToAskForName, FALSE, static_cast<DWORD>(processId)));
    return process ? baseNameOf(process.get()) : std::string();
}

std::string ownBaseName() {
    return baseNameOf(GetCurrentProcess());
}

int findProcess(const std::function<bool(int processId, std::string_view baseName)>& visit) {
    const WindowsHandle snapshot(CreateToolhelp32Snapshot(kProcesses, 0));
    if (!snapshot) {
        return -1;
    }
    PROCESSENTRY32W entry = {};
    static_assert(sizeof entry == 568);
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more != 0;
         more = Process32NextW(snapshot.get(), &entry)) {
        const int id = static_cast<int>(entry.th32ProcessID);
        if (visit(id, utf8Of(entry.szExeFile))) {
            return id;
        }
    }
    return -1;
}

} // namespace tessera::platform
