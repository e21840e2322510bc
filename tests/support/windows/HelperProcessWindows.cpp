#include "support/HelperProcess.h"

#include "platform/windows/WideText.h"

#include <windows.h>

#include <string_view>
#include <thread>
#include <utility>

namespace tessera::testing_support {

namespace {

constexpr DWORD kKilled = 0xc000013a; // as by Ctrl-C, which no program gives by itself
constexpr DWORD kErrorBits = 0xc0000000;

// Once in thousands of starts on a busy machine Wine loses a process before it is up, and says that it knows no reason.
constexpr int kAttempts = 3;

HANDLE handleOf(std::intptr_t value) {
    return reinterpret_cast<HANDLE>(value);
}

void closeIfOpen(std::intptr_t& handle) {
    if (handle != -1) {
        CloseHandle(handleOf(std::exchange(handle, -1)));
    }
}

// As programs take their command line apart.
void appendQuoted(std::string& line, std::string_view word) {
    line += '"';
    std::size_t backslashes = 0;
    for (const char c : word) {
        line.append(c == '"' ? backslashes + 1 : 0, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        line += c;
    }
    line.append(backslashes, '\\');
    line += '"';
}

std::wstring commandLine(const std::string& program, const std::vector<std::string>& arguments) {
    std::string line;
    appendQuoted(line, program);
    for (const std::string& argument : arguments) {
        line += ' ';
        appendQuoted(line, argument);
    }
    return platform::wideText(line);
}

// A pipe whose one end a child inherits.
struct Pipe {
    HANDLE ours = INVALID_HANDLE_VALUE;
    HANDLE child = INVALID_HANDLE_VALUE;
};

Pipe makePipe(bool childReads) {
    HANDLE read = INVALID_HANDLE_VALUE;
    HANDLE write = INVALID_HANDLE_VALUE;
    CreatePipe(&read, &write, nullptr, 0);
    const Pipe pipe = childReads ? Pipe{write, read} : Pipe{read, write};
    SetHandleInformation(pipe.child, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return pipe;
}

bool create(std::wstring& line, STARTUPINFOEXW& setup, PROCESS_INFORMATION& started) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr,
                           &setup.StartupInfo, &started) != 0) {
            return true;
        }
        if (GetLastError() != ERROR_INTERNAL_ERROR) {
            return false;
        }
    }
    return false;
}

// Another helper's pipes must not get into this one, or their end would never be seen: hence the list. The messages go
// where their handle leads, which need not be one to inherit.
HANDLE startWith(std::wstring line, HANDLE input, HANDLE output, HANDLE messages, int& id) {
    STARTUPINFOEXW setup = {};
    setup.StartupInfo.cb = sizeof setup;
    setup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    setup.StartupInfo.hStdInput = input;
    setup.StartupInfo.hStdOutput = output;
    HANDLE inherited[3] = {input, output, nullptr};
    DWORD count = 2;
    HANDLE self = GetCurrentProcess();
    if (DuplicateHandle(self, messages, self, &inherited[2], 0, TRUE, DUPLICATE_SAME_ACCESS)) {
        setup.StartupInfo.hStdError = inherited[count++];
    }
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    std::vector<char> storage(size);
    auto* list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage.data());
    InitializeProcThreadAttributeList(list, 1, 0, &size);
    UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited, count * sizeof(HANDLE), nullptr,
                              nullptr);
    setup.lpAttributeList = list;
    PROCESS_INFORMATION started = {};
    const bool done = create(line, setup, started);
    DeleteProcThreadAttributeList(list);
    if (count == 3) {
        CloseHandle(inherited[2]);
    }
    if (!done) {
        return INVALID_HANDLE_VALUE;
    }
    CloseHandle(started.hThread);
    id = static_cast<int>(started.dwProcessId);
    return started.hProcess;
}

} // namespace

HelperProcess::HelperProcess(const std::string& program, const std::vector<std::string>& arguments, Messages messages) {
    const Pipe toChild = makePipe(true);
    const Pipe fromChild = makePipe(false);
    HANDLE const complaints = messages == Messages::amongLines ? fromChild.child : GetStdHandle(STD_ERROR_HANDLE);
    process_ = reinterpret_cast<std::intptr_t>(
        startWith(commandLine(program, arguments), toChild.child, fromChild.child, complaints, id_));
    CloseHandle(toChild.child);
    CloseHandle(fromChild.child);
    input_ = reinterpret_cast<std::intptr_t>(toChild.ours);
    output_ = reinterpret_cast<std::intptr_t>(fromChild.ours);
}

HelperProcess::~HelperProcess() {
    kill();
    closeIfOpen(input_);
    closeIfOpen(output_);
}

void HelperProcess::say(const std::string& line) {
    const std::string sent = line + '\n';
    DWORD written = 0;
    // A helper that has gone shows at the next read.
    WriteFile(handleOf(input_), sent.data(), static_cast<DWORD>(sent.size()), &written, nullptr);
}

HelperProcess::Heard HelperProcess::hearMore(std::chrono::milliseconds limit) {
    // A pipe without a name can't be read with a time limit, but asked how much there is.
    const auto end = std::chrono::steady_clock::now() + limit;
    for (;;) {
        DWORD available = 0;
        if (PeekNamedPipe(handleOf(output_), nullptr, 0, nullptr, &available, nullptr) == 0) {
            return Heard::end;
        }
        if (available != 0) {
            char buffer[4096];
            DWORD count = 0;
            if (ReadFile(handleOf(output_), buffer, sizeof buffer, &count, nullptr) == 0) {
                return Heard::end;
            }
            pending_.append(buffer, count);
            return Heard::something;
        }
        if (std::chrono::steady_clock::now() >= end) {
            return Heard::nothing;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void HelperProcess::kill() {
    if (process_ != kNone) {
        killAndKeep();
        closeIfOpen(process_);
    }
    id_ = -1;
}

void HelperProcess::killAndKeep() const {
    if (process_ != kNone) {
        TerminateProcess(handleOf(process_), kKilled);
        WaitForSingleObject(handleOf(process_), INFINITE);
    }
}

void HelperProcess::endInput() {
    closeIfOpen(input_);
}

bool HelperProcess::hasEnded() const {
    return process_ == kNone || WaitForSingleObject(handleOf(process_), 0) == WAIT_OBJECT_0;
}

int HelperProcess::finish() {
    endInput();
    DWORD code = kKilled;
    if (process_ != kNone) {
        WaitForSingleObject(handleOf(process_), INFINITE);
        GetExitCodeProcess(handleOf(process_), &code);
        closeIfOpen(process_);
    }
    id_ = -1;
    return (code & kErrorBits) == kErrorBits ? -1 : static_cast<int>(code);
}

} // namespace tessera::testing_support
