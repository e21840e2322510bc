#include "discovery/uri/TemporaryPath.h"

#include "discovery/uri/FileNames.h"
#include "discovery/uri/FileSystemFacade.h"

namespace tessera {

TemporaryPath::TemporaryPath(AtEnd atEnd) : atEnd_(atEnd) {
    const Result<Uri> folder = fileSystem().temporaryDirectory();
    const std::string name = uniqueFileName();
    if (folder && !name.empty()) {
        uri_ = folder.value().child(name);
    }
}

TemporaryPath::~TemporaryPath() {
    // Never with an empty path, which would be the working folder.
    if (atEnd_ == AtEnd::remove && !uri_.path.empty()) {
        static_cast<void>(fileSystem().removeAll(uri_));
    }
}

} // namespace tessera
