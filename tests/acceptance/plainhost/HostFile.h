// HostFile: a path of the host, as the module handles it: IHostFile, and IUrlFactory for a new one.
#pragma once

#include "Objects.h"
#include "System.h"

typedef struct HostFile {
    Object object;
    Char16 path[PATH_UNITS];
    bool isFolder;
} HostFile;

// Empty, with one reference for the caller.
HostFile* makeHostFile(void);
HostFile* makeHostFileAt(const char* utf8Path, bool isFolder);
HostFile* cloneHostFile(const HostFile* file);
Interface* hostFileInterface(HostFile* file);
