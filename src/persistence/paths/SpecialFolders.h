// SpecialFolders: the folders that the system or the program gives a place.
//
// Each look-up returns a shared path object that is built on first use and kept to the end of the process: the caller
// neither changes nor releases it. Null where the system won't give the folder. Main thread.
#pragma once

#include <cstdint>

namespace tessera {

class FNPath;

enum class UserFolder : std::int32_t {
    applicationData = 0,
    commonApplicationData = 1,
    application = 3,
};

enum class ProgramFolder : std::int32_t {
    // The vendor's folder in commonFiles or, without that, in commonFilesOther.
    vendorCommonFiles = 0,
    commonFiles = 1,
    programFilesOrCommon = 2,
    commonFilesOther = 3,
    localApplicationData = 4,
    programFilesOther = 5,
    programFilesNative = 6,
    programFiles = 7,
};

enum class KnownFolder : std::int32_t {
    documents,
    profile,
    pictures,
    music,
    videos,
};

// What the constructor takes that builds a path from a name and a folder. Any other number has no folder.
enum class PathFolder : std::int32_t {
    userData = 1,
    temporary = 2,
    module = 3,
    system = 4,
};

const FNPath* userFolder(UserFolder folder);
const FNPath* programFolder(ProgramFolder folder);
const FNPath* knownFolder(KnownFolder folder);
// The temporary and the system folder are taken once and kept; those of the application are the service's.
const FNPath* pathFolder(PathFolder folder);

} // namespace tessera
