#include "System.h"

#include "Objects.h"

#include <stdlib.h>
#include <string.h>
#include <wchar.h>

// The system's header has a type of this name.
#define Interface SystemInterface
#include <windows.h>

#include <shellapi.h>
#undef Interface

static_assert(sizeof(wchar_t) == sizeof(Char16), "the system's texts are of 16 bits");

const char kSeparator[] = "\\";

struct Program {
    HANDLE process;
};

static const wchar_t* wide(const Char16* text) {
    return (const wchar_t*)text;
}

char** utf8Arguments(int argc, char** argv) {
    // What main is given has lost all characters outside the code page.
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    CHECK(arguments != NULL && count == argc);
    for (int i = 0; i < count; ++i) {
        char* utf8 = malloc(UTF8_BYTES);
        CHECK(utf8 != NULL);
        toUtf8((const Char16*)arguments[i], utf8);
        argv[i] = utf8;
    }
    LocalFree(arguments);
    return argv;
}

const char* absolutePath(const char* utf8Path) {
    Char16 path[PATH_UNITS];
    Char16 absolute[PATH_UNITS];
    toText16(utf8Path, path);
    char* utf8 = malloc(UTF8_BYTES);
    CHECK(utf8 != NULL && GetFullPathNameW(wide(path), PATH_UNITS, (wchar_t*)absolute, NULL) != 0);
    toUtf8(absolute, utf8);
    return utf8;
}

FILE* openFile(const Char16* path, const char* mode) {
    const wchar_t wideMode[] = {(wchar_t)mode[0], (wchar_t)mode[1], mode[1] == 0 ? 0 : (wchar_t)mode[2], 0};
    return _wfopen(wide(path), wideMode);
}

bool makeFolder(const Char16* path) {
    return CreateDirectoryW(wide(path), NULL) || GetLastError() == ERROR_ALREADY_EXISTS;
}

void useFolder(const char* utf8Folder) {
    Char16 folder[PATH_UNITS];
    toText16(utf8Folder, folder);
    SetEnvironmentVariableW(L"TMP", wide(folder));
    SetEnvironmentVariableW(L"TEMP", wide(folder));
}

void* loadLibrary(const char* utf8Path) {
    Char16 path[PATH_UNITS];
    toText16(utf8Path, path);
    void* library = LoadLibraryW(wide(path));
    if (library == NULL) {
        fprintf(stderr, "%s can't be loaded: error %lu\n", utf8Path, GetLastError());
    }
    return library;
}

Slot functionIn(void* library, const char* name) {
    return (Slot)GetProcAddress(library, name);
}

void giveLibraryBack(void* library) {
    CHECK(FreeLibrary(library));
}

int64_t clockMs(void) {
    return (int64_t)GetTickCount64();
}

void sleepMs(unsigned ms) {
    Sleep(ms);
}

// Each argument in quotes, and quotes in it behind a backslash.
static void appendQuoted(wchar_t* line, const char* argument) {
    Char16 text[PATH_UNITS];
    toText16(argument, text);
    wchar_t* out = line + wcslen(line);
    *out++ = L'"';
    for (const Char16* in = text; *in != 0; ++in) {
        if (*in == '"') {
            *out++ = L'\\';
        }
        *out++ = *in;
    }
    wcscpy(out, L"\" ");
}

Program* startProgram(const char* const* utf8Arguments) {
    wchar_t line[4 * PATH_UNITS] = L"";
    for (; *utf8Arguments != NULL; ++utf8Arguments) {
        appendQuoted(line, *utf8Arguments);
    }
    STARTUPINFOW startup = {.cb = sizeof startup};
    PROCESS_INFORMATION started;
    CHECK(CreateProcessW(NULL, line, NULL, NULL, FALSE, 0, NULL, NULL, &startup, &started));
    CloseHandle(started.hThread);
    Program* program = malloc(sizeof *program);
    CHECK(program != NULL);
    program->process = started.hProcess;
    return program;
}

int endProgram(Program* program, unsigned timeoutMs) {
    DWORD code = 0;
    const bool over = WaitForSingleObject(program->process, timeoutMs) == WAIT_OBJECT_0;
    if (!over) {
        TerminateProcess(program->process, 1);
    }
    GetExitCodeProcess(program->process, &code);
    CloseHandle(program->process);
    free(program);
    return over ? (int)code : -1;
}
