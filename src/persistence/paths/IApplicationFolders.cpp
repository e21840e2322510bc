#include "persistence/paths/IApplicationFolders.h"

#include "foundation/text/FString.h"

namespace tessera {

constinit ApplicationFoldersSource applicationFoldersSource = nullptr;

FString vendorName() {
    IApplicationFolders* folders = applicationFoldersSource != nullptr ? applicationFoldersSource() : nullptr;
    return folders != nullptr && !folders->vendor().isEmpty() ? folders->vendor() : FString(u"Marlgrove");
}

} // namespace tessera
