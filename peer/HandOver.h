// HandOver: one peer per user. The first one holds a lock for as long as it lives; a second start hands its file to it
// and ends.
//
// The lock and the files to hand over lie in the folder "TesxPeer" of the user's temporary folder. A file to open is
// told by a small text file, named ".open" once it is complete, that holds the path; the live peer reads it and removes
// it, which tells the sender that it has been taken. Paths are UTF-8. Main thread only.
#pragma once

#include "platform/InstanceLock.h"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace tessera::peer {

class HandOver {
public:
    enum class Outcome { Taken, NobodyTookIt, BecameLive };

    // The folder is created if it can be.
    explicit HandOver(std::string folder);

    // True when this process is the live peer from now on. False when another one is, or when the folder can't be used.
    bool tryBecomeLive();
    // Why the last tryBecomeLive() couldn't use the folder; none if it could.
    const std::error_code& folderProblem() const { return folderProblem_; }
    // For a second start: gives the path to the live peer and waits until it has been taken. If the live one ends
    // meanwhile, this process takes its place, and the file is its own to open.
    Outcome handOver(const std::string& path, int timeoutMs);
    // For the live peer: what others have handed over since the last call.
    std::vector<std::string> takeFiles();

private:
    const std::string folder_;
    std::optional<platform::InstanceLock> lock_;
    std::error_code folderProblem_;
};

} // namespace tessera::peer
