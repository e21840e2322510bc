#include "HostFile.h"

#include <stdlib.h>
#include <string.h>

static size_t lengthOf(const Char16* text) {
    size_t length = 0;
    while (text[length] != 0) {
        ++length;
    }
    return length;
}

static void copyText(Char16* to, const Char16* from) {
    memcpy(to, from, (lengthOf(from) + 1) * sizeof *from);
}

static HostFile* fileOf(Face* self) {
    return (HostFile*)self->object;
}

static void writePath(Face* self, Char16* buffer) {
    copyText(buffer, fileOf(self)->path);
}

static Result setPath(Face* self, const Char16* path, int32_t isFolder) {
    if (path == NULL || path[0] == 0 || lengthOf(path) >= PATH_UNITS) {
        return RESULT_BAD_ARGUMENT;
    }
    copyText(fileOf(self)->path, path);
    fileOf(self)->isFolder = isFolder != 0;
    return RESULT_OK;
}

static void writeName(Face* self, Char16* buffer) {
    copyText(buffer, nameIn(fileOf(self)->path));
}

static Result append(Face* self, const Char16* name, int32_t isFolder) {
    HostFile* file = fileOf(self);
    const size_t length = lengthOf(file->path);
    if (!file->isFolder) {
        return RESULT_NO;
    }
    if (name == NULL || name[0] == 0 || length + 1 + lengthOf(name) >= PATH_UNITS) {
        return RESULT_BAD_ARGUMENT;
    }
    file->path[length] = (Char16)kSeparator[0];
    copyText(file->path + length + 1, name);
    file->isFolder = isFolder != 0;
    return RESULT_OK;
}

// "name.wav" becomes "name-2.wav", "name-3.wav" and so on, until the disk has no such file.
static Result makeUnique(Face* self) {
    HostFile* file = fileOf(self);
    Char16 original[PATH_UNITS];
    copyText(original, file->path);
    const Char16* name = nameIn(original);
    const Char16* dot = original + lengthOf(original);
    for (const Char16* at = name; *at != 0; ++at) {
        dot = *at == '.' ? at : dot;
    }
    const size_t stem = (size_t)(dot - original);
    for (int number = 2; fileExists(file->path); ++number) {
        char suffix[16];
        snprintf(suffix, sizeof suffix, "-%d", number);
        if (number > 999 || lengthOf(original) + strlen(suffix) >= PATH_UNITS) {
            copyText(file->path, original);
            return RESULT_NO;
        }
        toText16(suffix, file->path + stem);
        copyText(file->path + lengthOf(file->path), dot);
    }
    return RESULT_OK;
}

static Result cloneFile(Face* self, void** out) {
    *out = hostFileInterface(cloneHostFile(fileOf(self)));
    return RESULT_OK;
}

static void destroy(Object* object) {
    free(object);
}

static const Slot kTable[] = {
    BASE_SLOTS,         [3] = (Slot)writePath,   [4] = (Slot)setPath,    [6] = (Slot)writeName,
    [9] = (Slot)append, [13] = (Slot)makeUnique, [14] = (Slot)cloneFile,
};

static const ObjectKind kKind = {"host file", destroy, {{&kUrlFactory, kTable}}};

HostFile* makeHostFile(void) {
    return makeObject(sizeof(HostFile), &kKind);
}

HostFile* makeHostFileAt(const char* utf8Path, bool isFolder) {
    HostFile* file = makeHostFile();
    toText16(utf8Path, file->path);
    file->isFolder = isFolder;
    return file;
}

HostFile* cloneHostFile(const HostFile* file) {
    HostFile* copy = makeHostFile();
    copyText(copy->path, file->path);
    copy->isFolder = file->isFolder;
    return copy;
}

Interface* hostFileInterface(HostFile* file) {
    return faceOf(&file->object, 0);
}
