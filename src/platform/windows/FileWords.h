// FileWords: how a file is to be opened, in the words of CreateFileW.
#pragma once

#include "platform/Files.h"

#include <windows.h>

namespace tessera::platform {

struct FileWords {
    DWORD access;
    DWORD sharing;
    DWORD creation;
    DWORD attributes;
};

constexpr DWORD creationWord(FileDisposition disposition) {
    switch (disposition) {
    case FileDisposition::createAlways:
        return CREATE_ALWAYS;
    case FileDisposition::createNew:
        return CREATE_NEW;
    case FileDisposition::openExisting:
        break;
    }
    return OPEN_EXISTING;
}

constexpr FileWords fileWords(const FileOpenFlags& flags, FileDisposition disposition) {
    constexpr DWORD kGoesWhenClosed = FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE;
    return {
        .access = (flags.read ? GENERIC_READ : 0) | (flags.write ? GENERIC_WRITE : 0),
        .sharing =
            static_cast<DWORD>((flags.shareRead ? FILE_SHARE_READ : 0) | (flags.shareWrite ? FILE_SHARE_WRITE : 0)),
        .creation = creationWord(disposition),
        .attributes = (flags.unbuffered ? FILE_FLAG_NO_BUFFERING : 0) |
                      (flags.deleteOnClose ? kGoesWhenClosed : FILE_ATTRIBUTE_NORMAL),
    };
}

} // namespace tessera::platform
