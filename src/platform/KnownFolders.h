// KnownFolders: where the system keeps programs, settings and the user's documents.
//
// Paths come in the framework's form (16-bit, backslashes), without a separator at the end, whether the folder exists
// or not. Nothing where the system doesn't say. Asked anew each time. From any thread, as far as nobody changes the
// environment meanwhile.
#pragma once

#include <optional>
#include <string>

namespace tessera::platform {

enum class KnownFolder {
    // Settings of the user, and data of this machine's copy of them.
    userData,
    localData,
    // userData and commonFiles by other names of the system, which may lead to longer paths.
    roamingData,
    sharedFiles,
    // Data of all users.
    commonData,
    programFiles,
    // For programs built like this one, and for those of the other width.
    programFilesNative,
    programFilesOther,
    // As programFilesNative; where that can't be had, the folder for shared files of programs.
    programFilesOrCommon,
    commonFiles,
    commonFilesOther,
    system,
    profile,
    documents,
    pictures,
    music,
    videos,
};

std::optional<std::u16string> knownFolder(KnownFolder folder);

} // namespace tessera::platform
