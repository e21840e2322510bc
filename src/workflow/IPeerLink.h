// IPeerLink: what the workflow and the command know of the peer. The peer controller implements it and outlives its
// users, who hold a plain pointer. Main thread.
#pragma once

#include <cstdint>

namespace tessera {

struct IHostFile;

struct IPeerLink {
    // Whether an edit can reach a peer: one is installed, or one is connected.
    virtual bool isPeerAvailable() = 0;
    // Shows the file in the peer, which is started if need be. A null file is an empty path.
    virtual void openAudioFile(IHostFile* file) = 0;
    // Starts the edit of what is selected. The file given to the peer, which stays the session's; null if none.
    virtual IHostFile* editSelection() = 0;
    // Tells the peer that the edit of the file is given up. A null file is an empty path.
    virtual void cancelAudioFile(IHostFile* file) = 0;
    // Asks the peer to let go of the audio driver, and waits for its answer; always 0.
    virtual std::int32_t suspendDriver(const char16_t* text) = 0;

protected:
    ~IPeerLink() = default;
};

} // namespace tessera
