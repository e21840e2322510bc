// LinkSocket: the one transport between the module and the peer, a nanomsg pair socket that carries opaque byte
// strings, one string in one nanomsg message.
//
// The module binds, the peer connects; both work the address out from the user's login name and never tell it to each
// other. A socket may be opened and closed any number of times. There is no lock: one thread at a time. A blocking send
// waits at most 4,000 ms, the waiting receive of sendAndReceive another 4,000 ms. A send that doesn't block may come
// out a few hundredths of a second after the one before it, where the platform's sockets need that time; nothing else
// waits. Failures are printed to standard output, one line each, and otherwise dropped: none raises an exception and
// none is retried.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace tessera {

enum class LinkSide { Bind, Connect };

// Whether a full queue, or a missing other side, makes a send wait.
enum class SendMode { NonBlocking, Blocking };

class LinkSocket {
public:
    // Replaced before the first use; two users of one machine would meet on it.
    static constexpr std::string_view defaultAddress = "ipc:///tmp/mgrv_tesxcon.ipc";

    // "ipc:///tmp/mgrv_tesxcon_" + user + ".ipc". The name goes in as it is: no escaping, no shortening.
    static std::string userAddress(std::string_view user);

    explicit LinkSocket(std::string_view address) : address_(address) {}
    ~LinkSocket();
    LinkSocket(const LinkSocket&) = delete;
    LinkSocket& operator=(const LinkSocket&) = delete;

    const std::string& address() const { return address_; }
    // For the next open(); an endpoint that exists is not moved.
    void setAddress(std::string_view address) { address_ = address; }

    // True after a successful bind or connect, until the close. Whether anybody is on the other side, it doesn't tell.
    bool isOpen() const { return open_; }

    // True when open, whichever side an earlier call took. False when the socket can't be made, bound or connected; a
    // socket that was made stays for the next call.
    bool open(LinkSide side);
    // True when closed, also when it never was open. False when nanomsg refuses; the next open() then goes on with the
    // same socket.
    bool close();

    // The number of bytes sent, or -1.
    int send(std::string_view message, SendMode mode);
    // The next message, without waiting. Empty when nothing is there; a message of no bytes counts as nothing.
    std::string receive();
    // Sends, then waits for whatever arrives first, also when the send failed. Empty when nothing came.
    std::string sendAndReceive(std::string_view message, SendMode mode);

private:
    enum class Wait { No, Yes };

    bool createSocket();
    int attach(LinkSide side) const;
    void letLastMessageGo() const;
    std::string receiveOne(Wait wait);

    std::string address_;
    int socket_ = -1;
    bool open_ = false;
    std::chrono::steady_clock::time_point lastSend_;
};

} // namespace tessera
