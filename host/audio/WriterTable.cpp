#include "host/audio/WriterTable.h"

#include "host/audio/WriteStream.h"

namespace tessera::host {

void WriterTable::enter(const std::string& path, const std::shared_ptr<WriteStream>& writer) {
    std::erase_if(writers_, [](const auto& entry) { return entry.second.expired(); });
    writers_[path] = writer;
}

void WriterTable::finish(const std::string& path) {
    const auto found = writers_.find(path);
    if (found == writers_.end()) {
        return;
    }
    if (const std::shared_ptr<WriteStream> writer = found->second.lock()) {
        writer->complete();
    }
    writers_.erase(found);
}

} // namespace tessera::host
