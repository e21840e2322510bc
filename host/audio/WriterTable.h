// WriterTable: which files are being written. Some kinds of file can be read only when their writer is done with them,
// so whoever is about to read a file of the host's own has its writer finish first.
#pragma once

#include <map>
#include <memory>
#include <string>

namespace tessera::host {

class WriteStream;

class WriterTable {
public:
    void enter(const std::string& path, const std::shared_ptr<WriteStream>& writer);
    // Completes the file if somebody is writing it.
    void finish(const std::string& path);

private:
    std::map<std::string, std::weak_ptr<WriteStream>> writers_;
};

} // namespace tessera::host
