#define _POSIX_C_SOURCE 200809L
#include "System.h"

#include "Objects.h"

#include <dlfcn.h>
#include <errno.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>

extern char** environ;

const char kSeparator[] = "/";

struct Program {
    pid_t id;
};

char** utf8Arguments(int argc, char** argv) {
    (void)argc;
    return argv;
}

const char* absolutePath(const char* utf8Path) {
    CHECK(utf8Path[0] == '/');
    return utf8Path;
}

FILE* openFile(const Char16* path, const char* mode) {
    char utf8[UTF8_BYTES];
    toUtf8(path, utf8);
    return fopen(utf8, mode);
}

bool makeFolder(const Char16* path) {
    char utf8[UTF8_BYTES];
    toUtf8(path, utf8);
    return mkdir(utf8, 0700) == 0 || errno == EEXIST;
}

void useFolder(const char* utf8Folder) {
    setenv("TMPDIR", utf8Folder, 1);
    setenv("XDG_DATA_DIRS", utf8Folder, 1);
    setenv("XDG_DATA_HOME", utf8Folder, 1);
    setenv("XDG_CONFIG_HOME", utf8Folder, 1);
}

void* loadLibrary(const char* utf8Path) {
    void* library = dlopen(utf8Path, RTLD_NOW | RTLD_LOCAL);
    if (library == NULL) {
        fprintf(stderr, "%s\n", dlerror());
    }
    return library;
}

Slot functionIn(void* library, const char* name) {
    // C has no conversion from a pointer to data into one to a function.
    void* address = dlsym(library, name);
    Slot function = NULL;
    memcpy(&function, &address, sizeof function);
    return function;
}

void giveLibraryBack(void* library) {
    CHECK(dlclose(library) == 0);
}

int64_t clockMs(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (int64_t)now.tv_sec * 1000 + now.tv_nsec / 1000000;
}

void sleepMs(unsigned ms) {
    const struct timespec time = {ms / 1000, (long)(ms % 1000) * 1000000};
    nanosleep(&time, NULL);
}

Program* startProgram(const char* const* utf8Arguments) {
    Program* program = malloc(sizeof *program);
    CHECK(program != NULL);
    char** arguments = NULL;
    memcpy(&arguments, &utf8Arguments, sizeof arguments);
    CHECK(posix_spawn(&program->id, utf8Arguments[0], NULL, NULL, arguments, environ) == 0);
    return program;
}

int endProgram(Program* program, unsigned timeoutMs) {
    const int64_t end = clockMs() + timeoutMs;
    int status = 0;
    bool over = false;
    while (!(over = waitpid(program->id, &status, WNOHANG) == program->id) && clockMs() < end) {
        sleepMs(10);
    }
    if (!over) {
        kill(program->id, SIGKILL);
        waitpid(program->id, &status, 0);
    }
    free(program);
    return over && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
