// IPeerActions: what the exchange asks of the program around it. All calls come on the main thread.
#pragma once

#include <string>
#include <string_view>

namespace tessera::peer {

struct IPeerActions {
    // One message to the host, as it stands.
    virtual void send(std::string_view message) = 0;
    // Starts the editor on a file of the exchange folder; PeerExchange::editEnded tells the end. One at a time.
    virtual void startEdit(const std::string& path) = 0;
    // Ends the running editor without a result; no editEnded follows.
    virtual void stopEdit() = 0;
    // How many files lie in the folder that holds the given one.
    virtual int countFilesBeside(const std::string& path) = 0;
    // One line for the user.
    virtual void say(const std::string& line) = 0;

protected:
    ~IPeerActions() = default;
};

} // namespace tessera::peer
