#include "System.h"

#include <string.h>

static Char16* putCharacter(Char16* out, uint32_t character) {
    if (character >= 0x10000) {
        *out++ = (Char16)(0xD800 + ((character - 0x10000) >> 10));
        character = 0xDC00 + ((character - 0x10000) & 0x3FF);
    }
    *out++ = (Char16)character;
    return out;
}

// Valid UTF-8 alone: it comes from this program and the build.
void toText16(const char* utf8, Char16* text) {
    const Char16* const end = text + PATH_UNITS - 2;
    const unsigned char* in = (const unsigned char*)utf8;
    while (*in != 0 && text < end) {
        const int following = *in < 0x80 ? 0 : *in < 0xE0 ? 1 : *in < 0xF0 ? 2 : 3;
        uint32_t character = following == 0 ? *in : *in & (0x3Fu >> following);
        ++in;
        for (int i = 0; i < following && *in != 0; ++i) {
            character = character << 6 | (*in++ & 0x3Fu);
        }
        text = putCharacter(text, character);
    }
    *text = 0;
}

void toUtf8(const Char16* text, char* utf8) {
    while (*text != 0) {
        uint32_t character = *text++;
        if (character >= 0xD800 && character < 0xDC00 && *text != 0) {
            character = 0x10000 + ((character - 0xD800) << 10) + (*text++ - 0xDC00u);
        }
        const int following = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
        const uint32_t marks[] = {0, 0xC0, 0xE0, 0xF0};
        *utf8++ = (char)(marks[following] | character >> (6 * following));
        for (int i = following - 1; i >= 0; --i) {
            *utf8++ = (char)(0x80 | (character >> (6 * i) & 0x3F));
        }
    }
    *utf8 = 0;
}

const Char16* nameIn(const Char16* path) {
    const Char16* name = path;
    for (; *path != 0; ++path) {
        // The module joins some of its own paths by "/", which Windows takes as well.
        if (*path == '/' || *path == (Char16)kSeparator[0]) {
            name = path + 1;
        }
    }
    return name;
}

bool fileExists(const Char16* path) {
    FILE* file = openFile(path, "rb");
    if (file == NULL) {
        return false;
    }
    fclose(file);
    return true;
}
