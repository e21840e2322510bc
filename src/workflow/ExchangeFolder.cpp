#include "workflow/ExchangeFolder.h"

#include "platform/Files.h"
#include "platform/NativePath.h"
#include "platform/TemporaryFolder.h"
#include "shell/hostapi/IUrlFactory.h"
#include "workflow/HostServices.h"
#include "workflow/HostText.h"

#include <algorithm>

namespace tessera {

namespace {

// A folder that can't be made shows when the first file in it can't.
void createFolder(std::u16string path) {
    std::ranges::replace(path, u'/', u'\\');
    std::int32_t ignored = 0;
    platform::createFolders(path, ignored);
}

} // namespace

FRefPtr<IHostFile> exchangeFolder() {
    const std::string temporary = platform::temporaryFolder();
    const auto file = queryService<IUrlFactory>();
    if (temporary.empty() || !file) {
        return {};
    }
    std::u16string path = wideOf(temporary + "/Marlgrove/TeEx");
    createFolder(path);
    // The host appends names in the system's own form, and the peer gets what comes of it.
    std::ranges::replace(path, u'/', platform::nativeSeparator());
    file->setPath(path.c_str(), 1);
    return FRefPtr<IHostFile>(file.get());
}

} // namespace tessera
