#include "platform/ProgramRun.h"

#include "platform/SystemErrors.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsHandle.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <string_view>

namespace tessera::platform {
namespace {

constexpr DWORD kPollPeriodMs = 20;
// What a process gives that was ended by an exception: the exception's number, whose top two bits say "error".
constexpr DWORD kErrorBits = 0xc0000000u;

// As programs take their command line apart: blanks part the words, quotes hold them together, and backslashes mean
// something in front of a quote alone.
void appendQuoted(std::string& line, std::string_view word) {
    line += '"';
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"') {
            line.append(backslashes + 1, '\\');
        }
        backslashes = c == '\\' ? backslashes + 1 : 0;
        line += c;
    }
    line.append(backslashes, '\\');
    line += '"';
}

std::wstring commandLine(const std::string& executable, const std::vector<std::string>& arguments) {
    std::string line;
    appendQuoted(line, executable);
    for (const std::string& argument : arguments) {
        line += ' ';
        appendQuoted(line, argument);
    }
    return wideText(line);
}

// The standard streams in a form that a child inherits, and the list that keeps it from inheriting anything else.
class ChildStreams {
public:
    explicit ChildStreams(STARTUPINFOEXW& setup) {
        constexpr std::array<DWORD, 3> kNames = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
        HANDLE* const places[] = {&setup.StartupInfo.hStdInput, &setup.StartupInfo.hStdOutput,
                                  &setup.StartupInfo.hStdError};
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            if (HANDLE copy = inheritableCopy(GetStdHandle(kNames[i])); copy != nullptr) {
                copies_[count_++] = *places[i] = copy;
            }
        }
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        storage_.resize(size);
        auto* list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage_.data());
        isListMade_ = InitializeProcThreadAttributeList(list, 1, 0, &size) != 0;
        if (isListMade_ && count_ != 0 &&
            UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, copies_.data(),
                                      count_ * sizeof copies_[0], nullptr, nullptr) != 0) {
            setup.lpAttributeList = list;
            setup.StartupInfo.dwFlags |= STARTF_USESTDHANDLES;
        }
    }
    ChildStreams(const ChildStreams&) = delete;
    ChildStreams& operator=(const ChildStreams&) = delete;
    ~ChildStreams() {
        if (isListMade_) {
            DeleteProcThreadAttributeList(reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage_.data()));
        }
        for (std::size_t i = 0; i < count_; ++i) {
            CloseHandle(copies_[i]);
        }
    }

private:
    static HANDLE inheritableCopy(HANDLE stream) {
        HANDLE copy = nullptr;
        if (stream != nullptr && stream != INVALID_HANDLE_VALUE) {
            DuplicateHandle(GetCurrentProcess(), stream, GetCurrentProcess(), &copy, 0, TRUE, DUPLICATE_SAME_ACCESS);
        }
        return copy;
    }

    std::array<HANDLE, 3> copies_ = {};
    std::size_t count_ = 0;
    std::vector<std::byte> storage_;
    bool isListMade_ = false;
};

// 0, or the system's error number. The child doesn't run yet.
DWORD startSuspended(std::wstring line, PROCESS_INFORMATION& started) {
    STARTUPINFOEXW setup = {};
    setup.StartupInfo.cb = sizeof setup;
    const ChildStreams streams(setup);
    const bool inherits = setup.lpAttributeList != nullptr;
    const BOOL done =
        CreateProcessW(nullptr, line.data(), nullptr, nullptr, inherits ? TRUE : FALSE,
                       CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr, &setup.StartupInfo, &started);
    return done != 0 ? ERROR_SUCCESS : GetLastError();
}

ProgramEnd endOf(HANDLE process, bool stopped) {
    if (stopped) {
        return {ProgramEnd::Kind::Stopped, 0};
    }
    DWORD code = 0;
    if (GetExitCodeProcess(process, &code) == 0) {
        return {ProgramEnd::Kind::Crashed, 0};
    }
    const bool crashed = (code & kErrorBits) == kErrorBits;
    return {crashed ? ProgramEnd::Kind::Crashed : ProgramEnd::Kind::Exited, static_cast<int>(code)};
}

} // namespace

ProgramEnd runProgram(const std::string& executable, const std::vector<std::string>& arguments,
                      const std::atomic<bool>& stop) {
    // What the program starts belongs to its job as well, and can be ended with it.
    const WindowsHandle job(CreateJobObjectW(nullptr, nullptr));
    PROCESS_INFORMATION started = {};
    if (const DWORD error = startSuspended(commandLine(executable, arguments), started); error != ERROR_SUCCESS) {
        return {ProgramEnd::Kind::NotStarted, static_cast<int>(error)};
    }
    const WindowsHandle process(started.hProcess);
    const WindowsHandle thread(started.hThread);
    const bool inJob = AssignProcessToJobObject(job.get(), process.get()) != 0;
    ResumeThread(thread.get());
    bool stopped = false;
    while (WaitForSingleObject(process.get(), kPollPeriodMs) == WAIT_TIMEOUT) {
        if (!stopped && stop.load()) {
            stopped = true;
            // A job of this process's own may not allow another one within; then there is the program alone to end.
            if (!inJob || TerminateJobObject(job.get(), 1) == 0) {
                TerminateProcess(process.get(), 1);
            }
        }
    }
    return endOf(process.get(), stopped);
}

std::string systemErrorText(int code) {
    return describeError(code);
}

} // namespace tessera::platform
