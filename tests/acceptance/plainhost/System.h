// What this host needs of the operating system, in two versions. Paths are 16-bit texts as the module gives and takes
// them, in the platform's own form.
#pragma once

#include "Abi.h"

#include <stdio.h>

// The arguments of the program as UTF-8 text, whatever the system's own form is.
char** utf8Arguments(int argc, char** argv);

// The path as every program understands it. Kept to the end of the program.
const char* absolutePath(const char* utf8Path);

// UTF-8 to 16-bit text and back, into room for PATH_UNITS units or 3 * PATH_UNITS bytes.
void toText16(const char* utf8, Char16* text);
void toUtf8(const Char16* text, char* utf8);

#define UTF8_BYTES (3 * PATH_UNITS)

extern const char kSeparator[];

// The last component of a path.
const Char16* nameIn(const Char16* path);

// A standard stream on a file, null if there is none. Binary.
FILE* openFile(const Char16* path, const char* mode);
bool fileExists(const Char16* path);
bool makeFolder(const Char16* path);

// From here on all programs of this process tree keep their files below the folder: nobody's own are met.
void useFolder(const char* utf8Folder);

// A library by its file; null, with a line on the error stream, if it can't be loaded.
void* loadLibrary(const char* utf8Path);
Slot functionIn(void* library, const char* name);
void giveLibraryBack(void* library);

// Milliseconds of a clock that only runs forward.
int64_t clockMs(void);
void sleepMs(unsigned ms);

typedef struct Program Program;
// Arguments end with null; the first one is the program's file.
Program* startProgram(const char* const* utf8Arguments);
// Waits until the program has ended, or ends it when the time is over: its exit code, -1 if it had to be ended.
int endProgram(Program* program, unsigned timeoutMs);
