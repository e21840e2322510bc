// SystemFolders: folders of the system as the code under test sees them, and means to move one of them.
#pragma once

#include "platform/KnownFolders.h"
#include "platform/NativePath.h"
#include "platform/TemporaryFolder.h"
#include "support/ScopedEnvironment.h"
#include "support/ScratchFolder.h"

#include <filesystem>

namespace tessera::testing_support {

inline std::filesystem::path temporaryPath() {
    return pathOfUtf8(platform::temporaryFolder());
}

inline std::filesystem::path pathOfFolder(platform::KnownFolder folder) {
    return pathOfUtf8(platform::toNativePath(platform::knownFolder(folder).value()).value());
}

// Moves the temporary one for a scope, whichever variable the system asks.
class ScopedTemporaryFolder {
public:
    explicit ScopedTemporaryFolder(const std::filesystem::path& folder)
        : unixes_("TMPDIR", utf8OfPath(folder)),
          first_("TMP", utf8OfPath(folder)),
          second_("TEMP", utf8OfPath(folder)) {}

private:
    ScopedEnvironment unixes_;
    ScopedEnvironment first_;
    ScopedEnvironment second_;
};

} // namespace tessera::testing_support
